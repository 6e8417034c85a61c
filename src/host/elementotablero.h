#pragma once

#include <QGraphicsObject>
#include <QPointer>

// One item on the dashboard layout: a placed indicator (ETabIndicador) or a
// text figure (EFigura), drawn at its x, Y, W, H. Positions and sizes are
// stored in twips, 15 to a pixel, the unit the host's dashboards have always
// been laid out in. The user moves it by dragging and resizes it by its
// lower right corner; the item reports the change when the mouse is released.
class ElementoTablero : public QGraphicsObject {
    Q_OBJECT

public:
    // entidad: the ETabIndicador or EFigura; descripcion: what a placed
    // indicator shows (its kind and name), unused for figures.
    ElementoTablero(QObject* entidad, const QString& descripcion, QGraphicsItem* parent = nullptr);

    QObject* entidad() const { return m_entidad.data(); }
    bool esFigura() const;
    QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

signals:
    void cambiado(ElementoTablero* elemento);
    void editar(ElementoTablero* elemento);

protected:
    void mousePressEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent* event) override;
    void hoverMoveEvent(QGraphicsSceneHoverEvent* event) override;
    QVariant itemChange(GraphicsItemChange change, const QVariant& value) override;

private:
    QSizeF tamano() const;
    bool enEsquina(const QPointF& punto) const;
    void pintarIndicador(QPainter* painter, const QRectF& area) const;
    void pintarFigura(QPainter* painter, const QRectF& area) const;
    void guardarGeometria();

    QPointer<QObject> m_entidad;
    QString m_descripcion;
    bool m_redimensionando = false;
    bool m_movido = false;
};
