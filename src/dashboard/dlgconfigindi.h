#pragma once

#include "library/dialogo.h"

#include <QPointer>
#include <memory>

class EIndicador;
class EPerspectiva;
class ETabIndicador;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

// The placed-indicator editor, "Configuración de indicador": periods shown, opening
// period, eight limits and the data entity of one indicator on a dashboard. It
// writes into the host's object on acceptance and never into the database.
class dlgConfigIndi : public Dialogo {
    Q_OBJECT
    Q_PROPERTY(QObject* TabIndicador READ TabIndicador WRITE setTabIndicador)
    Q_PROPERTY(bool Aceptado READ Aceptado)

public:
    explicit dlgConfigIndi(QWidget* parent = nullptr);
    ~dlgConfigIndi() override;

    QObject* TabIndicador() const;
    void setTabIndicador(QObject* tabIndicador);
    bool Aceptado() const { return m_aceptado; }

    // Copies the placed indicator into the controls.
    Q_INVOKABLE void putData();
    // Copies the controls back into the placed indicator.
    Q_INVOKABLE void getData();

    void reject() override;

private:
    // One limit per period and row: column k (cPeriodosTemporales) holds
    // txtVal(k) in the upper row and txtVal(k + 4) in the lower one.
    static constexpr int Periodos = 4;
    static constexpr int Limites = 2 * Periodos;

    void construir();
    void ordenarTabulacion();
    ETabIndicador* tabIndicador() const;
    // True when the perspective asks for no host entity ("@" or blank).
    bool sinEntidad() const;
    void mostrarLimites(const double (&valores)[Limites]);
    void habilitarLimites(bool habilitar);
    void mostrarDefectos();
    void buscar();
    void aceptar();

    QPointer<QObject> m_tabIndicador;
    bool m_aceptado = false;
    // The chosen data entity; only putData and the search set it, nothing clears it.
    int m_entidad = 0;
    std::unique_ptr<EIndicador> m_indicador;
    std::unique_ptr<EPerspectiva> m_perspectiva;

    QLabel* lblIndicador = nullptr;
    QLabel* lblInfo = nullptr;
    QPushButton* cmdBuscar = nullptr;
    QCheckBox* chkInter[Periodos] = {};
    QComboBox* cInicio = nullptr;
    QLineEdit* txtVal[Limites] = {};
    QPushButton* cmdAceptar = nullptr;
    QPushButton* cmdCancel = nullptr;
};
