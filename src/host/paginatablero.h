#pragma once

#include <QList>
#include <QRectF>

// The page of a dashboard in the layout view and the rules that keep items
// on it: every item lies wholly inside the page, and while the grid is on,
// positions and sizes fall on its lines. New items go to the first free spot.
// All measures are in pixels of the layout view.
class PaginaTablero {
public:
    PaginaTablero();

    QRectF area() const { return m_area; }
    bool rejilla() const { return m_rejilla; }
    void setRejilla(bool activa) { m_rejilla = activa; }
    // One step of the grid: what an arrow key moves an item by.
    static constexpr qreal Paso = 10.0;
    static constexpr qreal TamanoMinimo = 20.0;

    // Where an item of this size may stand when asked to stand at punto.
    QPointF ajustarPosicion(const QPointF& punto, const QSizeF& tamano) const;
    // The size an item standing at posicion may take when asked for tamano.
    QSizeF ajustarTamano(const QPointF& posicion, const QSizeF& tamano) const;
    // The size a new item is given for what its content needs: whole grid
    // steps, never less than it needs, never wider or taller than the page.
    QSizeF tamanoNuevo(const QSizeF& necesario) const;
    // The first spot, row by row from the top left of visible, where an item
    // of this size overlaps none of ocupados; the whole page is searched
    // when the visible part has none, and its top left is used when the
    // page is full.
    QPointF huecoLibre(const QSizeF& tamano, const QList<QRectF>& ocupados, const QRectF& visible) const;

private:
    qreal ajustar(qreal valor) const;
    bool buscarEn(const QRectF& zona, const QSizeF& tamano, const QList<QRectF>& ocupados, QPointF* hueco) const;

    QRectF m_area;
    bool m_rejilla = true;
};
