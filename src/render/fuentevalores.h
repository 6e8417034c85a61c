#pragma once

#include <QString>

// What a tile asks for one figure it shows.
struct PeticionValor {
    int metrica = 0;   // the metric's key
    int periodo = 0;   // a cPeriodosTemporales value
    int atras = 0;     // 0 the current period, 1 the one before it, and so on
    double minimo = 0; // the tile's bounds for that period; equal when the tile has none
    double maximo = 0;
    int entidad = 0;   // the host entity the placement is computed for, 0 when none
};

// Where the figures of the dashboard's tiles come from. Tiles never compute a
// value: the layout view hands them a sample source, and a run-time that
// computes metrics answers the same question with real values.
class FuenteValores {
public:
    virtual ~FuenteValores() = default;
    virtual double valor(const PeticionValor& peticion) const = 0;
    // True when the values are made up for the designer, so tiles mark them as such.
    virtual bool sonMuestras() const = 0;
    // True while the figure is still being worked out: the tile shows itself busy.
    virtual bool pendiente(const PeticionValor& /*peticion*/) const { return false; }
    // Why the figure cannot be given, with the line of the metric to blame; empty when it can.
    virtual QString fallo(const PeticionValor& /*peticion*/) const { return {}; }
};
