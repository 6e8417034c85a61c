#include "dibujosemaforo.h"

#include "formatometrica.h"
#include "model/esemaforo.h"
#include "periodos.h"
#include "rotulo.h"

#include <QPainter>

namespace {
// The designer's lamp colours.
const QColor Verde(0, 255, 0);
const QColor Naranja(255, 128, 0);
const QColor Roja(255, 0, 0);
} // namespace

DibujoSemaforo::DibujoSemaforo(const QObject* colocado, const ESemaforo* semaforo, const FormatoMetrica& formato,
                               int periodo, double valor)
    : m_valor(valor)
{
    // The designer keeps the high limit above the medium one, but the
    // placement's limits are typed freely: the higher of the two is the high one.
    const double superior = Periodos::limiteSuperior(colocado, periodo);
    const double inferior = Periodos::limiteInferior(colocado, periodo);
    m_alto = qMax(superior, inferior);
    m_medio = qMin(superior, inferior);
    m_encendida = valor >= m_alto ? Arriba : valor >= m_medio ? Medio : Abajo;
    const bool descendente = semaforo && semaforo->Descendente();
    m_colores[Arriba] = descendente ? Verde : Roja;
    m_colores[Medio] = Naranja;
    m_colores[Abajo] = descendente ? Roja : Verde;
    m_textoAlto = formato.texto(m_alto);
    m_textoMedio = formato.texto(m_medio);
    m_textoValor = formato.texto(valor);
}

void DibujoSemaforo::pintar(QPainter* painter, const QRectF& area) const
{
    const qreal lampara = qMax<qreal>(4, qMin(area.height() / 3.3, area.width() / 3));
    const QRectF carcasa(area.left(), area.center().y() - lampara * 1.65, lampara * 1.3, lampara * 3.3);
    painter->save();
    painter->setPen(Qt::NoPen);
    painter->setBrush(QColor(45, 45, 50));
    painter->drawRoundedRect(carcasa, lampara * 0.3, lampara * 0.3);
    for (int i = 0; i < Lamparas; ++i) {
        const QPointF centro(carcasa.center().x(), carcasa.top() + lampara * (0.65 + 1.0 * i));
        const bool lit = i == m_encendida;
        painter->setBrush(lit ? m_colores[i] : m_colores[i].darker(420));
        painter->setPen(lit ? QPen(Qt::white, 1.5) : Qt::NoPen);
        painter->drawEllipse(centro, lampara * 0.42, lampara * 0.42);
    }
    const qreal linea = qBound<qreal>(Rotulo::MinimoLegible, lampara * 0.6, 16);
    const QRectF texto(carcasa.right() + 6, area.top(), area.right() - carcasa.right() - 6, area.height());
    painter->setPen(QColor(30, 30, 30));
    Rotulo::escribir(painter, QRectF(texto.left(), texto.top(), texto.width(), linea * 1.2), m_textoValor,
                     Qt::AlignRight | Qt::AlignVCenter, Rotulo::fuente(linea, true));
    painter->setPen(QColor(70, 70, 70));
    // Each limit is written where it separates two lamps.
    const qreal limiteAlto = carcasa.top() + lampara * 1.15;
    const qreal limiteMedio = carcasa.top() + lampara * 2.15;
    Rotulo::escribir(painter, QRectF(texto.left(), limiteAlto - linea * 0.6, texto.width(), linea * 1.2),
                     QStringLiteral("≥ ") + m_textoAlto, Qt::AlignLeft | Qt::AlignVCenter, Rotulo::fuente(linea));
    Rotulo::escribir(painter, QRectF(texto.left(), limiteMedio - linea * 0.6, texto.width(), linea * 1.2),
                     QStringLiteral("≥ ") + m_textoMedio, Qt::AlignLeft | Qt::AlignVCenter, Rotulo::fuente(linea));
    painter->restore();
}
