#include "buscadorentidades.h"

#include "ado/connection.h"
#include "ado/recordset.h"
#include "vb/vb.h"

#include <QRegularExpression>

namespace {

// A kind text becomes a table name inside SQL, so only a plain identifier will do.
bool isPlainIdentifier(const QString& text)
{
    static const QRegularExpression identifier(QStringLiteral("^[A-Za-z_][A-Za-z0-9_]{0,62}$"));
    return identifier.match(text).hasMatch();
}

} // namespace

BuscadorEntidades::BuscadorEntidades(QObject* parent)
    : QObject(parent)
{
}

QVariant BuscadorEntidades::Conectar(QObject* conexion)
{
    m_conexion = conexion;
    return QVariant();
}

QVariant BuscadorEntidades::Buscar(const QString& /*tipoEntidad*/, bool /*flag*/)
{
    // Picking needs the host's search window; without one nothing is chosen.
    return 0;
}

QString BuscadorEntidades::Describir(const QString& tipoEntidad, const QString& clave, const QString& separador)
{
    bool isNumber = false;
    const int key = clave.trimmed().toInt(&isNumber);
    if (!isNumber || !isPlainIdentifier(tipoEntidad) || !ado::openConnection(m_conexion.data()))
        return QString();
    try {
        ado::Recordset rs;
        rs.setActiveConnection(m_conexion.data());
        rs.setSource(QStringLiteral("SELECT * FROM %1 WHERE Sys_PK=%2").arg(tipoEntidad).arg(key));
        rs.Open();
        if (rs.State() != 1 || rs.atEnd())
            return QString();
        QStringList parts;
        for (int i = 0; i < rs.FieldCount(); ++i) {
            if (rs.FieldName(i).compare(QLatin1String("Sys_PK"), Qt::CaseInsensitive) == 0)
                continue;
            const QVariant value = rs.Fields(i);
            if (!vb::isNull(value) && !value.toString().trimmed().isEmpty())
                parts.append(value.toString().trimmed());
        }
        return parts.join(separador);
    } catch (const vb::AutomationError&) {
        return QString();
    }
}
