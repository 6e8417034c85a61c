// The perspective editor driven through the engine.
#include "dialogdriver.h"
#include "engine/eengine.h"
#include "enginefixture.h"
#include "library/dlgproppers.h"
#include "modalanswerer.h"
#include "model/eperspectiva.h"
#include "testdatabase.h"

#include <QTest>

using namespace driver;

class TstDlgPropPers : public QObject {
    Q_OBJECT

    TestDatabase db;
    EngineFixture fixture;
    EEngine* engine = nullptr;
    FakeUserManagement* um = nullptr;

    std::unique_ptr<EPerspectiva> cargar(int key)
    {
        auto p = std::make_unique<EPerspectiva>();
        p->Load(&db.connection(), key);
        return p;
    }

    int guardar(const QString& nombre, const QString& entidad, const QString& grupos, int padre)
    {
        EPerspectiva p;
        p.setNombre(nombre);
        p.setEntidadAsociada(entidad);
        p.setGrupos(grupos);
        p.setFK_Padre(padre);
        return p.Save(&db.connection()) ? p.Sys_PK() : 0;
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
        dlgPropPers dlg;
        QCOMPARE(dlg.objectName(), QStringLiteral("dlgPropPers"));
        QCOMPARE(dlg.windowTitle(), QStringLiteral("Propiedades de perspectiva"));
        QVERIFY(control<QLineEdit>(&dlg, QStringLiteral("cNombre")));
        QVERIFY(control<QLineEdit>(&dlg, QStringLiteral("cEntidad")));
        QCOMPARE(control<QAbstractButton>(&dlg, QStringLiteral("cAceptar"))->text(), QStringLiteral("&Aceptar"));
        QCOMPARE(control<QAbstractButton>(&dlg, QStringLiteral("cCancelar"))->text(), QStringLiteral("&Cancelar"));
        QStringList labels;
        for (auto* label : dlg.findChildren<QLabel*>())
            labels << label->text();
        QVERIFY(labels.contains(QStringLiteral("Nombre de perspectiva:")));
        QVERIFY(labels.contains(QStringLiteral("Entidad de datos asociada:")));
    }

    void blankEntityStoresTheNoEntityMarkerAndGroupsStar()
    {
        ModalAnswerer answerer;
        answerer.expect([](QWidget* w) {
            escribir(w, QStringLiteral("cNombre"), QStringLiteral("Ventas"));
            escribir(w, QStringLiteral("cEntidad"), QStringLiteral("   "));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        const int key = engine->Form_Agregar_Perspectiva(12);
        QVERIFY(key > 0);
        QCOMPARE(um->asked, QStringList{QStringLiteral("KZ4-TBL-05-001")});
        const auto p = cargar(key);
        QCOMPARE(p->EntidadAsociada(), QStringLiteral("@"));
        QCOMPARE(p->Grupos(), QStringLiteral("*"));
        QCOMPARE(p->FK_Padre(), 12);
        QCOMPARE(p->Nombre(), QStringLiteral("Ventas"));
    }

    void entityWithLeadingBlanksIsStoredWithThem()
    {
        ModalAnswerer answerer;
        answerer.expect([](QWidget* w) {
            escribir(w, QStringLiteral("cNombre"), QStringLiteral("  Clientes "));
            escribir(w, QStringLiteral("cEntidad"), QStringLiteral("  Cliente"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        const int key = engine->Form_Agregar_Perspectiva(0);
        const auto p = cargar(key);
        QCOMPARE(p->EntidadAsociada(), QStringLiteral("  Cliente"));
        QCOMPARE(p->Nombre(), QStringLiteral("  Clientes "));
    }

    void blankNameIsRefusedWithFocusOnTheName()
    {
        ModalAnswerer answerer;
        QString message;
        QString focus;
        answerer.expect([](QWidget* w) {
            escribir(w, QStringLiteral("cNombre"), QStringLiteral("    "));
            control<QLineEdit>(w, QStringLiteral("cEntidad"))->setFocus();
            pulsar(w, QStringLiteral("cAceptar"));
        });
        answerer.expect(ModalAnswerer::anotar(&message));
        answerer.expect([&](QWidget* w) {
            focus = foco(w);
            pulsar(w, QStringLiteral("cCancelar"));
        });
        QCOMPARE(engine->Form_Agregar_Perspectiva(0), 0);
        QCOMPARE(message, QStringLiteral("Indique el nombre de la perspectiva"));
        QCOMPARE(focus, QStringLiteral("cNombre"));
        QCOMPARE(db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Perspectiva")).toInt(), 0);
    }

    void editShowsTheMarkerAndKeepsItGroupsAndParent()
    {
        const int key = guardar(QStringLiteral("Inventario"), QStringLiteral("@"), QStringLiteral("grupo 7"), 4);
        ModalAnswerer answerer;
        QString shown;
        answerer.expect([&](QWidget* w) {
            shown = texto(w, QStringLiteral("cEntidad"));
            escribir(w, QStringLiteral("cNombre"), QStringLiteral("Almacén"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        QVERIFY(engine->Form_Editar_Perspectiva(key));
        QCOMPARE(um->asked, QStringList{QStringLiteral("KZ4-TBL-05-002")});
        QCOMPARE(shown, QStringLiteral("@"));
        const auto p = cargar(key);
        QCOMPARE(p->Nombre(), QStringLiteral("Almacén"));
        QCOMPARE(p->EntidadAsociada(), QStringLiteral("@"));
        QCOMPARE(p->Grupos(), QStringLiteral("grupo 7"));
        QCOMPARE(p->FK_Padre(), 4);
    }

    void cancelAfterAFailedSaveReturnsZero()
    {
        const int key = guardar(QStringLiteral("A"), QStringLiteral("@"), QStringLiteral("*"), 0);
        ModalAnswerer answerer;
        QString message;
        answerer.expect([&](QWidget* w) {
            db.openAnother()->Execute(QStringLiteral("DELETE FROM ut_bi_Perspectiva"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        answerer.expect(ModalAnswerer::anotar(&message));
        answerer.expect([](QWidget* w) { pulsar(w, QStringLiteral("cCancelar")); });
        QVERIFY(!engine->Form_Editar_Perspectiva(key));
        QCOMPARE(message, QStringLiteral("Error al guardar datos"));
        QCOMPARE(db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Perspectiva")).toInt(), 0);
    }

    void refusedRightOpensNothing()
    {
        um->refused = {QStringLiteral("KZ4-TBL-05-001"), QStringLiteral("KZ4-TBL-05-002")};
        ModalAnswerer answerer;
        QCOMPARE(engine->Form_Agregar_Perspectiva(0), 0);
        QVERIFY(!engine->Form_Editar_Perspectiva(1));
        QTest::qWait(50);
        QVERIFY(answerer.seen.isEmpty());
    }

    void hostileNamesRoundTripAndLongPastesAreCut()
    {
        const QString hostile = QStringLiteral("Ñoño's \"x\"; DELETE FROM ut_bi_Fig; 🙂");
        ModalAnswerer answerer;
        answerer.expect([&](QWidget* w) {
            escribir(w, QStringLiteral("cNombre"), hostile);
            escribir(w, QStringLiteral("cEntidad"), QString(50000, QLatin1Char('e')));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        const int key = engine->Form_Agregar_Perspectiva(0);
        const auto p = cargar(key);
        QCOMPARE(p->Nombre(), hostile);
        QCOMPARE(p->EntidadAsociada(), QString(50, QLatin1Char('e')));
    }
};

QTEST_MAIN(TstDlgPropPers)
#include "tst_dlgproppers.moc"
