#pragma once

#include <QObject>

// The type library's enumerations, published with their member names and values.
namespace VendimarBI {
Q_NAMESPACE

enum TiposEntidades {
    cPerspectiva = 1,
    cMetrica = 2,
    cIndicador = 3,
    cTablero = 4,
    ctabindicador = 5,
    cFigura = 6,
};
Q_ENUM_NS(TiposEntidades)

enum TiposIndicador {
    cBarraProgreso = 1,
    cMatrizGrafico = 2,
    cSemaforo = 3,
};
Q_ENUM_NS(TiposIndicador)

enum TipoGrafico {
    cLineas2D = 1,
    cBarras2D = 3,
    cBarras3D = 0,
    cPie2D = 14,
};
Q_ENUM_NS(TipoGrafico)

enum cPeriodosTemporales {
    cDia = 0,
    cSemana = 1,
    cMes = 2,
    cAno = 3,
};
Q_ENUM_NS(cPeriodosTemporales)

enum cTipoFigura {
    cTexto = 0,
};
Q_ENUM_NS(cTipoFigura)

enum cAlineacion {
    cIzquierda = 0,
    cCentro = 2,
    cDerecha = 1,
};
Q_ENUM_NS(cAlineacion)

} // namespace VendimarBI
