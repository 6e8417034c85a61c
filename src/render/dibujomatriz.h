#pragma once

#include <QHash>
#include <QList>
#include <QString>

struct PeticionValor;
class EMatrizGrafico;
class EMetrica;
class FuenteValores;
class QPainter;
class QRectF;

// A matrix-and-chart tile for one period: a row per matrix metric (up to
// ten) with its title and value, and the figures of the chart metrics (up to
// five) for the chart drawn beside it.
class DibujoMatriz {
public:
    struct Fila {
        QString titulo;
        QString valor;
    };
    struct Serie {
        QString titulo;
        // Oldest first; the last one is the period shown.
        QList<double> valores;
    };
    // How many periods a line chart looks back.
    static constexpr int Historia = 6;

    // The figures the tile shows for a period: each matrix row's value, then
    // each chart metric's history, oldest first.
    static QList<PeticionValor> peticiones(const EMatrizGrafico* matriz, int periodo, int entidad);

    DibujoMatriz(const EMatrizGrafico* matriz, const QHash<int, const EMetrica*>& metricas,
                 const FuenteValores& valores, int periodo, int entidad);

    const QList<Fila>& filas() const { return m_filas; }
    const QList<Serie>& series() const { return m_series; }
    int tipoGrafico() const { return m_tipo; }
    QString tituloGrafico() const { return m_titulo; }

    // The matrix part: as many rows as fit at a readable height.
    void pintarFilas(QPainter* painter, const QRectF& area) const;
    // A chart too small for axes and a legend: the same kind drawn as bare
    // shapes, which is all a reader can take from a thumbnail anyway.
    void pintarMiniatura(QPainter* painter, const QRectF& area) const;

private:
    QList<Fila> m_filas;
    QList<Serie> m_series;
    int m_tipo = 0;
    QString m_titulo;
};
