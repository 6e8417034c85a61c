// The dashboard-name editor driven through the engine.
#include "dialogdriver.h"
#include "engine/eengine.h"
#include "enginefixture.h"
#include "library/dlgtablero.h"
#include "modalanswerer.h"
#include "model/etablero.h"
#include "testdatabase.h"

#include <QTest>

using namespace driver;

class TstDlgTablero : public QObject {
    Q_OBJECT

    TestDatabase db;
    EngineFixture fixture;
    EEngine* engine = nullptr;
    FakeUserManagement* um = nullptr;

    int guardar(const QString& nombre, int usuario)
    {
        ETablero t;
        t.setNombre(nombre);
        t.setFK_Usuario(usuario);
        return t.Save(&db.connection()) ? t.Sys_PK() : 0;
    }


private slots:
    void initTestCase() { VBI_CREATE_TEST_DATABASE(db); }

    void init()
    {
        db.clear();
        fixture.preparar(db.connection());
        engine = fixture.engine.get();
        um = fixture.um.get();
    }

    void controlsAndCaptions()
    {
        dlgTablero dlg;
        QCOMPARE(dlg.objectName(), QStringLiteral("dlgTablero"));
        QCOMPARE(dlg.windowTitle(), QStringLiteral("Tablero"));
        QCOMPARE(control<QLabel>(&dlg, QStringLiteral("lblNombre"))->text(), QStringLiteral("Nombre:"));
        QVERIFY(control<QLineEdit>(&dlg, QStringLiteral("txtNombre")));
        QCOMPARE(control<QAbstractButton>(&dlg, QStringLiteral("cmdAceptar"))->text(), QStringLiteral("&Aceptar"));
        QCOMPARE(control<QAbstractButton>(&dlg, QStringLiteral("cmdCancel"))->text(), QStringLiteral("&Cancelar"));
    }

    void emojiTypedPastTheLimitAreStoredWholeNeverHalved()
    {
        const QString emoji = QStringLiteral("😀");
        ModalAnswerer answerer;
        answerer.expect([&](QWidget* w) {
            escribir(w, QStringLiteral("txtNombre"), QStringLiteral("a") + emoji.repeated(25000));
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        const int key = engine->Form_Agregar_Tablero(55);
        QVERIFY(key > 0);
        ETablero t;
        QVERIFY(t.Load(&db.connection(), key));
        QCOMPARE(t.Nombre(), QStringLiteral("a") + emoji.repeated(24));
    }

    void newDashboardBelongsToTheUserAndKeepsBlanks()
    {
        ModalAnswerer answerer;
        QString shown = QStringLiteral("?");
        answerer.expect([&](QWidget* w) {
            shown = texto(w, QStringLiteral("txtNombre"));
            escribir(w, QStringLiteral("txtNombre"), QStringLiteral("  Ventas del mes "));
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        const int key = engine->Form_Agregar_Tablero(55, QStringLiteral("Propuesto"));
        QVERIFY(key > 0);
        QCOMPARE(um->asked, QStringList{QStringLiteral("KZ4-TBL-01-000")});
        QCOMPARE(shown, QString()); // Nuevo empties the box after the host's name was put in it
        ETablero t;
        QVERIFY(t.Load(&db.connection(), key));
        QCOMPARE(t.Nombre(), QStringLiteral("  Ventas del mes "));
        QCOMPARE(t.FK_Usuario(), 55);
    }

    void blankNameIsRefusedWithInformationIconAndFocusStays()
    {
        ModalAnswerer answerer;
        QString message;
        QString focus;
        answerer.expect([](QWidget* w) {
            escribir(w, QStringLiteral("txtNombre"), QStringLiteral("   "));
            control<QPushButton>(w, QStringLiteral("cmdAceptar"))->setFocus();
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        answerer.expect(ModalAnswerer::anotar(&message));
        answerer.expect([&](QWidget* w) {
            focus = foco(w);
            pulsar(w, QStringLiteral("cmdCancel"));
        });
        QCOMPARE(engine->Form_Agregar_Tablero(1), 0);
        QCOMPARE(message, QStringLiteral("Escriba el nombre del tablero.|information"));
        QCOMPARE(focus, QStringLiteral("cmdAceptar"));
        QCOMPARE(db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Tablero")).toInt(), 0);
    }

    void editAsksThePlacingRightAndRenames()
    {
        const int key = guardar(QStringLiteral("Antiguo"), 3);
        ModalAnswerer answerer;
        QString shown;
        answerer.expect([&](QWidget* w) {
            shown = texto(w, QStringLiteral("txtNombre"));
            escribir(w, QStringLiteral("txtNombre"), QStringLiteral("Nuevo"));
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        QVERIFY(engine->Form_Editar_Tablero(key));
        QCOMPARE(um->asked, QStringList{QStringLiteral("KZ4-TBL-03-000")});
        QCOMPARE(shown, QStringLiteral("Antiguo"));
        ETablero t;
        QVERIFY(t.Load(&db.connection(), key));
        QCOMPARE(t.Nombre(), QStringLiteral("Nuevo"));
        QCOMPARE(t.FK_Usuario(), 3);
    }

    void failedSaveShowsItsExclamationAndCancelReturnsZero()
    {
        const int key = guardar(QStringLiteral("Borrado"), 3);
        ModalAnswerer answerer;
        QString message;
        answerer.expect([&](QWidget* w) {
            db.openAnother()->Execute(QStringLiteral("DELETE FROM ut_bi_Tablero"));
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        answerer.expect(ModalAnswerer::anotar(&message));
        answerer.expect([](QWidget* w) { pulsar(w, QStringLiteral("cmdCancel")); });
        QVERIFY(!engine->Form_Editar_Tablero(key));
        QCOMPARE(message, QStringLiteral("Error al guardar tablero. |exclamation"));
    }

    void refusedRightsOpenNothing()
    {
        um->refused = {QStringLiteral("KZ4-TBL-01-000"), QStringLiteral("KZ4-TBL-03-000")};
        ModalAnswerer answerer;
        QCOMPARE(engine->Form_Agregar_Tablero(1, QStringLiteral("x")), 0);
        QVERIFY(!engine->Form_Editar_Tablero(1));
        QTest::qWait(50);
        QVERIFY(answerer.seen.isEmpty());
        QCOMPARE(db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Tablero")).toInt(), 0);
    }

    void closeBoxActsAsCancel()
    {
        ModalAnswerer answerer;
        answerer.expect([](QWidget* w) {
            escribir(w, QStringLiteral("txtNombre"), QStringLiteral("x"));
            QTest::keyClick(w, Qt::Key_Escape);
        });
        QCOMPARE(engine->Form_Agregar_Tablero(1), 0);
        QCOMPARE(db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Tablero")).toInt(), 0);
    }
};

QTEST_MAIN(TstDlgTablero)
#include "tst_dlgtablero.moc"
