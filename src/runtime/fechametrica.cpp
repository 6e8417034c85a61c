#include "fechametrica.h"

#include "fechajs.h"

#include <QJSEngine>

template <typename Parte>
QJSValue FechaMetrica::parte(const QJSValue& fecha, Parte parte)
{
    QJSEngine& motor = *qjsEngine(this);
    const QDate leida = FechaJS::exigir(motor, fecha);
    return leida.isValid() ? parte(motor, leida) : QJSValue();
}

QJSValue FechaMetrica::texto(const QJSValue& fecha)
{
    return parte(fecha, [](QJSEngine&, const QDate& d) { return QJSValue(d.toString(Qt::ISODate)); });
}

QJSValue FechaMetrica::sql(const QJSValue& fecha)
{
    return parte(fecha, [](QJSEngine&, const QDate& d) {
        return QJSValue(QLatin1Char('\'') + d.toString(Qt::ISODate) + QLatin1Char('\''));
    });
}

QJSValue FechaMetrica::anio(const QJSValue& fecha)
{
    return parte(fecha, [](QJSEngine&, const QDate& d) { return QJSValue(d.year()); });
}

QJSValue FechaMetrica::mes(const QJSValue& fecha)
{
    return parte(fecha, [](QJSEngine&, const QDate& d) { return QJSValue(d.month()); });
}

QJSValue FechaMetrica::dia(const QJSValue& fecha)
{
    return parte(fecha, [](QJSEngine&, const QDate& d) { return QJSValue(d.day()); });
}

QJSValue FechaMetrica::diaSemana(const QJSValue& fecha)
{
    // Qt counts Monday 1 to Sunday 7.
    return parte(fecha, [](QJSEngine&, const QDate& d) { return QJSValue(d.dayOfWeek() % 7 + 1); });
}

QJSValue FechaMetrica::sumarDias(const QJSValue& fecha, int dias)
{
    return parte(fecha, [dias](QJSEngine& motor, const QDate& d) { return FechaJS::escribir(motor, d.addDays(dias)); });
}
