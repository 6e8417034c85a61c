// A dashboard of a hundred placed indicators, a third of each kind, opened in
// the designer window until its layout is painted: each tile drawn as the
// dashboard will look, against the same layout drawn as plain boxes with each
// indicator's kind and name, in the same window on the same database.
#include "suite.h"

#include "elementotablero.h"
#include "engine/eengine.h"
#include "gestorusuarios.h"
#include "seed.h"
#include "ventanademo.h"

#include <QAction>
#include <QApplication>
#include <QGraphicsScene>
#include <QGraphicsView>

namespace {

// Every placement on the scene, each drawn as a tile or as a box as asked.
bool comprobar(VentanaDemo& ventana, bool cajas)
{
    int indicadores = 0;
    for (QGraphicsItem* item : ventana.escena()->items()) {
        auto* elemento = dynamic_cast<ElementoTablero*>(item);
        if (elemento && !elemento->esFigura() && (elemento->pieza() == nullptr) == cajas)
            ++indicadores;
    }
    return indicadores == seed::CienIndicadores;
}

void abrir(benchmark::State& state, BenchDatabase* db, bool cajas)
{
    EEngine engine;
    GestorUsuarios usuarios;
    engine.SetConnection(&db->connection(), 1);
    engine.SetUM(&usuarios);
    VentanaDemo ventana(&engine, 1, db->url());
    ventana.findChild<QAction*>(QStringLiteral("actVerCajas"))->setChecked(cajas);
    ventana.show();
    QApplication::processEvents();
    auto* vista = ventana.findChild<QGraphicsView*>(QStringLiteral("vistaTablero"));
    Reloj reloj;
    for (auto _ : state) {
        // Leaving the full dashboard, which clears its items, is not part of opening the next.
        ventana.seleccionarTablero(seed::TableroVacio);
        vista->viewport()->repaint();
        reloj.iniciar();
        ventana.seleccionarTablero(seed::TableroCien);
        vista->viewport()->repaint();
        reloj.parar(state);
        if (!comprobar(ventana, cajas)) {
            state.SkipWithError("the dashboard did not show its hundred placed indicators");
            break;
        }
    }
}

void abrirDibujado(benchmark::State& state, BenchDatabase* db)
{
    abrir(state, db, false);
}

void abrirComoCajas(benchmark::State& state, BenchDatabase* db)
{
    abrir(state, db, true);
}

} // namespace

void registerDashboardBenchmarks(Suite& suite)
{
    benchmark::RegisterBenchmark(suite.name("TableroPintado", "work").c_str(), abrirDibujado, suite.tablero.get())
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(suite.name("TableroPintado", "floor").c_str(), abrirComoCajas, suite.tablero.get())
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
}
