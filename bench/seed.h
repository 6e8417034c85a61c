#pragma once
// The data the measurements run on. Every size and name is fixed, so two runs
// measure the same work.

#include <QString>

class BenchDatabase;

namespace seed {

// A library of `nodes` tree nodes in the proportions of the large library
// (2,000 perspectives, 20,000 metrics, 20,000 indicators for 42,000): one
// perspective in 21, the rest split between metrics and indicators.
struct TreeShape {
    int perspectivas = 0;
    int metricas = 0;
    int indicadores = 0;
    int total() const { return perspectivas + metricas + indicadores; }
};
TreeShape treeShape(int nodes);
void fillTree(BenchDatabase& db, int nodes);

// The library the loads and the property dialog read: perspective 1 with
// Metricas metrics and Indicadores indicators (kinds in turn: bar, matrix,
// light, each with its configuration row), and dashboard 1 with
// TabIndicadores placed indicators and Figuras figures.
constexpr int Perspectiva = 1;
constexpr int Metricas = 1000;
constexpr int Indicadores = 999;
constexpr int Tablero = 1;
constexpr int TabIndicadores = 500;
constexpr int Figuras = 500;
// A progress-bar indicator whose metric sits in the middle of the list.
constexpr int IndicadorDialogo = 1;
constexpr int MetricaDialogo = 500;
void fillLibrary(BenchDatabase& db);

// Added to a library made by fillLibrary: dashboard TableroCien with
// CienIndicadores placements of indicators 1 to 100 (kinds in turn, so a
// third of each) in a 10 × 10 grid over the whole drawing area, and the
// empty dashboard TableroVacio; both belong to user 1.
constexpr int TableroCien = 2;
constexpr int TableroVacio = 3;
constexpr int CienIndicadores = 100;
void fillDashboard(BenchDatabase& db);

// The texts the seeded rows carry, shared by the floors that rebuild them.
QString nombreMetrica(int k);
QString descripcionMetrica(int k);
QString codigoMetrica(int k);

} // namespace seed
