#pragma once

#include <QDate>
#include <QStringList>

namespace ado {
class Connection;
}

// The sample shop behind the sample library: two years of tickets up to a
// day, for three branches, three customers and three products, and the
// sample metrics' sources that read them. The tables themselves come with
// the sample library's SQL.
class TiendaDemo {
public:
    // Writes the tickets (when the table has none) and the metrics' sources.
    static void crear(ado::Connection& conexion, const QDate& hoy = QDate::currentDate());
    // The four comment lines the metric editor starts a new source with.
    static QString plantilla();
    // The source of a sample metric, by its GUID; empty for any other.
    static QString fuente(const QString& guid);

private:
    static QStringList sentenciasTickets(const QDate& hoy);
    static void escribirTickets(ado::Connection& conexion, const QDate& hoy);
};
