#include "dibujobarra.h"

#include "formatometrica.h"
#include "model/ebarraprogreso.h"
#include "periodos.h"
#include "rotulo.h"
#include "vb/vb.h"

#include <QPainter>
#include <QVariant>

namespace {

// The ends of the track stand for "below" and "above" the bounds, each this
// share of it; the interval between the bounds takes the rest.
constexpr double Extremo = 0.1;

QColor colorDe(const EBarraProgreso* barra, int periodo, const char* sufijo)
{
    return vb::oleToColor(barra ? barra->property(Periodos::propiedad(periodo, sufijo).constData()).toInt() : 0);
}

} // namespace

DibujoBarra::DibujoBarra(const QObject* colocado, const EBarraProgreso* barra, const FormatoMetrica& formato,
                         int periodo, double valor)
    : m_minimo(Periodos::limiteInferior(colocado, periodo))
    , m_maximo(Periodos::limiteSuperior(colocado, periodo))
    , m_valor(valor)
    , m_colorDebajo(colorDe(barra, periodo, "_ColorDebajo"))
    , m_colorArriba(colorDe(barra, periodo, "_ColorArriba"))
    , m_textoMinimo(formato.texto(m_minimo))
    , m_textoMaximo(formato.texto(m_maximo))
    , m_textoValor(formato.texto(valor))
{
    // Nothing checks the order of the limits when they are typed, so the
    // interval is whatever lies between the two.
    const double bajo = qMin(m_minimo, m_maximo);
    const double alto = qMax(m_minimo, m_maximo);
    if (valor < bajo) {
        m_zona = Debajo;
        m_color = m_colorDebajo;
        m_posicion = Extremo / 2;
    } else if (valor > alto) {
        m_zona = Encima;
        m_color = m_colorArriba;
        m_posicion = 1 - Extremo / 2;
    } else {
        m_color = colorDe(barra, periodo, "_Color");
        const double fraccion = alto > bajo ? (valor - bajo) / (alto - bajo) : 0.5;
        m_posicion = Extremo + fraccion * (1 - 2 * Extremo);
    }
}

void DibujoBarra::pintar(QPainter* painter, const QRectF& area) const
{
    const qreal linea = qBound<qreal>(Rotulo::MinimoLegible, area.height() / 4, 18);
    // A bar thicker than a few lines of text only looks heavy: it stays at that
    // and the bar, its value and its bounds are centred in the tile.
    const qreal grosor = qBound<qreal>(4, area.height() - linea * 2.6, linea * 2.2);
    const qreal arriba = area.top() + (area.height() - grosor - linea * 2.6) / 2;
    const QRectF pista(area.left(), arriba + linea * 1.2, area.width(), grosor);
    const qreal interior = pista.width() * Extremo;
    painter->save();
    painter->setPen(Qt::NoPen);
    painter->setBrush(QColor(236, 236, 236));
    painter->drawRect(pista);
    painter->setBrush(QColor(m_colorDebajo.red(), m_colorDebajo.green(), m_colorDebajo.blue(), 70));
    painter->drawRect(QRectF(pista.left(), pista.top(), interior, pista.height()));
    painter->setBrush(QColor(m_colorArriba.red(), m_colorArriba.green(), m_colorArriba.blue(), 70));
    painter->drawRect(QRectF(pista.right() - interior, pista.top(), interior, pista.height()));
    const qreal marca = pista.left() + pista.width() * m_posicion;
    painter->setBrush(m_color);
    painter->drawRect(QRectF(pista.left(), pista.top() + 2, marca - pista.left(), pista.height() - 4));
    painter->setPen(QPen(QColor(60, 60, 60), 1.5));
    painter->drawLine(QPointF(marca, pista.top() - 2), QPointF(marca, pista.bottom() + 2));
    painter->setPen(QColor(110, 110, 110));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(pista);
    painter->drawLine(QPointF(pista.left() + interior, pista.top()), QPointF(pista.left() + interior, pista.bottom()));
    painter->drawLine(QPointF(pista.right() - interior, pista.top()), QPointF(pista.right() - interior, pista.bottom()));
    painter->setPen(QColor(30, 30, 30));
    const qreal ancho = qMax<qreal>(linea * 4, area.width() / 3);
    const QRectF cajaValor(qBound(area.left(), marca - ancho / 2, area.right() - ancho), pista.top() - linea * 1.2, ancho,
                           linea * 1.1);
    Rotulo::escribir(painter, cajaValor, m_textoValor, Qt::AlignCenter, Rotulo::fuente(linea, true));
    const QRectF pie(area.left(), pista.bottom() + linea * 0.2, area.width() / 2, linea * 1.1);
    painter->setPen(QColor(70, 70, 70));
    Rotulo::escribir(painter, pie, m_textoMinimo, Qt::AlignLeft | Qt::AlignVCenter, Rotulo::fuente(linea));
    Rotulo::escribir(painter, pie.translated(area.width() / 2, 0), m_textoMaximo, Qt::AlignRight | Qt::AlignVCenter,
                     Rotulo::fuente(linea));
    painter->restore();
}
