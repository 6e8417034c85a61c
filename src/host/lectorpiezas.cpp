#include "lectorpiezas.h"

#include "engine/eengine.h"
#include "model/eindicador.h"
#include "model/emetrica.h"
#include "model/etabindicador.h"
#include "model/vendimarbi.h"
#include "render/metricasconfiguracion.h"
#include "ado/recordset.h"
#include "vb/automationerror.h"

#include <QStringList>
#include <QVariant>

using namespace VendimarBI;

LectorPiezas::LectorPiezas(EEngine* engine)
    : m_engine(engine)
{
}

LectorPiezas::~LectorPiezas() = default;

QList<DatosPieza> LectorPiezas::leer(const QList<const ETabIndicador*>& colocados)
{
    QList<int> nuevos;
    for (const ETabIndicador* colocado : colocados) {
        const int clave = colocado->FK_Indicador();
        if (m_indicadores.find(clave) == m_indicadores.end())
            nuevos.append(clave);
        cargar(m_indicadores, cIndicador, clave);
    }
    leerConfiguraciones(nuevos);
    leerMetricas();
    QList<DatosPieza> result;
    for (const ETabIndicador* colocado : colocados) {
        DatosPieza datos;
        datos.colocado = colocado;
        datos.indicador = qobject_cast<const EIndicador*>(m_indicadores[colocado->FK_Indicador()].get());
        datos.configuracionGuardada = datos.indicador && m_configurados.contains(colocado->FK_Indicador());
        datos.metricas = metricasDe(datos.indicador);
        datos.entidad = entidadDe(colocado, datos.indicador);
        result.append(datos);
    }
    return result;
}

const QObject* LectorPiezas::cargar(std::map<int, std::unique_ptr<QObject>>& cache, int tipo, int clave)
{
    auto encontrado = cache.find(clave);
    if (encontrado != cache.end())
        return encontrado->second.get();
    std::unique_ptr<QObject> entidad;
    try {
        entidad.reset(m_engine->CargarEntidad(tipo, clave));
    } catch (const vb::AutomationError&) {
        // No connection or no such kind: the tile shows the reference as broken.
    }
    return cache.emplace(clave, std::move(entidad)).first->second.get();
}

// An indicator loads even without its configuration row (a save that could
// not write it leaves it so), and its configuration then holds zeros that
// look like settings; one query over the three tables tells which have a row.
void LectorPiezas::leerConfiguraciones(const QList<int>& indicadores)
{
    QStringList claves;
    for (int clave : indicadores)
        if (m_indicadores[clave])
            claves.append(QString::number(clave));
    if (claves.isEmpty())
        return;
    const QString lista = claves.join(QLatin1Char(','));
    const QString sql = QStringLiteral("SELECT uf_FK_Indicador FROM ut_bi_BarraProg WHERE uf_FK_Indicador IN (%1)"
                                       " UNION SELECT uf_FK_Indicador FROM ut_bi_Semaforo WHERE uf_FK_Indicador IN (%1)"
                                       " UNION SELECT uf_FK_Indicador FROM ut_bi_MatrizGraf WHERE uf_FK_Indicador IN (%1)")
                            .arg(lista);
    std::unique_ptr<QObject> abierto(m_engine->OpenRecordset(sql, m_engine->ADOCnn()));
    auto* rs = qobject_cast<ado::Recordset*>(abierto.get());
    for (; rs && !rs->atEnd(); rs->MoveNext())
        m_configurados.insert(m_engine->fieldValue(rs, QStringLiteral("uf_FK_Indicador")).toInt());
}

// A dashboard's matrices name up to fifteen metrics each, so the metrics are
// read in one query, and only the columns a tile shows: the source text,
// which may be long, stays in the database.
void LectorPiezas::leerMetricas()
{
    QList<int> faltan;
    for (const auto& [clave, indicador] : m_indicadores)
        for (int metrica : MetricasConfiguracion::todas(indicador ? indicador->property("Configuracion").value<QObject*>() : nullptr))
            if (m_metricas.find(metrica) == m_metricas.end() && !faltan.contains(metrica))
                faltan.append(metrica);
    if (faltan.isEmpty())
        return;
    QStringList claves;
    for (int clave : faltan) {
        claves.append(QString::number(clave));
        m_metricas[clave].reset();
    }
    std::unique_ptr<QObject> abierto(m_engine->OpenRecordset(
        QStringLiteral("SELECT Sys_PK, uf_Nombre, uf_Titulo, uf_Decimales, uf_Formato, uf_Codigo FROM ut_bi_Metrica "
                       "WHERE Sys_PK IN (%1)")
            .arg(claves.join(QLatin1Char(','))),
        m_engine->ADOCnn()));
    auto* rs = qobject_cast<ado::Recordset*>(abierto.get());
    for (; rs && !rs->atEnd(); rs->MoveNext()) {
        auto metrica = std::make_unique<EMetrica>();
        metrica->setSys_PK(m_engine->fieldValue(rs, QStringLiteral("Sys_PK")).toInt());
        metrica->setNombre(m_engine->fieldValue(rs, QStringLiteral("uf_Nombre")).toString());
        metrica->setTitulo(m_engine->fieldValue(rs, QStringLiteral("uf_Titulo")).toString());
        metrica->setDecimales(static_cast<short>(m_engine->fieldValue(rs, QStringLiteral("uf_Decimales")).toInt()));
        metrica->setFormato(m_engine->fieldValue(rs, QStringLiteral("uf_Formato")).toString());
        // The view mode runs the source of the metrics it shows as it reads them here.
        metrica->setCodigoFuente(m_engine->fieldValue(rs, QStringLiteral("uf_Codigo")).toString());
        m_metricas[metrica->Sys_PK()] = std::move(metrica);
    }
}

QHash<int, const EMetrica*> LectorPiezas::metricasDe(const EIndicador* indicador)
{
    QHash<int, const EMetrica*> metricas;
    for (int clave : MetricasConfiguracion::todas(indicador ? indicador->Configuracion() : nullptr))
        if (auto encontrada = m_metricas.find(clave); encontrada != m_metricas.end() && encontrada->second)
            metricas.insert(clave, encontrada->second.get());
    return metricas;
}

QString LectorPiezas::entidadDe(const ETabIndicador* colocado, const EIndicador* indicador)
{
    if (!indicador || colocado->FK_Entidad() <= 0)
        return QString();
    const QObject* perspectiva = cargar(m_perspectivas, cPerspectiva, indicador->FK_Perspectiva());
    const QString tipo = perspectiva ? perspectiva->property("EntidadAsociada").toString() : QString();
    if (tipo.trimmed().isEmpty() || tipo.trimmed() == QLatin1String("@"))
        return QString();
    try {
        return m_engine->InfoEntidad(tipo, colocado->FK_Entidad());
    } catch (const vb::AutomationError&) {
        return QString();
    }
}
