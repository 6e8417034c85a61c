#pragma once

#include "datospieza.h"

#include <QList>
#include <QRectF>
#include <QString>
#include <memory>

class DibujoBarra;
class DibujoMatriz;
class DibujoSemaforo;
class FuenteValores;
class GraficoMatriz;
class QPainter;
struct PeticionValor;

// One placed indicator as the dashboard will show it: a frame with the
// indicator's name, the entity it is computed for and a tab per period it
// offers, and inside it the indicator of its kind for the tab chosen. A tile
// whose references are broken says why instead. The figures come from the
// value source it is given, never from the database.
class PiezaTablero {
public:
    // The value source must outlive the tile.
    PiezaTablero(DatosPieza datos, const FuenteValores& valores);
    ~PiezaTablero();

    const DatosPieza& datos() const { return m_datos; }
    // The periods the placement shows, all four when it stores none.
    QList<int> periodos() const;
    int periodo() const { return m_periodo; }
    // Switches to a period the tile offers; false, and nothing changes, for any other.
    bool setPeriodo(int periodo);
    // Why the tile cannot be drawn; empty when it can.
    QString averia() const { return m_averia; }
    // The indicator's kind (TiposIndicador), 0 when the tile is broken.
    int tipo() const;
    bool esMuestra() const;
    // The figures the current period shows; none for a broken tile.
    QList<PeticionValor> peticiones() const;
    // True while some figure of the current period is still being worked out.
    bool calculando() const;
    // Why a figure of the current period cannot be shown, naming its metric; empty when all can.
    QString errorValores() const;
    // The source has new figures: what was built from the old ones is built again.
    void valoresCambiados();

    // What each kind draws for the current period; only the one of the tile's kind has a meaning.
    DibujoBarra barra() const;
    DibujoSemaforo semaforo() const;
    DibujoMatriz matriz() const;
    GraficoMatriz* grafico();

    void pintar(QPainter* painter, const QRectF& area);
    // The period whose tab lies under a point of the tile, -1 when none does.
    int periodoEn(const QRectF& area, const QPointF& punto) const;

private:
    QString buscarAveria() const;
    QString metricaPerdida(const QList<int>& claves) const;
    int metricaPrincipal() const;
    int entidad() const;
    PeticionValor peticionPrincipal() const;
    struct Pestana {
        int periodo;
        QRectF caja;
        QString texto;
    };
    static QRectF cabeceraDe(const QRectF& area);
    QList<Pestana> pestanas(const QRectF& cabecera) const;
    void pintarCabecera(QPainter* painter, const QRectF& cabecera, bool conEntidad) const;
    void pintarAviso(QPainter* painter, const QRectF& cuerpo, const QString& titulo, const QString& texto) const;
    void pintarCalculando(QPainter* painter, const QRectF& cuerpo) const;
    void pintarCuerpo(QPainter* painter, const QRectF& cuerpo);
    void pintarMarcaMuestra(QPainter* painter, const QRectF& area) const;

    DatosPieza m_datos;
    const FuenteValores* m_valores;
    int m_periodo = 0;
    QString m_averia;
    // The chart of the current period, built when first painted.
    std::unique_ptr<GraficoMatriz> m_grafico;
};
