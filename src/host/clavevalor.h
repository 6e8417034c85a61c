#pragma once

#include <QDate>
#include <QHashFunctions>

// One figure the view mode knows or works out: a metric for an entity over
// the days of one period. Two tiles asking for the same figure share it.
struct ClaveValor {
    int metrica = 0;
    int entidad = 0;
    int periodo = 0;
    QDate inicio;

    friend bool operator==(const ClaveValor&, const ClaveValor&) = default;
};

inline size_t qHash(const ClaveValor& clave, size_t seed = 0)
{
    return qHashMulti(seed, clave.metrica, clave.entidad, clave.periodo, clave.inicio);
}
