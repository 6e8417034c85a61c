#pragma once

#include "filasentidad.h"

#include <QDialog>

class QLineEdit;
class QListWidget;
class QPushButton;

// The search window of the host's entity search: the rows of one host table
// with a filter box; the chosen row's key is the answer, 0 on cancel.
class dlgBuscarEntidad : public QDialog {
    Q_OBJECT

public:
    dlgBuscarEntidad(const QString& tipoEntidad, const QList<FilasEntidad::Fila>& filas, QWidget* parent = nullptr);

    int claveElegida() const { return m_clave; }

private:
    void filtrar(const QString& texto);
    void aceptar();

    QList<FilasEntidad::Fila> m_filas;
    int m_clave = 0;
    QLineEdit* txtFiltro = nullptr;
    QListWidget* lstResultados = nullptr;
    QPushButton* cmdAceptar = nullptr;
    QPushButton* cmdCancelar = nullptr;
};
