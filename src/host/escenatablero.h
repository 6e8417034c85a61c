#pragma once

#include "paginatablero.h"

#include <QGraphicsScene>

// The layout view's scene: the dashboard's page drawn white on a grey desk,
// with the grid's points while the grid is on, and a margin of desk around
// it so the view scrolls to every edge of the page.
class EscenaTablero : public QGraphicsScene {
    Q_OBJECT

public:
    explicit EscenaTablero(QObject* parent = nullptr);

    PaginaTablero& pagina() { return m_pagina; }
    const PaginaTablero& pagina() const { return m_pagina; }
    void setRejilla(bool activa);

protected:
    void drawBackground(QPainter* painter, const QRectF& rect) override;

private:
    PaginaTablero m_pagina;
};
