#pragma once

#include <QObject>
#include <QString>
#include <QVariant>
#include <QtPlugin>

// The entity-search interface: finds and describes rows of the host's own
// entity kinds (customers, products, branches, ...), named by a kind text.
class Quelta {
public:
    virtual ~Quelta() = default;
    // Takes the connection to search on; the answer carries no meaning.
    virtual QVariant Conectar(QObject* conexion) = 0;
    // Lets the user pick an entity of the kind; answers its key, 0 when none.
    virtual QVariant Buscar(const QString& tipoEntidad, bool flag) = 0;
    // A readable text of the entity with that key, parts joined by the separator.
    virtual QString Describir(const QString& tipoEntidad, const QString& clave, const QString& separador) = 0;
};

#define Quelta_iid "VendimarBI.Quelta/1.0"
Q_DECLARE_INTERFACE(Quelta, Quelta_iid)
