#include "ordenelemento.h"

#include "engine/msgbox.h"
#include "vb/automationerror.h"

OrdenElemento::OrdenElemento(const QString& texto, AlmacenElementos* almacen, std::shared_ptr<ClaveElemento> clave,
                             AlCambiar alCambiar)
    : QUndoCommand(texto)
    , m_almacen(almacen)
    , m_clave(std::move(clave))
    , m_alCambiar(std::move(alCambiar))
{
}

void OrdenElemento::undo()
{
    ejecutar(false);
}

void OrdenElemento::redo()
{
    if (m_hecha) {
        m_hecha = false;
        return;
    }
    ejecutar(true);
}

void OrdenElemento::ejecutar(bool adelante)
{
    // A write the database refuses is told, and the dashboard is drawn as
    // it is stored, so what the user sees is never what was not saved.
    try {
        if (!aplicar(adelante))
            vbui::MsgBox(QStringLiteral("No se pudo guardar el elemento."), vbui::vbExclamation);
    } catch (const vb::AutomationError& e) {
        vbui::MsgBox(e.description(), vbui::vbExclamation);
    }
    m_alCambiar(*m_clave);
}
