#pragma once

#include "almacenelementos.h"
#include "escenatablero.h"
#include "render/valoresmuestra.h"

#include <QDate>
#include <QMainWindow>
#include <QPointer>
#include <memory>
#include <optional>

class EEngine;
class ElementoTablero;
class LectorPiezas;
class QAction;
class QDateEdit;
class QLabel;
class OrdenElemento;
class ValoresVivos;
class QUndoStack;
class VentanaBusqueda;
class VistaTablero;
struct ClaveElemento;
class QListWidget;
class QSplitter;
class QVBoxLayout;

// The host window of `vbi demo`: the signed-in user's dashboards on the
// left, the selected dashboard's layout in the middle, and every entry point
// of the engine in the menus and the tool bar. Placed indicators are drawn as
// the dashboard will show them, with sample values until the run-time gives
// real ones; "Ver como cajas" draws them as plain boxes instead. Items are
// laid out on the dashboard's page (EscenaTablero), from the mouse, the
// keyboard and context menus (VistaTablero), and every change to them is a
// step of an undo history written to the database as it is done. The view
// mode ("Vista") shows the same dashboard as its user reads it: the metrics'
// values for a date, worked out without holding the window up, and nothing
// that edits the layout.
class VentanaDemo : public QMainWindow {
    Q_OBJECT

public:
    // url: the database the engine works on, shown in the status bar and
    // read, on a read-only connection of its own, by the view mode.
    VentanaDemo(EEngine* engine, int usuario, const QString& url, QWidget* parent = nullptr);
    ~VentanaDemo() override;

    // The dashboard shown, 0 when none.
    int tableroActual() const;
    void seleccionarTablero(int clave);
    EscenaTablero* escena() const { return m_escena; }

    void nuevoTablero();
    void renombrarTablero();
    void eliminarTablero();
    // Without a point, new items go to the first free spot of the visible page.
    void colocarIndicador(const std::optional<QPointF>& en = std::nullopt);
    void agregarTexto(const std::optional<QPointF>& en = std::nullopt);
    // In steps of the grid, or of a pixel while it is off.
    void moverElemento(ElementoTablero* elemento, int pasosX, int pasosY);
    void redimensionarElemento(ElementoTablero* elemento, int pasosX, int pasosY);
    void eliminarElemento();
    void editarElemento(ElementoTablero* elemento);
    void revisarBiblioteca();
    void abrirBusqueda();
    void guardarElemento(ElementoTablero* elemento);
    void verComoCajas(bool cajas);
    // Back as the user left it: size, splitter and dashboard, kept per user
    // when the window is closed. Windows made for pictures leave it out, so
    // they look the same on every machine.
    void recordar();
    // Turns snapping to the grid on and off for moves, resizes and new items.
    void ajustarARejilla(bool activa);

    bool modoVista() const;
    void setModoVista(bool vista);
    QDate fechaVista() const;
    void setFechaVista(const QDate& fecha);
    // Forgets the values shown and works them out again from the database.
    void recalcular();
    // How long a metric of the view mode may run, in milliseconds.
    void setLimiteMetricas(int milisegundos);
    // The live values of the view mode; none until it is first entered.
    ValoresVivos* valoresVivos() const { return m_vivos.get(); }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void construirAcciones();
    void guardarMemoria();
    // The database and the user, kept in the status bar whatever else it shows.
    void mostrarSesion(const QString& descripcionBase);
    // A user without dashboards is told on the page how to make the first one.
    void mostrarSinTableros();
    // Whether a dashboard is shown; when not, the user is told why nothing can be put on it.
    bool hayTablero();
    void prepararVista();
    void prepararHistoria(QMenu* antesDe);
    void prepararModoVista(QMenu* ver);
    void cambiarModo(bool vista);
    // The items that draw a placed indicator as its tile.
    QList<ElementoTablero*> piezasMostradas() const;
    // Asks the live values for what every tile shows in its current period.
    void pedirValores();
    void mostrarValores();
    // A tile of the view mode shows live values and an item is only looked at.
    void prepararElemento(ElementoTablero* elemento);
    // Records a step the user just did, for undo and redo.
    void registrar(OrdenElemento* orden);
    void registrarPresencia(int paso, QObject* entidad, const QVariantMap& estado);
    // After an undo or redo: the dashboard drawn again, the item that changed selected.
    void mostrarCambio(const ClaveElemento& clave);
    void cargarTableros();
    void mostrarTablero();
    void agregarIndicadores(const QList<QObject*>& colocados);
    void agregarElemento(ElementoTablero* elemento);
    QString describirIndicador(int clave);
    bool indicadorExiste(int clave);
    ElementoTablero* elementoSeleccionado() const;
    void ubicarNuevo(QObject* entidad, int tablero, const QSizeF& necesario, const std::optional<QPointF>& en);
    qreal paso() const;

    EEngine* m_engine;
    int m_usuario;
    QListWidget* lstTableros = nullptr;
    QVBoxLayout* m_botonesTablero = nullptr;
    EscenaTablero* m_escena = nullptr;
    VistaTablero* m_vista = nullptr;
    QSplitter* m_divisor = nullptr;
    QAction* m_verCajas = nullptr;
    QAction* m_rejilla = nullptr;
    QAction* m_modoVista = nullptr;
    QDateEdit* m_fechaVista = nullptr;
    QLabel* m_estadoVista = nullptr;
    QUndoStack* m_historia = nullptr;
    QPointer<VentanaBusqueda> m_busqueda;
    AlmacenElementos m_almacen;
    // The undo history belongs to the dashboard shown: another one starts it anew.
    int m_tableroMostrado = 0;
    ValoresMuestra m_muestras;
    QString m_url;
    int m_limiteMetricas;
    // Declared before the tiles that read from it, so it outlives them.
    std::unique_ptr<ValoresVivos> m_vivos;
    // What the tiles of the dashboard shown paint from.
    std::unique_ptr<LectorPiezas> m_lector;
    std::unique_ptr<QObject> m_tablero;
};
