// The layout's undo history: every add, move, resize, edit and delete of an
// item is a step, written to the database when it is done, undone and redone.
#include "cambioelemento.h"
#include "elementotablero.h"
#include "model/vendimarbi.h"
#include "presenciaelemento.h"
#include "ventanademo.h"
#include "vistatablero.h"

#include <QMenu>
#include <QMenuBar>
#include <QUndoStack>

using namespace VendimarBI;

void VentanaDemo::prepararHistoria(QMenu* antesDe)
{
    m_historia = new QUndoStack(this);
    auto* menu = new QMenu(QStringLiteral("E&dición"), this);
    menuBar()->insertMenu(antesDe->menuAction(), menu);
    QAction* deshacer = m_historia->createUndoAction(menu, QStringLiteral("&Deshacer"));
    deshacer->setObjectName(QStringLiteral("actDeshacer"));
    deshacer->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Z)});
    QAction* rehacer = m_historia->createRedoAction(menu, QStringLiteral("&Rehacer"));
    rehacer->setObjectName(QStringLiteral("actRehacer"));
    rehacer->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Y), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)});
    menu->addActions({deshacer, rehacer});
}

void VentanaDemo::registrar(OrdenElemento* orden)
{
    m_historia->push(orden);
}

void VentanaDemo::registrarPresencia(int paso, QObject* entidad, const QVariantMap& estado)
{
    const int tipo = entidad->metaObject()->indexOfProperty("Texto") >= 0 ? cFigura : ctabindicador;
    const int pk = entidad->property("Sys_PK").toInt();
    const bool alta = paso == PresenciaElemento::Alta;
    registrar(new PresenciaElemento(static_cast<PresenciaElemento::Paso>(paso), &m_almacen,
                                    alta ? m_almacen.clave(tipo, pk) : m_almacen.soltar(tipo, pk), estado,
                                    [this](const ClaveElemento& clave) { mostrarCambio(clave); }));
}

void VentanaDemo::mostrarCambio(const ClaveElemento& clave)
{
    mostrarTablero();
    for (QGraphicsItem* item : m_escena->items()) {
        auto* elemento = dynamic_cast<ElementoTablero*>(item);
        if (elemento && elemento->esFigura() == (clave.tipo == cFigura)
            && elemento->entidad()->property("Sys_PK").toInt() == clave.pk) {
            elemento->setSelected(true);
            m_vista->ensureVisible(elemento);
        }
    }
}
