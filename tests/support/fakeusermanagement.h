#pragma once

#include "engine/ravlo.h"

#include <QObject>
#include <QSet>
#include <QStringList>

// A host user-management object for tests: grants every right except the
// codes refused, and remembers every question in order.
class FakeUserManagement : public QObject, public Ravlo {
    Q_OBJECT
    Q_INTERFACES(Ravlo)

public:
    bool VerificarDerecho(const QString& codigo, bool flag1, bool flag2, const QString& texto) override
    {
        asked.append(codigo);
        flags.append(flag1 && flag2 && texto.isEmpty());
        return !refused.contains(codigo);
    }

    QSet<QString> refused;
    QStringList asked;
    QList<bool> flags; // true where the question came with true, true and ""
};
