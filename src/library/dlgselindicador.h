#pragma once

#include "library/dialogobiblioteca.h"

#include <QPointer>

class QListWidget;
class QPushButton;

// The indicator picker, "Seleccionar indicador": perspectives on the left, the
// selected perspective's indicators on the right; Resultado is the key picked.
class dlgSelIndicador : public DialogoBiblioteca {
    Q_OBJECT
public:
    explicit dlgSelIndicador(QWidget* parent = nullptr);

protected:
    void alCargar() override;

private:
    // Rebuilds the tree and shows the first perspective's indicators.
    void preparar();
    void clicNodo(const QTreeWidgetItem* nodo);
    void aceptar();
    void administrar();

    // The connection taken from the engine when the picker was prepared.
    QPointer<QObject> m_conexion;
    QListWidget* lst = nullptr;
    QPushButton* cmdAceptar = nullptr;
    QPushButton* Command1 = nullptr;
    QPushButton* Command2 = nullptr;
};
