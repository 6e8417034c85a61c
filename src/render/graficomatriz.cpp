#include "graficomatriz.h"

#include "dibujomatriz.h"
#include "model/vendimarbi.h"
#include "rotulo.h"

#include <QBarCategoryAxis>
#include <QBarSeries>
#include <QBarSet>
#include <QChart>
#include <QGraphicsLayout>
#include <QGraphicsScene>
#include <QLineSeries>
#include <QPainter>
#include <QPieSeries>
#include <QValueAxis>

namespace {

// Share of its category the bars take, and how deep a 3-D bar looks next to its width.
constexpr qreal AnchoBarras = 0.6;
constexpr qreal Profundidad = 0.35;
// Below this height a legend leaves no room for the chart itself.
constexpr qreal AltoConLeyenda = 110;

QFont letraEjes()
{
    return Rotulo::fuente(9);
}

// Whole numbers on the value axis unless the figures are small enough for decimals to matter.
void ajustarEje(QValueAxis* eje, double minimo, double maximo)
{
    eje->setRange(minimo, maximo > minimo ? maximo : minimo + 1);
    eje->applyNiceNumbers();
    eje->setLabelFormat(eje->max() - eje->min() >= 10 ? QStringLiteral("%.0f") : QStringLiteral("%.2f"));
}

} // namespace

GraficoMatriz::GraficoMatriz(const DibujoMatriz& dibujo)
    : m_escena(std::make_unique<QGraphicsScene>())
    , m_chart(new QChart)
{
    m_escena->addItem(m_chart);
    m_chart->setAnimationOptions(QChart::NoAnimation);
    m_chart->setBackgroundVisible(false);
    m_chart->setMargins(QMargins(2, 2, 2, 2));
    m_chart->layout()->setContentsMargins(0, 0, 0, 0);
    m_chart->setTitle(dibujo.tituloGrafico());
    m_chart->setTitleFont(Rotulo::fuente(12, true));
    m_chart->legend()->setFont(letraEjes());
    m_chart->legend()->setAlignment(Qt::AlignBottom);
    switch (dibujo.tipoGrafico()) {
    case VendimarBI::cLineas2D:
        agregarLineas(dibujo);
        break;
    case VendimarBI::cPie2D:
        agregarPastel(dibujo);
        break;
    case VendimarBI::cBarras3D:
        m_profundidad = true;
        agregarBarras(dibujo);
        break;
    default:
        agregarBarras(dibujo);
        break;
    }
}

GraficoMatriz::~GraficoMatriz() = default;

void GraficoMatriz::agregarLineas(const DibujoMatriz& dibujo)
{
    auto* ejeX = new QValueAxis;
    ejeX->setRange(1 - DibujoMatriz::Historia, 0);
    ejeX->setLabelsVisible(false);
    auto* ejeY = new QValueAxis;
    ejeY->setLabelsFont(letraEjes());
    m_chart->addAxis(ejeX, Qt::AlignBottom);
    m_chart->addAxis(ejeY, Qt::AlignLeft);
    double minimo = 0;
    double maximo = 0;
    for (const DibujoMatriz::Serie& serie : dibujo.series()) {
        auto* linea = new QLineSeries;
        linea->setName(serie.titulo);
        for (int i = 0; i < serie.valores.size(); ++i) {
            linea->append(i + 1 - serie.valores.size(), serie.valores[i]);
            minimo = qMin(minimo, serie.valores[i]);
            maximo = qMax(maximo, serie.valores[i]);
        }
        m_chart->addSeries(linea);
        linea->attachAxis(ejeX);
        linea->attachAxis(ejeY);
        ++m_cantidad;
    }
    ajustarEje(ejeY, minimo, maximo);
}

void GraficoMatriz::agregarBarras(const DibujoMatriz& dibujo)
{
    auto* barras = new QBarSeries;
    barras->setBarWidth(AnchoBarras);
    double minimo = 0;
    double maximo = 0;
    for (const DibujoMatriz::Serie& serie : dibujo.series()) {
        auto* conjunto = new QBarSet(serie.titulo);
        const double actual = serie.valores.isEmpty() ? 0 : serie.valores.last();
        conjunto->append(actual);
        minimo = qMin(minimo, actual);
        maximo = qMax(maximo, actual);
        barras->append(conjunto);
        ++m_cantidad;
    }
    m_chart->addSeries(barras);
    auto* ejeX = new QBarCategoryAxis;
    ejeX->append(QStringLiteral(" "));
    ejeX->setLabelsVisible(false);
    auto* ejeY = new QValueAxis;
    ejeY->setLabelsFont(letraEjes());
    // Room above the tallest bar for the depth of a 3-D bar.
    ajustarEje(ejeY, minimo, m_profundidad ? maximo * 1.15 : maximo);
    m_chart->addAxis(ejeX, Qt::AlignBottom);
    m_chart->addAxis(ejeY, Qt::AlignLeft);
    barras->attachAxis(ejeX);
    barras->attachAxis(ejeY);
}

void GraficoMatriz::agregarPastel(const DibujoMatriz& dibujo)
{
    auto* pastel = new QPieSeries;
    for (const DibujoMatriz::Serie& serie : dibujo.series()) {
        // A slice cannot be negative: it is drawn as empty.
        pastel->append(serie.titulo, qMax(0.0, serie.valores.isEmpty() ? 0.0 : serie.valores.last()));
        ++m_cantidad;
    }
    pastel->setPieSize(0.8);
    m_chart->addSeries(pastel);
}

void GraficoMatriz::ajustarTamano(const QSizeF& tamano)
{
    m_chart->legend()->setVisible(tamano.height() >= AltoConLeyenda && m_cantidad > 0);
    m_chart->setTitleFont(Rotulo::fuente(qBound<qreal>(Rotulo::MinimoLegible, tamano.height() / 10, 13), true));
    m_chart->resize(tamano);
    // The plot area is laid out when the event loop next runs; painting now needs it now.
    m_chart->layout()->activate();
}

void GraficoMatriz::pintar(QPainter* painter, const QRectF& area)
{
    if (area.width() < 4 || area.height() < 4)
        return;
    const qreal escala = painter->device() ? painter->device()->devicePixelRatioF() : 1.0;
    const QSize tamano = area.size().toSize();
    if (m_imagen.isNull() || m_imagen.deviceIndependentSize().toSize() != tamano) {
        ajustarTamano(tamano);
        m_imagen = QPixmap(tamano * escala);
        m_imagen.setDevicePixelRatio(escala);
        m_imagen.fill(Qt::transparent);
        QPainter lienzo(&m_imagen);
        lienzo.setRenderHint(QPainter::Antialiasing);
        m_escena->render(&lienzo, QRectF(QPointF(0, 0), QSizeF(tamano)), QRectF(QPointF(0, 0), QSizeF(tamano)));
        if (m_profundidad)
            pintarProfundidad(&lienzo);
    }
    painter->drawPixmap(area.topLeft(), m_imagen);
}

// Each bar gets a top and a side face, so the bars stand out of the plot.
void GraficoMatriz::pintarProfundidad(QPainter* painter) const
{
    const QList<QAbstractSeries*> series = m_chart->series();
    auto* barras = series.isEmpty() ? nullptr : qobject_cast<QBarSeries*>(series.first());
    if (!barras || barras->count() == 0)
        return;
    const qreal ancho = AnchoBarras / barras->count();
    for (int i = 0; i < barras->count(); ++i) {
        QBarSet* conjunto = barras->barSets().at(i);
        const qreal x0 = -AnchoBarras / 2 + i * ancho;
        const QPointF arribaIzquierda = m_chart->mapToPosition(QPointF(x0, conjunto->at(0)), barras);
        const QPointF abajoDerecha = m_chart->mapToPosition(QPointF(x0 + ancho, 0), barras);
        const qreal d = qMax<qreal>(2, (abajoDerecha.x() - arribaIzquierda.x()) * Profundidad);
        const qreal derecha = abajoDerecha.x();
        const qreal arriba = qMin(arribaIzquierda.y(), abajoDerecha.y());
        const qreal base = qMax(arribaIzquierda.y(), abajoDerecha.y());
        painter->setPen(QPen(conjunto->color().darker(160), 0.8));
        painter->setBrush(conjunto->color().lighter(130));
        painter->drawPolygon(QPolygonF({QPointF(arribaIzquierda.x(), arriba), QPointF(derecha, arriba),
                                        QPointF(derecha + d, arriba - d), QPointF(arribaIzquierda.x() + d, arriba - d)}));
        painter->setBrush(conjunto->color().darker(140));
        painter->drawPolygon(QPolygonF({QPointF(derecha, arriba), QPointF(derecha + d, arriba - d),
                                        QPointF(derecha + d, base - d), QPointF(derecha, base)}));
    }
}
