#include "tiendademo.h"

#include "ado/connection.h"

#include <QStringList>
#include <array>

namespace {

constexpr int Sucursales = 3;
constexpr int Clientes = 3;
// Unit prices in cents of products 1 to 3.
constexpr std::array<int, 3> Precios = {2450, 980, 1475};
// Rows per INSERT: few statements, each of a size both databases take at once.
constexpr int FilasPorSentencia = 250;

// Numbers that look random but are the same on every installation, so a
// sample database made twice holds the same tickets for the same day.
class Secuencia {
public:
    int siguiente(int tope)
    {
        m_estado = m_estado * 1103515245u + 12345u;
        return int((m_estado >> 16) % unsigned(tope));
    }

private:
    unsigned m_estado = 20240101u;
};

// A sum or a count over the tickets of the period, of one branch when the
// placement names one.
QString fuenteTickets(const char* agregado)
{
    return QStringLiteral("var sql = \"SELECT %1 FROM Ticket WHERE Fecha BETWEEN \" + _fecha.sql(inicio) +"
                          " \" AND \" + _fecha.sql(final);\r\n"
                          "if (sys_pk > 0)\r\n"
                          "    sql += \" AND FK_Sucursal = \" + sys_pk;\r\n"
                          "return _ejecutar(sql);\r\n")
        .arg(QLatin1String(agregado));
}

} // namespace

QString TiendaDemo::plantilla()
{
    return QStringLiteral("//Lenguaje: javascript\r\n"
                          "//Objetos disponibles: ADOCnn, StatsEngine, _ejecutar y _fecha\r\n"
                          "//Parámetros: sys_pk, inicio, final  [function_ClaveMetrica(sys_pk,inicio,final){}] \r\n"
                          "//El valor debe ser devuelto mediante una sentencia return\r\n");
}

QString TiendaDemo::fuente(const QString& guid)
{
    if (guid == QLatin1String("{6B1D2A10-6E2B-4C1A-9F00-000000000001}"))
        return plantilla() + QStringLiteral("// Money to the cent, as the tickets are written.\r\n")
            + fuenteTickets("ROUND(SUM(Importe), 2)");
    if (guid == QLatin1String("{6B1D2A10-6E2B-4C1A-9F00-000000000002}"))
        return plantilla() + fuenteTickets("COUNT(*)");
    if (guid == QLatin1String("{6B1D2A10-6E2B-4C1A-9F00-000000000003}"))
        return plantilla()
            + QStringLiteral("// Units in stock now, whatever the period: of the placement's product, or of all.\r\n"
                             "var sql = \"SELECT SUM(Unidades) FROM Existencia\";\r\n"
                             "if (sys_pk > 0)\r\n"
                             "    sql += \" WHERE FK_Producto = \" + sys_pk;\r\n"
                             "return _ejecutar(sql);\r\n");
    return {};
}

void TiendaDemo::crear(ado::Connection& conexion, const QDate& hoy)
{
    for (const char* guid : {"{6B1D2A10-6E2B-4C1A-9F00-000000000001}", "{6B1D2A10-6E2B-4C1A-9F00-000000000002}",
                             "{6B1D2A10-6E2B-4C1A-9F00-000000000003}"}) {
        conexion.runPrepared(QStringLiteral("UPDATE ut_bi_Metrica SET uf_Codigo = ? WHERE Sys_GUID = ?"),
                             {fuente(QLatin1String(guid)), QLatin1String(guid)});
    }
    QSqlQuery existentes = conexion.runText(QStringLiteral("SELECT COUNT(*) FROM Ticket"));
    if (existentes.next() && existentes.value(0).toInt() == 0)
        escribirTickets(conexion, hoy);
}

// The INSERT statements of every ticket, a batch of rows each.
QStringList TiendaDemo::sentenciasTickets(const QDate& hoy)
{
    Secuencia azar;
    QStringList sentencias;
    QStringList filas;
    int clave = 0;
    const auto volcar = [&] {
        sentencias.append(QStringLiteral("INSERT INTO Ticket (Sys_PK, Fecha, FK_Sucursal, FK_Cliente, FK_Producto, "
                                         "Cantidad, Importe) VALUES ")
                          + filas.join(QLatin1Char(',')));
        filas.clear();
    };
    for (QDate dia = hoy.addYears(-2).addDays(1); dia <= hoy; dia = dia.addDays(1)) {
        for (int sucursal = 1; sucursal <= Sucursales; ++sucursal) {
            for (int n = 3 + azar.siguiente(5); n > 0; --n) {
                const int producto = 1 + azar.siguiente(int(Precios.size()));
                const int cantidad = 1 + azar.siguiente(12);
                const int centimos = cantidad * Precios.at(producto - 1);
                filas.append(QStringLiteral("(%1,'%2',%3,%4,%5,%6,%7.%8)")
                                 .arg(++clave).arg(dia.toString(Qt::ISODate)).arg(sucursal)
                                 .arg(1 + azar.siguiente(Clientes)).arg(producto).arg(cantidad)
                                 .arg(centimos / 100).arg(centimos % 100, 2, 10, QLatin1Char('0')));
                if (filas.size() == FilasPorSentencia)
                    volcar();
            }
        }
    }
    if (!filas.isEmpty())
        volcar();
    return sentencias;
}

void TiendaDemo::escribirTickets(ado::Connection& conexion, const QDate& hoy)
{
    const QStringList sentencias = sentenciasTickets(hoy);
    conexion.BeginTrans();
    try {
        for (const QString& sentencia : sentencias)
            conexion.Execute(sentencia);
    } catch (...) {
        conexion.RollbackTrans();
        throw;
    }
    conexion.CommitTrans();
}
