#pragma once

#include "library/dialogo.h"

#include <QPointer>

// The metric library, "Biblioteca de métricas": the tree of perspectives and
// metrics, with adding, editing and deleting through the engine's entry points.
class dlgBibdatos : public Dialogo {
    Q_OBJECT
public:
    explicit dlgBibdatos(QWidget* parent = nullptr);

    // Reloads the tree of perspectives and metrics.
    Q_INVOKABLE void Actualizar();

private:
};
