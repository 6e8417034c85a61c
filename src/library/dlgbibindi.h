#pragma once

#include "library/dialogobiblioteca.h"

#include <QPointer>

class QPushButton;

// The indicator library, "Biblioteca de indicadores": perspectives with their
// indicators, added, edited and deleted through the engine's entry points.
class dlgBibIndi : public DialogoBiblioteca {
    Q_OBJECT
public:
    explicit dlgBibIndi(QWidget* parent = nullptr);

    // Reloads the tree of perspectives and indicators.
    Q_INVOKABLE void Actualizar();

protected:
    void alCargar() override;

private:
    void agregar();
    void editar();
    void eliminar();

    QPushButton* Command1 = nullptr;
    QPushButton* Command2 = nullptr;
    QPushButton* Command3 = nullptr;
    QPushButton* Command4 = nullptr;
};
