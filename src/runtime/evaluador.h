#pragma once

#include "ado/connection.h"
#include "pedidometrica.h"
#include "periodometrica.h"
#include "resultadometrica.h"

#include <QHash>
#include <QJSEngine>
#include <functional>
#include <memory>

class ConexionMetrica;
class Vigilante;

// Runs metric sources against the host's database. A source is the body of
// a function of (sys_pk, inicio, final) that returns a number; it sees
// ADOCnn, _ejecutar, _fecha and StatsEngine and nothing that writes. A
// batch reads inside one read-only transaction, so every value of it comes
// from the same data; each run is stopped after the time limit. One
// evaluator belongs to one thread.
class Evaluador {
public:
    static constexpr int LimitePorDefecto = 2000;

    // Opens its own read-only connection; raises vb::AutomationError when it cannot.
    explicit Evaluador(const QString& url);
    ~Evaluador();
    Evaluador(const Evaluador&) = delete;
    Evaluador& operator=(const Evaluador&) = delete;

    int limite() const { return m_limite; }
    void setLimite(int milisegundos);

    // Each pedido's result, in order, the same as evaluating it alone; one
    // transaction for all, and what one run leaves in it (a failed statement,
    // a setting changed) is undone before the next run. seguir, when given,
    // is asked before each run: once it says no, the runs left are not made
    // and fail, so a caller that no longer needs the batch waits for one
    // run at the most.
    QList<ResultadoMetrica> evaluarLote(const QList<PedidoMetrica>& pedidos,
                                        const std::function<bool()>& seguir = {});
    // A batch of one.
    ResultadoMetrica evaluar(const QString& fuente, int sysPk, const IntervaloPeriodo& periodo);
    // The stored metric with that key, for the period given.
    ResultadoMetrica evaluarMetrica(int clave, int sysPk, const IntervaloPeriodo& periodo);

private:
    void publicar(const char* nombre, const QJSValue& valor);
    // The source made a function, or the error that prevents it.
    QJSValue compilar(const QString& fuente);
    ResultadoMetrica ejecutar(const QString& fuente, int sysPk, const IntervaloPeriodo& periodo);
    ResultadoMetrica leerResultado(const QJSValue& resultado);
    ResultadoMetrica leerExcepcion(const QJSValue& excepcion, int desfase);
    // The error of the statement, or an empty text when it ran.
    QString transaccion(const QString& sql);
    QString comenzar();
    bool volverAlInicio();
    void terminar();

    ado::Connection m_conexion;
    QJSEngine m_motor;
    ConexionMetrica* m_adoCnn = nullptr;
    QJSValue m_construir;
    QJSValue m_correr;
    // Lines the engine counts before a built function's body.
    int m_desfase = 0;
    QHash<QString, QJSValue> m_compiladas;
    // Declared after the engine: stopped before the engine goes.
    std::unique_ptr<Vigilante> m_vigilante;
    int m_limite = LimitePorDefecto;
};
