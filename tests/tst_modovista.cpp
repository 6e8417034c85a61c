// The host window's view mode, driven as a shop manager reads a dashboard:
// live values for a date, each tile busy until its figures arrive, a new
// date or period worked out while the window goes on answering, figures
// kept while nothing changes, and a layout nobody can move by mistake.
#include "ajustesprueba.h"
#include "enginefixture.h"
#include "modalanswerer.h"
#include "model/vendimarbi.h"
#include "render/dibujobarra.h"
#include "render/dibujosemaforo.h"
#include "runtime/evaluador.h"
#include "runtime/periodometrica.h"
#include "schemainstaller.h"
#include "testdatabase.h"
#include "valoresvivos.h"
#include "ventanadriver.h"

#include <QAction>
#include <QDateEdit>
#include <QElapsedTimer>
#include <QLabel>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolBar>

using namespace driver;
using namespace VendimarBI;

class TstModoVista : public QObject {
    Q_OBJECT

    TestDatabase db;
    EngineFixture fixture;
    AjustesPrueba ajustes;

    int count(const QString& tabla) { return db.scalar(QStringLiteral("SELECT COUNT(*) FROM ") + tabla).toInt(); }

    static QAction* accion(VentanaDemo& ventana, const char* nombre)
    {
        return ventana.findChild<QAction*>(QLatin1String(nombre));
    }

    static QList<ElementoTablero*> piezas(VentanaDemo& ventana)
    {
        QList<ElementoTablero*> result;
        for (ElementoTablero* e : elementos(ventana))
            if (e->pieza())
                result.append(e);
        return result;
    }

    // Every figure every tile shows is what the run-time gives on its own
    // for the tile's metric, entity and period around the window's date.
    void compararConElRuntime(VentanaDemo& ventana)
    {
        Evaluador evaluador(db.url());
        int figuras = 0;
        for (ElementoTablero* e : piezas(ventana)) {
            QVERIFY(!e->pieza()->calculando());
            QCOMPARE(e->pieza()->errorValores(), QString());
            for (const PeticionValor& p : e->pieza()->peticiones()) {
                const ResultadoMetrica r = evaluador.evaluarMetrica(
                    p.metrica, p.entidad, PeriodoMetrica::anterior(p.periodo, ventana.fechaVista(), p.atras));
                QVERIFY2(r.correcto, qPrintable(r.mensaje()));
                QCOMPARE(ventana.valoresVivos()->valor(p), r.valor);
                ++figuras;
            }
        }
        QVERIFY(figuras >= 3);
    }

    static void esperarValores(VentanaDemo& ventana)
    {
        QTRY_VERIFY_WITH_TIMEOUT(ventana.valoresVivos()->enCurso() == 0, 30000);
    }

    void cambiarFuente(const char* guid, const QString& fuente)
    {
        db.exec(QStringLiteral("UPDATE ut_bi_Metrica SET uf_Codigo = '%1' WHERE Sys_GUID = '%2'")
                    .arg(QString(fuente).replace(QLatin1Char('\''), QLatin1String("''")), QLatin1String(guid)));
    }

private slots:
    void initTestCase()
    {
        VBI_CREATE_TEST_DATABASE(db);
        QVERIFY(ajustes.preparar());
    }

    void init()
    {
        db.clear();
        SchemaInstaller::addDemoData(db.connection());
        fixture.preparar(db.connection());
    }

    void viewModeShowsTodaysLiveValues()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        QVERIFY(!ventana.modoVista());
        QVERIFY(!ventana.valoresVivos());
        auto* fecha = control<QDateEdit>(&ventana, QStringLiteral("fechaVista"));
        QVERIFY(!fecha->isEnabled());
        QCOMPARE(fecha->date(), QDate::currentDate());
        // The mode and its date are always in sight, on a bar of their own.
        QVERIFY(control<QToolBar>(&ventana, QStringLiteral("barraVista"))->actions().contains(accion(ventana, "actVista")));
        accion(ventana, "actVista")->trigger();
        QVERIFY(ventana.modoVista());
        QVERIFY(fecha->isEnabled());
        QCOMPARE(ventana.valoresVivos()->fecha(), QDate::currentDate());
        // Nothing has come back before the window's loop runs again: every tile is busy.
        QCOMPARE(piezas(ventana).size(), 3);
        for (ElementoTablero* e : piezas(ventana)) {
            QVERIFY(e->pieza()->calculando());
            QVERIFY(!e->pieza()->esMuestra());
        }
        auto* estado = control<QLabel>(&ventana, QStringLiteral("lblVista"));
        QVERIFY2(estado->text().contains(QStringLiteral("calculando")), qPrintable(estado->text()));
        esperarValores(ventana);
        compararConElRuntime(ventana);
        QCOMPARE(estado->text(), QStringLiteral("Valores del %1").arg(QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy"))));
        // The light watches product 2's stock, 35 units, between its limits.
        QCOMPARE(indicadorDeTipo(ventana, cSemaforo)->pieza()->semaforo().valor(), 35.0);
        const ElementoTablero* barra = indicadorDeTipo(ventana, cBarraProgreso);
        QVERIFY(barra->pieza()->barra().valor() > 0);
    }

    void anotherDateIsWorkedOutAndTheFirstIsKept()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        ventana.setModoVista(true);
        esperarValores(ventana);
        const double hoy = indicadorDeTipo(ventana, cBarraProgreso)->pieza()->barra().valor();
        const QDate antes = QDate::currentDate().addMonths(-7);
        control<QDateEdit>(&ventana, QStringLiteral("fechaVista"))->setDate(antes);
        QCOMPARE(ventana.valoresVivos()->fecha(), antes);
        QVERIFY(indicadorDeTipo(ventana, cBarraProgreso)->pieza()->calculando());
        esperarValores(ventana);
        compararConElRuntime(ventana);
        QVERIFY(indicadorDeTipo(ventana, cBarraProgreso)->pieza()->barra().valor() != hoy);
        ventana.setFechaVista(QDate::currentDate());
        QCOMPARE(ventana.valoresVivos()->enCurso(), 0);
        QVERIFY(!indicadorDeTipo(ventana, cBarraProgreso)->pieza()->calculando());
        QCOMPARE(indicadorDeTipo(ventana, cBarraProgreso)->pieza()->barra().valor(), hoy);
    }

    void periodTabWorksOutThatPeriod()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        ventana.show();
        QVERIFY(QTest::qWaitForWindowExposed(&ventana));
        ventana.setModoVista(true);
        esperarValores(ventana);
        ElementoTablero* barra = indicadorDeTipo(ventana, cBarraProgreso);
        const double mes = barra->pieza()->barra().valor();
        auto* vista = control<QGraphicsView>(&ventana, QStringLiteral("vistaTablero"));
        QTest::mouseClick(vista->viewport(), Qt::LeftButton, {}, pestana(ventana, barra, cDia));
        QCOMPARE(barra->pieza()->periodo(), int(cDia));
        QVERIFY(barra->pieza()->calculando());
        QCOMPARE(ventana.valoresVivos()->enCurso(), 1);
        esperarValores(ventana);
        compararConElRuntime(ventana);
        QVERIFY(barra->pieza()->barra().valor() < mes);
        // Back to the month: known already, nothing to work out.
        QTest::mouseClick(vista->viewport(), Qt::LeftButton, {}, pestana(ventana, barra, cMes));
        QCOMPARE(ventana.valoresVivos()->enCurso(), 0);
        QCOMPARE(barra->pieza()->barra().valor(), mes);
    }

    void viewModeLeavesTheLayoutAsItIs()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        ventana.show();
        QVERIFY(QTest::qWaitForWindowExposed(&ventana));
        const bool rejilla = ventana.escena()->pagina().rejilla();
        QVERIFY(rejilla);
        ventana.setModoVista(true);
        QVERIFY(!ventana.escena()->pagina().rejilla());
        for (const char* nombre : {"actColocarIndicador", "actAgregarTexto", "actEditarElemento", "actEliminarElemento",
                                   "actDeshacer", "actRehacer", "actVerCajas", "actRejilla"})
            QVERIFY2(!accion(ventana, nombre)->isEnabled(), nombre);
        QVERIFY(accion(ventana, "actRecalcular")->isEnabled());
        const QString antes = db.scalar(QStringLiteral("SELECT SUM(uf_X + uf_Y + uf_W + uf_H) FROM ut_bi_TabIndicador")).toString();
        ElementoTablero* barra = indicadorDeTipo(ventana, cBarraProgreso);
        const QPointF donde = barra->pos();
        auto* vista = control<QGraphicsView>(&ventana, QStringLiteral("vistaTablero"));
        const QPoint centro = vista->mapFromScene(barra->sceneBoundingRect().center());
        ModalAnswerer answerer;
        QTest::mousePress(vista->viewport(), Qt::LeftButton, {}, centro);
        QTest::mouseMove(vista->viewport(), centro + QPoint(60, 40));
        QTest::mouseRelease(vista->viewport(), Qt::LeftButton, {}, centro + QPoint(60, 40));
        QTest::mouseDClick(vista->viewport(), Qt::LeftButton, {}, centro);
        QTest::qWait(100);
        QCOMPARE(barra->pos(), donde);
        QVERIFY(!barra->isSelected());
        QVERIFY2(answerer.seen.isEmpty(), qPrintable(answerer.seen.join(QLatin1Char('\n'))));
        QVERIFY(fixture.um->asked.isEmpty());
        QCOMPARE(db.scalar(QStringLiteral("SELECT SUM(uf_X + uf_Y + uf_W + uf_H) FROM ut_bi_TabIndicador")).toString(), antes);
        // Back in design mode the layout is the designer's again, with samples.
        ventana.setModoVista(false);
        QVERIFY(accion(ventana, "actColocarIndicador")->isEnabled());
        QVERIFY(!accion(ventana, "actRecalcular")->isEnabled());
        QVERIFY(!control<QDateEdit>(&ventana, QStringLiteral("fechaVista"))->isEnabled());
        QCOMPARE(ventana.escena()->pagina().rejilla(), rejilla);
        barra = indicadorDeTipo(ventana, cBarraProgreso);
        QVERIFY(barra->pieza()->esMuestra());
        QVERIFY(barra->flags() & QGraphicsItem::ItemIsMovable);
    }

    void plainBoxesGiveWayToTheTilesInViewMode()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        ventana.verComoCajas(true);
        ventana.setModoVista(true);
        QCOMPARE(piezas(ventana).size(), 3);
        ventana.setModoVista(false);
        QVERIFY(piezas(ventana).isEmpty());
    }

    void failingMetricIsShownOnItsTileAndTheOthersStillWork()
    {
        cambiarFuente("{6B1D2A10-6E2B-4C1A-9F00-000000000003}", QStringLiteral("var a = 1;\nreturn existencias;"));
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        ventana.setModoVista(true);
        esperarValores(ventana);
        const QString error = indicadorDeTipo(ventana, cSemaforo)->pieza()->errorValores();
        QVERIFY2(error.contains(QStringLiteral("Línea 2: ReferenceError")), qPrintable(error));
        QVERIFY(error.startsWith(QStringLiteral("«")));
        QCOMPARE(indicadorDeTipo(ventana, cBarraProgreso)->pieza()->errorValores(), QString());
    }

    void endlessMetricLeavesTheWindowAnswering()
    {
        cambiarFuente("{6B1D2A10-6E2B-4C1A-9F00-000000000003}", QStringLiteral("while (true) {}"));
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        ventana.show();
        QVERIFY(QTest::qWaitForWindowExposed(&ventana));
        int latidos = 0;
        QTimer latido;
        connect(&latido, &QTimer::timeout, [&latidos] { ++latidos; });
        latido.start(50);
        QElapsedTimer reloj;
        reloj.start();
        ventana.setModoVista(true);
        QVERIFY(reloj.elapsed() < 1000);
        esperarValores(ventana);
        QVERIFY2(latidos >= 20, qPrintable(QString::number(latidos)));
        const QString error = indicadorDeTipo(ventana, cSemaforo)->pieza()->errorValores();
        QVERIFY2(error.contains(QStringLiteral("se detuvo")), qPrintable(error));
    }

    void hostSetsTheMetricsTimeLimit()
    {
        cambiarFuente("{6B1D2A10-6E2B-4C1A-9F00-000000000003}", QStringLiteral("while (true) {}"));
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        ventana.setLimiteMetricas(250);
        ventana.setModoVista(true);
        esperarValores(ventana);
        QVERIFY(indicadorDeTipo(ventana, cSemaforo)->pieza()->errorValores().contains(QStringLiteral("250 ms")));
        ventana.setLimiteMetricas(350);
        accion(ventana, "actRecalcular")->trigger();
        esperarValores(ventana);
        QVERIFY(indicadorDeTipo(ventana, cSemaforo)->pieza()->errorValores().contains(QStringLiteral("350 ms")));
    }

    void demoRefusesATimeLimitThatIsNoTime_data()
    {
        QTest::addColumn<QStringList>("opciones");
        QTest::newRow("letters") << QStringList{QStringLiteral("--time-limit"), QStringLiteral("abc")};
        QTest::newRow("zero") << QStringList{QStringLiteral("--time-limit"), QStringLiteral("0")};
        QTest::newRow("negative") << QStringList{QStringLiteral("--time-limit"), QStringLiteral("-5")};
        QTest::newRow("fraction") << QStringList{QStringLiteral("--time-limit"), QStringLiteral("1.5")};
        QTest::newRow("missing") << QStringList{QStringLiteral("--time-limit")};
        QTest::newRow("sql") << QStringList{QStringLiteral("--time-limit"), QStringLiteral("1; DROP TABLE Ticket")};
    }
    void demoRefusesATimeLimitThatIsNoTime()
    {
        QFETCH(QStringList, opciones);
        QProcess vbi;
        vbi.start(QStringLiteral(VBI_PROGRAM), QStringList{QStringLiteral("demo"), db.url()} + opciones);
        QVERIFY(vbi.waitForFinished(60000));
        QCOMPARE(vbi.exitCode(), 2);
        QVERIFY(QString::fromUtf8(vbi.readAllStandardError()).contains(QStringLiteral("[--time-limit MS]")));
        QVERIFY(count(QStringLiteral("Ticket")) > 0);
    }

    void recalculatingReadsTheDataAgain()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        ventana.setModoVista(true);
        esperarValores(ventana);
        db.exec(QStringLiteral("UPDATE Existencia SET Unidades = 80 WHERE FK_Producto = 2"));
        ElementoTablero* semaforo = indicadorDeTipo(ventana, cSemaforo);
        QCOMPARE(semaforo->pieza()->semaforo().valor(), 35.0);
        accion(ventana, "actRecalcular")->trigger();
        QVERIFY(semaforo->pieza()->calculando());
        esperarValores(ventana);
        QCOMPARE(semaforo->pieza()->semaforo().valor(), 80.0);
    }

    void editedMetricIsWorkedOutAgainWhenTheDashboardIsRead()
    {
        VentanaDemo ventana(fixture.engine.get(), 1, db.url());
        ventana.setModoVista(true);
        esperarValores(ventana);
        cambiarFuente("{6B1D2A10-6E2B-4C1A-9F00-000000000003}", QStringLiteral("return 12;"));
        ventana.seleccionarTablero(ventana.tableroActual());
        QVERIFY(indicadorDeTipo(ventana, cSemaforo)->pieza()->calculando());
        QVERIFY(!indicadorDeTipo(ventana, cBarraProgreso)->pieza()->calculando());
        esperarValores(ventana);
        QCOMPARE(indicadorDeTipo(ventana, cSemaforo)->pieza()->semaforo().valor(), 12.0);
    }

    // Sales loop forever: the bar's one figure, then the matrix's seven.
    // The window closes while the matrix's run: only the metric running
    // then is waited for, never the six after it.
    void closingWhileAMetricRunsEndsCleanly()
    {
        cambiarFuente("{6B1D2A10-6E2B-4C1A-9F00-000000000001}", QStringLiteral("while (true) {}"));
        QElapsedTimer reloj;
        {
            VentanaDemo ventana(fixture.engine.get(), 1, db.url());
            ventana.setModoVista(true);
            ElementoTablero* barra = indicadorDeTipo(ventana, cBarraProgreso);
            QTRY_VERIFY_WITH_TIMEOUT(!barra->pieza()->errorValores().isEmpty(), 20000);
            QVERIFY(indicadorDeTipo(ventana, cMatrizGrafico)->pieza()->calculando());
            reloj.start();
        }
        QVERIFY2(reloj.elapsed() < 2 * Evaluador::LimitePorDefecto, qPrintable(QString::number(reloj.elapsed())));
    }
};

QTEST_MAIN(TstModoVista)
#include "tst_modovista.moc"
