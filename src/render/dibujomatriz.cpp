#include "dibujomatriz.h"

#include "formatometrica.h"
#include "fuentevalores.h"
#include "model/ematrizgrafico.h"
#include "model/emetrica.h"
#include "metricasconfiguracion.h"
#include "rotulo.h"

#include <QPainter>
#include <QVariant>

DibujoMatriz::DibujoMatriz(const EMatrizGrafico* matriz, const QHash<int, const EMetrica*>& metricas,
                           const FuenteValores& valores, int periodo)
    : m_tipo(matriz ? matriz->Grafico_Tipo() : 0)
    , m_titulo(matriz ? matriz->Grafico_Titulo() : QString())
{
    for (int clave : MetricasConfiguracion::matriz(matriz)) {
        const FormatoMetrica formato(metricas.value(clave));
        m_filas.append({formato.titulo(), formato.texto(valores.valor({clave, periodo, 0, 0, 0}))});
    }
    for (int clave : MetricasConfiguracion::grafico(matriz)) {
        Serie serie{FormatoMetrica(metricas.value(clave)).titulo(), {}};
        for (int atras = Historia - 1; atras >= 0; --atras)
            serie.valores.append(valores.valor({clave, periodo, atras, 0, 0}));
        m_series.append(serie);
    }
}

void DibujoMatriz::pintarFilas(QPainter* painter, const QRectF& area) const
{
    if (m_filas.isEmpty())
        return;
    // Rows keep the height of a line of text; a few metrics do not stretch over the whole tile.
    const qreal alto = qMin<qreal>(area.height() / m_filas.size(), 20);
    const qreal linea = qBound<qreal>(Rotulo::MinimoLegible, alto, 16);
    painter->save();
    for (int i = 0; i < m_filas.size(); ++i) {
        const QRectF fila(area.left(), area.top() + alto * i, area.width(), alto);
        if (i % 2 == 1)
            painter->fillRect(fila, QColor(242, 245, 250));
        painter->setPen(QColor(60, 60, 60));
        Rotulo::escribir(painter, fila.adjusted(2, 0, -fila.width() * 0.45, 0), m_filas[i].titulo,
                         Qt::AlignLeft | Qt::AlignVCenter, Rotulo::fuente(linea));
        painter->setPen(QColor(20, 20, 20));
        Rotulo::escribir(painter, fila.adjusted(fila.width() * 0.55, 0, -2, 0), m_filas[i].valor,
                         Qt::AlignRight | Qt::AlignVCenter, Rotulo::fuente(linea, true));
    }
    painter->restore();
}
