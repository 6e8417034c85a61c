#include "dlgbibdatos.h"

#include "arbolclaves.h"
#include "engine/eengine.h"
#include "engine/msgbox.h"
#include "mdl_functions.h"
#include "model/vendimarbi.h"

#include <QPushButton>

namespace {
constexpr short ImagenPerspectiva = 1;
constexpr short ImagenMetrica = 2;
constexpr short SinIndicadores = 0;
} // namespace

dlgBibdatos::dlgBibdatos(QWidget* parent)
    : DialogoBiblioteca(parent)
{
    setObjectName(QStringLiteral("dlgBibdatos"));
    setWindowTitle(QStringLiteral("Biblioteca de métricas"));

    cAd1 = boton("cAd1", QStringLiteral("Agregar perspectiva"));
    Command1 = boton("Command1", QStringLiteral("Agregar métrica"));
    Command2 = boton("Command2", QStringLiteral("Editar"));
    Command3 = boton("Command3", QStringLiteral("Eliminar"));
    cCerrar = boton("cCerrar", QStringLiteral("&Cerrar"));

    // A double click edits here; letting it also fold the node would leave
    // the tree changed under a cancelled editor.
    arbol()->setExpandsOnDoubleClick(false);
    disponerBiblioteca({cAd1, Command1, Command2, Command3}, cCerrar);

    connect(cAd1, &QPushButton::clicked, this, &dlgBibdatos::agregarPerspectiva);
    connect(Command1, &QPushButton::clicked, this, &dlgBibdatos::agregarMetrica);
    connect(Command2, &QPushButton::clicked, this, &dlgBibdatos::editar);
    connect(Command3, &QPushButton::clicked, this, &dlgBibdatos::eliminar);
    connect(arbol(), &QTreeWidget::itemDoubleClicked, this, &dlgBibdatos::editar);
}

void dlgBibdatos::alCargar()
{
    Actualizar();
}

void dlgBibdatos::Actualizar()
{
    mdl_functions::LlenarArbol(conexion(), arbol(), ImagenPerspectiva, ImagenMetrica, SinIndicadores);
}

void dlgBibdatos::agregarPerspectiva()
{
    EEngine* e = engine();
    if (e && e->Form_Agregar_Perspectiva(padreParaNuevo()) > 0)
        Actualizar();
}

void dlgBibdatos::agregarMetrica()
{
    EEngine* e = engine();
    if (e && e->Form_Agregar_Metrica(padreParaNuevo()) > 0)
        Actualizar();
}

void dlgBibdatos::editar()
{
    const QTreeWidgetItem* nodo = nodoSeleccionado();
    if (!nodo) {
        vbui::MsgBox(SeleccioneUnElemento);
        return;
    }
    EEngine* e = engine();
    if (!e)
        return;
    const int clave = claveFila(nodo);
    const bool guardado = esPerspectiva(nodo) ? e->Form_Editar_Perspectiva(clave) : e->Form_Editar_Metrica(clave);
    if (guardado)
        Actualizar();
}

void dlgBibdatos::eliminar()
{
    const QTreeWidgetItem* nodo = nodoSeleccionado();
    if (!nodo) {
        vbui::MsgBox(SeleccioneUnElemento);
        return;
    }
    // The question comes before the child check on purpose: a user who
    // confirms can still be told the node cannot go.
    if (!confirmarEliminacion())
        return;
    if (nodo->childCount() > 0) {
        vbui::MsgBox(QStringLiteral("No se puede eliminar el elemento porque tiene nodos hijo."));
        return;
    }
    EEngine* e = engine();
    if (!e)
        return;
    const int tipo = esPerspectiva(nodo) ? VendimarBI::cPerspectiva : VendimarBI::cMetrica;
    if (e->EliminarEntidad(tipo, claveFila(nodo)))
        Actualizar();
}
