// LlenarArbol against its floor: the same three SELECTs through Qt SQL and the
// same QTreeWidget built from what they returned.
#include "suite.h"
#include "treefloor.h"

#include "library/arbolclaves.h"
#include "library/mdl_functions.h"
#include "seed.h"

namespace {

void llenarArbol(benchmark::State& state, BenchDatabase* db, int nodos)
{
    const QList<QIcon> imagenes = treefloor::imagenes();
    Reloj reloj;
    for (auto _ : state) {
        ArbolClaves arbol;
        arbol.setImagenes(imagenes);
        reloj.iniciar();
        mdl_functions::LlenarArbol(&db->connection(), &arbol, 1, 2, 2);
        reloj.parar(state);
        if (arbol.cuenta() != nodos) {
            state.SkipWithError("the tree does not hold every node");
            break;
        }
    }
}

void arbolDesdeMemoria(benchmark::State& state, BenchDatabase* db, int nodos)
{
    const QList<QIcon> imagenes = treefloor::imagenes();
    Reloj reloj;
    for (auto _ : state) {
        QTreeWidget arbol;
        arbol.setColumnCount(1);
        arbol.setHeaderHidden(true);
        reloj.iniciar();
        const treefloor::Filas filas = treefloor::leer(db->connection().database());
        const int cuenta = treefloor::construir(arbol, filas, imagenes);
        reloj.parar(state);
        if (cuenta != nodos) {
            state.SkipWithError("the floor tree does not hold every node");
            break;
        }
    }
}

} // namespace

void registerTreeBenchmarks(Suite& suite)
{
    for (const int nodos : TreeSizes) {
        BenchDatabase* db = suite.arboles.at(nodos).get();
        benchmark::RegisterBenchmark(suite.name("LlenarArbol", "work", nodos).c_str(), llenarArbol, db, nodos)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(suite.name("LlenarArbol", "floor", nodos).c_str(), arbolDesdeMemoria, db, nodos)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    }
}
