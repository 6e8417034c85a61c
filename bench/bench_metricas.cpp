// The sample dashboard's values as the window asks for them: the metrics'
// sources already in memory, every metric of every placed indicator for the
// four periods of today run by the metric run-time as one batch, against the
// SQL those metrics build run straight through Qt SQL on the same database.
// The run-time's own costs are what the ratio shows: the batch's read-only
// transaction, going back to its start after each run, the script call and
// the guard on each statement.
#include "suite.h"

#include "runtime/evaluador.h"

#include <QHash>
#include <QSqlQuery>
#include <QStringList>
#include <QVariant>
#include <cmath>

namespace {

struct Valor {
    int metrica = 0;
    int entidad = 0;
    QString guid;
};

// Each placed indicator's metrics of the sample dashboard, with the entity the placement names.
QList<Valor> valoresTablero(ado::Connection& conexion)
{
    QSqlQuery q = conexion.runText(QStringLiteral(
        "SELECT c.m, t.uf_FK_Entidad, m.Sys_GUID FROM ut_bi_TabIndicador t JOIN ("
        " SELECT uf_FK_Indicador i, uf_FK_Metrica m FROM ut_bi_BarraProg UNION ALL"
        " SELECT uf_FK_Indicador, uf_FK_Metrica FROM ut_bi_Semaforo UNION ALL"
        " SELECT uf_FK_Indicador, uf_FK_M_Metrica1 FROM ut_bi_MatrizGraf UNION ALL"
        " SELECT uf_FK_Indicador, uf_FK_M_Metrica2 FROM ut_bi_MatrizGraf) c ON c.i = t.uf_FK_Indicador"
        " JOIN ut_bi_Metrica m ON m.Sys_PK = c.m ORDER BY t.Sys_PK, c.m"));
    QList<Valor> valores;
    while (q.next())
        valores.append({q.value(0).toInt(), q.value(1).toInt(), q.value(2).toString()});
    return valores;
}

// The SQL the sample metric of that GUID builds for an entity and a period.
QString sqlDe(const Valor& v, const IntervaloPeriodo& p)
{
    if (v.guid.endsWith(QLatin1String("3}")))
        return QStringLiteral("SELECT SUM(Unidades) FROM Existencia")
            + (v.entidad > 0 ? QStringLiteral(" WHERE FK_Producto = %1").arg(v.entidad) : QString());
    const char* agregado = v.guid.endsWith(QLatin1String("1}")) ? "ROUND(SUM(Importe), 2)" : "COUNT(*)";
    return QStringLiteral("SELECT %1 FROM Ticket WHERE Fecha BETWEEN '%2' AND '%3'")
               .arg(QLatin1String(agregado), p.inicio.toString(Qt::ISODate), p.final.toString(Qt::ISODate))
        + (v.entidad > 0 ? QStringLiteral(" AND FK_Sucursal = %1").arg(v.entidad) : QString());
}

QList<IntervaloPeriodo> periodosDeHoy()
{
    QList<IntervaloPeriodo> periodos;
    for (int periodo = 0; periodo < 4; ++periodo)
        periodos.append(PeriodoMetrica::intervalo(periodo, QDate::currentDate()));
    return periodos;
}

// Every metric's source by key, as the window holds them.
QHash<int, QString> fuentes(ado::Connection& conexion)
{
    QSqlQuery q = conexion.runText(QStringLiteral("SELECT Sys_PK, uf_Codigo FROM ut_bi_Metrica"));
    QHash<int, QString> porClave;
    while (q.next())
        porClave.insert(q.value(0).toInt(), q.value(1).toString());
    return porClave;
}

// Times one pass over the whole dashboard, which answers the sum of its
// values; a value that cannot be had (NaN) ends the measurement with an error.
template <typename Tablero>
void medir(benchmark::State& state, Tablero tablero)
{
    Reloj reloj;
    for (auto _ : state) {
        reloj.iniciar();
        const double suma = tablero();
        reloj.parar(state);
        if (std::isnan(suma)) {
            state.SkipWithError("a metric of the sample dashboard gave no value");
            return;
        }
    }
}

void conRunTime(benchmark::State& state, BenchDatabase* db)
{
    Evaluador evaluador(db->url());
    const QHash<int, QString> porClave = fuentes(db->connection());
    QList<PedidoMetrica> pedidos;
    for (const IntervaloPeriodo& p : periodosDeHoy())
        for (const Valor& v : valoresTablero(db->connection()))
            pedidos.append({porClave.value(v.metrica), v.entidad, p});
    medir(state, [&] {
        double suma = 0;
        for (const ResultadoMetrica& r : evaluador.evaluarLote(pedidos))
            suma += r.correcto ? r.valor : std::nan("");
        return suma;
    });
}

void conQtSql(benchmark::State& state, BenchDatabase* db)
{
    ado::Connection lectura;
    lectura.OpenReadOnly(db->url());
    QStringList sentencias;
    for (const IntervaloPeriodo& p : periodosDeHoy())
        for (const Valor& v : valoresTablero(db->connection()))
            sentencias.append(sqlDe(v, p));
    medir(state, [&] {
        double suma = 0;
        for (const QString& sql : sentencias) {
            QSqlQuery q(lectura.database());
            q.setForwardOnly(true);
            q.exec(sql);
            suma += q.next() ? q.value(0).toDouble() : 0.0;
        }
        return suma;
    });
}

} // namespace

void registerMetricBenchmarks(Suite& suite)
{
    benchmark::RegisterBenchmark(suite.name("ValoresTablero", "work").c_str(), conRunTime, suite.tienda.get())
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(suite.name("ValoresTablero", "floor").c_str(), conQtSql, suite.tienda.get())
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
}
