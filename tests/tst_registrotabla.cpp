// The row component: locate, read, assign and write entity rows with bound
// parameters; new keys and GUIDs from the database side.
#include "ado/adoerrors.h"
#include "ado/connection.h"
#include "model/registrotabla.h"
#include "testdatabase.h"
#include "vb/vb.h"

#include <QRegularExpression>
#include <QTest>

namespace {

const QString Hostile = QStringLiteral("O'Brien \"quoted\" ; DROP TABLE ut_bi_Tablero; -- \\ back\\slash "
                                       "日本語 Ελληνικά العربية עברית 🙂");

} // namespace

class TstRegistroTabla : public QObject {
    Q_OBJECT

    TestDatabase db;

    std::unique_ptr<RegistroTabla> row(const QString& table)
    {
        auto reg = std::make_unique<RegistroTabla>();
        reg->setConexion(&db.connection());
        reg->setTabla(table);
        return reg;
    }

    // A dashboard row written through the component, as ETablero.Save does.
    int newDashboard(const QVariant& name, int user = 7)
    {
        auto reg = row(QStringLiteral("ut_bi_Tablero"));
        reg->DefinirCampo(QStringLiteral("uf_Nombre"), RegistroTabla::cTexto, QString(), 50);
        reg->DefinirCampo(QStringLiteral("uf_FK_Usuario"), RegistroTabla::cEntero, 0, 0);
        reg->NuevoRegistro();
        reg->Campo(QStringLiteral("uf_Nombre"), name);
        reg->Campo(QStringLiteral("uf_FK_Usuario"), user);
        return reg->Guardar() ? reg->PK() : 0;
    }

    int count(const QString& table) { return db.scalar(QStringLiteral("SELECT COUNT(*) FROM ") + table).toInt(); }

private slots:
    void initTestCase() { VBI_CREATE_TEST_DATABASE(db); }
    void init() { db.clear(); }

    void newRowGetsItsKeyRightAfterGuardar()
    {
        const int first = newDashboard(QStringLiteral("Uno"));
        const int second = newDashboard(QStringLiteral("Dos"));
        QVERIFY(first > 0);
        QVERIFY(second > 0);
        QVERIFY(first != second);
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_Nombre FROM ut_bi_Tablero WHERE Sys_PK=%1").arg(second)).toString(),
                 QStringLiteral("Dos"));
    }

    void buscarLocatesRowAndReadsColumnsCaseInsensitively()
    {
        const int pk = newDashboard(QStringLiteral("Ventas"), 42);
        auto reg = row(QStringLiteral("ut_bi_Tablero"));
        QVERIFY(reg->Buscar(pk, QString(), &db.connection(), 1));
        QCOMPARE(reg->PK(), pk);
        QCOMPARE(reg->Campo(QStringLiteral("UF_NOMBRE")).toString(), QStringLiteral("Ventas"));
        QCOMPARE(reg->Campo(QStringLiteral("uf_fk_usuario")).toInt(), 42);
        QCOMPARE(reg->Campo(QStringLiteral("sys_pk")).toInt(), pk);
    }

    void buscarOfMissingKeyIsFalse()
    {
        auto reg = row(QStringLiteral("ut_bi_Tablero"));
        QVERIFY(!reg->Buscar(987654, QString(), &db.connection(), 1));
        QCOMPARE(reg->PK(), 0);
    }

    void buscarHonoursFilterText()
    {
        const int pk = newDashboard(QStringLiteral("Ventas"), 42);
        auto reg = row(QStringLiteral("ut_bi_Tablero"));
        QVERIFY(reg->Buscar(pk, QStringLiteral("uf_FK_Usuario=42"), &db.connection(), 1));
        QVERIFY(!reg->Buscar(pk, QStringLiteral("uf_FK_Usuario=41"), &db.connection(), 1));
    }

    void unknownColumnReadRaises()
    {
        const int pk = newDashboard(QStringLiteral("x"));
        auto reg = row(QStringLiteral("ut_bi_Tablero"));
        QVERIFY(reg->Buscar(pk, QString(), &db.connection(), 1));
        try {
            reg->Campo(QStringLiteral("uf_NoExiste"));
            QFAIL("reading a missing column must raise");
        } catch (const vb::AutomationError& e) {
            QCOMPARE(e.number(), ado::ErrItemNotFound);
        }
    }

    void locatedRowIsUpdatedNotInserted()
    {
        const int pk = newDashboard(QStringLiteral("Antes"));
        auto reg = row(QStringLiteral("ut_bi_Tablero"));
        reg->DefinirCampo(QStringLiteral("uf_Nombre"), RegistroTabla::cTexto, QString(), 50);
        QVERIFY(reg->Buscar(pk, QString(), &db.connection(), 1));
        reg->Campo(QStringLiteral("uf_nombre"), QStringLiteral("Después"));
        QVERIFY(reg->Guardar());
        QCOMPARE(reg->PK(), pk);
        QCOMPARE(count(QStringLiteral("ut_bi_Tablero")), 1);
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_Nombre FROM ut_bi_Tablero")).toString(), QStringLiteral("Después"));
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_FK_Usuario FROM ut_bi_Tablero")).toInt(), 7);
    }

    void keyNotFoundNeverTurnsIntoInsert()
    {
        auto reg = row(QStringLiteral("ut_bi_Tablero"));
        reg->DefinirCampo(QStringLiteral("uf_Nombre"), RegistroTabla::cTexto, QString(), 50);
        QVERIFY(!reg->Buscar(55555, QString(), &db.connection(), 1));
        QVERIFY_THROWS_EXCEPTION(vb::AutomationError, reg->Campo(QStringLiteral("uf_Nombre"), QStringLiteral("x")));
        QVERIFY(!reg->Guardar());
        QCOMPARE(count(QStringLiteral("ut_bi_Tablero")), 0);
    }

    void rowDeletedAfterLocatingIsNotWrittenAgain()
    {
        const int pk = newDashboard(QStringLiteral("Borrado"));
        auto reg = row(QStringLiteral("ut_bi_Tablero"));
        reg->DefinirCampo(QStringLiteral("uf_Nombre"), RegistroTabla::cTexto, QString(), 50);
        QVERIFY(reg->Buscar(pk, QString(), &db.connection(), 1));
        auto other = db.openAnother();
        other->Execute(QStringLiteral("DELETE FROM ut_bi_Tablero WHERE Sys_PK=%1").arg(pk));
        reg->Campo(QStringLiteral("uf_Nombre"), QStringLiteral("Resucitado"));
        QVERIFY(!reg->Guardar());
        QCOMPARE(count(QStringLiteral("ut_bi_Tablero")), 0);
    }

    void guidIsMadeForTablesWithThatColumnOnly()
    {
        auto reg = row(QStringLiteral("ut_bi_Metrica"));
        reg->DefinirCampo(QStringLiteral("uf_Nombre"), RegistroTabla::cTexto, QString(), 50);
        reg->NuevoRegistro();
        reg->Campo(QStringLiteral("uf_Nombre"), QStringLiteral("Ventas"));
        QVERIFY(reg->Guardar());
        static const QRegularExpression windowsGuid(
            QStringLiteral("^\\{[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}\\}$"));
        QVERIFY2(windowsGuid.match(reg->GUID()).hasMatch(), qPrintable(reg->GUID()));
        QCOMPARE(db.scalar(QStringLiteral("SELECT Sys_GUID FROM ut_bi_Metrica WHERE Sys_PK=%1").arg(reg->PK())).toString(),
                 reg->GUID());
        auto again = row(QStringLiteral("ut_bi_Metrica"));
        QVERIFY(again->Buscar(reg->PK(), QString(), &db.connection(), 1));
        QCOMPARE(again->GUID(), reg->GUID());

        const int dashboard = newDashboard(QStringLiteral("sin guid"));
        auto plain = row(QStringLiteral("ut_bi_Tablero"));
        QVERIFY(plain->Buscar(dashboard, QString(), &db.connection(), 1));
        QCOMPARE(plain->GUID(), QString());
    }

    void eachNewMetricGetsADifferentGuid()
    {
        QSet<QString> seen;
        for (int i = 0; i < 5; ++i) {
            auto reg = row(QStringLiteral("ut_bi_Metrica"));
            reg->NuevoRegistro();
            QVERIFY(reg->Guardar());
            seen.insert(reg->GUID());
        }
        QCOMPARE(seen.size(), 5);
    }

    void hostileTextIsStoredExactly()
    {
        const int pk = newDashboard(Hostile.left(50));
        QVERIFY(pk > 0);
        QCOMPARE(count(QStringLiteral("ut_bi_Tablero")), 1);
        auto reg = row(QStringLiteral("ut_bi_Perspectiva"));
        reg->DefinirCampo(QStringLiteral("uf_Grupos"), RegistroTabla::cTexto, QString(), 1024);
        reg->NuevoRegistro();
        reg->Campo(QStringLiteral("uf_Grupos"), Hostile);
        QVERIFY(reg->Guardar());
        auto back = row(QStringLiteral("ut_bi_Perspectiva"));
        QVERIFY(back->Buscar(reg->PK(), QString(), &db.connection(), 1));
        QCOMPARE(back->Campo(QStringLiteral("uf_Grupos")).toString(), Hostile);
        auto dashboard = row(QStringLiteral("ut_bi_Tablero"));
        QVERIFY(dashboard->Buscar(pk, QString(), &db.connection(), 1));
        QCOMPARE(dashboard->Campo(QStringLiteral("uf_Nombre")).toString(), Hostile.left(50));
    }

    void valuesAreBoundNeverSpliced()
    {
        db.connection().setLogSql(true);
        newDashboard(QStringLiteral("'; DELETE FROM ut_bi_Tablero; --"));
        db.connection().setLogSql(false);
        const QStringList log = db.connection().executedSql();
        QCOMPARE(log.size(), 1);
        QVERIFY2(log.first().contains(QLatin1Char('?')), qPrintable(log.first()));
        QVERIFY(!log.first().contains(QLatin1String("DELETE")));
        QCOMPARE(count(QStringLiteral("ut_bi_Tablero")), 1);
    }

    void textLongerThanDeclaredIsRefusedWithNothingWritten()
    {
        QCOMPARE(newDashboard(QString(51, QLatin1Char('x'))), 0);
        QCOMPARE(newDashboard(QString(50000, QLatin1Char('y'))), 0);
        QCOMPARE(count(QStringLiteral("ut_bi_Tablero")), 0);

        const int pk = newDashboard(QStringLiteral("corto"));
        auto reg = row(QStringLiteral("ut_bi_Tablero"));
        reg->DefinirCampo(QStringLiteral("uf_Nombre"), RegistroTabla::cTexto, QString(), 50);
        reg->DefinirCampo(QStringLiteral("uf_FK_Usuario"), RegistroTabla::cEntero, 0, 0);
        QVERIFY(reg->Buscar(pk, QString(), &db.connection(), 1));
        reg->Campo(QStringLiteral("uf_FK_Usuario"), 99);
        reg->Campo(QStringLiteral("uf_Nombre"), QString(51, QLatin1Char('z')));
        QVERIFY(!reg->Guardar());
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_Nombre FROM ut_bi_Tablero")).toString(), QStringLiteral("corto"));
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_FK_Usuario FROM ut_bi_Tablero")).toInt(), 7);
    }

    void declaredLengthCountsCharactersNotBytes()
    {
        const QString fifty = QString(49, QChar(0x65E5)) + QStringLiteral("🙂"); // 50 characters
        const int pk = newDashboard(fifty);
        QVERIFY(pk > 0);
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_Nombre FROM ut_bi_Tablero")).toString(), fifty);
    }

    void declaredDefaultsFillUnassignedColumnsOfNewRow()
    {
        auto reg = row(QStringLiteral("ut_bi_Fig"));
        reg->DefinirCampo(QStringLiteral("uf_FK_Tablero"), RegistroTabla::cEntero, 0, 0);
        reg->DefinirCampo(QStringLiteral("uf_Fuente"), RegistroTabla::cTexto, QStringLiteral("Arial"), 50);
        reg->DefinirCampo(QStringLiteral("uf_Texto"), RegistroTabla::cTexto, QStringLiteral("Arial"), 255);
        reg->NuevoRegistro();
        reg->Campo(QStringLiteral("uf_FK_Tablero"), 3);
        QVERIFY(reg->Guardar());
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_Fuente FROM ut_bi_Fig")).toString(), QStringLiteral("Arial"));
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_Texto FROM ut_bi_Fig")).toString(), QStringLiteral("Arial"));
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_FK_Tablero FROM ut_bi_Fig")).toInt(), 3);
    }

    void doublesAndNullsAreWrittenAsGiven()
    {
        auto reg = row(QStringLiteral("ut_bi_TabIndicador"));
        reg->DefinirCampo(QStringLiteral("uf_l1"), RegistroTabla::cDoble, 0, 0);
        reg->DefinirCampo(QStringLiteral("uf_l2"), RegistroTabla::cDoble, 0, 0);
        reg->DefinirCampo(QStringLiteral("uf_X"), RegistroTabla::cEntero, 0, 0);
        reg->NuevoRegistro();
        reg->Campo(QStringLiteral("uf_l1"), 1234.5678);
        reg->Campo(QStringLiteral("uf_l2"), vb::Null());
        reg->Campo(QStringLiteral("uf_x"), -15);
        QVERIFY(reg->Guardar());
        auto back = row(QStringLiteral("ut_bi_TabIndicador"));
        QVERIFY(back->Buscar(reg->PK(), QString(), &db.connection(), 1));
        QCOMPARE(back->Campo(QStringLiteral("uf_L1")).toDouble(), 1234.5678);
        QVERIFY(vb::isNull(back->Campo(QStringLiteral("uf_L2"))));
        QCOMPARE(back->Campo(QStringLiteral("UF_X")).toInt(), -15);
    }

    void integerThatDoesNotFitIsRefused()
    {
        auto reg = row(QStringLiteral("ut_bi_Tablero"));
        reg->DefinirCampo(QStringLiteral("uf_FK_Usuario"), RegistroTabla::cEntero, 0, 0);
        reg->NuevoRegistro();
        reg->Campo(QStringLiteral("uf_FK_Usuario"), 1e12);
        QVERIFY(!reg->Guardar());
        QCOMPARE(count(QStringLiteral("ut_bi_Tablero")), 0);
    }

    void undeclaredUnknownColumnCannotBeAssigned()
    {
        auto reg = row(QStringLiteral("ut_bi_Tablero"));
        reg->NuevoRegistro();
        QVERIFY_THROWS_EXCEPTION(vb::AutomationError, reg->Campo(QStringLiteral("uf_Inventada"), 1));
    }

    void closedOrMissingConnectionWritesNothing()
    {
        ado::Connection closed;
        RegistroTabla reg;
        reg.setConexion(&closed);
        reg.setTabla(QStringLiteral("ut_bi_Tablero"));
        QVERIFY(!reg.Buscar(1, QString(), &closed, 1));
        reg.NuevoRegistro();
        QVERIFY(!reg.Guardar());
        RegistroTabla none;
        none.setTabla(QStringLiteral("ut_bi_Tablero"));
        none.NuevoRegistro();
        QVERIFY(!none.Guardar());
        QCOMPARE(count(QStringLiteral("ut_bi_Tablero")), 0);
    }

    void missingTableMakesGuardarFalse()
    {
        auto reg = row(QStringLiteral("ut_bi_NoHay"));
        reg->DefinirCampo(QStringLiteral("uf_Nombre"), RegistroTabla::cTexto, QString(), 50);
        QVERIFY(!reg->Buscar(1, QString(), &db.connection(), 1));
        reg->NuevoRegistro();
        reg->Campo(QStringLiteral("uf_Nombre"), QStringLiteral("x"));
        QVERIFY(!reg->Guardar());
    }

    void savingTheSameNewRowTwiceUpdatesIt()
    {
        auto reg = row(QStringLiteral("ut_bi_Tablero"));
        reg->DefinirCampo(QStringLiteral("uf_Nombre"), RegistroTabla::cTexto, QString(), 50);
        reg->NuevoRegistro();
        reg->Campo(QStringLiteral("uf_Nombre"), QStringLiteral("uno"));
        QVERIFY(reg->Guardar());
        const int pk = reg->PK();
        reg->Campo(QStringLiteral("uf_Nombre"), QStringLiteral("dos"));
        QVERIFY(reg->Guardar());
        QCOMPARE(reg->PK(), pk);
        QCOMPARE(count(QStringLiteral("ut_bi_Tablero")), 1);
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_Nombre FROM ut_bi_Tablero")).toString(), QStringLiteral("dos"));
    }
};

QTEST_GUILESS_MAIN(TstRegistroTabla)
#include "tst_registrotabla.moc"
