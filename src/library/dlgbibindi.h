#pragma once

#include "library/dialogo.h"

#include <QPointer>

// The indicator library, "Biblioteca de indicadores": perspectives with their
// indicators, added, edited and deleted through the engine's entry points.
class dlgBibIndi : public Dialogo {
    Q_OBJECT
public:
    explicit dlgBibIndi(QWidget* parent = nullptr);

    // Reloads the tree of perspectives and indicators.
    Q_INVOKABLE void Actualizar();

private:
};
