#pragma once
// What the benchmark programs share: the databases of one run, the naming of
// the measurements and a manual clock.
//
// Every measurement is registered as a pair, "<work>/work/<backend>[/size]"
// and "<work>/floor/<backend>[/size]": the component doing the work, and the
// least a program must do to get the same result from the same database. The
// report divides one by the other, so only pairs measured in the same run are
// ever compared.

#include "benchdatabase.h"

#include <benchmark/benchmark.h>

#include <QString>
#include <chrono>
#include <map>
#include <memory>
#include <string>

struct Suite {
    BenchDatabase::Backend backend = BenchDatabase::Backend::SQLite;
    // One database per tree size, read only.
    std::map<int, std::unique_ptr<BenchDatabase>> arboles;
    // The library the loads and the dialog read; read only.
    std::unique_ptr<BenchDatabase> lectura;
    // The library with the dashboard of a hundred placed indicators; read only.
    std::unique_ptr<BenchDatabase> tablero;
    // The sample library and the sample shop its metrics read; read only.
    std::unique_ptr<BenchDatabase> tienda;
    // Where new rows go.
    std::unique_ptr<BenchDatabase> escritura;

    std::string backendName() const { return BenchDatabase::backendName(backend).toStdString(); }
    std::string name(const char* work, const char* role, int size = 0) const
    {
        std::string n = std::string(work) + "/" + role + "/" + backendName();
        if (size > 0)
            n += "/" + std::to_string(size);
        return n;
    }
};

// The tree sizes measured.
inline constexpr int TreeSizes[] = {1000, 10000, 42000};

// Wall time of the part that is measured, leaving out building and tearing
// down what the work needs or leaves behind: the clock is read on each side of
// the work only. Wall time, not CPU time, because on PostgreSQL half the work
// happens in the server process.
class Reloj {
public:
    void iniciar() { m_inicio = std::chrono::steady_clock::now(); }
    void parar(benchmark::State& state)
    {
        const auto fin = std::chrono::steady_clock::now();
        state.SetIterationTime(std::chrono::duration<double>(fin - m_inicio).count());
    }

private:
    std::chrono::steady_clock::time_point m_inicio;
};

void registerTreeBenchmarks(Suite& suite);
void registerEntityBenchmarks(Suite& suite);
void registerDialogBenchmarks(Suite& suite);
void registerMemoryBenchmarks(Suite& suite);
void registerDashboardBenchmarks(Suite& suite);
void registerMetricBenchmarks(Suite& suite);

// The measured child process of the memory benchmark; answers the exit code.
int runPeakTreeChild(int argc, char** argv);
