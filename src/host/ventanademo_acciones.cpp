// What the demo window's actions do: each goes through an entry point of the
// engine, so the user's rights are asked exactly as in a real host.
#include "elementotablero.h"
#include "engine/eengine.h"
#include "engine/msgbox.h"
#include "model/vendimarbi.h"
#include "vb/automationerror.h"
#include "ventanademo.h"
#include "ventanarevision.h"

#include <QGraphicsScene>
#include <memory>

using namespace VendimarBI;

namespace {
constexpr int PosicionNueva = 300;
constexpr int AnchoIndicador = 3600;
constexpr int AltoIndicador = 1800;
constexpr int AnchoTexto = 3000;
constexpr int AltoTexto = 600;

void colocar(QObject* entidad, int tablero, int ancho, int alto)
{
    entidad->setProperty("FK_Tablero", tablero);
    entidad->setProperty("x", PosicionNueva);
    entidad->setProperty("Y", PosicionNueva);
    entidad->setProperty("W", ancho);
    entidad->setProperty("H", alto);
}
} // namespace

void VentanaDemo::nuevoTablero()
{
    const int clave = m_engine->Form_Agregar_Tablero(m_usuario);
    if (clave > 0) {
        cargarTableros();
        seleccionarTablero(clave);
    }
}

void VentanaDemo::renombrarTablero()
{
    const int clave = tableroActual();
    if (clave <= 0) {
        vbui::MsgBox(QStringLiteral("Seleccione un tablero"));
        return;
    }
    if (m_engine->Form_Editar_Tablero(clave))
        cargarTableros();
}

void VentanaDemo::eliminarTablero()
{
    const int clave = tableroActual();
    if (clave <= 0) {
        vbui::MsgBox(QStringLiteral("Seleccione un tablero"));
        return;
    }
    if (m_engine->EliminarTablero(clave))
        cargarTableros();
}

void VentanaDemo::colocarIndicador()
{
    const int tablero = tableroActual();
    if (tablero <= 0) {
        vbui::MsgBox(QStringLiteral("Seleccione un tablero"));
        return;
    }
    const int indicador = m_engine->Seleccionar_Indicador();
    if (indicador <= 0)
        return;
    std::unique_ptr<QObject> tab(m_engine->CrearEntidad(ctabindicador));
    colocar(tab.get(), tablero, AnchoIndicador, AltoIndicador);
    tab->setProperty("FK_Indicador", indicador);
    if (m_engine->Editar_Indicador_Tab(tab.get()) && m_engine->GuardarEntidad(tab.get()))
        seleccionarTablero(tablero);
}

void VentanaDemo::agregarTexto()
{
    const int tablero = tableroActual();
    if (tablero <= 0) {
        vbui::MsgBox(QStringLiteral("Seleccione un tablero"));
        return;
    }
    std::unique_ptr<QObject> figura(m_engine->CrearEntidad(cFigura));
    colocar(figura.get(), tablero, AnchoTexto, AltoTexto);
    if (m_engine->Editar_Figura(figura.get()) && m_engine->GuardarEntidad(figura.get()))
        seleccionarTablero(tablero);
}

void VentanaDemo::editarElemento(ElementoTablero* elemento)
{
    if (!elemento || !elemento->entidad()) {
        vbui::MsgBox(QStringLiteral("Seleccione un elemento del tablero"));
        return;
    }
    QObject* entidad = elemento->entidad();
    const bool aceptado = elemento->esFigura() ? m_engine->Editar_Figura(entidad) : m_engine->Editar_Indicador_Tab(entidad);
    if (aceptado)
        guardarElemento(elemento);
    mostrarTablero();
}

void VentanaDemo::guardarElemento(ElementoTablero* elemento)
{
    if (!elemento || !elemento->entidad())
        return;
    try {
        if (!m_engine->GuardarEntidad(elemento->entidad()))
            vbui::MsgBox(QStringLiteral("No se pudo guardar el elemento."), vbui::vbExclamation);
    } catch (const vb::AutomationError& e) {
        vbui::MsgBox(e.description(), vbui::vbExclamation);
    }
    m_escena->update();
}

void VentanaDemo::eliminarElemento()
{
    ElementoTablero* elemento = elementoSeleccionado();
    if (!elemento || !elemento->entidad()) {
        vbui::MsgBox(QStringLiteral("Seleccione un elemento del tablero"));
        return;
    }
    if (vbui::MsgBox(QStringLiteral("¿Desea quitar el elemento seleccionado del tablero?"),
                     vbui::vbYesNo | vbui::vbQuestion | vbui::vbDefaultButton2) != vbui::vbYes)
        return;
    const int tipo = elemento->esFigura() ? cFigura : ctabindicador;
    if (m_engine->EliminarEntidad(tipo, elemento->entidad()->property("Sys_PK").toInt()))
        mostrarTablero();
}

// Fixes may remove placements and texts: the dashboard is drawn again after.
void VentanaDemo::revisarBiblioteca()
{
    VentanaRevision revision(m_engine, this);
    revision.exec();
    cargarTableros();
    mostrarTablero();
}
