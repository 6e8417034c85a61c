// What the demo window's actions do: each goes through an entry point of the
// engine, so the user's rights are asked exactly as in a real host.
#include "cambioelemento.h"
#include "elementotablero.h"
#include "presenciaelemento.h"
#include "engine/eengine.h"
#include "engine/msgbox.h"
#include "model/vendimarbi.h"
#include "vb/automationerror.h"
#include "vb/vb.h"
#include "ventanabusqueda.h"
#include "vistatablero.h"
#include "ventanademo.h"
#include "ventanarevision.h"

#include <QGraphicsScene>
#include <memory>

using namespace VendimarBI;

namespace {
// A tile of this size shows its header, its tabs and a readable drawing of every kind.
const QSizeF TamanoIndicador(240, 120);
} // namespace

// A new item goes to the first free spot of the part of the page the user
// sees, in a size that fits what it shows.
void VentanaDemo::ubicarNuevo(QObject* entidad, int tablero, const QSizeF& necesario, const std::optional<QPointF>& en)
{
    const PaginaTablero& pagina = m_escena->pagina();
    const QSizeF tamano = pagina.tamanoNuevo(necesario);
    QList<QRectF> ocupados;
    for (QGraphicsItem* item : m_escena->items())
        if (dynamic_cast<ElementoTablero*>(item))
            ocupados.append(item->sceneBoundingRect());
    const QRectF visible = m_vista->mapToScene(m_vista->viewport()->rect()).boundingRect();
    const QPointF punto = en ? pagina.ajustarPosicion(*en, tamano) : pagina.huecoLibre(tamano, ocupados, visible);
    entidad->setProperty("FK_Tablero", tablero);
    entidad->setProperty("x", vb::pixelsToTwips(qRound(punto.x())));
    entidad->setProperty("Y", vb::pixelsToTwips(qRound(punto.y())));
    entidad->setProperty("W", vb::pixelsToTwips(qRound(tamano.width())));
    entidad->setProperty("H", vb::pixelsToTwips(qRound(tamano.height())));
}

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
    if (!hayTablero())
        return;
    const int clave = tableroActual();
    if (m_engine->Form_Editar_Tablero(clave))
        cargarTableros();
}

void VentanaDemo::eliminarTablero()
{
    if (!hayTablero())
        return;
    const int clave = tableroActual();
    if (m_engine->EliminarTablero(clave))
        cargarTableros();
}

void VentanaDemo::colocarIndicador(const std::optional<QPointF>& en)
{
    if (!hayTablero())
        return;
    const int tablero = tableroActual();
    const int indicador = m_engine->Seleccionar_Indicador();
    if (indicador <= 0)
        return;
    std::unique_ptr<QObject> tab(m_engine->CrearEntidad(ctabindicador));
    ubicarNuevo(tab.get(), tablero, TamanoIndicador, en);
    tab->setProperty("FK_Indicador", indicador);
    if (!m_engine->Editar_Indicador_Tab(tab.get()) || !m_engine->GuardarEntidad(tab.get()))
        return;
    registrarPresencia(PresenciaElemento::Alta, tab.get(), AlmacenElementos::estado(tab.get()));
    seleccionarTablero(tablero);
}

void VentanaDemo::agregarTexto(const std::optional<QPointF>& en)
{
    if (!hayTablero())
        return;
    const int tablero = tableroActual();
    std::unique_ptr<QObject> figura(m_engine->CrearEntidad(cFigura));
    figura->setProperty("FK_Tablero", tablero);
    if (!m_engine->Editar_Figura(figura.get()))
        return;
    // Its size is known once its text and font are.
    const qreal anchoMaximo = m_escena->pagina().area().width() - 2 * PaginaTablero::Paso;
    ubicarNuevo(figura.get(), tablero, ElementoTablero::tamanoParaTexto(figura.get(), anchoMaximo), en);
    if (!m_engine->GuardarEntidad(figura.get()))
        return;
    registrarPresencia(PresenciaElemento::Alta, figura.get(), AlmacenElementos::estado(figura.get()));
    seleccionarTablero(tablero);
}

qreal VentanaDemo::paso() const
{
    return m_escena->pagina().rejilla() ? PaginaTablero::Paso : 1.0;
}

void VentanaDemo::moverElemento(ElementoTablero* elemento, int pasosX, int pasosY)
{
    elemento->desplazar(QPointF(pasosX * paso(), pasosY * paso()));
}

void VentanaDemo::redimensionarElemento(ElementoTablero* elemento, int pasosX, int pasosY)
{
    elemento->crecer(QSizeF(pasosX * paso(), pasosY * paso()));
}

void VentanaDemo::editarElemento(ElementoTablero* elemento)
{
    if (!elemento || !elemento->entidad()) {
        vbui::MsgBox(QStringLiteral("Seleccione un elemento del tablero"));
        return;
    }
    QObject* entidad = elemento->entidad();
    if (!elemento->esFigura() && !indicadorExiste(entidad->property("FK_Indicador").toInt())) {
        vbui::MsgBox(QStringLiteral("El indicador de este elemento ya no existe en la biblioteca, así que no hay nada que "
                                    "editar. Quítelo del tablero (Supr) o coloque otro indicador."),
                     vbui::vbExclamation);
        return;
    }
    const bool aceptado = elemento->esFigura() ? m_engine->Editar_Figura(entidad) : m_engine->Editar_Indicador_Tab(entidad);
    if (aceptado)
        guardarElemento(elemento);
    mostrarTablero();
}

void VentanaDemo::guardarElemento(ElementoTablero* elemento)
{
    if (!elemento || !elemento->entidad())
        return;
    QObject* entidad = elemento->entidad();
    const int tipo = elemento->esFigura() ? cFigura : ctabindicador;
    try {
        const std::shared_ptr<ClaveElemento> clave = m_almacen.clave(tipo, entidad->property("Sys_PK").toInt());
        const QVariantMap antes = m_almacen.leer(*clave);
        const QVariantMap despues = AlmacenElementos::estado(entidad);
        if (!m_engine->GuardarEntidad(entidad))
            vbui::MsgBox(QStringLiteral("No se pudo guardar el elemento."), vbui::vbExclamation);
        else if (antes != despues)
            registrar(new CambioElemento(&m_almacen, clave, antes, despues,
                                         [this](const ClaveElemento& cambiada) { mostrarCambio(cambiada); }));
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
    const QVariantMap estado = AlmacenElementos::estado(elemento->entidad());
    if (!m_engine->EliminarEntidad(tipo, elemento->entidad()->property("Sys_PK").toInt()))
        return;
    registrarPresencia(PresenciaElemento::Baja, elemento->entidad(), estado);
    mostrarTablero();
}

// One search window, raised again when asked for again. What its editors
// change may rename what the dashboard shows, so it is drawn again after.
void VentanaDemo::abrirBusqueda()
{
    if (!m_busqueda) {
        m_busqueda = new VentanaBusqueda(m_engine, this);
        connect(m_busqueda, &VentanaBusqueda::editado, this, &VentanaDemo::mostrarTablero);
    }
    m_busqueda->show();
    m_busqueda->raise();
    m_busqueda->activateWindow();
}

// Fixes may remove placements and texts: the dashboard is drawn again after.
void VentanaDemo::revisarBiblioteca()
{
    VentanaRevision revision(m_engine, this);
    revision.exec();
    cargarTableros();
    mostrarTablero();
}
