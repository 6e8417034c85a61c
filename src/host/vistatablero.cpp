#include "vistatablero.h"

#include "elementotablero.h"

#include <QContextMenuEvent>
#include <QHash>
#include <QKeyEvent>
#include <QMenu>
#include <algorithm>

VistaTablero::VistaTablero(QGraphicsScene* escena, QWidget* parent)
    : QGraphicsView(escena, parent)
{
    setFocusPolicy(Qt::StrongFocus);
}

ElementoTablero* VistaTablero::seleccionado() const
{
    const QList<QGraphicsItem*> seleccion = scene()->selectedItems();
    return seleccion.isEmpty() ? nullptr : dynamic_cast<ElementoTablero*>(seleccion.first());
}

QList<ElementoTablero*> VistaTablero::elementosEnOrden() const
{
    QList<ElementoTablero*> elementos;
    for (QGraphicsItem* item : scene()->items())
        if (auto* elemento = dynamic_cast<ElementoTablero*>(item))
            elementos.append(elemento);
    std::sort(elementos.begin(), elementos.end(), [](const ElementoTablero* a, const ElementoTablero* b) {
        return std::make_pair(a->y(), a->x()) < std::make_pair(b->y(), b->x());
    });
    return elementos;
}

void VistaTablero::seleccionarSiguiente(bool atras)
{
    const QList<ElementoTablero*> elementos = elementosEnOrden();
    if (elementos.isEmpty())
        return;
    const qsizetype actual = elementos.indexOf(seleccionado());
    const qsizetype total = elementos.size();
    const qsizetype siguiente = actual < 0 ? (atras ? total - 1 : 0) : (actual + (atras ? total - 1 : 1)) % total;
    scene()->clearSelection();
    elementos[siguiente]->setSelected(true);
    ensureVisible(elementos[siguiente]);
}

// Tab would otherwise leave the view for the next widget: here it goes through the items.
bool VistaTablero::event(QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        auto* tecla = static_cast<QKeyEvent*>(event);
        if (tecla->key() == Qt::Key_Tab || tecla->key() == Qt::Key_Backtab) {
            seleccionarSiguiente(tecla->key() == Qt::Key_Backtab);
            return true;
        }
    }
    return QGraphicsView::event(event);
}

void VistaTablero::keyPressEvent(QKeyEvent* event)
{
    static const QHash<int, QPoint> direcciones{{Qt::Key_Left, QPoint(-1, 0)}, {Qt::Key_Right, QPoint(1, 0)},
                                                {Qt::Key_Up, QPoint(0, -1)}, {Qt::Key_Down, QPoint(0, 1)}};
    ElementoTablero* elemento = seleccionado();
    if (!elemento || !direcciones.contains(event->key())) {
        QGraphicsView::keyPressEvent(event);
        return;
    }
    const QPoint paso = direcciones.value(event->key());
    if (event->modifiers() & Qt::ShiftModifier)
        emit redimensionarPedido(elemento, paso.x(), paso.y());
    else
        emit moverPedido(elemento, paso.x(), paso.y());
    ensureVisible(elemento);
}

void VistaTablero::contextMenuEvent(QContextMenuEvent* event)
{
    m_puntoMenu = mapToScene(event->pos());
    auto* elemento = dynamic_cast<ElementoTablero*>(itemAt(event->pos()));
    if (elemento) {
        scene()->clearSelection();
        elemento->setSelected(true);
    }
    QMenu menu(this);
    menu.setObjectName(elemento ? QStringLiteral("menuElemento") : QStringLiteral("menuPagina"));
    menu.addActions(elemento ? m_accionesElemento : m_accionesPagina);
    menu.exec(event->globalPos());
}
