#include "evaluador.h"

#include "calendariometrica.h"
#include "conexionmetrica.h"
#include "fechajs.h"
#include "fechametrica.h"
#include "vigilante.h"

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
    // the session, so a metric that changes it sees its change rolled back.
    if (m_conexion.dialect() == ado::Dialect::PostgreSQL)
        transaccion(QStringLiteral("SET statement_timeout = %1").arg(m_limite));
}

bool Evaluador::transaccion(const QString& sql)
{
    QSqlQuery consulta(m_conexion.database());
    return consulta.exec(sql);
}

ResultadoMetrica Evaluador::evaluar(const QString& fuente, int sysPk, const IntervaloPeriodo& periodo)
{
    if (!transaccion(QStringLiteral("BEGIN")))
        return ResultadoMetrica::fallo(m_conexion.database().lastError().text());
    const ResultadoMetrica resultado = ejecutar(fuente, sysPk, periodo);
    transaccion(QStringLiteral("ROLLBACK"));
    m_adoCnn->cerrarConsultas();
    return resultado;
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
    if (detenida)
        return ResultadoMetrica::fallo(QStringLiteral("La métrica tardó más de %1 ms y se detuvo").arg(m_limite));
    return leerResultado(resultado);
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
