#include "valoresmuestra.h"

#include <array>
#include <cstdlib>

namespace {

// Where in the bounds a sample falls: mostly inside, now and then below or
// above, so a dashboard shows every colour its tiles can take.
constexpr std::array<double, 7> Fracciones{0.62, 0.35, 0.85, 1.12, -0.12, 0.5, 0.74};

// A tile without bounds (the matrix and its chart) still gets figures of a
// size that fits its period: a day's worth, a week's, a month's, a year's.
constexpr std::array<double, 4> EscalaPeriodo{1000, 7000, 30000, 365000};

} // namespace

double ValoresMuestra::valor(const PeticionValor& p) const
{
    const auto indice = static_cast<size_t>(std::abs(p.metrica * 3 + p.periodo + p.atras * 5)) % Fracciones.size();
    const double f = Fracciones[indice];
    if (p.maximo != p.minimo)
        return p.minimo + (p.maximo - p.minimo) * f;
    const size_t periodo = p.periodo >= 0 && p.periodo < 4 ? static_cast<size_t>(p.periodo) : 0;
    return EscalaPeriodo[periodo] * (0.45 + 0.5 * f);
}
