// The host window of `vbi demo`, driven as a shop manager would use it.
#include "ajustesprueba.h"
#include "dialogdriver.h"
#include "elementotablero.h"
#include "enginefixture.h"
#include "modalanswerer.h"
#include "model/efigura.h"
#include "model/vendimarbi.h"
#include "render/dibujobarra.h"
#include "render/piezatablero.h"
#include "schemainstaller.h"
#include "testdatabase.h"
#include "ventanademo.h"
#include "ventanadriver.h"

#include <QAction>
#include <QColorDialog>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QListWidget>
#include <QGraphicsTextItem>
#include <QLabel>
#include <QSettings>
#include <QSplitter>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QDialog>
#include <QMenu>
#include <QMessageBox>
#include <QTimer>
#include <QApplication>
#include <QContextMenuEvent>
#include <QScrollBar>
#include <QFontMetricsF>
#include <QPainter>
#include <QStyleOptionGraphicsItem>
#include <QTest>
#include <algorithm>

using namespace driver;

class TstVentanaDemo : public QObject {
    Q_OBJECT

    TestDatabase db;
    EngineFixture fixture;
    AjustesPrueba ajustes;

    int count(const QString& table) { return db.scalar(QStringLiteral("SELECT COUNT(*) FROM ") + table).toInt(); }

    void disparar(VentanaDemo& ventana, const char* accion)
    {
        auto* action = ventana.findChild<QAction*>(QLatin1String(accion));
        QVERIFY2(action, accion);
        action->trigger();
    }

    ElementoTablero* figuraCon(VentanaDemo& ventana, const QString& texto)
    {
        for (ElementoTablero* e : elementos(ventana))
            if (e->esFigura() && e->entidad()->property("Texto").toString() == texto)
                return e;
        return nullptr;
    }

    QVariantList geometriaGuardada(const char* tabla, int pk)
    {
        QVariantList result;
        for (const char* campo : {"uf_X", "uf_Y", "uf_W", "uf_H"})
            result.append(db.scalar(QStringLiteral("SELECT %1 FROM %2 WHERE Sys_PK=%3")
                                        .arg(QLatin1String(campo), QLatin1String(tabla))
                                        .arg(pk))
                              .toInt());
        return result;
    }

    // Every item the window shows, as stored, in pixels of the layout.
    QList<QRectF> rectangulosGuardados(VentanaDemo& ventana)
    {
        QList<QRectF> result;
        for (ElementoTablero* e : elementos(ventana)) {
            const QVariantList g = geometriaGuardada(e->esFigura() ? "ut_bi_Fig" : "ut_bi_TabIndicador",
                                                     e->entidad()->property("Sys_PK").toInt());
            result.append(QRectF(g[0].toInt() / 15.0, g[1].toInt() / 15.0, g[2].toInt() / 15.0, g[3].toInt() / 15.0));
        }
        return result;
    }

    // Presses at a point of an item and drags by a distance, as a mouse would.
    void arrastrar(VentanaDemo& ventana, ElementoTablero* elemento, QPointF desde, QPoint distancia)
    {
        auto* vista = control<QGraphicsView>(&ventana, QStringLiteral("vistaTablero"));
        const QPoint inicio = vista->mapFromScene(elemento->mapToScene(desde));
        QTest::mousePress(vista->viewport(), Qt::LeftButton, {}, inicio);
        QTest::mouseMove(vista->viewport(), inicio + distancia / 2);
        QTest::mouseMove(vista->viewport(), inicio + distancia);
        QTest::mouseRelease(vista->viewport(), Qt::LeftButton, {}, inicio + distancia);
    }

    // Right-clicks a point of the page; enMenu is given the menu that opens, and must close it.
    void menuContextual(VentanaDemo& ventana, QPointF punto, std::function<void(QMenu*)> enMenu)
    {
        auto* vista = control<QGraphicsView>(&ventana, QStringLiteral("vistaTablero"));
        const QPoint local = vista->mapFromScene(punto);
        bool abierto = false;
        QTimer::singleShot(50, [&] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            abierto = menu != nullptr;
            if (menu)
                enMenu(menu);
        });
        QContextMenuEvent evento(QContextMenuEvent::Mouse, local, vista->viewport()->mapToGlobal(local));
        QApplication::sendEvent(vista->viewport(), &evento);
        QVERIFY(abierto);
    }

    static void elegir(QMenu* menu, const char* accion)
    {
        for (QAction* a : menu->actions())
            if (a->objectName() == QLatin1String(accion))
                menu->setActiveAction(a);
        QTest::keyClick(menu, Qt::Key_Return);
    }

    // The layout view with the keyboard's focus, an item selected by Tab.
    QGraphicsView* enfocarVista(VentanaDemo& ventana)
    {
        auto* vista = control<QGraphicsView>(&ventana, QStringLiteral("vistaTablero"));
        vista->setFocus();
        QTest::keyClick(vista, Qt::Key_Tab);
        return vista;
    }

    // What the window system does when a dialog closes: the window is active again, its focus back.
    static void devolverFoco(VentanaDemo& ventana, QWidget* enfocado)
    {
        ventana.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&ventana));
        enfocado->setFocus();
    }

    static void mostrar(VentanaDemo& ventana)
    {
        ventana.show();
        QVERIFY(QTest::qWaitForWindowExposed(&ventana));
    }

    static QImage pintar(ElementoTablero& elemento)
    {
        QImage imagen(elemento.boundingRect().size().toSize(), QImage::Format_ARGB32);
        imagen.fill(Qt::white);
        QPainter painter(&imagen);
        painter.translate(1, 1);
        QStyleOptionGraphicsItem opcion;
        elemento.paint(&painter, &opcion, nullptr);
        return imagen;
    }

private slots:
    void initTestCase()
    {
        VBI_CREATE_TEST_DATABASE(db);
        QVERIFY(ajustes.preparar());
        QCoreApplication::setOrganizationName(QStringLiteral("VendimarBI"));
        QCoreApplication::setApplicationName(QStringLiteral("tst_ventanademo"));
    }

    void init()
    {
        QSettings().clear();
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

    void placedIndicatorsAreDrawnAsTheirKindWithSampleValues()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        QList<int> tipos;
        for (ElementoTablero* e : elementos(ventana)) {
            if (e->esFigura())
                continue;
            QVERIFY(e->pieza());
            QVERIFY(e->pieza()->averia().isEmpty());
            QVERIFY(e->pieza()->esMuestra());
            tipos.append(e->pieza()->tipo());
        }
        std::sort(tipos.begin(), tipos.end());
        QCOMPARE(tipos, (QList<int>{VendimarBI::cBarraProgreso, VendimarBI::cMatrizGrafico, VendimarBI::cSemaforo}));
        // Each opens on its placement's period: month, week and day.
        QCOMPARE(indicadorDeTipo(ventana, VendimarBI::cBarraProgreso)->pieza()->periodo(), int(VendimarBI::cMes));
        QCOMPARE(indicadorDeTipo(ventana, VendimarBI::cMatrizGrafico)->pieza()->periodo(), int(VendimarBI::cSemana));
        QCOMPARE(indicadorDeTipo(ventana, VendimarBI::cSemaforo)->pieza()->periodos(),
                 (QList<int>{VendimarBI::cDia, VendimarBI::cMes}));
    }

    void clickingAPeriodTabSwitchesThatTileOnly()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        ventana.show();
        QVERIFY(QTest::qWaitForWindowExposed(&ventana));
        ElementoTablero* barra = indicadorDeTipo(ventana, VendimarBI::cBarraProgreso);
        ElementoTablero* matriz = indicadorDeTipo(ventana, VendimarBI::cMatrizGrafico);
        QVERIFY(barra && matriz);
        const double maximoMes = barra->pieza()->barra().maximo();
        auto* vista = control<QGraphicsView>(&ventana, QStringLiteral("vistaTablero"));
        const QPoint dia = pestana(ventana, barra, VendimarBI::cDia);
        QVERIFY(dia.x() >= 0);
        QTest::mouseClick(vista->viewport(), Qt::LeftButton, {}, dia);
        QCOMPARE(barra->pieza()->periodo(), int(VendimarBI::cDia));
        QCOMPARE(barra->pieza()->barra().maximo(), 5000.0);
        QVERIFY(maximoMes != 5000.0);
        QCOMPARE(matriz->pieza()->periodo(), int(VendimarBI::cSemana));
        // A click on a tab neither moves, selects nor saves the item.
        QVERIFY(!barra->isSelected());
        QCOMPARE(barra->pos(), QPointF(20, 70));
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_pinicial FROM ut_bi_TabIndicador WHERE uf_X=300 AND uf_Y=1050")).toInt(), 2);
        QTest::mouseDClick(vista->viewport(), Qt::LeftButton, {}, pestana(ventana, barra, VendimarBI::cAno));
        QCOMPARE(barra->pieza()->periodo(), int(VendimarBI::cAno));
    }

    void plainBoxesOnRequest()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        disparar(ventana, "actVerCajas");
        QCOMPARE(elementos(ventana).size(), 5);
        for (ElementoTablero* e : elementos(ventana))
            QVERIFY(!e->pieza());
        disparar(ventana, "actVerCajas");
        QVERIFY(indicadorDeTipo(ventana, VendimarBI::cSemaforo));
    }

    void figuresAreDrawnWithoutTheirUnderline()
    {
        EFigura lisa;
        lisa.setTexto(QStringLiteral("Objetivo del mes"));
        lisa.setFuente(QStringLiteral("DejaVu Sans"));
        lisa.setTam_fuente(14);
        lisa.setW(3000);
        lisa.setH(600);
        lisa.setColorFondo(0xFFFFFF);
        EFigura subrayada;
        EFigura negrita;
        for (EFigura* f : {&subrayada, &negrita})
            for (const char* p : {"Texto", "Fuente", "Tam_fuente", "W", "H", "ColorFondo"})
                f->setProperty(p, lisa.property(p));
        subrayada.setSubrayado(true);
        negrita.setNegrita(true);
        ElementoTablero a(&lisa, QString());
        ElementoTablero b(&subrayada, QString());
        ElementoTablero c(&negrita, QString());
        QCOMPARE(pintar(b), pintar(a));
        QVERIFY(pintar(c) != pintar(a));
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
        // Both are taken back, the text first.
        disparar(ventana, "actDeshacer");
        disparar(ventana, "actDeshacer");
        QCOMPARE(count(QStringLiteral("ut_bi_TabIndicador")), 3);
        QCOMPARE(count(QStringLiteral("ut_bi_Fig")), 2);
        disparar(ventana, "actRehacer");
        QCOMPARE(db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_TabIndicador WHERE uf_FK_Entidad=1")).toInt(), 1);
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

    void newTextsGoToFreeSpotsOfTheVisiblePageInAFittingSize()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        mostrar(ventana);
        ModalAnswerer answerer;
        for (const QString& texto : {QStringLiteral("Objetivo del mes"), QStringLiteral("Ventas acumuladas del año")}) {
            answerer.expect([texto](QWidget* w) {
                escribir(w, QStringLiteral("cTexto"), texto);
                pulsar(w, QStringLiteral("cmdAceptar"));
            });
            disparar(ventana, "actAgregarTexto");
        }
        QVERIFY(answerer.unexpected.isEmpty());
        QCOMPARE(count(QStringLiteral("ut_bi_TabIndicador")) + count(QStringLiteral("ut_bi_Fig")), 7);
        const QList<QRectF> guardados = rectangulosGuardados(ventana);
        QCOMPARE(guardados.size(), 7);
        const QRectF pagina(0, 0, 667, 467);
        for (qsizetype i = 0; i < guardados.size(); ++i) {
            QVERIFY(pagina.contains(guardados[i]));
            // The sample dashboard's own items do not overlap, so no two of them may.
            for (qsizetype j = i + 1; j < guardados.size(); ++j)
                QVERIFY2(!guardados[i].intersects(guardados[j]), qPrintable(QStringLiteral("%1 and %2").arg(i).arg(j)));
        }
        auto* vista = control<QGraphicsView>(&ventana, QStringLiteral("vistaTablero"));
        const QRectF visible = vista->mapToScene(vista->viewport()->rect()).boundingRect();
        ElementoTablero* largo = figuraCon(ventana, QStringLiteral("Ventas acumuladas del año"));
        QVERIFY(largo);
        QVERIFY(visible.contains(largo->sceneBoundingRect().adjusted(1, 1, -1, -1)));
        QFont fuente(largo->entidad()->property("Fuente").toString());
        fuente.setPointSize(qMax(1, largo->entidad()->property("Tam_fuente").toInt()));
        const qreal ancho = largo->entidad()->property("W").toInt() / 15.0;
        QVERIFY(ancho >= QFontMetricsF(fuente).horizontalAdvance(QStringLiteral("Ventas acumuladas del año")) + 4);
        QVERIFY(ancho < 300);
    }

    void draggingAnItemOffThePageKeepsItOnIt()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        mostrar(ventana);
        ElementoTablero* nota = figuraCon(ventana, QStringLiteral("Datos al cierre del día"));
        QVERIFY(nota);
        const int pk = nota->entidad()->property("Sys_PK").toInt();
        arrastrar(ventana, nota, QPointF(30, 10), QPoint(600, 400));
        // 180 × 30 pixels at the page's lower right corner, 667 × 467.
        QCOMPARE(geometriaGuardada("ut_bi_Fig", pk), (QVariantList{487 * 15, 437 * 15, 2700, 450}));
        arrastrar(ventana, nota, QPointF(30, 10), QPoint(-900, -900));
        QCOMPARE(geometriaGuardada("ut_bi_Fig", pk), (QVariantList{0, 0, 2700, 450}));
    }

    void resizingPastThePageEndsAtItsEdge()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        mostrar(ventana);
        ElementoTablero* semaforo = indicadorDeTipo(ventana, VendimarBI::cSemaforo);
        QVERIFY(semaforo);
        const int pk = semaforo->entidad()->property("Sys_PK").toInt();
        arrastrar(ventana, semaforo, QPointF(178, 238), QPoint(500, 500));
        // Standing at 360, 70 it may reach the page's edge and no further.
        QCOMPARE(geometriaGuardada("ut_bi_TabIndicador", pk), (QVariantList{5400, 1050, 307 * 15, 397 * 15}));
    }

    void movesSnapToTheGridUnlessItIsTurnedOff()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        mostrar(ventana);
        ElementoTablero* titulo = figuraCon(ventana, QStringLiteral("Ventas de la semana"));
        QVERIFY(titulo);
        const int pk = titulo->entidad()->property("Sys_PK").toInt();
        arrastrar(ventana, titulo, QPointF(30, 10), QPoint(13, 27));
        QCOMPARE(geometriaGuardada("ut_bi_Fig", pk), (QVariantList{30 * 15, 40 * 15, 7800, 600}));
        auto* rejilla = ventana.findChild<QAction*>(QStringLiteral("actRejilla"));
        QVERIFY(rejilla && rejilla->isCheckable() && rejilla->isChecked());
        rejilla->trigger();
        arrastrar(ventana, titulo, QPointF(30, 10), QPoint(13, 27));
        QCOMPARE(geometriaGuardada("ut_bi_Fig", pk), (QVariantList{43 * 15, 67 * 15, 7800, 600}));
    }

    void theViewScrollsToEveryEdgeOfThePage()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        ventana.resize(520, 360);
        mostrar(ventana);
        auto* vista = control<QGraphicsView>(&ventana, QStringLiteral("vistaTablero"));
        QVERIFY(vista->horizontalScrollBar()->maximum() > 0);
        QVERIFY(vista->verticalScrollBar()->maximum() > 0);
        vista->horizontalScrollBar()->setValue(vista->horizontalScrollBar()->maximum());
        vista->verticalScrollBar()->setValue(vista->verticalScrollBar()->maximum());
        QVERIFY(vista->mapToScene(vista->viewport()->rect()).boundingRect().contains(QPointF(667, 467)));
    }

    void arrowsMoveTheSelectedItemAGridStepAndShiftArrowsResizeIt()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        mostrar(ventana);
        QGraphicsView* vista = enfocarVista(ventana);
        ElementoTablero* titulo = figuraCon(ventana, QStringLiteral("Ventas de la semana"));
        QVERIFY(titulo->isSelected());
        const int pk = titulo->entidad()->property("Sys_PK").toInt();
        QTest::keyClick(vista, Qt::Key_Right);
        QTest::keyClick(vista, Qt::Key_Down);
        QCOMPARE(geometriaGuardada("ut_bi_Fig", pk), (QVariantList{450, 300, 7800, 600}));
        QTest::keyClick(vista, Qt::Key_Right, Qt::ShiftModifier);
        QTest::keyClick(vista, Qt::Key_Up, Qt::ShiftModifier);
        QCOMPARE(geometriaGuardada("ut_bi_Fig", pk), (QVariantList{450, 300, 7950, 450}));
        // Up against the top of the page an arrow moves no further.
        for (int i = 0; i < 5; ++i)
            QTest::keyClick(vista, Qt::Key_Up);
        QCOMPARE(geometriaGuardada("ut_bi_Fig", pk), (QVariantList{450, 0, 7950, 450}));
        ventana.findChild<QAction*>(QStringLiteral("actRejilla"))->trigger();
        QTest::keyClick(vista, Qt::Key_Left);
        QCOMPARE(geometriaGuardada("ut_bi_Fig", pk), (QVariantList{435, 0, 7950, 450}));
    }

    void tabGoesThroughTheItemsInReadingOrder()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        mostrar(ventana);
        QGraphicsView* vista = enfocarVista(ventana);
        const QList<ElementoTablero*> orden{figuraCon(ventana, QStringLiteral("Ventas de la semana")),
                                            indicadorDeTipo(ventana, VendimarBI::cBarraProgreso),
                                            indicadorDeTipo(ventana, VendimarBI::cSemaforo),
                                            indicadorDeTipo(ventana, VendimarBI::cMatrizGrafico),
                                            figuraCon(ventana, QStringLiteral("Datos al cierre del día"))};
        for (ElementoTablero* esperado : orden) {
            QVERIFY(esperado->isSelected());
            QCOMPARE(ventana.escena()->selectedItems().size(), 1);
            QTest::keyClick(vista, Qt::Key_Tab);
        }
        QVERIFY(orden.first()->isSelected());
        QTest::keyClick(vista, Qt::Key_Backtab, Qt::ShiftModifier);
        QVERIFY(orden.last()->isSelected());
        QVERIFY(vista->hasFocus());
    }

    void deleteKeyAsksBeforeRemovingTheItem()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        mostrar(ventana);
        QGraphicsView* vista = enfocarVista(ventana);
        ModalAnswerer answerer;
        QString pregunta;
        answerer.expect([&pregunta](QWidget* w) {
            pregunta = qobject_cast<QMessageBox*>(w)->text();
            ModalAnswerer::press(w, QStringLiteral("No"));
        });
        QTest::keyClick(vista, Qt::Key_Delete);
        QCOMPARE(pregunta, QStringLiteral("¿Desea quitar el elemento seleccionado del tablero?"));
        QCOMPARE(count(QStringLiteral("ut_bi_Fig")), 2);
        answerer.expect([](QWidget* w) { ModalAnswerer::press(w, QStringLiteral("Sí")); });
        devolverFoco(ventana, vista);
        QTest::keyClick(vista, Qt::Key_Delete);
        QCOMPARE(count(QStringLiteral("ut_bi_Fig")), 1);
        QCOMPARE(db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Fig WHERE uf_Texto='Ventas de la semana'")).toInt(), 0);
    }

    void enterEditsTheSelectedItem()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        mostrar(ventana);
        QGraphicsView* vista = enfocarVista(ventana);
        ModalAnswerer answerer;
        answerer.expect([](QWidget* w) {
            QCOMPARE(w->objectName(), QStringLiteral("dlgFig"));
            escribir(w, QStringLiteral("cTexto"), QStringLiteral("Ventas de hoy"));
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        QTest::keyClick(vista, Qt::Key_Return);
        QVERIFY(answerer.allAnswered());
        QCOMPARE(db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Fig WHERE uf_Texto='Ventas de hoy'")).toInt(), 1);
    }

    void menusShowTheirShortcutsAndTheShortcutsWork()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        mostrar(ventana);
        const QHash<QString, QKeySequence> atajos{
            {QStringLiteral("actNuevoTablero"), QKeySequence(Qt::CTRL | Qt::Key_N)},
            {QStringLiteral("actRenombrarTablero"), QKeySequence(Qt::Key_F2)},
            {QStringLiteral("actColocarIndicador"), QKeySequence(Qt::CTRL | Qt::Key_I)},
            {QStringLiteral("actAgregarTexto"), QKeySequence(Qt::CTRL | Qt::Key_T)},
            {QStringLiteral("actEditarElemento"), QKeySequence(Qt::Key_Return)},
            {QStringLiteral("actEliminarElemento"), QKeySequence(Qt::Key_Delete)}};
        for (auto it = atajos.cbegin(); it != atajos.cend(); ++it)
            QCOMPARE(ventana.findChild<QAction*>(it.key())->shortcut(), it.value());
        ModalAnswerer answerer;
        answerer.expect([](QWidget* w) {
            escribir(w, QStringLiteral("txtNombre"), QStringLiteral("Compras"));
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        QTest::keyClick(&ventana, Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(count(QStringLiteral("ut_bi_Tablero")), 2);
        answerer.expect([](QWidget* w) {
            escribir(w, QStringLiteral("txtNombre"), QStringLiteral("Compras del mes"));
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        devolverFoco(ventana, control<QListWidget>(&ventana, QStringLiteral("lstTableros")));
        QTest::keyClick(&ventana, Qt::Key_F2);
        QVERIFY(answerer.unexpected.isEmpty());
        QCOMPARE(db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Tablero WHERE uf_Nombre='Compras del mes'")).toInt(), 1);
    }

    void thePagesContextMenuAddsATextWhereItWasClicked()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        mostrar(ventana);
        ModalAnswerer answerer;
        answerer.expect([](QWidget* w) {
            escribir(w, QStringLiteral("cTexto"), QStringLiteral("Nota"));
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        menuContextual(ventana, QPointF(572, 383), [](QMenu* menu) {
            QCOMPARE(menu->objectName(), QStringLiteral("menuPagina"));
            elegir(menu, "actAgregarTextoAqui");
        });
        QVERIFY(answerer.allAnswered());
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_X FROM ut_bi_Fig WHERE uf_Texto='Nota'")).toInt(), 570 * 15);
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_Y FROM ut_bi_Fig WHERE uf_Texto='Nota'")).toInt(), 380 * 15);
    }

    void anItemsContextMenuSelectsItAndOffersItsActions()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        mostrar(ventana);
        ElementoTablero* semaforo = indicadorDeTipo(ventana, VendimarBI::cSemaforo);
        QStringList ofrecidas;
        menuContextual(ventana, semaforo->mapToScene(QPointF(90, 150)), [&ofrecidas](QMenu* menu) {
            QCOMPARE(menu->objectName(), QStringLiteral("menuElemento"));
            for (QAction* a : menu->actions())
                ofrecidas.append(a->objectName());
            menu->close();
        });
        QCOMPARE(ofrecidas, (QStringList{QStringLiteral("actEditarElemento"), QStringLiteral("actEliminarElemento")}));
        QVERIFY(semaforo->isSelected());
    }

    void movesAndResizesAreUndoneAndRedoneInTheDatabase()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        mostrar(ventana);
        QGraphicsView* vista = enfocarVista(ventana);
        const int pk = figuraCon(ventana, QStringLiteral("Ventas de la semana"))->entidad()->property("Sys_PK").toInt();
        QTest::keyClick(vista, Qt::Key_Right);
        QTest::keyClick(vista, Qt::Key_Right, Qt::ShiftModifier);
        QCOMPARE(geometriaGuardada("ut_bi_Fig", pk), (QVariantList{450, 150, 7950, 600}));
        auto* deshacer = ventana.findChild<QAction*>(QStringLiteral("actDeshacer"));
        QCOMPARE(deshacer->text(), QStringLiteral("&Deshacer cambiar tamaño"));
        QTest::keyClick(vista, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(geometriaGuardada("ut_bi_Fig", pk), (QVariantList{450, 150, 7800, 600}));
        QCOMPARE(deshacer->text(), QStringLiteral("&Deshacer mover elemento"));
        QTest::keyClick(vista, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(geometriaGuardada("ut_bi_Fig", pk), (QVariantList{300, 150, 7800, 600}));
        QVERIFY(!deshacer->isEnabled());
        // The item drawn again stays the selected one.
        QVERIFY(figuraCon(ventana, QStringLiteral("Ventas de la semana"))->isSelected());
        QTest::keyClick(vista, Qt::Key_Y, Qt::ControlModifier);
        QTest::keyClick(vista, Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(geometriaGuardada("ut_bi_Fig", pk), (QVariantList{450, 150, 7950, 600}));
        arrastrar(ventana, figuraCon(ventana, QStringLiteral("Ventas de la semana")), QPointF(30, 10), QPoint(40, 60));
        QCOMPARE(geometriaGuardada("ut_bi_Fig", pk), (QVariantList{1050, 1050, 7950, 600}));
        QTest::keyClick(vista, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(geometriaGuardada("ut_bi_Fig", pk), (QVariantList{450, 150, 7950, 600}));
    }

    void anAddIsUndoneAndRedone()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        mostrar(ventana);
        ModalAnswerer answerer;
        answerer.expect([](QWidget* w) {
            escribir(w, QStringLiteral("cTexto"), QStringLiteral("Meta anual"));
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        disparar(ventana, "actAgregarTexto");
        const QString donde = QStringLiteral("SELECT uf_X FROM ut_bi_Fig WHERE uf_Texto='Meta anual'");
        const int x = db.scalar(donde).toInt();
        QCOMPARE(count(QStringLiteral("ut_bi_Fig")), 3);
        disparar(ventana, "actDeshacer");
        QCOMPARE(count(QStringLiteral("ut_bi_Fig")), 2);
        QCOMPARE(elementos(ventana).size(), 5);
        disparar(ventana, "actRehacer");
        QCOMPARE(count(QStringLiteral("ut_bi_Fig")), 3);
        QCOMPARE(db.scalar(donde).toInt(), x);
        QVERIFY(figuraCon(ventana, QStringLiteral("Meta anual"))->isSelected());
    }

    void undoingADeleteRecreatesTheItemWithEveryValue()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        mostrar(ventana);
        const QString fila = QStringLiteral(
            "SELECT uf_X || ',' || uf_Y || ',' || uf_W || ',' || uf_H || ',' || uf_FK_Entidad || ',' || uf_pinicial"
            " || ',' || uf_Periodos || ',' || uf_l1 || ',' || uf_l2 || ',' || uf_l8 FROM ut_bi_TabIndicador WHERE uf_FK_Entidad=2");
        const QString original = db.scalar(fila).toString();
        QVERIFY(!original.isEmpty());
        QGraphicsView* vista = enfocarVista(ventana);
        indicadorDeTipo(ventana, VendimarBI::cSemaforo)->setSelected(true);
        figuraCon(ventana, QStringLiteral("Ventas de la semana"))->setSelected(false);
        QTest::keyClick(vista, Qt::Key_Down);
        ModalAnswerer answerer;
        answerer.expect([](QWidget* w) { ModalAnswerer::press(w, QStringLiteral("Sí")); });
        QTest::keyClick(vista, Qt::Key_Delete);
        QCOMPARE(count(QStringLiteral("ut_bi_TabIndicador")), 2);
        devolverFoco(ventana, vista);
        QTest::keyClick(vista, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(count(QStringLiteral("ut_bi_TabIndicador")), 3);
        QVERIFY(indicadorDeTipo(ventana, VendimarBI::cSemaforo)->isSelected());
        // Undoing the move reaches the item under its new key.
        QTest::keyClick(vista, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(db.scalar(fila).toString(), original);
        QTest::keyClick(vista, Qt::Key_Y, Qt::ControlModifier);
        QTest::keyClick(vista, Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(count(QStringLiteral("ut_bi_TabIndicador")), 2);
        QCOMPARE(fixture.um->asked.count(QStringLiteral("KZ4-TBL-03-000")), 2);
    }

    void anUndoOnAClosedConnectionSaysWhyAndKeepsTheWindow()
    {
        std::unique_ptr<ado::Connection> otra = db.openAnother();
        fixture.preparar(*otra);
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        mostrar(ventana);
        QGraphicsView* vista = enfocarVista(ventana);
        QTest::keyClick(vista, Qt::Key_Right);
        otra->Close();
        ModalAnswerer answerer;
        QString mensaje;
        answerer.expect(ModalAnswerer::anotar(&mensaje));
        disparar(ventana, "actDeshacer");
        QVERIFY(!mensaje.isEmpty());
        QVERIFY(mensaje.endsWith(QStringLiteral("|exclamation")));
        QVERIFY(answerer.unexpected.isEmpty());
        QVERIFY(elementos(ventana).isEmpty());
        // The move stays as it was saved.
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_X FROM ut_bi_Fig WHERE uf_Texto='Ventas de la semana'")).toInt(), 450);
    }

    void anEditIsUndone()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        mostrar(ventana);
        QGraphicsView* vista = enfocarVista(ventana);
        ModalAnswerer answerer;
        answerer.expect([](QWidget* w) {
            escribir(w, QStringLiteral("cTexto"), QStringLiteral("Ventas de hoy"));
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        QTest::keyClick(vista, Qt::Key_Return);
        QCOMPARE(ventana.findChild<QAction*>(QStringLiteral("actDeshacer"))->text(),
                 QStringLiteral("&Deshacer editar elemento"));
        disparar(ventana, "actDeshacer");
        QCOMPARE(db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Fig WHERE uf_Texto='Ventas de la semana'")).toInt(), 1);
        QCOMPARE(db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Fig WHERE uf_Texto='Ventas de hoy'")).toInt(), 0);
    }

    void anotherDashboardStartsAFreshHistory()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        mostrar(ventana);
        QGraphicsView* vista = enfocarVista(ventana);
        QTest::keyClick(vista, Qt::Key_Right);
        QVERIFY(ventana.findChild<QAction*>(QStringLiteral("actDeshacer"))->isEnabled());
        ModalAnswerer answerer;
        answerer.expect([](QWidget* w) {
            escribir(w, QStringLiteral("txtNombre"), QStringLiteral("Compras"));
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        disparar(ventana, "actNuevoTablero");
        QVERIFY(!ventana.findChild<QAction*>(QStringLiteral("actDeshacer"))->isEnabled());
    }

    // Ctrl+F opens the search window; its results as rows of name, kind, path and uses.
    QTreeWidget* buscar(VentanaDemo& ventana, const QString& texto)
    {
        QTest::keyClick(&ventana, Qt::Key_F, Qt::ControlModifier);
        auto* busqueda = ventana.findChild<QDialog*>(QStringLiteral("VentanaBusqueda"));
        if (!busqueda || !busqueda->isVisible())
            return nullptr;
        auto* txt = control<QLineEdit>(busqueda, QStringLiteral("txtBuscar"));
        txt->clear();
        txt->insert(texto);
        return control<QTreeWidget>(busqueda, QStringLiteral("lstResultados"));
    }

    static QStringList filas(QTreeWidget* lista)
    {
        QStringList result;
        for (int i = 0; i < lista->topLevelItemCount(); ++i) {
            QStringList celdas;
            for (int c = 0; c < 4; ++c)
                celdas.append(lista->topLevelItem(i)->text(c));
            result.append(celdas.join(QLatin1Char('|')));
        }
        return result;
    }

    void searchFindsTheLibraryByNameWithPathsAndUses()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        mostrar(ventana);
        QTreeWidget* lista = buscar(ventana, QStringLiteral("venta"));
        QVERIFY(lista);
        QCOMPARE(filas(lista), (QStringList{
                                   QStringLiteral("Ventas|Perspectiva||"),
                                   QStringLiteral("Inventario|Perspectiva||"),
                                   QStringLiteral("Venta diaria|Métrica|Ventas|Indicadores: Avance de ventas, Resumen de ventas"),
                                   QStringLiteral("Avance de ventas|Indicador|Ventas|Tableros: Mi tablero"),
                                   QStringLiteral("Resumen de ventas|Indicador|Ventas|Tableros: Mi tablero"),
                               }));
        QCOMPARE(filas(buscar(ventana, QStringLiteral("SUCURSAL"))), QStringList{QStringLiteral("Por sucursal|Perspectiva|Ventas|")});
        // Accents and case do not matter.
        QCOMPARE(filas(buscar(ventana, QStringLiteral("semaforo"))),
                 QStringList{QStringLiteral("Semáforo de existencias|Indicador|Inventario|Tableros: Mi tablero")});
        QCOMPARE(filas(buscar(ventana, QStringLiteral("tick"))),
                 QStringList{QStringLiteral("Tickets|Métrica|Ventas|Indicadores: Resumen de ventas")});
    }

    void searchOfHostileTextFindsNothingAndHarmsNothing()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        mostrar(ventana);
        for (const QString& texto : {QStringLiteral("   "), QStringLiteral("'; DROP TABLE ut_bi_Metrica; --"),
                                     QStringLiteral("売上"), QString(500, QLatin1Char('x'))}) {
            QTreeWidget* lista = buscar(ventana, texto);
            QVERIFY(lista);
            QCOMPARE(lista->topLevelItemCount(), 0);
            QVERIFY(!control<QPushButton>(ventana.findChild<QDialog*>(QStringLiteral("VentanaBusqueda")),
                                          QStringLiteral("cmdAbrir"))->isEnabled());
        }
        QCOMPARE(count(QStringLiteral("ut_bi_Metrica")), 3);
    }

    void aResultOpensItsEditorThroughTheEngine()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        mostrar(ventana);
        QTreeWidget* lista = buscar(ventana, QStringLiteral("Tickets"));
        QVERIFY(lista);
        ModalAnswerer answerer;
        QString abierto;
        answerer.expect([&abierto](QWidget* w) {
            abierto = w->objectName();
            qobject_cast<QDialog*>(w)->reject();
        });
        pulsar(ventana.findChild<QDialog*>(QStringLiteral("VentanaBusqueda")), QStringLiteral("cmdAbrir"));
        QCOMPARE(abierto, QStringLiteral("dlgDato"));
        QCOMPARE(fixture.um->asked, QStringList{QStringLiteral("KZ4-TBL-05-005")});
        // Refused, the right opens nothing.
        fixture.um->refused.insert(QStringLiteral("KZ4-TBL-06-002"));
        lista = buscar(ventana, QStringLiteral("Avance"));
        QTest::keyClick(lista, Qt::Key_Return);
        QCOMPARE(fixture.um->asked.last(), QStringLiteral("KZ4-TBL-06-002"));
        QVERIFY(answerer.unexpected.isEmpty());
    }

    void theWindowRemembersSizeSplitterAndDashboardPerUser()
    {
        db.exec(QStringLiteral("INSERT INTO ut_bi_Tablero (uf_Nombre, uf_FK_Usuario) VALUES ('Compras', 1)"));
        const int compras = db.scalar(QStringLiteral("SELECT Sys_PK FROM ut_bi_Tablero WHERE uf_Nombre='Compras'")).toInt();
        {
            VentanaDemo ventana(fixture.engine.get(), 1, db.url());
            ventana.recordar();
            mostrar(ventana);
            auto* lista = control<QListWidget>(&ventana, QStringLiteral("lstTableros"));
            QTest::mouseClick(lista->viewport(), Qt::LeftButton, {},
                              lista->visualItemRect(lista->findItems(QStringLiteral("Compras"), Qt::MatchExactly).first()).center());
            QCOMPARE(ventana.tableroActual(), compras);
            ventana.resize(820, 560);
            control<QSplitter>(&ventana, QStringLiteral("divisor"))->setSizes({260, 540});
            ventana.close();
        }
        VentanaDemo otraVez(fixture.engine.get(), 1, db.url());
        otraVez.recordar();
        mostrar(otraVez);
        QCOMPARE(otraVez.tableroActual(), compras);
        QCOMPARE(otraVez.size(), QSize(820, 560));
        QCOMPARE(control<QSplitter>(&otraVez, QStringLiteral("divisor"))->sizes().first(), 260);
        // Another user has a memory of their own.
        VentanaDemo otro(fixture.engine.get(), 2, db.url());
        otro.recordar();
        QCOMPARE(otro.size(), QSize(980, 620));
        // A window made without asking for the memory has none.
        VentanaDemo nueva(fixture.engine.get(), 1, db.url());
        QCOMPARE(nueva.size(), QSize(980, 620));
    }

    void aDashboardDeletedSinceOpensTheFirstOne()
    {
        {
            VentanaDemo ventana(fixture.engine.get(), 1, db.url());
            ventana.close();
        }
        db.exec(QStringLiteral("UPDATE ut_bi_Tablero SET uf_FK_Usuario=2"));
        db.exec(QStringLiteral("INSERT INTO ut_bi_Tablero (uf_Nombre, uf_FK_Usuario) VALUES ('Compras', 1)"));
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        ventana.recordar();
        QCOMPARE(control<QListWidget>(&ventana, QStringLiteral("lstTableros"))->currentItem()->text(), QStringLiteral("Compras"));
    }

    void theStatusBarKeepsTheDatabaseAndTheUser()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        mostrar(ventana);
        ventana.statusBar()->showMessage(QStringLiteral("Un aviso pasajero"));
        auto* base = control<QLabel>(&ventana, QStringLiteral("lblBaseDatos"));
        auto* usuario = control<QLabel>(&ventana, QStringLiteral("lblUsuario"));
        QCOMPARE(base->text(), QStringLiteral("Base de datos: ") + db.url());
        QCOMPARE(usuario->text(), QStringLiteral("Usuario: 1"));
        QVERIFY(base->isVisible() && usuario->isVisible());
    }

    void aUserWithoutDashboardsIsToldHowToMakeTheFirst()
    {
        VentanaDemo ventana(fixture.engine.get(), 2, db.url());
        mostrar(ventana);
        QString aviso;
        for (QGraphicsItem* item : ventana.escena()->items())
            if (auto* texto = dynamic_cast<QGraphicsTextItem*>(item))
                aviso = texto->toPlainText();
        QVERIFY2(aviso.contains(QStringLiteral("«Nuevo tablero…» (Ctrl+N)")), qPrintable(aviso));
        ModalAnswerer answerer;
        QString indicador;
        QString texto;
        answerer.expect(ModalAnswerer::anotar(&indicador));
        answerer.expect(ModalAnswerer::anotar(&texto));
        disparar(ventana, "actColocarIndicador");
        disparar(ventana, "actAgregarTexto");
        QCOMPARE(indicador, aviso);
        QCOMPARE(texto, aviso);
        QCOMPARE(count(QStringLiteral("ut_bi_TabIndicador")) + count(QStringLiteral("ut_bi_Fig")), 5);
    }

    void editingAnItemWhoseIndicatorIsGoneSaysWhy()
    {
        db.exec(QStringLiteral("DELETE FROM ut_bi_Indicador WHERE uf_Nombre='Avance de ventas'"));
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        mostrar(ventana);
        for (bool cajas : {false, true}) {
            ventana.verComoCajas(cajas);
            ElementoTablero* roto = nullptr;
            for (ElementoTablero* e : elementos(ventana))
                if (!e->esFigura() && qRound(e->y()) == 70 && qRound(e->x()) == 20)
                    roto = e;
            QVERIFY(roto);
            QVERIFY(cajas || !roto->pieza()->averia().isEmpty());
            roto->setSelected(true);
            ModalAnswerer answerer;
            QString mensaje;
            answerer.expect(ModalAnswerer::anotar(&mensaje));
            disparar(ventana, "actEditarElemento");
            QVERIFY(mensaje.startsWith(QStringLiteral("El indicador de este elemento ya no existe")));
            QVERIFY(answerer.unexpected.isEmpty());
        }
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
