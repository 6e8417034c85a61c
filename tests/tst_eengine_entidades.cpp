// The engine's entity factory, save by name and cascade deletes with their rights.
#include "ado/connection.h"
#include "engine/eengine.h"
#include "enginefixture.h"
#include "model/efigura.h"
#include "model/eindicador.h"
#include "model/emetrica.h"
#include "model/eperspectiva.h"
#include "model/etabindicador.h"
#include "model/etablero.h"
#include "model/vendimarbi.h"
#include "modalanswerer.h"
#include "schemainstaller.h"
#include "testdatabase.h"
#include "vb/vb.h"

#include <QMessageBox>
#include <QTest>
#include <memory>

using namespace VendimarBI;

namespace {

// An object with no Save member at all.
class SinGuardar : public QObject {
    Q_OBJECT
};

// Any object with a Save(cnx) member is accepted.
class ConGuardar : public QObject {
    Q_OBJECT
public:
    Q_INVOKABLE bool Save(QObject* cnx)
    {
        given = cnx;
        return answer;
    }
    QObject* given = nullptr;
    bool answer = true;
};

} // namespace

class TstEEngineEntidades : public QObject {
    Q_OBJECT

    TestDatabase db;
    EngineFixture fixture;
    EEngine* engine = nullptr;
    FakeUserManagement* um = nullptr;

    int count(const QString& table, const QString& where = QString())
    {
        return db.scalar(QStringLiteral("SELECT COUNT(*) FROM %1%2").arg(table, where.isEmpty() ? QString() : QStringLiteral(" WHERE ") + where))
            .toInt();
    }

    QStringList log()
    {
        const QStringList statements = db.connection().executedSql();
        db.connection().clearLog();
        return statements;
    }

    // An indicator with rows in every configuration table and a placement on a dashboard.
    int arrangeIndicator()
    {
        db.exec(QStringLiteral("INSERT INTO ut_bi_Indicador (uf_Nombre, uf_Tipo, uf_FK_Perspectiva) VALUES ('I', 1, 1)"));
        const int pk = db.scalar(QStringLiteral("SELECT MAX(Sys_PK) FROM ut_bi_Indicador")).toInt();
        for (const char* table : {"ut_bi_BarraProg", "ut_bi_Semaforo", "ut_bi_MatrizGraf"})
            db.exec(QStringLiteral("INSERT INTO %1 (uf_FK_Indicador) VALUES (%2)").arg(QLatin1String(table)).arg(pk));
        db.exec(QStringLiteral("INSERT INTO ut_bi_TabIndicador (uf_FK_Tablero, uf_FK_Indicador) VALUES (1, %1)").arg(pk));
        return pk;
    }

    int arrangeDashboard()
    {
        db.exec(QStringLiteral("INSERT INTO ut_bi_Tablero (uf_Nombre, uf_FK_Usuario) VALUES ('T', 1)"));
        const int pk = db.scalar(QStringLiteral("SELECT MAX(Sys_PK) FROM ut_bi_Tablero")).toInt();
        db.exec(QStringLiteral("INSERT INTO ut_bi_TabIndicador (uf_FK_Tablero, uf_FK_Indicador) VALUES (%1, 1)").arg(pk));
        db.exec(QStringLiteral("INSERT INTO ut_bi_TabIndicador (uf_FK_Tablero, uf_FK_Indicador) VALUES (%1, 2)").arg(pk));
        db.exec(QStringLiteral("INSERT INTO ut_bi_Fig (uf_FK_Tablero, uf_Texto) VALUES (%1, 'x')").arg(pk));
        db.exec(QStringLiteral("INSERT INTO ut_bi_Fig (uf_FK_Tablero, uf_Texto) VALUES (%1, 'otro')").arg(pk + 1000));
        return pk;
    }

private slots:
    void initTestCase() { VBI_CREATE_TEST_DATABASE(db); }

    void init()
    {
        db.clear();
        fixture.preparar(db.connection());
        engine = fixture.engine.get();
        um = fixture.um.get();
        db.connection().setLogSql(true);
        db.connection().clearLog();
    }

    void cleanup() { db.connection().setLogSql(false); }

    void crearEntidadMakesTheClassOfEachKind()
    {
        const QList<QPair<int, const char*>> kinds{{cPerspectiva, "EPerspectiva"}, {cMetrica, "EMetrica"},
                                                  {cIndicador, "EIndicador"},     {cTablero, "ETablero"},
                                                  {ctabindicador, "ETabIndicador"}, {cFigura, "EFigura"}};
        for (const auto& [kind, className] : kinds) {
            std::unique_ptr<QObject> o(engine->CrearEntidad(kind));
            QVERIFY(o);
            QCOMPARE(o->metaObject()->className(), className);
            QCOMPARE(o->parent(), nullptr);
            QCOMPARE(o->property("Sys_PK").toInt(), 0);
        }
        std::unique_ptr<QObject> indicator(engine->CrearEntidad(cIndicador));
        QCOMPARE(indicator->property("Tipo").toInt(), 1);
    }

    void crearEntidadOfAnUnknownKindGivesNone()
    {
        for (int kind : {0, 7, -1, 2147483647})
            QCOMPARE(engine->CrearEntidad(kind), nullptr);
    }

    void cargarEntidadOfAnUnknownKindRaises()
    {
        QVERIFY_THROWS_EXCEPTION(vb::AutomationError, engine->CargarEntidad(7, 1));
        QVERIFY_THROWS_EXCEPTION(vb::AutomationError, engine->CargarEntidad(0, 1));
    }

    void cargarEntidadOfAMissingRowGivesNone()
    {
        QCOMPARE(engine->CargarEntidad(cMetrica, 123456), nullptr);
        QCOMPARE(engine->CargarEntidad(cPerspectiva, 0), nullptr);
    }

    void cargarEntidadLoadsEveryKind()
    {
        EMetrica m;
        m.setNombre(QStringLiteral("Ventas"));
        QVERIFY(engine->GuardarEntidad(&m));
        std::unique_ptr<QObject> loaded(engine->CargarEntidad(cMetrica, m.Sys_PK()));
        QVERIFY(loaded);
        QCOMPARE(loaded->property("Nombre").toString(), QStringLiteral("Ventas"));
        QCOMPARE(loaded->property("Sys_PK").toInt(), m.Sys_PK());
        EFigura f;
        f.setTexto(QStringLiteral("Hola"));
        QVERIFY(engine->GuardarEntidad(&f));
        std::unique_ptr<QObject> figure(engine->CargarEntidad(cFigura, f.Sys_PK()));
        QVERIFY(figure);
        QCOMPARE(figure->property("Texto").toString(), QStringLiteral("Hola"));
    }

    void cargarEntidadWithoutConnectionGivesNone()
    {
        EEngine bare;
        QCOMPARE(bare.CargarEntidad(cMetrica, 1), nullptr);
    }

    void guardarEntidadCallsSaveByNameWithTheConnection()
    {
        ConGuardar any;
        QVERIFY(engine->GuardarEntidad(&any));
        QCOMPARE(any.given, &db.connection());
        any.answer = false;
        QVERIFY(!engine->GuardarEntidad(&any));
    }

    void guardarEntidadOfAnObjectWithoutSaveRaises438()
    {
        SinGuardar none;
        try {
            engine->GuardarEntidad(&none);
            QFAIL("must raise");
        } catch (const vb::AutomationError& e) {
            QCOMPARE(e.number(), 438);
        }
        QVERIFY_THROWS_EXCEPTION(vb::AutomationError, engine->GuardarEntidad(nullptr));
    }

    void guardarEntidadAnswersTheEntitysOwnResult()
    {
        EMetrica m;
        m.setNombre(QString(51, QLatin1Char('x')));
        QVERIFY(!engine->GuardarEntidad(&m));
        QCOMPARE(count(QStringLiteral("ut_bi_Metrica")), 0);
    }

    void eliminarEntidadOfAnUnknownKindIsTrueAndDoesNothing()
    {
        QVERIFY(engine->EliminarEntidad(9, 5));
        QVERIFY(engine->EliminarEntidad(0, 5));
        QVERIFY(engine->EliminarEntidad(-3, 5));
        QVERIFY(log().isEmpty());
        QVERIFY(um->asked.isEmpty());
    }

    void eliminarEntidadAsksTheKindsRightAndRunsItsStatements_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("right");
        QTest::addColumn<QStringList>("statements");
        QTest::newRow("perspectiva") << int(cPerspectiva) << QStringLiteral("KZ4-TBL-05-003")
                                     << QStringList{QStringLiteral("DELETE FROM ut_bi_Perspectiva WHERE Sys_PK=%1")};
        QTest::newRow("metrica") << int(cMetrica) << QStringLiteral("KZ4-TBL-05-006")
                                 << QStringList{QStringLiteral("DELETE FROM ut_bi_Metrica WHERE Sys_PK=%1")};
        QTest::newRow("indicador") << int(cIndicador) << QStringLiteral("KZ4-TBL-06-003")
                                   << QStringList{QStringLiteral("DELETE FROM ut_bi_Semaforo WHERE uf_FK_Indicador=%1"),
                                                  QStringLiteral("DELETE FROM ut_bi_MatrizGraf WHERE uf_FK_Indicador=%1"),
                                                  QStringLiteral("DELETE FROM ut_bi_BarraProg WHERE uf_FK_Indicador=%1"),
                                                  QStringLiteral("DELETE FROM ut_bi_Indicador WHERE Sys_PK=%1")};
        QTest::newRow("tablero") << int(cTablero) << QStringLiteral("KZ4-TBL-04-000")
                                 << QStringList{QStringLiteral("DELETE FROM ut_bi_TabIndicador WHERE uf_FK_Tablero=%1"),
                                                QStringLiteral("DELETE FROM ut_bi_Fig WHERE uf_FK_Tablero=%1"),
                                                QStringLiteral("DELETE FROM ut_bi_Tablero WHERE Sys_PK=%1")};
        QTest::newRow("tabindicador") << int(ctabindicador) << QStringLiteral("KZ4-TBL-03-000")
                                      << QStringList{QStringLiteral("DELETE FROM ut_bi_TabIndicador WHERE Sys_PK=%1")};
        QTest::newRow("figura") << int(cFigura) << QStringLiteral("KZ4-TBL-03-000")
                                << QStringList{QStringLiteral("DELETE FROM ut_bi_Fig WHERE Sys_PK=%1")};
    }
    void eliminarEntidadAsksTheKindsRightAndRunsItsStatements()
    {
        QFETCH(int, kind);
        QFETCH(QString, right);
        QFETCH(QStringList, statements);
        for (int key : {42, -7}) {
            um->asked.clear();
            um->flags.clear();
            QVERIFY(engine->EliminarEntidad(kind, key));
            QCOMPARE(um->asked, QStringList{right});
            QCOMPARE(um->flags, QList<bool>{true});
            QStringList expected;
            for (const QString& s : statements)
                expected.append(s.arg(key));
            QCOMPARE(log(), expected);
        }
    }

    void eliminarEntidadWithTheRightRefusedDeletesNothing()
    {
        const int pk = arrangeIndicator();
        um->refused.insert(QStringLiteral("KZ4-TBL-06-003"));
        QVERIFY(!engine->EliminarEntidad(cIndicador, pk));
        QVERIFY(log().isEmpty());
        QCOMPARE(count(QStringLiteral("ut_bi_Indicador")), 1);
        QCOMPARE(count(QStringLiteral("ut_bi_Semaforo")), 1);
    }

    void eliminarEntidadWithoutUserManagementIsFalse()
    {
        EEngine bare;
        bare.SetConnection(&db.connection(), 1);
        QVERIFY(!bare.EliminarEntidad(cMetrica, 1));
        QVERIFY(log().isEmpty());
    }

    void deletingAnIndicatorClearsEveryConfigurationButKeepsPlacements()
    {
        const int pk = arrangeIndicator();
        db.exec(QStringLiteral("DELETE FROM ut_bi_Semaforo"));
        db.exec(QStringLiteral("DELETE FROM ut_bi_MatrizGraf"));
        QVERIFY(engine->EliminarEntidad(cIndicador, pk));
        QCOMPARE(log().size(), 4);
        QCOMPARE(count(QStringLiteral("ut_bi_Indicador")), 0);
        QCOMPARE(count(QStringLiteral("ut_bi_BarraProg")), 0);
        QCOMPARE(count(QStringLiteral("ut_bi_TabIndicador")), 1);
    }

    void deletingAPerspectiveOrMetricLeavesWhatRefersToIt()
    {
        db.exec(QStringLiteral("INSERT INTO ut_bi_Perspectiva (uf_Nombre, uf_padre) VALUES ('P', 0)"));
        const int p = db.scalar(QStringLiteral("SELECT Sys_PK FROM ut_bi_Perspectiva")).toInt();
        db.exec(QStringLiteral("INSERT INTO ut_bi_Perspectiva (uf_Nombre, uf_padre) VALUES ('Hija', %1)").arg(p));
        db.exec(QStringLiteral("INSERT INTO ut_bi_Metrica (uf_Nombre, uf_FK_Perspectiva) VALUES ('M', %1)").arg(p));
        const int m = db.scalar(QStringLiteral("SELECT Sys_PK FROM ut_bi_Metrica")).toInt();
        db.exec(QStringLiteral("INSERT INTO ut_bi_Semaforo (uf_FK_Indicador, uf_FK_Metrica) VALUES (1, %1)").arg(m));
        QVERIFY(engine->EliminarEntidad(cPerspectiva, p));
        QCOMPARE(count(QStringLiteral("ut_bi_Perspectiva")), 1);
        QCOMPARE(count(QStringLiteral("ut_bi_Metrica")), 1);
        QVERIFY(engine->EliminarEntidad(cMetrica, m));
        QCOMPARE(count(QStringLiteral("ut_bi_Metrica")), 0);
        QCOMPARE(count(QStringLiteral("ut_bi_Semaforo"), QStringLiteral("uf_FK_Metrica=%1").arg(m)), 1);
    }

    void aFailingStatementEndsTheCascadeAndEarlierDeletionsStay()
    {
        const int pk = arrangeIndicator();
        db.exec(QStringLiteral("DROP TABLE ut_bi_MatrizGraf"));
        const bool deleted = engine->EliminarEntidad(cIndicador, pk);
        const QStringList ran = log();
        SchemaInstaller::apply(db.connection());
        QVERIFY(!deleted);
        QCOMPARE(ran, QStringList({QStringLiteral("DELETE FROM ut_bi_Semaforo WHERE uf_FK_Indicador=%1").arg(pk),
                                   QStringLiteral("DELETE FROM ut_bi_MatrizGraf WHERE uf_FK_Indicador=%1").arg(pk)}));
        QCOMPARE(count(QStringLiteral("ut_bi_Semaforo")), 0);
        QCOMPARE(count(QStringLiteral("ut_bi_BarraProg")), 1);
        QCOMPARE(count(QStringLiteral("ut_bi_Indicador")), 1);
    }

    void eliminarObjetosTableroKeepsTheDashboardRow()
    {
        const int pk = arrangeDashboard();
        engine->EliminarObjetosTablero(pk);
        QCOMPARE(log(), QStringList({QStringLiteral("DELETE FROM ut_bi_TabIndicador WHERE uf_FK_Tablero=%1").arg(pk),
                                     QStringLiteral("DELETE FROM ut_bi_Fig WHERE uf_FK_Tablero=%1").arg(pk)}));
        QCOMPARE(count(QStringLiteral("ut_bi_Tablero")), 1);
        QCOMPARE(count(QStringLiteral("ut_bi_TabIndicador")), 0);
        QCOMPARE(count(QStringLiteral("ut_bi_Fig")), 1); // another dashboard's figure
        QVERIFY(um->asked.isEmpty());
    }

    void eliminarObjetosTableroSkipsAFailingStatement()
    {
        const int pk = arrangeDashboard();
        db.exec(QStringLiteral("DROP TABLE ut_bi_TabIndicador"));
        engine->EliminarObjetosTablero(pk);
        SchemaInstaller::apply(db.connection());
        QCOMPARE(count(QStringLiteral("ut_bi_Fig"), QStringLiteral("uf_FK_Tablero=%1").arg(pk)), 0);
        EEngine bare;
        bare.EliminarObjetosTablero(pk); // no connection: nothing happens, nothing raised
    }

    void eliminarTableroAnsweredNoDoesNothingAndAsksNoRight()
    {
        const int pk = arrangeDashboard();
        ModalAnswerer answerer;
        QString icon;
        answerer.expect([&](QWidget* w) {
            auto* box = qobject_cast<QMessageBox*>(w);
            icon = box && box->icon() == QMessageBox::Question ? QStringLiteral("question") : QStringLiteral("other");
            ModalAnswerer::press(w, QStringLiteral("No"));
        });
        QVERIFY(!engine->EliminarTablero(pk));
        QVERIFY(answerer.allAnswered());
        QCOMPARE(answerer.seen,
                 QStringList{QStringLiteral("MsgBox|VendimarBI|¿Está seguro que desea eliminar el tablero seleccionado?")});
        QCOMPARE(icon, QStringLiteral("question"));
        QVERIFY(um->asked.isEmpty());
        QVERIFY(log().isEmpty());
        QCOMPARE(count(QStringLiteral("ut_bi_Tablero")), 1);
    }

    void eliminarTableroClosedWithoutAnswerIsNo()
    {
        const int pk = arrangeDashboard();
        ModalAnswerer answerer;
        answerer.expect([](QWidget* w) { QTest::keyClick(w, Qt::Key_Escape); });
        QVERIFY(!engine->EliminarTablero(pk));
        QCOMPARE(count(QStringLiteral("ut_bi_Tablero")), 1);
    }

    void eliminarTableroDefaultsToNo()
    {
        const int pk = arrangeDashboard();
        ModalAnswerer answerer;
        answerer.expect([](QWidget* w) { QTest::keyClick(w, Qt::Key_Return); });
        QVERIFY(!engine->EliminarTablero(pk));
        QCOMPARE(count(QStringLiteral("ut_bi_Tablero")), 1);
    }

    void eliminarTableroAnsweredYesWithTheRightRefusedIsFalse()
    {
        const int pk = arrangeDashboard();
        um->refused.insert(QStringLiteral("KZ4-TBL-04-000"));
        ModalAnswerer answerer;
        answerer.expect([](QWidget* w) { ModalAnswerer::press(w, QStringLiteral("Sí")); });
        QVERIFY(!engine->EliminarTablero(pk));
        QCOMPARE(um->asked, QStringList{QStringLiteral("KZ4-TBL-04-000")});
        QCOMPARE(count(QStringLiteral("ut_bi_Tablero")), 1);
    }

    void eliminarTableroAnsweredYesDeletesTheDashboardAndItsContents()
    {
        const int pk = arrangeDashboard();
        ModalAnswerer answerer;
        answerer.expect([](QWidget* w) { ModalAnswerer::press(w, QStringLiteral("Sí")); });
        QVERIFY(engine->EliminarTablero(pk));
        QCOMPARE(count(QStringLiteral("ut_bi_Tablero")), 0);
        QCOMPARE(count(QStringLiteral("ut_bi_TabIndicador")), 0);
        QCOMPARE(count(QStringLiteral("ut_bi_Fig")), 1);
    }
};

QTEST_MAIN(TstEEngineEntidades)
#include "tst_eengine_entidades.moc"
