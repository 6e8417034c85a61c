#include "fechajs.h"

#include "vb/vb.h"

#include <QDateTime>
#include <QJSEngine>

QDate FechaJS::leer(const QJSValue& valor)
{
    if (valor.isDate())
        return valor.toDateTime().toLocalTime().date();
    if (valor.isNumber())
        return vb::toQDate(valor.toNumber());
    if (valor.isString())
        return QDate::fromString(valor.toString().trimmed(), Qt::ISODate);
    return {};
}

QJSValue FechaJS::escribir(QJSEngine& motor, const QDate& fecha)
{
    return motor.toScriptValue(QDateTime(fecha, QTime(0, 0)));
}

QDate FechaJS::exigir(QJSEngine& motor, const QJSValue& valor)
{
    const QDate fecha = leer(valor);
    if (!fecha.isValid())
        motor.throwError(QJSValue::TypeError, QStringLiteral("No es una fecha: %1").arg(valor.toString()));
    return fecha;
}
