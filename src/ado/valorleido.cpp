#include "valorleido.h"

#include <QSqlDriver>
#include <QSqlQuery>
#include <QSqlResult>
#include <libpq-fe.h>

namespace ado {

namespace {

// Whether the text PostgreSQL sent for the column starts with the UTF-8 form
// of U+FEFF.
bool empiezaConMarca(const QSqlQuery& query, int column)
{
    // The driver's handle names the type as libpq declares it.
    const QVariant handle = query.result()->handle();
    if (qstrcmp(handle.typeName(), "pg_result*") != 0 && qstrcmp(handle.typeName(), "PGresult*") != 0)
        return false;
    PGresult* result = *static_cast<PGresult* const*>(handle.constData());
    if (!result)
        return false;
    // A forward-only result holds the current row alone.
    const int row = query.isForwardOnly() ? 0 : query.at();
    const auto* bytes = reinterpret_cast<const unsigned char*>(PQgetvalue(result, row, column));
    return bytes && bytes[0] == 0xEF && bytes[1] == 0xBB && bytes[2] == 0xBF;
}

} // namespace

QVariant valorLeido(const QSqlQuery& query, int column)
{
    QVariant value = query.value(column);
    if (value.typeId() != QMetaType::QString || value.isNull()
        || query.driver()->dbmsType() != QSqlDriver::PostgreSQL)
        return value;
    if (empiezaConMarca(query, column))
        return QString(QChar(0xFEFF) + value.toString());
    return value;
}

} // namespace ado
