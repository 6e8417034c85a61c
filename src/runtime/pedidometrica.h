#pragma once

#include "periodometrica.h"

#include <QString>

// One value a dashboard asks for: a metric's source, the placement's host
// entity key (0 for none) and the period shown.
struct PedidoMetrica {
    QString fuente;
    int sysPk = 0;
    IntervaloPeriodo periodo;
};
