#pragma once

#include <QString>

// What running a metric gave: its value, or why there is none and on which
// line of its source (0 when no line is to blame).
struct ResultadoMetrica {
    bool correcto = false;
    double valor = 0;
    QString error;
    int linea = 0;

    static ResultadoMetrica exito(double valor) { return {true, valor, {}, 0}; }
    static ResultadoMetrica fallo(const QString& error, int linea = 0) { return {false, 0, error, linea}; }
    // "Línea 3: ReferenceError: x is not defined", or the error alone.
    QString mensaje() const
    {
        return linea > 0 ? QStringLiteral("Línea %1: %2").arg(linea).arg(error) : error;
    }
};
