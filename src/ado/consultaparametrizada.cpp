#include "consultaparametrizada.h"

namespace ado {

namespace {

bool esDigito(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

bool empiezaConSelect(const QString& sql)
{
    qsizetype i = 0;
    while (i < sql.size() && sql.at(i).isSpace())
        ++i;
    return QStringView(sql).mid(i, 7).compare(QLatin1String("select "), Qt::CaseInsensitive) == 0;
}

bool sinCitasNiComentarios(const QString& sql)
{
    for (const char* marca : {"'", "\"", "`", "[", "--", "/*", ";"}) {
        if (sql.contains(QLatin1String(marca)))
            return false;
    }
    return true;
}

} // namespace

std::optional<ConsultaParametrizada> ConsultaParametrizada::desde(const QString& sql)
{
    // Up to 18 digits always fit a 64-bit integer.
    constexpr qsizetype MaximoDigitos = 18;
    const qsizetype fin = sql.size();
    qsizetype inicio = fin;
    while (inicio > 0 && esDigito(sql.at(inicio - 1)))
        --inicio;
    if (inicio == fin || fin - inicio > MaximoDigitos)
        return std::nullopt;
    qsizetype antes = inicio;
    while (antes > 0 && sql.at(antes - 1) == QLatin1Char(' '))
        --antes;
    if (antes == 0 || sql.at(antes - 1) != QLatin1Char('='))
        return std::nullopt;
    if (!empiezaConSelect(sql) || !sinCitasNiComentarios(sql))
        return std::nullopt;
    return ConsultaParametrizada{sql.left(inicio) + QLatin1Char('?'), QStringView(sql).mid(inicio).toLongLong()};
}

} // namespace ado
