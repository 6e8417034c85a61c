#pragma once

#include "library/dialogobiblioteca.h"

#include <QPointer>

class QPushButton;

// The metric library, "Biblioteca de métricas": the tree of perspectives and
// metrics, with adding, editing and deleting through the engine's entry points.
class dlgBibdatos : public DialogoBiblioteca {
    Q_OBJECT
public:
    explicit dlgBibdatos(QWidget* parent = nullptr);

    // Reloads the tree of perspectives and metrics.
    Q_INVOKABLE void Actualizar();

protected:
    void alCargar() override;

private:
    void agregarPerspectiva();
    void agregarMetrica();
    void editar();
    void eliminar();

    QPushButton* cAd1 = nullptr;
    QPushButton* Command1 = nullptr;
    QPushButton* Command2 = nullptr;
    QPushButton* Command3 = nullptr;
    QPushButton* cCerrar = nullptr;
};
