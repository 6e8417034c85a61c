// An indicator's settings live in the table of its kind, one row per
// indicator, found by uf_FK_Indicador. Anything else (no row, several rows,
// rows in another kind's table, rows of no indicator, metric keys that name
// nothing or a metric the indicator's designer cannot list) is a problem.
#include "revisionbiblioteca.h"

#include "model/vendimarbi.h"

namespace {

const QString ColumnaIndicador = QStringLiteral("uf_fk_indicador");

// Each kind's table with its rows by indicator, so that finding an
// indicator's rows is a lookup and not a walk through the whole table.
QList<RevisionBiblioteca::TablaConfiguracion> tablas(const FotoBiblioteca& foto)
{
    QList<RevisionBiblioteca::TablaConfiguracion> resultado{
        {VendimarBI::cBarraProgreso, tablaConfiguracion(VendimarBI::cBarraProgreso), {}},
        {VendimarBI::cMatrizGrafico, tablaConfiguracion(VendimarBI::cMatrizGrafico), {}},
        {VendimarBI::cSemaforo, tablaConfiguracion(VendimarBI::cSemaforo), {}}};
    const QList<FotoBiblioteca::Fila>* filas[] = {&foto.barras, &foto.matrices, &foto.semaforos};
    for (qsizetype i = 0; i < resultado.size(); ++i)
        for (const FotoBiblioteca::Fila& fila : *filas[i])
            resultado[i].porIndicador[entero(fila, ColumnaIndicador)].append(fila);
    return resultado;
}

Problema deIndicador(const char* tipo, const QString& descripcion, const QString& porque, Arreglo arreglo, int clave,
                     const QList<FilaProblema>& filas)
{
    Problema p;
    p.tipo = QLatin1String(tipo);
    p.descripcion = descripcion;
    p.porque = porque;
    p.filas = filas;
    p.arreglo = arreglo;
    p.tipoEntidad = VendimarBI::cIndicador;
    p.clave = clave;
    return p;
}

} // namespace

void RevisionBiblioteca::revisarConfiguraciones()
{
    m_configuraciones = tablas(m_foto);
    for (const FotoBiblioteca::Fila& indicador : m_foto.indicadores)
        revisarConfiguracionDe(indicador);
    revisarConfiguracionesHuerfanas();
}

void RevisionBiblioteca::revisarConfiguracionDe(const FotoBiblioteca::Fila& indicador)
{
    const int clave = entero(indicador, QStringLiteral("sys_pk"));
    const int tipo = entero(indicador, QStringLiteral("uf_tipo"));
    const QString nombre = indicador.value(QStringLiteral("uf_nombre")).toString();
    const FilaProblema filaIndicador{QStringLiteral("ut_bi_Indicador"), clave, nombre,
                                     ruta(entero(indicador, QStringLiteral("uf_fk_perspectiva")))};
    QList<FilaProblema> ajenas;
    for (const TablaConfiguracion& t : m_configuraciones) {
        const QList<FotoBiblioteca::Fila> filas = t.porIndicador.value(clave);
        if (t.tipo != tipo) {
            for (qsizetype i = 0; i < filas.size(); ++i)
                ajenas.append({t.tabla, clave, nombre, QStringLiteral("fila de otro tipo")});
            continue;
        }
        if (filas.isEmpty()) {
            m_problemas.append(deIndicador(
                "indicador-sin-configuracion",
                QStringLiteral("El indicador «%1» no tiene su fila de configuración en %2.").arg(nombre, t.tabla),
                QStringLiteral("Se muestra sin métrica, límites ni colores. Suele ocurrir al guardarlo con una "
                               "configuración regional que escribe los decimales con coma."),
                Arreglo::RehacerConfiguracion, clave, {filaIndicador}));
        } else if (filas.size() > 1) {
            QList<FilaProblema> repetidas{filaIndicador};
            for (qsizetype i = 0; i < filas.size(); ++i)
                repetidas.append({t.tabla, clave, nombre, QStringLiteral("fila %1 de %2").arg(i + 1).arg(filas.size())});
            m_problemas.append(deIndicador(
                "configuracion-repetida",
                QStringLiteral("El indicador «%1» tiene %2 filas de configuración en %3.").arg(nombre).arg(filas.size()).arg(t.tabla),
                QStringLiteral("Sólo se lee una, y cuál depende de la base de datos: lo que se ve puede cambiar sin "
                               "que nadie lo edite."),
                Arreglo::RehacerConfiguracion, clave, repetidas));
        }
        revisarMetricasDe(indicador, filas);
    }
    if (!ajenas.isEmpty())
        m_problemas.append(deIndicador(
            "configuracion-de-otro-tipo",
            QStringLiteral("El indicador «%1» tiene filas de configuración en la tabla de otro tipo de indicador.").arg(nombre),
            QStringLiteral("Nadie las lee ni las edita; si el indicador cambiara de tipo, aparecerían valores que "
                           "nadie ha revisado."),
            Arreglo::RehacerConfiguracion, clave, QList<FilaProblema>{filaIndicador} + ajenas));
}

void RevisionBiblioteca::revisarMetricasDe(const FotoBiblioteca::Fila& indicador, const QList<FotoBiblioteca::Fila>& filas)
{
    const int clave = entero(indicador, QStringLiteral("sys_pk"));
    const int perspectiva = entero(indicador, QStringLiteral("uf_fk_perspectiva"));
    const QString nombre = indicador.value(QStringLiteral("uf_nombre")).toString();
    QList<FilaProblema> inexistentes;
    QList<FilaProblema> ajenas;
    for (const FotoBiblioteca::Fila& fila : filas) {
        for (auto it = fila.cbegin(); it != fila.cend(); ++it) {
            const int metrica = it.value().isNull() ? 0 : it.value().toInt();
            if (!esColumnaMetrica(it.key()) || metrica == 0)
                continue;
            const FotoBiblioteca::Fila* encontrada = m_metricas.value(metrica);
            if (!encontrada)
                inexistentes.append({QStringLiteral("ut_bi_Metrica"), metrica, QString(), it.key()});
            // Without a perspective of its own the indicator has nothing to compare with.
            else if (m_perspectivas.contains(perspectiva)
                     && entero(*encontrada, QStringLiteral("uf_fk_perspectiva")) != perspectiva)
                ajenas.append({QStringLiteral("ut_bi_Metrica"), metrica,
                               encontrada->value(QStringLiteral("uf_nombre")).toString(),
                               it.key() + QStringLiteral(" — ") + ruta(entero(*encontrada, QStringLiteral("uf_fk_perspectiva")))});
        }
    }
    if (!inexistentes.isEmpty())
        m_problemas.append(deIndicador(
            "metrica-inexistente",
            QStringLiteral("La configuración del indicador «%1» nombra métricas que no existen.").arg(nombre),
            QStringLiteral("El indicador no tiene de dónde sacar esos valores."), Arreglo::QuitarMetricas, clave,
            inexistentes));
    if (!ajenas.isEmpty())
        m_problemas.append(deIndicador(
            "metrica-de-otra-perspectiva",
            QStringLiteral("La configuración del indicador «%1» nombra métricas de otra perspectiva.").arg(nombre),
            QStringLiteral("El diseñador del indicador sólo lista las métricas de su perspectiva: en él esas "
                           "referencias no se ven ni se pueden cambiar."),
            Arreglo::Ninguno, clave, ajenas));
}

// Configuration rows of an indicator that is gone; one problem per key.
void RevisionBiblioteca::revisarConfiguracionesHuerfanas()
{
    QMap<int, QList<FilaProblema>> porIndicador;
    for (const TablaConfiguracion& t : m_configuraciones)
        for (auto it = t.porIndicador.cbegin(); it != t.porIndicador.cend(); ++it)
            if (!m_indicadores.contains(it.key()))
                for (qsizetype i = 0; i < it.value().size(); ++i)
                    porIndicador[it.key()].append({t.tabla, it.key(), QString(), QStringLiteral("uf_FK_Indicador")});
    for (auto it = porIndicador.cbegin(); it != porIndicador.cend(); ++it)
        m_problemas.append(deIndicador("configuracion-sin-indicador",
                                       QStringLiteral("Hay filas de configuración del indicador %1, que no existe.").arg(it.key()),
                                       QStringLiteral("Nadie puede verlas ni borrarlas desde la biblioteca."),
                                       Arreglo::EliminarFilas, it.key(), it.value()));
}
