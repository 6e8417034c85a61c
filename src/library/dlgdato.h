#pragma once

#include "dialogo.h"

#include <QPointer>

class EMetrica;
class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

// The metric editor, "Propiedades de métrica": name, title, description,
// decimals, display format and JavaScript source of one metric.
class dlgDato : public Dialogo {
    Q_OBJECT

public:
    explicit dlgDato(QWidget* parent = nullptr);

    // Prepares a new metric filed under the perspective Padre.
    Q_INVOKABLE void Nuevo(int Padre);
    // Prepares the stored metric PK for editing.
    Q_INVOKABLE void Edit(int PK);

    // The source every new metric starts with.
    static QString plantillaCodigo();

private:
    void construir();
    void llenarListas();
    void aceptar();
    bool validar();

    QPointer<EMetrica> m_metrica;
    QLineEdit* cNombre = nullptr;
    QPlainTextEdit* cDescrip = nullptr;
    QLineEdit* cTitulo = nullptr;
    QComboBox* cDecs = nullptr;
    QComboBox* cFormat = nullptr;
    QPlainTextEdit* cCode = nullptr;
    QLabel* lblguid = nullptr;
    QLineEdit* cGUID = nullptr;
    QPushButton* cAceptar = nullptr;
    QPushButton* cCancelar = nullptr;
};
