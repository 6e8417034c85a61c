#include "fotobiblioteca.h"

#include "ado/connection.h"
#include "model/vendimarbi.h"

#include <QSqlQuery>
#include <QSqlRecord>

namespace {

QList<FotoBiblioteca::Fila> filas(ado::Connection& conexion, const QString& sql)
{
    QSqlQuery query = conexion.runText(sql);
    QList<FotoBiblioteca::Fila> resultado;
    while (query.next()) {
        const QSqlRecord record = query.record();
        FotoBiblioteca::Fila fila;
        for (int i = 0; i < record.count(); ++i)
            fila.insert(record.fieldName(i).toLower(), record.value(i));
        resultado.append(fila);
    }
    return resultado;
}

} // namespace

FotoBiblioteca FotoBiblioteca::leer(ado::Connection& conexion)
{
    const auto tabla = [&](const QString& nombre, const char* orden) {
        return filas(conexion, QStringLiteral("SELECT * FROM %1 ORDER BY %2").arg(nombre, QLatin1String(orden)));
    };
    FotoBiblioteca foto;
    foto.perspectivas = tabla(QStringLiteral("ut_bi_Perspectiva"), "Sys_PK");
    foto.metricas = tabla(QStringLiteral("ut_bi_Metrica"), "Sys_PK");
    foto.indicadores = tabla(QStringLiteral("ut_bi_Indicador"), "Sys_PK");
    foto.barras = tabla(tablaConfiguracion(VendimarBI::cBarraProgreso), "uf_FK_Indicador");
    foto.semaforos = tabla(tablaConfiguracion(VendimarBI::cSemaforo), "uf_FK_Indicador");
    foto.matrices = tabla(tablaConfiguracion(VendimarBI::cMatrizGrafico), "uf_FK_Indicador");
    foto.tableros = tabla(QStringLiteral("ut_bi_Tablero"), "Sys_PK");
    foto.colocaciones = tabla(QStringLiteral("ut_bi_TabIndicador"), "Sys_PK");
    foto.figuras = tabla(QStringLiteral("ut_bi_Fig"), "Sys_PK");
    // The very query the tree runs, so that its order (collation, where NULL
    // sorts) is the database's own and not a guess.
    foto.ordenArbol = filas(
        conexion, QStringLiteral("Select Sys_PK, uf_Nombre, uf_padre FROM ut_bi_Perspectiva Order By uf_padre, uf_Nombre"));
    return foto;
}

QHash<int, const FotoBiblioteca::Fila*> FotoBiblioteca::porClave(const QList<Fila>& filas)
{
    QHash<int, const Fila*> resultado;
    resultado.reserve(filas.size());
    for (const Fila& fila : filas)
        resultado.insert(entero(fila, QStringLiteral("sys_pk")), &fila);
    return resultado;
}

QString tablaConfiguracion(int tipo)
{
    switch (tipo) {
    case VendimarBI::cBarraProgreso:
        return QStringLiteral("ut_bi_BarraProg");
    case VendimarBI::cMatrizGrafico:
        return QStringLiteral("ut_bi_MatrizGraf");
    case VendimarBI::cSemaforo:
        return QStringLiteral("ut_bi_Semaforo");
    default:
        return QString();
    }
}

int entero(const FotoBiblioteca::Fila& fila, const QString& columna)
{
    const QVariant valor = fila.value(columna);
    return valor.isNull() ? 0 : valor.toInt();
}

bool esColumnaMetrica(const QString& columna)
{
    return columna == QLatin1String("uf_fk_metrica") || columna.startsWith(QLatin1String("uf_fk_m_metrica"))
        || columna.startsWith(QLatin1String("uf_fk_g_metrica"));
}
