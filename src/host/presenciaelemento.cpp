#include "presenciaelemento.h"

#include "model/vendimarbi.h"

namespace {
QString textoDe(PresenciaElemento::Paso paso, int tipo)
{
    if (paso == PresenciaElemento::Baja)
        return QStringLiteral("eliminar elemento");
    return tipo == VendimarBI::cFigura ? QStringLiteral("agregar texto") : QStringLiteral("colocar indicador");
}
} // namespace

PresenciaElemento::PresenciaElemento(Paso paso, AlmacenElementos* almacen, std::shared_ptr<ClaveElemento> clave,
                                     QVariantMap estado, AlCambiar alCambiar)
    : OrdenElemento(textoDe(paso, clave->tipo), almacen, clave, std::move(alCambiar))
    , m_paso(paso)
    , m_estado(std::move(estado))
{
}

bool PresenciaElemento::aplicar(bool adelante)
{
    // An add done forwards, or a delete undone, puts the item on the dashboard.
    const bool presente = adelante == (m_paso == Alta);
    return presente ? m_almacen->crear(m_clave, m_estado) : m_almacen->borrar(*m_clave);
}
