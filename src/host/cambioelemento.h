#pragma once

#include "ordenelemento.h"

#include <QVariantMap>

// A move, a resize or an edit of an item: its state before and after.
class CambioElemento : public OrdenElemento {
public:
    CambioElemento(AlmacenElementos* almacen, std::shared_ptr<ClaveElemento> clave, QVariantMap antes,
                   QVariantMap despues, AlCambiar alCambiar);

    // What the user did, in the words of the Edit menu: a move, a resize or an edit.
    static QString describir(const QVariantMap& antes, const QVariantMap& despues);

protected:
    bool aplicar(bool adelante) override;

private:
    QVariantMap m_antes;
    QVariantMap m_despues;
};
