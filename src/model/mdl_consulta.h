#pragma once
// The two routines of mdl_functions that have no user interface: the
// recordset opener and the number reader. The entity classes use them.

#include "ado/recordset.h"

#include <QString>
#include <memory>

class QObject;

namespace mdl_functions {

// A client-side recordset on the SQL text, positioned on its first row; none
// when the query fails or returns no row.
std::unique_ptr<ado::Recordset> AbrirConsulta(QObject* conexion, const QString& sql);

// The longest leading number of the text, read culture-independently
// (blanks skipped, "." decimal point, sign, exponent, &H and &O); 0 when the
// text starts with no number or cannot be read.
double ValorNumero(const QString& texto);

} // namespace mdl_functions

// A recordset row read like a table row, so loads can use the same column readers.
class FilaConsulta {
public:
    explicit FilaConsulta(const ado::Recordset& rs) : m_rs(rs) {}
    QVariant Campo(const QString& name) const { return m_rs.Fields(name); }

private:
    const ado::Recordset& m_rs;
};
