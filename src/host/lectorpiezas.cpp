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

QHash<int, const EMetrica*> LectorPiezas::metricasDe(const EIndicador* indicador)
{
    QHash<int, const EMetrica*> metricas;
    for (int clave : MetricasConfiguracion::todas(indicador ? indicador->Configuracion() : nullptr))
        if (const auto* metrica = qobject_cast<const EMetrica*>(cargar(m_metricas, cMetrica, clave)))
            metricas.insert(clave, metrica);
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
