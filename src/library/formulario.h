#pragma once
// Small builders for the editors' layouts, so every dialog names its
// controls and labels the same way.

#include <QString>

class QDialogButtonBox;
class QGridLayout;
class QLabel;
class QPushButton;
class QWidget;

namespace vbui {

// A control with its objectName, on a new row of the grid with its label.
template <typename Control>
Control* campo(QGridLayout* grid, const QString& etiqueta, const QString& nombre, QWidget* parent,
               const QString& nombreEtiqueta = QString());

// A labelled row: the label (named when a name is given) and the control.
QLabel* fila(QGridLayout* grid, const QString& etiqueta, QWidget* control, const QString& nombreEtiqueta = QString());

// The accept and cancel buttons, named, with accept the default button.
QDialogButtonBox* botones(QWidget* parent, const QString& aceptar, const QString& cancelar,
                          QPushButton** botonAceptar, QPushButton** botonCancelar);

} // namespace vbui

#include <QGridLayout>
#include <QLabel>

template <typename Control>
Control* vbui::campo(QGridLayout* grid, const QString& etiqueta, const QString& nombre, QWidget* parent,
                     const QString& nombreEtiqueta)
{
    auto* control = new Control(parent);
    control->setObjectName(nombre);
    fila(grid, etiqueta, control, nombreEtiqueta);
    return control;
}
