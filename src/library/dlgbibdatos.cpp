#include "dlgbibdatos.h"

dlgBibdatos::dlgBibdatos(QWidget* parent)
    : Dialogo(parent)
{
    setObjectName(QStringLiteral("dlgBibdatos"));
    setWindowTitle(QStringLiteral("Biblioteca de métricas"));
}

void dlgBibdatos::Actualizar()
{
}
