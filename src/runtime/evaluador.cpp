#include "evaluador.h"

#include "calendariometrica.h"
#include "conexionmetrica.h"
#include "fechajs.h"
#include "fechametrica.h"
#include "vigilante.h"

#include <QElapsedTimer>
#include <QSqlError>
#include <QSqlQuery>
#include <algorithm>
#include <cmath>

namespace {

QString nombreDialecto(ado::Dialect dialecto)
{
    return dialecto == ado::Dialect::PostgreSQL ? QStringLiteral("postgresql") : QStringLiteral("sqlite");
}

} // namespace

Evaluador::Evaluador(const QString& url)
{
    m_conexion.OpenReadOnly(url);
    m_vigilante = std::make_unique<Vigilante>(m_motor);
    setLimite(LimitePorDefecto);
    m_adoCnn = new ConexionMetrica(m_conexion.database(), nombreDialecto(m_conexion.dialect()));
    const QJSValue adoCnn = m_motor.newQObject(m_adoCnn);
    publicar("ADOCnn", adoCnn);
    publicar("_fecha", m_motor.newQObject(new FechaMetrica));
    publicar("StatsEngine", m_motor.newQObject(new CalendarioMetrica));
    const QJSValue escalar = adoCnn.property(QStringLiteral("Escalar"));
    publicar("_ejecutar", escalar.property(QStringLiteral("bind")).callWithInstance(escalar, {adoCnn}));
    // The Function constructor takes exactly one body: a source that closes
    // it early to run code of its own is a syntax error.
    m_construir = m_motor.evaluate(QStringLiteral(
        "(function (fuente) { return new Function('sys_pk', 'inicio', 'final', fuente); })"));
    // A value thrown that is no Error would otherwise come back as if returned.
    m_correr = m_motor.evaluate(QStringLiteral(
        "(function (f, a, b, c) { try { return {valor: f(a, b, c)}; } catch (e) { return {excepcion: e}; } })"));
    const QJSValue sonda = m_construir.call({QStringLiteral("throw new Error()")}).call();
    m_desfase = sonda.property(QStringLiteral("lineNumber")).toInt() - 1;
}

Evaluador::~Evaluador() = default;

// A global no metric can replace or delete, so one metric cannot spoil the
// objects for the next one run in the same engine.
void Evaluador::publicar(const char* nombre, const QJSValue& valor)
{
    const QJSValue definir = m_motor.evaluate(QStringLiteral(
        "(function (n, v) { Object.defineProperty(this, n, {value: v, writable: false, configurable: false}); })"));
    definir.callWithInstance(m_motor.globalObject(), {QString::fromLatin1(nombre), valor});
}

void Evaluador::setLimite(int milisegundos)
{
    m_limite = milisegundos > 0 ? milisegundos : LimitePorDefecto;
    // PostgreSQL stops a statement that runs past the limit by itself; the
    // watchdog cannot interrupt a query, only the script around it. Set for
    // the session: a metric that changes it sees its change undone when its
    // run is over.
    if (m_conexion.dialect() == ado::Dialect::PostgreSQL)
        transaccion(QStringLiteral("SET statement_timeout = %1").arg(m_limite));
}

QString Evaluador::transaccion(const QString& sql)
{
    QSqlQuery consulta(m_conexion.database());
    if (consulta.exec(sql))
        return {};
    const QString error = consulta.lastError().text().trimmed();
    return error.isEmpty() ? QStringLiteral("No hay conexión con la base de datos") : error;
}

// One snapshot for the whole batch (every statement of every run sees the
// data as it was when the batch began), read-only whatever the session's
// defaults have become, and the point each run starts from. PostgreSQL
// takes it all in one round trip; SQLite takes one statement at a time, and
// its transaction keeps one snapshot by itself.
QString Evaluador::comenzar()
{
    QString error;
    if (m_conexion.dialect() == ado::Dialect::PostgreSQL) {
        error = transaccion(QStringLiteral("BEGIN ISOLATION LEVEL REPEATABLE READ, READ ONLY; SAVEPOINT pedido"));
    } else {
        error = transaccion(QStringLiteral("BEGIN"));
        if (error.isEmpty())
            error = transaccion(QStringLiteral("SAVEPOINT pedido"));
    }
    if (!error.isEmpty())
        transaccion(QStringLiteral("ROLLBACK"));
    return error;
}

// Back to where the run started, once it has read anything: this ends the
// failed state an SQL error or a timeout leaves on PostgreSQL and undoes a
// setting the run changed, while the batch keeps its snapshot. False when
// even that failed (the connection lost): the transaction is over, and the
// next run begins another.
bool Evaluador::volverAlInicio()
{
    if (!m_adoCnn->leyo())
        return true;
    if (!transaccion(QStringLiteral("ROLLBACK TO SAVEPOINT pedido")).isEmpty()) {
        terminar();
        return false;
    }
    m_adoCnn->cerrarConsultas();
    return true;
}

void Evaluador::terminar()
{
    transaccion(QStringLiteral("ROLLBACK"));
    m_adoCnn->cerrarConsultas();
}

QList<ResultadoMetrica> Evaluador::evaluarLote(const QList<PedidoMetrica>& pedidos, const std::function<bool()>& seguir)
{
    QList<ResultadoMetrica> resultados;
    resultados.reserve(pedidos.size());
    bool abierta = false;
    for (qsizetype i = 0; i < pedidos.size(); ++i) {
        if (seguir && !seguir()) {
            resultados.append(ResultadoMetrica::fallo(QStringLiteral("La métrica no se calculó: ya no se necesitaba")));
            continue;
        }
        const QString error = abierta ? QString() : comenzar();
        abierta = error.isEmpty();
        if (!abierta) {
            resultados.append(ResultadoMetrica::fallo(error));
            continue;
        }
        const PedidoMetrica& pedido = pedidos.at(i);
        resultados.append(ejecutar(pedido.fuente, pedido.sysPk, pedido.periodo));
        // The last run needs no going back: the batch's rollback undoes it.
        if (i + 1 < pedidos.size())
            abierta = volverAlInicio();
    }
    if (abierta)
        terminar();
    return resultados;
}

ResultadoMetrica Evaluador::evaluar(const QString& fuente, int sysPk, const IntervaloPeriodo& periodo)
{
    return evaluarLote({PedidoMetrica{fuente, sysPk, periodo}}).constFirst();
}

QJSValue Evaluador::compilar(const QString& fuente)
{
    const auto hecha = m_compiladas.constFind(fuente);
    if (hecha != m_compiladas.cend())
        return *hecha;
    // Parsed once as written first, so a syntax error names its own line.
    const QJSValue comprobada = m_motor.evaluate(
        QStringLiteral("(function (sys_pk, inicio, final) {") + fuente + QStringLiteral("\n})"));
    if (comprobada.isError())
        return comprobada;
    const QJSValue funcion = m_construir.call({fuente});
    if (funcion.isCallable())
        m_compiladas.insert(fuente, funcion);
    return funcion;
}

ResultadoMetrica Evaluador::ejecutar(const QString& fuente, int sysPk, const IntervaloPeriodo& periodo)
{
    QElapsedTimer reloj;
    reloj.start();
    m_vigilante->armar(m_limite);
    const QJSValue funcion = compilar(fuente);
    QJSValue resultado;
    if (funcion.isCallable()) {
        resultado = m_correr.call({funcion, sysPk, FechaJS::escribir(m_motor, periodo.inicio),
                                   FechaJS::escribir(m_motor, periodo.final)});
    } else {
        resultado = m_motor.newObject();
        resultado.setProperty(QStringLiteral("sintaxis"), funcion);
    }
    const bool detenida = m_vigilante->desarmar();
    m_motor.setInterrupted(false);
    const ResultadoMetrica leido = leerResultado(resultado);
    // PostgreSQL cuts a statement at the same limit, and may do so a moment
    // before the watchdog wakes: a run that failed past its time was stopped.
    if (detenida || (!leido.correcto && reloj.elapsed() >= m_limite))
        return ResultadoMetrica::fallo(QStringLiteral("La métrica tardó más de %1 ms y se detuvo").arg(m_limite));
    return leido;
}

ResultadoMetrica Evaluador::leerResultado(const QJSValue& resultado)
{
    if (resultado.hasOwnProperty(QStringLiteral("sintaxis")))
        return leerExcepcion(resultado.property(QStringLiteral("sintaxis")), 0);
    if (resultado.hasOwnProperty(QStringLiteral("excepcion")))
        return leerExcepcion(resultado.property(QStringLiteral("excepcion")), m_desfase);
    const QJSValue valor = resultado.property(QStringLiteral("valor"));
    if (!valor.isNumber() || !std::isfinite(valor.toNumber()))
        return ResultadoMetrica::fallo(QStringLiteral("La métrica no devolvió un número: %1").arg(valor.toString()));
    return ResultadoMetrica::exito(valor.toNumber());
}

ResultadoMetrica Evaluador::leerExcepcion(const QJSValue& excepcion, int desfase)
{
    if (!excepcion.isError())
        return ResultadoMetrica::fallo(QStringLiteral("Excepción: %1").arg(excepcion.toString()));
    const int linea = excepcion.property(QStringLiteral("lineNumber")).toInt() - desfase;
    return ResultadoMetrica::fallo(excepcion.toString(), std::max(linea, 0));
}

ResultadoMetrica Evaluador::evaluarMetrica(int clave, int sysPk, const IntervaloPeriodo& periodo)
{
    // A number in the text, not a bound value: one round trip to the server
    // instead of preparing, running and freeing a statement.
    QSqlQuery consulta(m_conexion.database());
    consulta.setForwardOnly(true);
    if (!consulta.exec(QStringLiteral("SELECT uf_Codigo FROM ut_bi_Metrica WHERE Sys_PK = %1").arg(clave)))
        return ResultadoMetrica::fallo(consulta.lastError().text());
    if (!consulta.next())
        return ResultadoMetrica::fallo(QStringLiteral("No existe la métrica %1").arg(clave));
    return evaluar(consulta.value(0).toString(), sysPk, periodo);
}
