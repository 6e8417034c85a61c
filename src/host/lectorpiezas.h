#pragma once

#include "model/emetrica.h"
#include "render/datospieza.h"

#include <QList>
#include <QSet>
#include <map>
#include <memory>

class EEngine;
class ETabIndicador;
class QObject;

// Reads, through the engine, what the tiles of a dashboard paint from: each
// placement's indicator, whether its configuration row exists, the metrics
// the configuration names and the description of the host entity the tile is
// computed for. Every indicator, perspective and metric is read once however
// often it is placed, and all the metrics in one query. It keeps what it read for as long as the tiles live.
class LectorPiezas {
public:
    explicit LectorPiezas(EEngine* engine);
    ~LectorPiezas();

    QList<DatosPieza> leer(const QList<const ETabIndicador*>& colocados);

private:
    const QObject* cargar(std::map<int, std::unique_ptr<QObject>>& cache, int tipo, int clave);
    void leerConfiguraciones(const QList<int>& indicadores);
    void leerMetricas();
    QHash<int, const EMetrica*> metricasDe(const EIndicador* indicador);
    QString entidadDe(const ETabIndicador* colocado, const EIndicador* indicador);

    EEngine* m_engine;
    // A key that names no row maps to none, so it is asked once only.
    std::map<int, std::unique_ptr<QObject>> m_indicadores;
    std::map<int, std::unique_ptr<EMetrica>> m_metricas;
    std::map<int, std::unique_ptr<QObject>> m_perspectivas;
    QSet<int> m_configurados;
};
