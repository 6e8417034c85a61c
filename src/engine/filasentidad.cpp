#include "filasentidad.h"

#include "ado/recordset.h"
#include "vb/variantconv.h"
#include "vb/vb.h"

#include <QRegularExpression>

namespace FilasEntidad {

namespace {

Fila leerFila(const ado::Recordset& rs, const QString& separador)
{
    Fila fila;
    QStringList partes;
    for (int i = 0; i < rs.FieldCount(); ++i) {
        const QVariant value = rs.Fields(i);
        if (rs.FieldName(i).compare(QLatin1String("Sys_PK"), Qt::CaseInsensitive) == 0) {
            fila.clave = vb::isNull(value) ? 0 : vb::toLong(value);
            continue;
        }
        const QString text = vb::isNull(value) ? QString() : vb::toText(value).trimmed();
        if (!text.isEmpty())
            partes.append(text);
    }
    fila.texto = partes.join(separador);
    return fila;
}

QList<Fila> consultar(QObject* conexion, const QString& tipoEntidad, const QString& condicion, const QString& separador)
{
    QList<Fila> filas;
    if (!esIdentificador(tipoEntidad))
        return filas;
    try {
        ado::Recordset rs;
        rs.setActiveConnection(conexion);
        rs.setSource(QStringLiteral("SELECT * FROM %1%2 ORDER BY Sys_PK").arg(tipoEntidad, condicion));
        rs.Open();
        for (; rs.State() == 1 && !rs.atEnd(); rs.MoveNext())
            filas.append(leerFila(rs, separador));
    } catch (const vb::AutomationError&) {
        filas.clear();
    }
    return filas;
}

} // namespace

bool esIdentificador(const QString& tipoEntidad)
{
    static const QRegularExpression identifier(QStringLiteral("^[A-Za-z_][A-Za-z0-9_]{0,62}$"));
    return identifier.match(tipoEntidad).hasMatch();
}

bool existe(QObject* conexion, const QString& tipoEntidad)
{
    if (!esIdentificador(tipoEntidad))
        return false;
    try {
        ado::Recordset rs;
        rs.setActiveConnection(conexion);
        rs.setSource(QStringLiteral("SELECT * FROM %1 WHERE 1=0").arg(tipoEntidad));
        rs.Open();
        return rs.State() == 1;
    } catch (const vb::AutomationError&) {
        return false;
    }
}

QList<Fila> todas(QObject* conexion, const QString& tipoEntidad, const QString& separador)
{
    return consultar(conexion, tipoEntidad, QString(), separador);
}

Fila una(QObject* conexion, const QString& tipoEntidad, int clave, const QString& separador)
{
    const QList<Fila> filas =
        consultar(conexion, tipoEntidad, QStringLiteral(" WHERE Sys_PK=%1").arg(clave), separador);
    return filas.isEmpty() ? Fila{} : filas.first();
}

} // namespace FilasEntidad
