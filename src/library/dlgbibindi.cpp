#include "dlgbibindi.h"

dlgBibIndi::dlgBibIndi(QWidget* parent)
    : Dialogo(parent)
{
    setObjectName(QStringLiteral("dlgBibIndi"));
    setWindowTitle(QStringLiteral("Biblioteca de indicadores"));
}

void dlgBibIndi::Actualizar()
{
}
