#pragma once

#include <QHash>
#include <QString>

class EIndicador;
class EMetrica;
class ETabIndicador;

// Everything a tile of the dashboard paints from, loaded by whoever shows the
// dashboard: the rendering itself never reads the database.
struct DatosPieza {
    const ETabIndicador* colocado = nullptr;
    // None when the placed indicator no longer exists.
    const EIndicador* indicador = nullptr;
    // False when the indicator has no configuration row, so its bounds and
    // metrics are the zeros of an empty configuration, not the user's.
    bool configuracionGuardada = true;
    // The metrics the configuration refers to that still exist, by key.
    QHash<int, const EMetrica*> metricas;
    // What the entity search says of the host entity the tile is computed for; empty when none.
    QString entidad;
};
