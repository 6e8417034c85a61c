#pragma once

#include "library/dialogo.h"

#include <QPointer>

// The indicator picker, "Seleccionar indicador": perspectives on the left, the
// selected perspective's indicators on the right; Resultado is the key picked.
class dlgSelIndicador : public Dialogo {
    Q_OBJECT
public:
    explicit dlgSelIndicador(QWidget* parent = nullptr);


private:
};
