#pragma once

#include "fuentevalores.h"

// Sample figures for a dashboard being designed: each is taken from the
// tile's own bounds, so a bar or a light shows what it will look like with a
// plausible value. The same request always gives the same figure, so a tile
// does not change while the user moves it around.
class ValoresMuestra : public FuenteValores {
public:
    double valor(const PeticionValor& peticion) const override;
    bool sonMuestras() const override { return true; }
};
