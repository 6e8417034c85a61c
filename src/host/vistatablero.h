#pragma once

#include <QGraphicsView>
#include <QList>

class ElementoTablero;
class QAction;

// The layout view worked from the keyboard and the context menu: arrows
// ask to move the selected item, Shift+arrows to resize it, Tab and
// Shift+Tab select the items in reading order (top to bottom, left to
// right). A right click on an item selects it and offers the item's
// actions; on the page, the page's actions, which read where it was
// clicked from puntoMenu().
class VistaTablero : public QGraphicsView {
    Q_OBJECT

public:
    explicit VistaTablero(QGraphicsScene* escena, QWidget* parent = nullptr);

    void setAccionesElemento(const QList<QAction*>& acciones) { m_accionesElemento = acciones; }
    void setAccionesPagina(const QList<QAction*>& acciones) { m_accionesPagina = acciones; }
    // Where on the page the last context menu was asked for.
    QPointF puntoMenu() const { return m_puntoMenu; }
    ElementoTablero* seleccionado() const;
    // Selects the next item in reading order (the previous one when atras), wrapping round.
    void seleccionarSiguiente(bool atras);

signals:
    // In steps of the grid: how far to move, or how much to grow, the selected item.
    void moverPedido(ElementoTablero* elemento, int pasosX, int pasosY);
    void redimensionarPedido(ElementoTablero* elemento, int pasosX, int pasosY);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    QList<ElementoTablero*> elementosEnOrden() const;

    QList<QAction*> m_accionesElemento;
    QList<QAction*> m_accionesPagina;
    QPointF m_puntoMenu;
};
