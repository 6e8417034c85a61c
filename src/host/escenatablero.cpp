#include "escenatablero.h"

#include <QPainter>
#include <cmath>

namespace {
constexpr qreal Margen = 20.0;
}

EscenaTablero::EscenaTablero(QObject* parent)
    : QGraphicsScene(parent)
{
    setSceneRect(m_pagina.area().adjusted(-Margen, -Margen, Margen, Margen));
}

void EscenaTablero::setRejilla(bool activa)
{
    m_pagina.setRejilla(activa);
    update();
}

void EscenaTablero::drawBackground(QPainter* painter, const QRectF& rect)
{
    painter->fillRect(rect, QColor(214, 218, 224));
    const QRectF area = m_pagina.area();
    painter->fillRect(area.translated(3, 3), QColor(170, 175, 185));
    painter->fillRect(area, Qt::white);
    painter->setPen(QColor(150, 155, 165));
    painter->drawRect(area);
    if (!m_pagina.rejilla())
        return;
    // Only the points the repainted part shows are drawn: the page holds thousands.
    const QRectF zona = rect.intersected(area);
    painter->setPen(QColor(200, 205, 212));
    const qreal paso = PaginaTablero::Paso;
    for (qreal y = std::ceil(zona.top() / paso) * paso; y <= zona.bottom(); y += paso)
        for (qreal x = std::ceil(zona.left() / paso) * paso; x <= zona.right(); x += paso)
            painter->drawPoint(QPointF(x, y));
}
