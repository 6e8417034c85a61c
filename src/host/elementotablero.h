#pragma once

#include <QGraphicsObject>
#include <QPointer>
#include <memory>

class PaginaTablero;
class PiezaTablero;

// One item on the dashboard layout: a placed indicator (ETabIndicador) or a
// text figure (EFigura), drawn at its x, Y, W, H. Positions and sizes are
// stored in twips, 15 to a pixel, the unit the host's dashboards have always
// been laid out in. The user moves it by dragging and resizes it by its
// lower right corner; the item reports the change when the mouse is released.
// A placed indicator is drawn as the dashboard will show it when it is given
// its tile, whose period tabs switch the period with a click; without one it
// is a plain box with its kind and name, which is quicker to lay out.
class ElementoTablero : public QGraphicsObject {
    Q_OBJECT

public:
    // entidad: the ETabIndicador or EFigura; descripcion: what a placed
    // indicator shows (its kind and name), unused for figures.
    ElementoTablero(QObject* entidad, const QString& descripcion, QGraphicsItem* parent = nullptr);
    ElementoTablero(QObject* entidad, std::unique_ptr<PiezaTablero> pieza, QGraphicsItem* parent = nullptr);
    ~ElementoTablero() override;

    QObject* entidad() const { return m_entidad.data(); }
    bool esFigura() const;
    // The tile drawn for a placed indicator; none for figures and plain boxes.
    PiezaTablero* pieza() const { return m_pieza.get(); }
    // The size, in pixels, a text figure needs to show its text whole in its
    // font, wrapping only past anchoMaximo.
    static QSizeF tamanoParaTexto(const QObject* figura, qreal anchoMaximo);
    // Resizes the item to pedido, as far as the page and its grid allow.
    void redimensionar(const QSizeF& pedido);
    // Moves the item by distancia, or grows it by crecimiento, as far as the
    // page and its grid allow, and reports the change.
    void desplazar(const QPointF& distancia);
    void crecer(const QSizeF& crecimiento);
    // An item that is not editable is only looked at: it neither moves,
    // nor resizes, nor is selected, nor opens its editor; its tabs still
    // switch the period.
    void setEditable(bool editable);
    QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

signals:
    void cambiado(ElementoTablero* elemento);
    void editar(ElementoTablero* elemento);
    void periodoCambiado(ElementoTablero* elemento);

protected:
    void mousePressEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent* event) override;
    void hoverMoveEvent(QGraphicsSceneHoverEvent* event) override;
    QVariant itemChange(GraphicsItemChange change, const QVariant& value) override;

private:
    QSizeF tamano() const;
    const PaginaTablero* pagina() const;
    bool enEsquina(const QPointF& punto) const;
    int periodoEn(const QPointF& punto) const;
    void pintarIndicador(QPainter* painter, const QRectF& area) const;
    void pintarFigura(QPainter* painter, const QRectF& area) const;
    void guardarGeometria();

    QPointer<QObject> m_entidad;
    QString m_descripcion;
    std::unique_ptr<PiezaTablero> m_pieza;
    // A press on a period tab switches the period and neither moves nor selects the item.
    bool m_enPestana = false;
    bool m_redimensionando = false;
    bool m_movido = false;
    bool m_editable = true;
};
