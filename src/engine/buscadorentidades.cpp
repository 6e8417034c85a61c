#include "buscadorentidades.h"

#include "dlgbuscarentidad.h"
#include "filasentidad.h"

#include <QApplication>

BuscadorEntidades::BuscadorEntidades(QObject* parent)
    : QObject(parent)
{
}

QVariant BuscadorEntidades::Conectar(QObject* conexion)
{
    m_conexion = conexion;
    return QVariant();
}

// An unknown kind, or a table that cannot be read, opens no window.
QVariant BuscadorEntidades::Buscar(const QString& tipoEntidad, bool /*flag*/)
{
    if (!FilasEntidad::esIdentificador(tipoEntidad))
        return 0;
    const QList<FilasEntidad::Fila> filas = FilasEntidad::todas(m_conexion.data(), tipoEntidad, QStringLiteral(" "));
    if (filas.isEmpty() && !FilasEntidad::existe(m_conexion.data(), tipoEntidad))
        return 0;
    dlgBuscarEntidad ventana(tipoEntidad, filas, QApplication::activeWindow());
    return ventana.exec() == QDialog::Accepted ? ventana.claveElegida() : 0;
}

QString BuscadorEntidades::Describir(const QString& tipoEntidad, const QString& clave, const QString& separador)
{
    bool isNumber = false;
    const int key = clave.trimmed().toInt(&isNumber);
    if (!isNumber)
        return QString();
    return FilasEntidad::una(m_conexion.data(), tipoEntidad, key, separador).texto;
}
