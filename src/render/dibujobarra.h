#pragma once

#include <QColor>
#include <QString>

class EBarraProgreso;
class FormatoMetrica;
class QObject;
class QPainter;
class QRectF;

// A progress bar for one period: the placement's bounds of that period (its
// upper row is the maximum, its lower row the minimum), the indicator's three
// colours of that period and where the value falls.
class DibujoBarra {
public:
    enum Zona { Debajo = -1, Dentro = 0, Encima = 1 };

    DibujoBarra(const QObject* colocado, const EBarraProgreso* barra, const FormatoMetrica& formato, int periodo,
                double valor);

    double minimo() const { return m_minimo; }
    double maximo() const { return m_maximo; }
    double valor() const { return m_valor; }
    Zona zona() const { return m_zona; }
    // The colour the bar takes: below, inside or above the bounds.
    QColor color() const { return m_color; }
    // Where the value's mark sits along the whole track, 0 to 1.
    double posicion() const { return m_posicion; }
    QString textoMinimo() const { return m_textoMinimo; }
    QString textoMaximo() const { return m_textoMaximo; }
    QString textoValor() const { return m_textoValor; }
    QColor colorDebajo() const { return m_colorDebajo; }
    QColor colorArriba() const { return m_colorArriba; }

    void pintar(QPainter* painter, const QRectF& area) const;

private:
    double m_minimo = 0;
    double m_maximo = 0;
    double m_valor = 0;
    Zona m_zona = Dentro;
    QColor m_color;
    QColor m_colorDebajo;
    QColor m_colorArriba;
    double m_posicion = 0;
    QString m_textoMinimo;
    QString m_textoMaximo;
    QString m_textoValor;
};
