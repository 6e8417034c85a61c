// The benchmark program: every work item of the component beside its floor,
// on one database backend per run (VBI_BENCH_BACKEND: sqlite, the default,
// or postgresql on the server VBI_TEST_PG_URL names).
#include "suite.h"

#include "schemainstaller.h"
#include "seed.h"

#include <QApplication>
#include <QElapsedTimer>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

void avisar(const char* texto)
{
    std::fprintf(stderr, "vbi_bench: %s\n", texto);
    std::fflush(stderr);
}

void preparar(Suite& suite)
{
    QElapsedTimer reloj;
    reloj.start();
    for (const int nodos : TreeSizes) {
        auto db = std::make_unique<BenchDatabase>(suite.backend, QStringLiteral("arbol_%1").arg(nodos));
        db->create();
        seed::fillTree(*db, nodos);
        suite.arboles[nodos] = std::move(db);
    }
    suite.lectura = std::make_unique<BenchDatabase>(suite.backend, QStringLiteral("lectura"));
    suite.lectura->create();
    seed::fillLibrary(*suite.lectura);
    suite.tablero = std::make_unique<BenchDatabase>(suite.backend, QStringLiteral("tablero"));
    suite.tablero->create();
    seed::fillLibrary(*suite.tablero);
    seed::fillDashboard(*suite.tablero);
    suite.tienda = std::make_unique<BenchDatabase>(suite.backend, QStringLiteral("tienda"));
    suite.tienda->create();
    SchemaInstaller::addDemoData(suite.tienda->connection());
    suite.escritura = std::make_unique<BenchDatabase>(suite.backend, QStringLiteral("escritura"));
    suite.escritura->create();
    std::fprintf(stderr, "vbi_bench: %s databases ready in %.1f s\n", suite.backendName().c_str(),
                 double(reloj.elapsed()) / 1000.0);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc > 1 && std::strcmp(argv[1], "--peak-tree-child") == 0) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        return runPeakTreeChild(argc, argv);
    }

    // Widgets are measured on the offscreen platform: same work, no display needed.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    int qtArgc = 1;
    QApplication app(qtArgc, argv);

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;

    Suite suite;
    const QString backend = qEnvironmentVariable("VBI_BENCH_BACKEND", QStringLiteral("sqlite")).toLower();
    if (backend == QLatin1String("postgresql"))
        suite.backend = BenchDatabase::Backend::PostgreSQL;
    else if (backend != QLatin1String("sqlite")) {
        avisar("VBI_BENCH_BACKEND must be sqlite or postgresql");
        return 1;
    }

    try {
        preparar(suite);
        registerTreeBenchmarks(suite);
        registerEntityBenchmarks(suite);
        registerDialogBenchmarks(suite);
        registerMemoryBenchmarks(suite);
        registerDashboardBenchmarks(suite);
    registerMetricBenchmarks(suite);
        benchmark::RunSpecifiedBenchmarks();
    } catch (const std::exception& e) {
        avisar(e.what());
        benchmark::Shutdown();
        return 1;
    }
    benchmark::Shutdown();
    return 0;
}
