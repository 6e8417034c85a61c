#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QVariant>

namespace ado {
class Connection;
}

// Every row of the nine tables as the database holds them, read once, so
// that a check can look at references in any direction without a query per
// row. Column names are in lower case; a NULL is a null QVariant.
struct FotoBiblioteca {
    using Fila = QHash<QString, QVariant>;

    QList<Fila> perspectivas;
    QList<Fila> metricas;
    QList<Fila> indicadores;
    QList<Fila> barras;
    QList<Fila> semaforos;
    QList<Fila> matrices;
    QList<Fila> tableros;
    QList<Fila> colocaciones;
    QList<Fila> figuras;
    // The perspectives in the order the library's tree reads them.
    QList<Fila> ordenArbol;

    // Raises vb::AutomationError when a table cannot be read.
    static FotoBiblioteca leer(ado::Connection& conexion);

    // The rows of a list by their Sys_PK.
    static QHash<int, const Fila*> porClave(const QList<Fila>& filas);
};

// The table that holds the configuration of an indicator kind, empty for a
// kind without one.
QString tablaConfiguracion(int tipo);

// A key column as an integer: NULL reads as 0.
int entero(const FotoBiblioteca::Fila& fila, const QString& columna);

// Whether a column of a configuration row (lower case) holds a metric's key.
bool esColumnaMetrica(const QString& columna);
