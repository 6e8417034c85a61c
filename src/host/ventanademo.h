#pragma once

#include <QMainWindow>
#include <memory>

class EEngine;
class ElementoTablero;
class QGraphicsScene;
class QGraphicsView;
class QListWidget;
class QVBoxLayout;

// The host window of `vbi demo`: the signed-in user's dashboards on the
// left, the selected dashboard's layout in the middle, and every entry point
// of the engine in the menus and the tool bar.
class VentanaDemo : public QMainWindow {
    Q_OBJECT

public:
    VentanaDemo(EEngine* engine, int usuario, const QString& descripcionBase, QWidget* parent = nullptr);
    ~VentanaDemo() override;

    // The dashboard shown, 0 when none.
    int tableroActual() const;
    void seleccionarTablero(int clave);
    QGraphicsScene* escena() const { return m_escena; }

    void nuevoTablero();
    void renombrarTablero();
    void eliminarTablero();
    void colocarIndicador();
    void agregarTexto();
    void eliminarElemento();
    void editarElemento(ElementoTablero* elemento);
    void revisarBiblioteca();
    void guardarElemento(ElementoTablero* elemento);

private:
    void construirAcciones();
    void cargarTableros();
    void mostrarTablero();
    void agregarElemento(QObject* entidad, const QString& descripcion);
    QString describirIndicador(int clave);
    ElementoTablero* elementoSeleccionado() const;

    EEngine* m_engine;
    int m_usuario;
    QListWidget* lstTableros = nullptr;
    QVBoxLayout* m_botonesTablero = nullptr;
    QGraphicsScene* m_escena = nullptr;
    QGraphicsView* m_vista = nullptr;
    std::unique_ptr<QObject> m_tablero;
};
