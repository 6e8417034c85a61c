#pragma once

#include <QPixmap>
#include <memory>

class DibujoMatriz;
class QChart;
class QGraphicsScene;
class QPainter;
class QRectF;

// The chart of a matrix-and-chart tile, drawn as its stored kind: lines
// ("Líneas 2D", each metric over its last periods), bars ("Barras 2D"), bars
// with visible depth ("Barras 3D") or a pie ("Pastel"), titled with the
// configuration's chart title. A kind outside those four is drawn as flat bars.
class GraficoMatriz {
public:
    // Below this size axes and legend leave no room for the chart: a tile
    // that small draws a thumbnail instead.
    static constexpr qreal AnchoMinimo = 110;
    static constexpr qreal AltoMinimo = 70;

    explicit GraficoMatriz(const DibujoMatriz& dibujo);
    ~GraficoMatriz();

    QChart* chart() const { return m_chart; }
    // How many metrics the chart draws: lines, bar sets or pie slices.
    int cantidadSeries() const { return m_cantidad; }
    bool conProfundidad() const { return m_profundidad; }

    // Charts are slow to lay out, so the picture is kept until the size changes.
    void pintar(QPainter* painter, const QRectF& area);

private:
    void agregarLineas(const DibujoMatriz& dibujo);
    void agregarBarras(const DibujoMatriz& dibujo);
    void agregarPastel(const DibujoMatriz& dibujo);
    void pintarProfundidad(QPainter* painter) const;
    void ajustarTamano(const QSizeF& tamano);

    std::unique_ptr<QGraphicsScene> m_escena;
    QChart* m_chart = nullptr;
    int m_cantidad = 0;
    bool m_profundidad = false;
    QPixmap m_imagen;
};
