#pragma once

#include "dialogo.h"

#include <QPointer>

class EPerspectiva;
class QLineEdit;
class QPushButton;

// The perspective editor, "Propiedades de perspectiva": a perspective's name
// and the kind of host entity it is bound to.
class dlgPropPers : public Dialogo {
    Q_OBJECT

public:
    explicit dlgPropPers(QWidget* parent = nullptr);

    // Prepares a new perspective under the parent perspective Padre.
    Q_INVOKABLE void Nuevo(int Padre);
    // Prepares the stored perspective PK for editing.
    Q_INVOKABLE void Edit(int PK);

private:
    void aceptar();

    QPointer<EPerspectiva> m_perspectiva;
    QLineEdit* cNombre = nullptr;
    QLineEdit* cEntidad = nullptr;
    QPushButton* cAceptar = nullptr;
    QPushButton* cCancelar = nullptr;
};
