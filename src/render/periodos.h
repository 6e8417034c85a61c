#pragma once

#include <QByteArray>
#include <QString>

class QObject;

// The four periods a tile can show (cPeriodosTemporales: 0 day, 1 week,
// 2 month, 3 year) and where their settings live in the entities.
class Periodos {
public:
    static constexpr int Cantidad = 4;

    static bool valido(int periodo) { return periodo >= 0 && periodo < Cantidad; }
    static QString nombre(int periodo);
    static QString inicial(int periodo);
    // A configuration property of that period: propiedad(2, "_Min") is "Mes_Min".
    static QByteArray propiedad(int periodo, const char* sufijo);
    static double numero(const QObject* objeto, const QByteArray& propiedad);
    // The placement's limits of a period: the upper row of its editor (Limite1,
    // 3, 5, 7) and the lower row (Limite2, 4, 6, 8).
    static double limiteSuperior(const QObject* colocado, int periodo);
    static double limiteInferior(const QObject* colocado, int periodo);
};
