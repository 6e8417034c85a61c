#pragma once

#include <QDate>
#include <QJSValue>

class QJSEngine;

// Dates crossing between a metric's JavaScript and the run-time. A metric
// may hand over a Date, an automation date (days since 1899-12-30) or an
// ISO text "YYYY-MM-DD"; the run-time hands back Dates at local midnight.
class FechaJS {
public:
    // An invalid date for anything else.
    static QDate leer(const QJSValue& valor);
    static QJSValue escribir(QJSEngine& motor, const QDate& fecha);
    // The date read, or a TypeError thrown into the script and an invalid date.
    static QDate exigir(QJSEngine& motor, const QJSValue& valor);
};
