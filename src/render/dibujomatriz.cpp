#include "dibujomatriz.h"

#include "formatometrica.h"
#include "fuentevalores.h"
#include "model/ematrizgrafico.h"
#include "model/emetrica.h"
#include "model/vendimarbi.h"
#include "metricasconfiguracion.h"
#include "rotulo.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QVariant>

namespace {

// The colours the charts give their first five series.
const QColor Paleta[] = {QColor(0x20, 0x9f, 0xdf), QColor(0x99, 0xca, 0x53), QColor(0xf6, 0xa6, 0x25),
                         QColor(0x6d, 0x5f, 0xd5), QColor(0xbf, 0x59, 0x3e)};

QColor colorSerie(int i)
{
    return Paleta[i % (sizeof(Paleta) / sizeof(Paleta[0]))];
}

} // namespace

QList<PeticionValor> DibujoMatriz::peticiones(const EMatrizGrafico* matriz, int periodo, int entidad)
{
    QList<PeticionValor> result;
    for (int clave : MetricasConfiguracion::matriz(matriz))
        result.append({clave, periodo, 0, 0, 0, entidad});
    for (int clave : MetricasConfiguracion::grafico(matriz))
        for (int atras = Historia - 1; atras >= 0; --atras)
            result.append({clave, periodo, atras, 0, 0, entidad});
    return result;
}

DibujoMatriz::DibujoMatriz(const EMatrizGrafico* matriz, const QHash<int, const EMetrica*>& metricas,
                           const FuenteValores& valores, int periodo, int entidad)
    : m_tipo(matriz ? matriz->Grafico_Tipo() : 0)
    , m_titulo(matriz ? matriz->Grafico_Titulo() : QString())
{
    const QList<PeticionValor> figuras = peticiones(matriz, periodo, entidad);
    const qsizetype filas = MetricasConfiguracion::matriz(matriz).size();
    for (qsizetype i = 0; i < filas; ++i) {
        const FormatoMetrica formato(metricas.value(figuras[i].metrica));
        m_filas.append({formato.titulo(), formato.texto(valores.valor(figuras[i]))});
    }
    for (qsizetype i = filas; i < figuras.size(); ++i) {
        if (figuras[i].atras == Historia - 1)
            m_series.append({FormatoMetrica(metricas.value(figuras[i].metrica)).titulo(), {}});
        m_series.last().valores.append(valores.valor(figuras[i]));
    }
}

void DibujoMatriz::pintarFilas(QPainter* painter, const QRectF& area) const
{
    if (m_filas.isEmpty())
        return;
    // Rows keep the height of a line of text: a few metrics do not stretch
    // over the whole tile, and rows that would be squeezed below a readable
    // line are left out rather than drawn on top of each other.
    const qreal alto = qBound<qreal>(Rotulo::MinimoLegible + 2, area.height() / m_filas.size(), 20);
    const qreal linea = qBound<qreal>(Rotulo::MinimoLegible, alto, 16);
    const int caben = qMin<int>(m_filas.size(), qFloor(area.height() / alto));
    painter->save();
    const QFont fuenteValor = Rotulo::fuente(linea, true);
    const QFontMetricsF medida(fuenteValor);
    for (int i = 0; i < caben; ++i) {
        const QRectF fila(area.left(), area.top() + alto * i, area.width(), alto);
        if (i % 2 == 1)
            painter->fillRect(fila, QColor(242, 245, 250));
        // The value is what the row is for: it takes the room it needs, up to
        // two thirds of the row, and the title is elided in what is left.
        const qreal valor = qMin(medida.horizontalAdvance(m_filas[i].valor) + 4, fila.width() * 2 / 3);
        painter->setPen(QColor(60, 60, 60));
        Rotulo::escribir(painter, fila.adjusted(2, 0, -valor - 4, 0), m_filas[i].titulo, Qt::AlignLeft | Qt::AlignVCenter,
                         Rotulo::fuente(linea));
        painter->setPen(QColor(20, 20, 20));
        Rotulo::escribir(painter, fila.adjusted(fila.width() - valor - 2, 0, -2, 0), m_filas[i].valor,
                         Qt::AlignRight | Qt::AlignVCenter, fuenteValor);
    }
    painter->restore();
}

void DibujoMatriz::pintarMiniatura(QPainter* painter, const QRectF& area) const
{
    double maximo = 0;
    for (const Serie& serie : m_series)
        for (double v : serie.valores)
            maximo = qMax(maximo, v);
    if (m_series.isEmpty() || maximo <= 0 || area.width() < 4 || area.height() < 4)
        return;
    painter->save();
    const int n = int(m_series.size());
    if (m_tipo == VendimarBI::cPie2D) {
        const qreal lado = qMin(area.width(), area.height());
        const QRectF circulo(area.center().x() - lado / 2, area.center().y() - lado / 2, lado, lado);
        double total = 0;
        for (const Serie& serie : m_series)
            total += qMax(0.0, serie.valores.last());
        int angulo = 90 * 16;
        for (int i = 0; i < n && total > 0; ++i) {
            const int arco = qRound(-360 * 16 * qMax(0.0, m_series[i].valores.last()) / total);
            painter->setBrush(colorSerie(i));
            painter->setPen(Qt::NoPen);
            painter->drawPie(circulo, angulo, arco);
            angulo += arco;
        }
    } else if (m_tipo == VendimarBI::cLineas2D) {
        for (int i = 0; i < n; ++i) {
            QPainterPath linea;
            const QList<double>& v = m_series[i].valores;
            for (int j = 0; j < v.size(); ++j) {
                const QPointF punto(area.left() + area.width() * j / qMax(1, int(v.size()) - 1),
                                    area.bottom() - area.height() * qMax(0.0, v[j]) / maximo);
                if (j == 0)
                    linea.moveTo(punto);
                else
                    linea.lineTo(punto);
            }
            painter->setPen(QPen(colorSerie(i), 1.5));
            painter->drawPath(linea);
        }
    } else {
        const qreal ancho = area.width() / n;
        for (int i = 0; i < n; ++i) {
            const qreal alto = area.height() * qMax(0.0, m_series[i].valores.last()) / maximo;
            painter->fillRect(QRectF(area.left() + ancho * i + ancho * 0.15, area.bottom() - alto, ancho * 0.7, alto),
                              colorSerie(i));
        }
    }
    painter->restore();
}
