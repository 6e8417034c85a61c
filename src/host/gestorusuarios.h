#pragma once

#include "engine/ravlo.h"

#include <QObject>
#include <QSet>
#include <QStringList>

// The host's reference user management: the signed-in user holds every
// right except the codes denied at start-up. On a refusal it tells the user
// itself, since the engine stays silent.
class GestorUsuarios : public QObject, public Ravlo {
    Q_OBJECT
    Q_INTERFACES(Ravlo)

public:
    explicit GestorUsuarios(QStringList denegados = {}, QObject* parent = nullptr);

    bool VerificarDerecho(const QString& codigo, bool flag1, bool flag2, const QString& texto) override;

    // Whether a refusal is announced in a message box (off for unattended runs).
    void setAvisar(bool avisar) { m_avisar = avisar; }

private:
    QSet<QString> m_denegados;
    bool m_avisar = true;
};
