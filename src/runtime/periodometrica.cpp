#include "periodometrica.h"

#include "vb/calendario.h"
#include "vb/vb.h"

#include <QStringList>
#include <algorithm>

namespace {

// Weeks are those of the engine's WeekNum: week n of a year starts on
// 1 January + 7(n-1) days, so the last week of a year is one or two days long.
IntervaloPeriodo semana(const QDate& fecha)
{
    const int numero = vb::calendario::weekNum(vb::fromQDate(fecha)) % 100;
    const QDate inicio = QDate(fecha.year(), 1, 1).addDays(7 * (numero - 1));
    return {inicio, std::min(inicio.addDays(6), QDate(fecha.year(), 12, 31))};
}

} // namespace

IntervaloPeriodo PeriodoMetrica::intervalo(int periodo, const QDate& fecha)
{
    if (!fecha.isValid())
        return {};
    switch (periodo) {
    case 0:
        return {fecha, fecha};
    case 1:
        return semana(fecha);
    case 2:
        return {QDate(fecha.year(), fecha.month(), 1),
                QDate(fecha.year(), fecha.month(), fecha.daysInMonth())};
    case 3:
        return {QDate(fecha.year(), 1, 1), QDate(fecha.year(), 12, 31)};
    default:
        return {};
    }
}

// The day before a period starts lies in the one before it, whatever the
// length of either: the short last week of a year is followed back by a full one.
IntervaloPeriodo PeriodoMetrica::anterior(int periodo, const QDate& fecha, int atras)
{
    IntervaloPeriodo result = intervalo(periodo, fecha);
    for (int i = 0; i < atras && result.inicio.isValid(); ++i)
        result = intervalo(periodo, result.inicio.addDays(-1));
    return result;
}

int PeriodoMetrica::desdeNombre(const QString& nombre)
{
    static const QStringList nombres = {QStringLiteral("dia"), QStringLiteral("semana"),
                                        QStringLiteral("mes"), QStringLiteral("ano")};
    return int(nombres.indexOf(nombre.trimmed().toLower()));
}
