#include "dlgfig.h"

dlgFig::dlgFig(QWidget* parent)
    : Dialogo(parent)
{
    setObjectName(QStringLiteral("dlgFig"));
    setWindowTitle(QStringLiteral("Propiedades de texto"));
}

QObject* dlgFig::Figura() const
{
    return m_figura.data();
}

void dlgFig::setFigura(QObject* figura)
{
    m_figura = figura;
}

void dlgFig::putData()
{
}

void dlgFig::getData()
{
}

void dlgFig::reject()
{
    m_aceptado = false;
    ocultar();
}
