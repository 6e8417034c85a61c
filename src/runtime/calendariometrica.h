#pragma once

#include <QJSValue>
#include <QObject>

// StatsEngine: the engine's calendar operations for metrics, with the same
// arithmetic (week 1 is 1-7 January, packed yyyymmdd / yyyyww / yyyymm
// numbers, 0 or 1899-12-30 for inputs out of range). Dates come in as for
// _fecha and go out as Dates.
class CalendarioMetrica : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    Q_INVOKABLE QJSValue WeekNum(const QJSValue& fecha);
    Q_INVOKABLE QJSValue IniMes(int mes);
    Q_INVOKABLE QJSValue FinMes(int mes);
    Q_INVOKABLE QJSValue day_ofweeknum(int semana);
    Q_INVOKABLE QJSValue numtodate(int numero);
    Q_INVOKABLE QJSValue daytonum(const QJSValue& fecha);

private:
    QJSValue fecha(double serial);
    template <typename Operacion>
    QJSValue numero(const QJSValue& fecha, Operacion operacion);
};
