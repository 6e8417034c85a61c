#include "paginatablero.h"

#include "vb/vb.h"

#include <QtMath>
#include <algorithm>

namespace {
// A dashboard is laid out on 10,000 × 7,000 twips.
constexpr int AnchoTwips = 10000;
constexpr int AltoTwips = 7000;
} // namespace

PaginaTablero::PaginaTablero()
    : m_area(0, 0, vb::twipsToPixels(AnchoTwips), vb::twipsToPixels(AltoTwips))
{
}

qreal PaginaTablero::ajustar(qreal valor) const
{
    return m_rejilla ? qRound(valor / Paso) * Paso : valor;
}

QPointF PaginaTablero::ajustarPosicion(const QPointF& punto, const QSizeF& tamano) const
{
    const qreal x = qBound(m_area.left(), ajustar(punto.x()), qMax(m_area.left(), m_area.right() - tamano.width()));
    const qreal y = qBound(m_area.top(), ajustar(punto.y()), qMax(m_area.top(), m_area.bottom() - tamano.height()));
    return QPointF(x, y);
}

QSizeF PaginaTablero::ajustarTamano(const QPointF& posicion, const QSizeF& tamano) const
{
    // Snapping the far edge, not the size, keeps an item that starts off the grid lined up with it.
    const qreal derecha = qBound(posicion.x() + TamanoMinimo, ajustar(posicion.x() + tamano.width()), m_area.right());
    const qreal abajo = qBound(posicion.y() + TamanoMinimo, ajustar(posicion.y() + tamano.height()), m_area.bottom());
    return QSizeF(qMax(TamanoMinimo, derecha - posicion.x()), qMax(TamanoMinimo, abajo - posicion.y()));
}

QSizeF PaginaTablero::tamanoNuevo(const QSizeF& necesario) const
{
    const auto medida = [this](qreal valor, qreal maximo) {
        const qreal entero = m_rejilla ? qCeil(valor / Paso) * Paso : qCeil(valor);
        return qBound(TamanoMinimo, entero, maximo);
    };
    return QSizeF(medida(necesario.width(), m_area.width()), medida(necesario.height(), m_area.height()));
}

QPointF PaginaTablero::huecoLibre(const QSizeF& tamano, const QList<QRectF>& ocupados, const QRectF& visible) const
{
    QPointF hueco;
    const QRectF zona = visible.intersected(m_area);
    if (!zona.isEmpty() && buscarEn(zona, tamano, ocupados, &hueco))
        return hueco;
    if (buscarEn(m_area, tamano, ocupados, &hueco))
        return hueco;
    return ajustarPosicion(zona.isEmpty() ? m_area.topLeft() : zona.topLeft(), tamano);
}

bool PaginaTablero::buscarEn(const QRectF& zona, const QSizeF& tamano, const QList<QRectF>& ocupados, QPointF* hueco) const
{
    // Candidates sit on the grid, one step in from the edges, so new items
    // keep a step of air between them and the page's border.
    const qreal inicioX = qCeil(zona.left() / Paso) * Paso + Paso;
    const qreal inicioY = qCeil(zona.top() / Paso) * Paso + Paso;
    for (qreal y = inicioY; y + tamano.height() <= zona.bottom(); y += Paso) {
        for (qreal x = inicioX; x + tamano.width() <= zona.right(); x += Paso) {
            // The step of air around each occupied item keeps neighbours apart.
            const QRectF candidato = QRectF(QPointF(x, y), tamano).adjusted(-Paso / 2, -Paso / 2, Paso / 2, Paso / 2);
            const bool libre = std::none_of(ocupados.cbegin(), ocupados.cend(),
                                            [&](const QRectF& r) { return r.intersects(candidato); });
            if (libre) {
                *hueco = QPointF(x, y);
                return true;
            }
        }
    }
    return false;
}
