#pragma once

#include <QList>
#include <QPair>
#include <QString>

class QObject;

// The rows of a host entity table, each as its key and a readable text made
// of its other columns. The kind text names the table; only a plain
// identifier is accepted, since it goes into SQL as a name.
namespace FilasEntidad {

struct Fila {
    int clave = 0;
    QString texto;
};

bool esIdentificador(const QString& tipoEntidad);
// Whether the table can be read at all.
bool existe(QObject* conexion, const QString& tipoEntidad);
// Every row of the table (by key), or none when the table cannot be read.
QList<Fila> todas(QObject* conexion, const QString& tipoEntidad, const QString& separador);
// The row with that key; texto empty when there is none.
Fila una(QObject* conexion, const QString& tipoEntidad, int clave, const QString& separador);

} // namespace FilasEntidad
