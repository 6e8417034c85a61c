#pragma once

#include <QString>

class EEngine;

// Pictures of a dashboard as it will look: the whole layout ("tablero.png")
// and each of its placed indicators in each period
// ("pieza-<kind>-<period>.png", kinds barra, matriz, semaforo; periods dia,
// semana, mes, ano). Answers how many pictures it wrote.
class CapturasTablero {
public:
    static int escribir(EEngine& engine, int usuario, int tablero, const QString& carpeta);
};
