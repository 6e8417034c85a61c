#include "dlgconfigindi.h"

dlgConfigIndi::dlgConfigIndi(QWidget* parent)
    : Dialogo(parent)
{
    setObjectName(QStringLiteral("dlgConfigIndi"));
    setWindowTitle(QStringLiteral("Configuración de indicador"));
}

QObject* dlgConfigIndi::TabIndicador() const
{
    return m_tabIndicador.data();
}

void dlgConfigIndi::setTabIndicador(QObject* tabIndicador)
{
    m_tabIndicador = tabIndicador;
}

void dlgConfigIndi::putData()
{
}

void dlgConfigIndi::getData()
{
}

void dlgConfigIndi::reject()
{
    m_aceptado = false;
    ocultar();
}
