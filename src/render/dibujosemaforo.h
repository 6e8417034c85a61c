#pragma once

#include <QColor>
#include <QString>

class ESemaforo;
class FormatoMetrica;
class QObject;
class QPainter;
class QRectF;

// A traffic light for one period: three lamps stacked as in the indicator
// designer, the top one for values at or over the high limit, the middle one
// from the medium limit up, the bottom one below it. The direction decides
// the colours: a descending light has its green lamp on top, as the designer
// shows it, an ascending one its red lamp.
class DibujoSemaforo {
public:
    enum Lampara { Arriba = 0, Medio = 1, Abajo = 2, Lamparas = 3 };

    DibujoSemaforo(const QObject* colocado, const ESemaforo* semaforo, const FormatoMetrica& formato, int periodo,
                   double valor);

    double limiteAlto() const { return m_alto; }
    double limiteMedio() const { return m_medio; }
    double valor() const { return m_valor; }
    Lampara encendida() const { return m_encendida; }
    // The colour of a lamp when it is lit.
    QColor color(Lampara lampara) const { return m_colores[lampara]; }
    QString textoAlto() const { return m_textoAlto; }
    QString textoMedio() const { return m_textoMedio; }
    QString textoValor() const { return m_textoValor; }

    void pintar(QPainter* painter, const QRectF& area) const;

private:
    double m_alto = 0;
    double m_medio = 0;
    double m_valor = 0;
    Lampara m_encendida = Abajo;
    QColor m_colores[Lamparas];
    QString m_textoAlto;
    QString m_textoMedio;
    QString m_textoValor;
};
