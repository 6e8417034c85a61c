// The host window of `vbi demo`, driven as a shop manager would use it.
#include "dialogdriver.h"
#include "elementotablero.h"
#include "enginefixture.h"
#include "modalanswerer.h"
#include "schemainstaller.h"
#include "testdatabase.h"
#include "ventanademo.h"

#include <QAction>
#include <QColorDialog>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QListWidget>
#include <QTest>

using namespace driver;

class TstVentanaDemo : public QObject {
    Q_OBJECT

    TestDatabase db;
    EngineFixture fixture;

    int count(const QString& table) { return db.scalar(QStringLiteral("SELECT COUNT(*) FROM ") + table).toInt(); }

    void disparar(VentanaDemo& ventana, const char* accion)
    {
        auto* action = ventana.findChild<QAction*>(QLatin1String(accion));
        QVERIFY2(action, accion);
        action->trigger();
    }

    QList<ElementoTablero*> elementos(VentanaDemo& ventana)
    {
        QList<ElementoTablero*> result;
        for (QGraphicsItem* item : ventana.escena()->items())
            if (auto* e = dynamic_cast<ElementoTablero*>(item))
                result.append(e);
        return result;
    }

private slots:
    void initTestCase() { VBI_CREATE_TEST_DATABASE(db); }

    void init()
    {
        db.clear();
        SchemaInstaller::addDemoData(db.connection());
        fixture.preparar(db.connection());
    }

    void showsTheUsersDashboardsAndTheirItems()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        auto* lista = control<QListWidget>(&ventana, QStringLiteral("lstTableros"));
        QCOMPARE(lista->count(), 1);
        QCOMPARE(lista->item(0)->text(), QStringLiteral("Mi tablero"));
        QCOMPARE(elementos(ventana).size(), 5); // three placed indicators, two texts
        VentanaDemo otro(fixture.engine.get(), 2, db.url());
        QCOMPARE(control<QListWidget>(&otro, QStringLiteral("lstTableros"))->count(), 0);
    }

    void addsADashboardThroughTheEngine()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        ModalAnswerer answerer;
        answerer.expect([](QWidget* w) {
            escribir(w, QStringLiteral("txtNombre"), QStringLiteral("Ventas por sucursal"));
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        disparar(ventana, "actNuevoTablero");
        QCOMPARE(count(QStringLiteral("ut_bi_Tablero")), 2);
        QCOMPARE(control<QListWidget>(&ventana, QStringLiteral("lstTableros"))->currentItem()->text(),
                 QStringLiteral("Ventas por sucursal"));
        QCOMPARE(fixture.um->asked, QStringList{QStringLiteral("KZ4-TBL-01-000")});
        QVERIFY(elementos(ventana).isEmpty());
    }

    void placesAnIndicatorAndAddsAText()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        ModalAnswerer answerer;
        QString message;
        // The picker opens on the first perspective, "Inventario", whose indicator
        // is computed per product: the configuration asks for one and searches.
        answerer.expect([](QWidget* w) { pulsar(w, QStringLiteral("cmdAceptar")); });
        answerer.expect([](QWidget* w) { pulsar(w, QStringLiteral("cmdAceptar")); });
        answerer.expect(ModalAnswerer::anotar(&message));
        answerer.expect([](QWidget* w) { pulsar(w, QStringLiteral("cmdAceptar")); });
        answerer.expect([](QWidget* w) { pulsar(w, QStringLiteral("cmdAceptar")); });
        disparar(ventana, "actColocarIndicador");
        QCOMPARE(message, QStringLiteral("Debe seleccionar una entidad"));
        QCOMPARE(count(QStringLiteral("ut_bi_TabIndicador")), 4);
        QCOMPARE(db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_TabIndicador WHERE uf_FK_Entidad=1")).toInt(), 1);
        answerer.expect([](QWidget* w) {
            escribir(w, QStringLiteral("cTexto"), QStringLiteral("Objetivo: 5.000 €"));
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        disparar(ventana, "actAgregarTexto");
        QVERIFY(answerer.unexpected.isEmpty());
        QCOMPARE(db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Fig WHERE uf_Texto='Objetivo: 5.000 €'")).toInt(), 1);
        QCOMPARE(elementos(ventana).size(), 7);
    }

    void movingAnItemSavesItsPositionInTwips()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        ventana.show();
        QVERIFY(QTest::qWaitForWindowExposed(&ventana));
        ElementoTablero* figura = nullptr;
        for (ElementoTablero* e : elementos(ventana))
            if (e->esFigura() && e->entidad()->property("Texto").toString() == QLatin1String("Ventas de la semana"))
                figura = e;
        QVERIFY(figura);
        const int pk = figura->entidad()->property("Sys_PK").toInt();
        auto* vista = control<QGraphicsView>(&ventana, QStringLiteral("vistaTablero"));
        const QPoint inicio = vista->mapFromScene(figura->mapToScene(QPointF(30, 10)));
        QTest::mousePress(vista->viewport(), Qt::LeftButton, {}, inicio);
        QTest::mouseMove(vista->viewport(), inicio + QPoint(20, 30));
        QTest::mouseMove(vista->viewport(), inicio + QPoint(40, 60));
        QTest::mouseRelease(vista->viewport(), Qt::LeftButton, {}, inicio + QPoint(40, 60));
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_X FROM ut_bi_Fig WHERE Sys_PK=%1").arg(pk)).toInt(), 300 + 40 * 15);
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_Y FROM ut_bi_Fig WHERE Sys_PK=%1").arg(pk)).toInt(), 150 + 60 * 15);
    }

    void deletesTheSelectedItemAfterAsking()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        elementos(ventana).first()->setSelected(true);
        const bool figura = elementos(ventana).first()->esFigura();
        ModalAnswerer answerer;
        answerer.expect([](QWidget* w) { ModalAnswerer::press(w, QStringLiteral("Sí")); });
        disparar(ventana, "actEliminarElemento");
        QCOMPARE(count(QStringLiteral("ut_bi_TabIndicador")) + count(QStringLiteral("ut_bi_Fig")), 4);
        QCOMPARE(fixture.um->asked, QStringList{QStringLiteral("KZ4-TBL-03-000")});
        QCOMPARE(elementos(ventana).size(), 4);
        Q_UNUSED(figura);
    }

    void refusedRightLeavesTheDashboardAlone()
    {
        fixture.um->refused.insert(QStringLiteral("KZ4-TBL-04-000"));
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        ModalAnswerer answerer;
        answerer.expect([](QWidget* w) { ModalAnswerer::press(w, QStringLiteral("Sí")); });
        disparar(ventana, "actEliminarTablero");
        QCOMPARE(count(QStringLiteral("ut_bi_Tablero")), 1);
        QCOMPARE(count(QStringLiteral("ut_bi_TabIndicador")), 3);
    }
};

QTEST_MAIN(TstVentanaDemo)
#include "tst_ventanademo.moc"
