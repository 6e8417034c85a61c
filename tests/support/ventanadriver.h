#pragma once
// Finds the items of the host window's dashboard as a user sees them: the
// placed indicators and texts, a tile of a kind, the tab of a period.

#include "dialogdriver.h"
#include "elementotablero.h"
#include "render/piezatablero.h"
#include "ventanademo.h"

#include <QGraphicsView>

namespace driver {

inline QList<ElementoTablero*> elementos(VentanaDemo& ventana)
{
    QList<ElementoTablero*> result;
    for (QGraphicsItem* item : ventana.escena()->items())
        if (auto* e = dynamic_cast<ElementoTablero*>(item))
            result.append(e);
    return result;
}

inline ElementoTablero* indicadorDeTipo(VentanaDemo& ventana, int tipo)
{
    for (ElementoTablero* e : elementos(ventana))
        if (e->pieza() && e->pieza()->tipo() == tipo)
            return e;
    return nullptr;
}

// Where the tab of a period sits on a tile, in the view's coordinates.
inline QPoint pestana(VentanaDemo& ventana, ElementoTablero* elemento, int periodo)
{
    const QRectF area = elemento->boundingRect().adjusted(1, 1, -1, -1);
    auto* vista = control<QGraphicsView>(&ventana, QStringLiteral("vistaTablero"));
    for (qreal x = area.right() - 2; x > area.left(); x -= 1)
        if (elemento->pieza()->periodoEn(area, QPointF(x, 8)) == periodo)
            return vista->mapFromScene(elemento->mapToScene(QPointF(x - 2, 8)));
    return QPoint(-1, -1);
}

} // namespace driver
