// The engine object: automation identity, connection and user state, the
// empty value operations, and the record-access helpers.
#include "ado/connection.h"
#include "ado/recordset.h"
#include "engine/buscadorentidades.h"
#include "engine/eengine.h"
#include "engine/quelta.h"
#include "fakeusermanagement.h"
#include "model/vendimarbi.h"
#include "entitychecks.h"
#include "testdatabase.h"
#include "vb/vb.h"

#include <QMetaEnum>
#include <QTest>
#include <memory>

namespace {

// A search object that records the connection it is given, or refuses it.
class RecordingSearch : public QObject, public Quelta {
    Q_OBJECT
    Q_INTERFACES(Quelta)

public:
    QVariant Conectar(QObject* conexion) override
    {
        ++calls;
        if (refuse)
            throw vb::AutomationError(5, QStringLiteral("refused"));
        given = conexion;
        return 1;
    }
    QVariant Buscar(const QString&, bool) override { return 0; }
    QString Describir(const QString&, const QString&, const QString&) override { return QString(); }

    bool refuse = false;
    int calls = 0;
    QObject* given = nullptr;
};


} // namespace

class TstEEngine : public QObject {
    Q_OBJECT

    TestDatabase db;

    int typeOf(const QVariant& v) { return v.typeId(); }

private slots:
    void initTestCase() { VBI_CREATE_TEST_DATABASE(db); }
    void init() { db.clear(); }

    void automationIdentityIsFixed()
    {
        verifyAutomationIdentity(EEngine::staticMetaObject, QStringLiteral("{62C7F7FB-68A6-4FB0-B34E-3DA4E76F78EC}"),
                                 QStringLiteral("{11FBA1C7-6AE1-4BBB-BA2B-3D8D72CFFD08}"));
    }

    void propertiesAndMethodsComeInInterfaceOrder()
    {
        const QMetaObject& meta = EEngine::staticMetaObject;
        QCOMPARE(propertyNames(meta), QString::fromLatin1("ADOCnn PKUser Search UM chartTitle chartType boMes").split(QLatin1Char(' ')));
        QCOMPARE(QString::fromLatin1(meta.property(meta.indexOfProperty("chartType")).typeName()), QStringLiteral("short"));
        const QStringList methods = invokableNames(meta);
        const QStringList expected = QString::fromLatin1(
            "SetUM SetConnection get_info get_MainArray get_ChartArray WeekNum IniMes FinMes day_ofweeknum "
            "numtodate daytonum OpenRecordset getScalar fieldValue").split(QLatin1Char(' '));
        QCOMPARE(methods.mid(0, expected.size()), expected);
    }

    void enumerationsCarryTheirValues()
    {
        const QMetaObject& meta = VendimarBI::staticMetaObject;
        auto value = [&](const char* enumName, const char* key) {
            const QMetaEnum e = meta.enumerator(meta.indexOfEnumerator(enumName));
            return e.keyToValue(key);
        };
        QCOMPARE(value("TiposEntidades", "cPerspectiva"), 1);
        QCOMPARE(value("TiposEntidades", "cFigura"), 6);
        QCOMPARE(value("TiposEntidades", "ctabindicador"), 5);
        QCOMPARE(value("TiposIndicador", "cSemaforo"), 3);
        QCOMPARE(value("TiposIndicador", "cMatrizGrafico"), 2);
        QCOMPARE(value("TipoGrafico", "cBarras3D"), 0);
        QCOMPARE(value("TipoGrafico", "cPie2D"), 14);
        QCOMPARE(value("TipoGrafico", "cBarras2D"), 3);
        QCOMPARE(value("cPeriodosTemporales", "cAno"), 3);
        QCOMPARE(value("cTipoFigura", "cTexto"), 0);
        QCOMPARE(value("cAlineacion", "cCentro"), 2);
        QCOMPARE(value("cAlineacion", "cDerecha"), 1);
    }

    void newEngineHoldsOnlyItsSearchObject()
    {
        EEngine engine;
        QVERIFY(engine.Search() != nullptr);
        QVERIFY(qobject_cast<Quelta*>(engine.Search()) != nullptr);
        QCOMPARE(engine.ADOCnn(), nullptr);
        QCOMPARE(engine.UM(), nullptr);
        QCOMPARE(engine.PKUser(), 0);
        QCOMPARE(engine.chartTitle(), QString());
        QCOMPARE(engine.chartType(), short(0));
        QCOMPARE(engine.boMes(), false);
    }

    void freeSlotsKeepWhatTheHostWrites()
    {
        EEngine engine;
        engine.setChartTitle(QStringLiteral("Ventas 'netas'"));
        engine.setChartType(-32768);
        engine.setBoMes(true);
        engine.SetConnection(&db.connection(), 3);
        engine.getScalar(QStringLiteral("SELECT 1"), &db.connection());
        QCOMPARE(engine.chartTitle(), QStringLiteral("Ventas 'netas'"));
        QCOMPARE(engine.chartType(), short(-32768));
        QCOMPARE(engine.boMes(), true);
        QVERIFY(engine.setProperty("chartType", 14));
        QCOMPARE(engine.property("chartType").toInt(), 14);
    }

    void setConnectionHandsTheConnectionToTheSearchObject()
    {
        EEngine engine;
        engine.SetConnection(&db.connection(), 12);
        QCOMPARE(engine.ADOCnn(), &db.connection());
        QCOMPARE(engine.PKUser(), 12);
        auto* search = qobject_cast<BuscadorEntidades*>(engine.Search());
        QVERIFY(search);
        QCOMPARE(search->conexion(), &db.connection());
    }

    void setConnectionWithNullStoresNullAndTheKey()
    {
        EEngine engine;
        engine.SetConnection(&db.connection(), 1);
        engine.SetConnection(nullptr, -5);
        QCOMPARE(engine.ADOCnn(), nullptr);
        QCOMPARE(engine.PKUser(), -5);
    }

    void setConnectionSurvivesASearchObjectThatRefuses()
    {
        EEngine engine;
        RecordingSearch refusing;
        refusing.refuse = true;
        engine.setSearch(&refusing);
        engine.SetConnection(&db.connection(), 8);
        QCOMPARE(refusing.calls, 1);
        QCOMPARE(engine.ADOCnn(), &db.connection());
        QCOMPARE(engine.PKUser(), 8);
    }

    void settingADOCnnDirectlyDoesNotReachTheSearchObject()
    {
        EEngine engine;
        RecordingSearch search;
        engine.setSearch(&search);
        engine.setProperty("ADOCnn", QVariant::fromValue<QObject*>(&db.connection()));
        QCOMPARE(engine.ADOCnn(), &db.connection());
        QCOMPARE(search.calls, 0);
        engine.SetConnection(&db.connection(), 1);
        QCOMPARE(search.given, &db.connection());
    }

    void setUMStoresAUserManagementObject()
    {
        EEngine engine;
        FakeUserManagement um;
        engine.SetUM(&um);
        QCOMPARE(engine.UM(), &um);
    }

    void setUMRefusesAnObjectWithoutTheInterfaceAndKeepsTheOld()
    {
        EEngine engine;
        FakeUserManagement um;
        engine.SetUM(&um);
        QObject stranger;
        try {
            engine.SetUM(&stranger);
            QFAIL("an object without the user-management interface must raise");
        } catch (const vb::AutomationError& e) {
            QCOMPARE(e.number(), 13);
        }
        QCOMPARE(engine.UM(), &um);
    }

    void valueOperationsAnswerNothing()
    {
        EEngine engine;
        QCOMPARE(engine.get_info(QStringLiteral("x"), 5), QString());
        QVERIFY(vb::isEmpty(engine.get_MainArray(QStringLiteral("x"), 5, 2, 201103)));
        QVERIFY(vb::isEmpty(engine.get_ChartArray(QStringLiteral("x"), -1, -1, -1, 32767)));
        QVERIFY(engine.get_info(QString(50000, QLatin1Char('a')), -2147483647 - 1).isEmpty());
    }

    void openRecordsetReturnsAnOpenRecordsetTheCallerOwns()
    {
        db.exec(QStringLiteral("INSERT INTO ut_bi_Tablero (uf_Nombre, uf_FK_Usuario) VALUES ('A', 1)"));
        EEngine engine;
        std::unique_ptr<QObject> rs(engine.OpenRecordset(QStringLiteral("SELECT uf_Nombre FROM ut_bi_Tablero"),
                                                         &db.connection()));
        auto* recordset = qobject_cast<ado::Recordset*>(rs.get());
        QVERIFY(recordset);
        QCOMPARE(recordset->State(), 1);
        QCOMPARE(recordset->CursorLocation(), 3);
        QCOMPARE(recordset->Fields(0).toString(), QStringLiteral("A"));
        QCOMPARE(recordset->parent(), nullptr);
    }

    void openRecordsetGivesNoneForEveryFailure()
    {
        EEngine engine;
        ado::Connection closed;
        QObject notAConnection;
        QCOMPARE(engine.OpenRecordset(QStringLiteral("SELECT * FROM nowhere"), &db.connection()), nullptr);
        QCOMPARE(engine.OpenRecordset(QStringLiteral("SELECT 1"), nullptr), nullptr);
        QCOMPARE(engine.OpenRecordset(QStringLiteral("SELECT 1"), &closed), nullptr);
        QCOMPARE(engine.OpenRecordset(QStringLiteral("SELECT 1"), &notAConnection), nullptr);
        QCOMPARE(engine.OpenRecordset(QString(), &db.connection()), nullptr);
        QCOMPARE(engine.OpenRecordset(QString(50000, QLatin1Char('\'')), &db.connection()), nullptr);
    }

    void openRecordsetOfAnUpdateRunsItAndGivesNone()
    {
        db.exec(QStringLiteral("INSERT INTO ut_bi_Tablero (uf_Nombre, uf_FK_Usuario) VALUES ('A', 1)"));
        EEngine engine;
        QCOMPARE(engine.OpenRecordset(QStringLiteral("UPDATE ut_bi_Tablero SET uf_Nombre='B'"), &db.connection()), nullptr);
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_Nombre FROM ut_bi_Tablero")).toString(), QStringLiteral("B"));
    }

    void openRecordsetOfAnEmptyResultIsOpenAndEmpty()
    {
        EEngine engine;
        std::unique_ptr<QObject> rs(engine.OpenRecordset(QStringLiteral("SELECT * FROM ut_bi_Fig"), &db.connection()));
        auto* recordset = qobject_cast<ado::Recordset*>(rs.get());
        QVERIFY(recordset);
        QVERIFY(recordset->atEnd() && recordset->atBeginning());
    }

    void getScalarOfACountOverAnEmptyTableReadsTheRow()
    {
        EEngine engine;
        const QVariant count = engine.getScalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Metrica"), &db.connection());
        QCOMPARE(count.toInt(), 0);
        QVERIFY(typeOf(count) != QMetaType::Short); // the provider's zero, not the fallback
    }

    void getScalarOfNoRowsGivesTheSixteenBitZero()
    {
        EEngine engine;
        const QVariant none = engine.getScalar(QStringLiteral("SELECT uf_Nombre FROM ut_bi_Metrica"), &db.connection());
        QCOMPARE(typeOf(none), int(QMetaType::Short));
        QCOMPARE(none.toInt(), 0);
    }

    void getScalarOfFailuresGivesTheSixteenBitZero()
    {
        EEngine engine;
        ado::Connection closed;
        for (const QVariant& v : {engine.getScalar(QStringLiteral("SELECT 1"), &closed),
                                  engine.getScalar(QStringLiteral("SELECT 1"), nullptr),
                                  engine.getScalar(QStringLiteral("SELEC oops"), &db.connection()),
                                  engine.getScalar(QStringLiteral("DELETE FROM ut_bi_Fig"), &db.connection())}) {
            QCOMPARE(typeOf(v), int(QMetaType::Short));
            QCOMPARE(v.toInt(), 0);
        }
    }

    void nullIsNullForGetScalarButZeroForFieldValue()
    {
        db.exec(QStringLiteral("INSERT INTO ut_bi_Tablero (uf_Nombre, uf_FK_Usuario) VALUES (NULL, 4)"));
        EEngine engine;
        const QString sql = QStringLiteral("SELECT uf_Nombre, uf_FK_Usuario FROM ut_bi_Tablero");
        QVERIFY(vb::isNull(engine.getScalar(sql, &db.connection())));
        std::unique_ptr<QObject> rs(engine.OpenRecordset(sql, &db.connection()));
        const QVariant name = engine.fieldValue(rs.get(), QStringLiteral("uf_nombre"));
        QCOMPARE(typeOf(name), int(QMetaType::Short));
        QCOMPARE(name.toInt(), 0);
        QCOMPARE(engine.fieldValue(rs.get(), QStringLiteral("UF_FK_USUARIO")).toInt(), 4);
    }

    void fieldValueGivesZeroForUnknownFieldEmptySetPastEndAndNone()
    {
        db.exec(QStringLiteral("INSERT INTO ut_bi_Tablero (uf_Nombre, uf_FK_Usuario) VALUES ('A', 4)"));
        EEngine engine;
        std::unique_ptr<QObject> rs(engine.OpenRecordset(QStringLiteral("SELECT * FROM ut_bi_Tablero"), &db.connection()));
        QCOMPARE(engine.fieldValue(rs.get(), QStringLiteral("uf_nada")).toInt(), 0);
        QCOMPARE(engine.fieldValue(rs.get(), QString()).toInt(), 0);
        QCOMPARE(engine.fieldValue(nullptr, QStringLiteral("uf_Nombre")).toInt(), 0);
        QObject notARecordset;
        QCOMPARE(engine.fieldValue(&notARecordset, QStringLiteral("uf_Nombre")).toInt(), 0);
        auto* recordset = qobject_cast<ado::Recordset*>(rs.get());
        QCOMPARE(engine.fieldValue(rs.get(), QStringLiteral("uf_Nombre")).toString(), QStringLiteral("A"));
        recordset->MoveNext(); // past the last row: EOF alone is true
        QVERIFY(recordset->atEnd() && !recordset->atBeginning());
        QCOMPARE(typeOf(engine.fieldValue(rs.get(), QStringLiteral("uf_Nombre"))), int(QMetaType::Short));
        QVERIFY(recordset->atEnd()); // not moved
        std::unique_ptr<QObject> empty(engine.OpenRecordset(QStringLiteral("SELECT * FROM ut_bi_Fig"), &db.connection()));
        QCOMPARE(engine.fieldValue(empty.get(), QStringLiteral("uf_Texto")).toInt(), 0);
    }

    void searchObjectDescribesAHostRow()
    {
        db.exec(QStringLiteral("CREATE TABLE IF NOT EXISTS Cliente (Sys_PK integer PRIMARY KEY, Nombre varchar(50), Ciudad varchar(50))"));
        db.exec(QStringLiteral("DELETE FROM Cliente"));
        db.exec(QStringLiteral("INSERT INTO Cliente (Sys_PK, Nombre, Ciudad) VALUES (15, 'Ana López', 'Jerez')"));
        EEngine engine;
        engine.SetConnection(&db.connection(), 1);
        auto* search = qobject_cast<Quelta*>(engine.Search());
        QCOMPARE(search->Describir(QStringLiteral("Cliente"), QStringLiteral("15"), QStringLiteral(" ")),
                 QStringLiteral("Ana López Jerez"));
        QCOMPARE(search->Describir(QStringLiteral("Cliente"), QStringLiteral("16"), QStringLiteral(" ")), QString());
        QCOMPARE(search->Describir(QStringLiteral("Cliente; DROP TABLE Cliente"), QStringLiteral("15"), QStringLiteral(" ")),
                 QString());
        QCOMPARE(search->Describir(QStringLiteral("NoSuchKind"), QStringLiteral("15"), QStringLiteral(" ")), QString());
        QCOMPARE(search->Describir(QStringLiteral("Cliente"), QStringLiteral("x"), QStringLiteral(" ")), QString());
        QCOMPARE(db.scalar(QStringLiteral("SELECT COUNT(*) FROM Cliente")).toInt(), 1);
        db.exec(QStringLiteral("DROP TABLE Cliente"));
    }
};

QTEST_GUILESS_MAIN(TstEEngine)
#include "tst_eengine.moc"
