#pragma once

#include "dialogo.h"

#include <QPointer>

class ETablero;
class QLabel;
class QLineEdit;
class QPushButton;

// The dashboard-name editor, "Tablero".
class dlgTablero : public Dialogo {
    Q_OBJECT

public:
    explicit dlgTablero(QWidget* parent = nullptr);

    // Prepares a new dashboard of the host user PKUsuario.
    Q_INVOKABLE void Nuevo(int PKUsuario);
    // Prepares the stored dashboard PK for renaming.
    Q_INVOKABLE void Edit(int PK);

    QLineEdit* nombre() const { return txtNombre; }

private:
    void aceptar();

    QPointer<ETablero> m_tablero;
    QLabel* lblNombre = nullptr;
    QLineEdit* txtNombre = nullptr;
    QPushButton* cmdAceptar = nullptr;
    QPushButton* cmdCancel = nullptr;
};
