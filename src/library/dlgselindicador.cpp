#include "dlgselindicador.h"

dlgSelIndicador::dlgSelIndicador(QWidget* parent)
    : Dialogo(parent)
{
    setObjectName(QStringLiteral("dlgSelIndicador"));
    setWindowTitle(QStringLiteral("Seleccionar indicador"));
}

