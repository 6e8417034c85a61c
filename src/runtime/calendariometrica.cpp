#include "calendariometrica.h"

#include "fechajs.h"
#include "vb/calendario.h"
#include "vb/vb.h"

#include <QJSEngine>

QJSValue CalendarioMetrica::fecha(double serial)
{
    return FechaJS::escribir(*qjsEngine(this), vb::toQDate(serial));
}

template <typename Operacion>
QJSValue CalendarioMetrica::numero(const QJSValue& fecha, Operacion operacion)
{
    const QDate leida = FechaJS::exigir(*qjsEngine(this), fecha);
    return leida.isValid() ? QJSValue(operacion(vb::fromQDate(leida))) : QJSValue();
}

QJSValue CalendarioMetrica::WeekNum(const QJSValue& f) { return numero(f, vb::calendario::weekNum); }
QJSValue CalendarioMetrica::daytonum(const QJSValue& f) { return numero(f, vb::calendario::dayToNum); }
QJSValue CalendarioMetrica::IniMes(int mes) { return fecha(vb::calendario::iniMes(mes)); }
QJSValue CalendarioMetrica::FinMes(int mes) { return fecha(vb::calendario::finMes(mes)); }
QJSValue CalendarioMetrica::day_ofweeknum(int semana) { return fecha(vb::calendario::dayOfWeekNum(semana)); }
QJSValue CalendarioMetrica::numtodate(int numero) { return fecha(vb::calendario::numToDate(numero)); }
