#pragma once

#include "ordenelemento.h"

#include <QVariantMap>

// An item added to the dashboard or deleted from it. Undoing a delete, or
// redoing an add, inserts the item anew with the state it had; its key
// changes, and the shared key tells every other step of the history.
class PresenciaElemento : public OrdenElemento {
public:
    enum Paso { Alta, Baja };

    PresenciaElemento(Paso paso, AlmacenElementos* almacen, std::shared_ptr<ClaveElemento> clave, QVariantMap estado,
                      AlCambiar alCambiar);

protected:
    bool aplicar(bool adelante) override;

private:
    Paso m_paso;
    QVariantMap m_estado;
};
