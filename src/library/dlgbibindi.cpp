#include "dlgbibindi.h"

#include "arbolclaves.h"
#include "engine/eengine.h"
#include "engine/msgbox.h"
#include "mdl_functions.h"
#include "model/vendimarbi.h"

#include <QPushButton>

namespace {
constexpr short ImagenPerspectiva = 1;
constexpr short SinMetricas = 0;
constexpr short ImagenIndicador = 2;
} // namespace

dlgBibIndi::dlgBibIndi(QWidget* parent)
    : DialogoBiblioteca(parent)
{
    setObjectName(QStringLiteral("dlgBibIndi"));
    setWindowTitle(QStringLiteral("Biblioteca de indicadores"));

    Command1 = boton("Command1", QStringLiteral("Agregar"));
    Command2 = boton("Command2", QStringLiteral("Editar"));
    Command3 = boton("Command3", QStringLiteral("Eliminar"));
    Command4 = boton("Command4", QStringLiteral("Cerrar"));

    disponerBiblioteca({Command1, Command2, Command3}, Command4);

    // No double-click action here: indicators open only with "Editar".
    connect(Command1, &QPushButton::clicked, this, &dlgBibIndi::agregar);
    connect(Command2, &QPushButton::clicked, this, &dlgBibIndi::editar);
    connect(Command3, &QPushButton::clicked, this, &dlgBibIndi::eliminar);
}

void dlgBibIndi::alCargar()
{
    Actualizar();
}

void dlgBibIndi::Actualizar()
{
    mdl_functions::LlenarArbol(conexion(), arbol(), ImagenPerspectiva, SinMetricas, ImagenIndicador);
}

void dlgBibIndi::agregar()
{
    // An indicator needs a perspective to live in; an empty tree and a tree
    // with nothing selected get the same advice.
    if (!nodoSeleccionado()) {
        vbui::MsgBox(QStringLiteral(
            "Deben existir perspectivas. Configure perspectivas y métricas en la biblioteca de métricas"));
        return;
    }
    EEngine* e = engine();
    if (e && e->Form_Agregar_Indicador(padreParaNuevo()) > 0)
        Actualizar();
}

void dlgBibIndi::editar()
{
    const QTreeWidgetItem* nodo = nodoSeleccionado();
    if (!nodo) {
        vbui::MsgBox(SeleccioneUnElemento);
        return;
    }
    // Perspectives are edited in the metric library.
    if (esPerspectiva(nodo)) {
        vbui::MsgBox(QStringLiteral("No se puede editar una perspectiva, seleccione un indicador"));
        return;
    }
    EEngine* e = engine();
    if (e && e->Form_Editar_Indicador(claveFila(nodo)))
        Actualizar();
}

void dlgBibIndi::eliminar()
{
    const QTreeWidgetItem* nodo = nodoSeleccionado();
    if (!nodo) {
        vbui::MsgBox(SeleccioneUnElemento);
        return;
    }
    // As in the metric library, the question comes before the refusal.
    if (!confirmarEliminacion())
        return;
    if (esPerspectiva(nodo)) {
        vbui::MsgBox(QStringLiteral("No se puede eliminar una perspectiva, seleccione un indicador"));
        return;
    }
    EEngine* e = engine();
    if (e && e->EliminarEntidad(VendimarBI::cIndicador, claveFila(nodo)))
        Actualizar();
}
