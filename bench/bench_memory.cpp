// Peak memory of the 42,000-node library tree, built by LlenarArbol and by
// the floor from rows already in memory.
//
// Method: every sample is a fresh child process, so nothing one build leaves
// in the allocator can hide the next one's cost. The child opens the
// database, runs one query to wake the driver, prepares what its side needs
// before the clock (the component: the empty tree; the floor: the tree and
// the three result sets copied into plain rows), hands free heap pages back
// to the kernel (malloc_trim) and resets the kernel's peak-RSS mark by writing
// 5 to /proc/self/clear_refs. It then builds the tree and reads VmHWM: the
// peak resident set reached while building, less the resident set just
// before, is the peak growth. mallinfo2() adds the heap still in use once the
// tree stands, to tell lasting memory from transient.
#include "suite.h"
#include "treefloor.h"

#include "ado/connection.h"
#include "library/arbolclaves.h"
#include "library/mdl_functions.h"
#include "vb/automationerror.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QSqlQuery>
#include <QTreeWidget>
#include <cstdio>
#include <malloc.h>

namespace {

long statusKib(const char* campo)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray prefijo = QByteArray(campo) + ':';
    for (const QByteArray& linea : status.readAll().split('\n')) {
        if (linea.startsWith(prefijo))
            return linea.mid(prefijo.size()).trimmed().split(' ').value(0).toLong();
    }
    return -1;
}

bool reiniciarPico()
{
    QFile refs(QStringLiteral("/proc/self/clear_refs"));
    return refs.open(QIODevice::WriteOnly) && refs.write("5") == 1;
}

long heapKib()
{
    const struct mallinfo2 info = mallinfo2();
    return long((info.uordblks + info.hblkhd) / 1024);
}

struct Marca {
    long rss = 0;
    long heap = 0;
};

Marca antes()
{
    malloc_trim(0);
    Marca m;
    if (!reiniciarPico())
        m.rss = -1;
    else
        m.rss = statusKib("VmRSS");
    m.heap = heapKib();
    return m;
}

void picoArbol(benchmark::State& state, BenchDatabase* db, const char* modo)
{
    for (auto _ : state) {
        QProcess hijo;
        hijo.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        QElapsedTimer reloj;
        reloj.start();
        hijo.start(QCoreApplication::applicationFilePath(),
                   {QStringLiteral("--peak-tree-child"), QLatin1String(modo), db->url()});
        const bool terminado = hijo.waitForFinished(10 * 60 * 1000);
        state.SetIterationTime(double(reloj.nsecsElapsed()) / 1e9);
        const QList<QByteArray> campos = hijo.readAllStandardOutput().trimmed().split(' ');
        if (!terminado || hijo.exitCode() != 0 || campos.size() != 3) {
            state.SkipWithError("the measuring process failed");
            break;
        }
        state.counters["nodes"] = campos.at(0).toDouble();
        state.counters["peak_growth_kib"] = campos.at(1).toDouble();
        state.counters["heap_growth_kib"] = campos.at(2).toDouble();
    }
}

} // namespace

int runPeakTreeChild(int argc, char** argv)
{
    if (argc < 4)
        return 2;
    const QByteArray modo = argv[2];
    const QString url = QString::fromLocal8Bit(argv[3]);
    int qtArgc = 1;
    QApplication app(qtArgc, argv);
    try {
        ado::Connection cnx;
        cnx.Open(url);
        {
            QSqlQuery despertar(cnx.database());
            despertar.exec(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Perspectiva"));
            despertar.next();
        }
        const QList<QIcon> imagenes = treefloor::imagenes();
        int nodos = 0;
        Marca inicio;
        long pico = 0;
        long heap = 0;
        if (modo == "work") {
            ArbolClaves arbol;
            arbol.setImagenes(imagenes);
            inicio = antes();
            mdl_functions::LlenarArbol(&cnx, &arbol, 1, 2, 2);
            pico = statusKib("VmHWM");
            heap = heapKib();
            nodos = arbol.cuenta();
        } else {
            treefloor::Filas filas = treefloor::leer(cnx.database());
            QTreeWidget arbol;
            arbol.setColumnCount(1);
            arbol.setHeaderHidden(true);
            inicio = antes();
            nodos = treefloor::construir(arbol, filas, imagenes, true);
            pico = statusKib("VmHWM");
            heap = heapKib();
        }
        if (inicio.rss < 0 || pico < 0)
            return 3;
        std::printf("%d %ld %ld\n", nodos, pico - inicio.rss, heap - inicio.heap);
        std::fflush(stdout);
        // The trees go with the process; tearing 42,000 items down measures nothing.
        std::_Exit(0);
    } catch (const vb::AutomationError& e) {
        std::fprintf(stderr, "peak-tree child: %s\n", qPrintable(e.description()));
        return 1;
    }
}

void registerMemoryBenchmarks(Suite& suite)
{
    BenchDatabase* db = suite.arboles.at(42000).get();
    for (const char* modo : {"work", "floor"}) {
        benchmark::RegisterBenchmark(suite.name("TreePeakMemory", modo, 42000).c_str(), picoArbol, db, modo)
            ->Iterations(1)
            ->Repetitions(5)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    }
}
