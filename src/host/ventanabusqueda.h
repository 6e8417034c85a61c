#pragma once

#include <QDialog>
#include <memory>

class EEngine;
class IndiceBiblioteca;
class QLineEdit;
class QPushButton;
class QTreeWidget;

// Finds perspectives, metrics and indicators by name in the whole library
// and shows the path of perspectives above each and where it is used. A
// result opens in its editor through the engine, which asks for the right
// as always; the library is read again after an editor closes.
class VentanaBusqueda : public QDialog {
    Q_OBJECT

public:
    explicit VentanaBusqueda(EEngine* engine, QWidget* parent = nullptr);
    ~VentanaBusqueda() override;

    void buscar();
    void abrirSeleccionado();

signals:
    // An editor was opened and closed: the library may have changed.
    void editado();

private:
    void leerBiblioteca();

    EEngine* m_engine;
    std::unique_ptr<IndiceBiblioteca> m_indice;
    QLineEdit* txtBuscar = nullptr;
    QTreeWidget* lstResultados = nullptr;
    QPushButton* cmdAbrir = nullptr;
};
