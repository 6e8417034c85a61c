#pragma once

#include <QString>
#include <QtPlugin>

// The host's user-management interface: the engine asks it one question,
// whether the signed-in user holds a right.
class Ravlo {
public:
    virtual ~Ravlo() = default;
    // True when the right is granted. The engine always passes the code,
    // true, true and the empty text.
    virtual bool VerificarDerecho(const QString& codigo, bool flag1, bool flag2, const QString& texto) = 0;
};

#define Ravlo_iid "VendimarBI.Ravlo/1.0"
Q_DECLARE_INTERFACE(Ravlo, Ravlo_iid)
