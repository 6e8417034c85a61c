#pragma once

#include "almacenelementos.h"

#include <QUndoCommand>
#include <functional>
#include <memory>

// A step of the layout's undo history. The window does the step itself
// (with its dialogs, questions and rights) and records it once done, so the
// first redo, run by the stack on push, writes nothing. Later undos and
// redos write the item through the store and tell the window which item
// changed, so it draws the dashboard again.
class OrdenElemento : public QUndoCommand {
public:
    using AlCambiar = std::function<void(const ClaveElemento&)>;

    OrdenElemento(const QString& texto, AlmacenElementos* almacen, std::shared_ptr<ClaveElemento> clave,
                  AlCambiar alCambiar);

    void undo() override;
    void redo() override;

protected:
    // Writes the item as it is after the step (adelante) or before it.
    virtual bool aplicar(bool adelante) = 0;

    AlmacenElementos* m_almacen;
    std::shared_ptr<ClaveElemento> m_clave;

private:
    void ejecutar(bool adelante);

    AlCambiar m_alCambiar;
    bool m_hecha = true;
};
