#pragma once

#include "ado/connection.h"
#include "periodometrica.h"
#include "resultadometrica.h"

#include <QHash>
#include <QJSEngine>
#include <memory>

class ConexionMetrica;
class Vigilante;

// Runs metric sources against the host's database. A source is the body of
// a function of (sys_pk, inicio, final) that returns a number; it sees
// ADOCnn, _ejecutar, _fecha and StatsEngine and nothing that writes. Each
// run reads inside one read-only transaction and is stopped after the time
// limit. One evaluator belongs to one thread.
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
    bool transaccion(const QString& sql);

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
