#pragma once

#include "library/dialogo.h"

#include <QPointer>

// The placed-indicator editor, "Configuración de indicador": periods shown, opening
// period, eight limits and the data entity of one indicator on a dashboard. It
// writes into the host's object on acceptance and never into the database.
class dlgConfigIndi : public Dialogo {
    Q_OBJECT
    Q_PROPERTY(QObject* TabIndicador READ TabIndicador WRITE setTabIndicador)
    Q_PROPERTY(bool Aceptado READ Aceptado)

public:
    explicit dlgConfigIndi(QWidget* parent = nullptr);

    QObject* TabIndicador() const;
    void setTabIndicador(QObject* tabIndicador);
    bool Aceptado() const { return m_aceptado; }

    // Copies the placed indicator into the controls.
    Q_INVOKABLE void putData();
    // Copies the controls back into the placed indicator.
    Q_INVOKABLE void getData();

    void reject() override;

private:
    QPointer<QObject> m_tabIndicador;
    bool m_aceptado = false;
};
