#pragma once

#include "quelta.h"

#include <QObject>
#include <QPointer>

// The search object the engine creates for itself: it looks entities up in
// the host table named by the kind text (a table with a Sys_PK key).
class BuscadorEntidades : public QObject, public Quelta {
    Q_OBJECT
    Q_INTERFACES(Quelta)

public:
    Q_INVOKABLE explicit BuscadorEntidades(QObject* parent = nullptr);

    Q_INVOKABLE QVariant Conectar(QObject* conexion) override;
    Q_INVOKABLE QVariant Buscar(const QString& tipoEntidad, bool flag) override;
    Q_INVOKABLE QString Describir(const QString& tipoEntidad, const QString& clave,
                                  const QString& separador) override;

    QObject* conexion() const { return m_conexion.data(); }

private:
    QPointer<QObject> m_conexion;
};
