#include "formulario.h"

#include <QDialogButtonBox>
#include <QPushButton>

namespace vbui {

QLabel* fila(QGridLayout* grid, const QString& etiqueta, QWidget* control, const QString& nombreEtiqueta)
{
    const int row = grid->rowCount();
    auto* label = new QLabel(etiqueta, control->parentWidget());
    if (!nombreEtiqueta.isEmpty())
        label->setObjectName(nombreEtiqueta);
    label->setBuddy(control);
    grid->addWidget(label, row, 0, Qt::AlignLeft | Qt::AlignTop);
    grid->addWidget(control, row, 1);
    return label;
}

QDialogButtonBox* botones(QWidget* parent, const QString& aceptar, const QString& cancelar,
                          QPushButton** botonAceptar, QPushButton** botonCancelar)
{
    auto* box = new QDialogButtonBox(parent);
    auto* ok = new QPushButton(QStringLiteral("&Aceptar"), box);
    ok->setObjectName(aceptar);
    ok->setDefault(true);
    ok->setAutoDefault(true);
    auto* cancel = new QPushButton(QStringLiteral("&Cancelar"), box);
    cancel->setObjectName(cancelar);
    cancel->setAutoDefault(false);
    box->addButton(ok, QDialogButtonBox::AcceptRole);
    box->addButton(cancel, QDialogButtonBox::RejectRole);
    *botonAceptar = ok;
    *botonCancelar = cancel;
    return box;
}

} // namespace vbui
