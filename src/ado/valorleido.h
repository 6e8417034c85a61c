#pragma once

#include <QVariant>

class QSqlQuery;

namespace ado {

// A column of the query's current row; a text exactly as the database holds
// it. Qt's PostgreSQL driver decodes texts with QString::fromUtf8, which takes
// a leading U+FEFF for a byte-order mark and drops it; this puts it back.
QVariant valorLeido(const QSqlQuery& query, int column);

} // namespace ado
