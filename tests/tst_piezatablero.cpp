// A placed indicator drawn as the dashboard will show it, checked by what it
// draws: the bar's colour and texts, the lit lamp, the chart's kind and
// series, the period tabs and the broken tiles.
#include "model/ebarraprogreso.h"
#include "model/eindicador.h"
#include "model/ematrizgrafico.h"
#include "model/emetrica.h"
#include "model/esemaforo.h"
#include "model/etabindicador.h"
#include "model/vendimarbi.h"
#include "render/dibujobarra.h"
#include "render/dibujomatriz.h"
#include "render/dibujosemaforo.h"
#include "render/formatometrica.h"
#include "render/graficomatriz.h"
#include "render/piezatablero.h"
#include "render/valoresmuestra.h"
#include "vb/vb.h"

#include <QAbstractSeries>
#include <QBarSeries>
#include <QBarSet>
#include <QChart>
#include <QImage>
#include <QPainter>
#include <QPieSeries>
#include <QTest>
#include <QXYSeries>
#include <memory>

using namespace VendimarBI;

namespace {

// A value source that always answers the same figure, so a test chooses
// where the value falls.
class ValorFijo : public FuenteValores {
public:
    explicit ValorFijo(double valor) : m_valor(valor) {}
    double valor(const PeticionValor&) const override { return m_valor; }
    bool sonMuestras() const override { return false; }

private:
    double m_valor;
};

// A sample source that notes being asked: a broken tile has nothing to ask for.
class FuenteVigilada : public FuenteValores {
public:
    double valor(const PeticionValor&) const override
    {
        preguntada = true;
        return 0;
    }
    bool sonMuestras() const override { return true; }
    mutable bool preguntada = false;
};

// A live source caught half-way: the figures of one step back in the
// history still on their way, those of another failed.
class FuenteViva : public FuenteValores {
public:
    double valor(const PeticionValor& peticion) const override { return 1000.0 * (peticion.atras + 1) + base; }
    bool sonMuestras() const override { return false; }
    bool pendiente(const PeticionValor& peticion) const override { return peticion.atras == atrasPendiente; }
    QString fallo(const PeticionValor& peticion) const override
    {
        return peticion.atras == atrasFallido ? QStringLiteral("Línea 2: ReferenceError: x is not defined") : QString();
    }
    int atrasPendiente = -1;
    int atrasFallido = -1;
    double base = 0;
};

constexpr int ClaveMetrica = 7;
const QColor Verde(0, 255, 0);
const QColor Roja(255, 0, 0);
const QColor Naranja(255, 128, 0);

// Antialiased edges and rounding may move a channel by a step or two.
bool parecido(const QColor& a, const QColor& b)
{
    return qAbs(a.red() - b.red()) <= 3 && qAbs(a.green() - b.green()) <= 3 && qAbs(a.blue() - b.blue()) <= 3;
}

QImage pintado(const std::function<void(QPainter*, const QRectF&)>& pintar, QSize tamano = QSize(300, 120))
{
    QImage imagen(tamano, QImage::Format_ARGB32);
    imagen.fill(Qt::white);
    QPainter painter(&imagen);
    pintar(&painter, QRectF(QPointF(0, 0), QSizeF(tamano)));
    return imagen;
}

} // namespace

class TstPiezaTablero : public QObject {
    Q_OBJECT

    QLocale savedLocale;
    EMetrica metrica;
    ETabIndicador colocado;

    // A progress bar whose month bounds are 0 and 150,000 on the placement,
    // drawn green inside, red below and blue above.
    std::unique_ptr<EIndicador> barra()
    {
        auto indicador = std::make_unique<EIndicador>();
        indicador->setNombre(QStringLiteral("Avance de ventas"));
        auto* config = qobject_cast<EBarraProgreso*>(indicador->Configuracion());
        config->setFK_Metrica(ClaveMetrica);
        config->setMes_Color(vb::colorToOle(Verde));
        config->setMes_ColorDebajo(vb::colorToOle(Roja));
        config->setMes_ColorArriba(vb::colorToOle(QColor(0, 0, 255)));
        config->setDia_Color(vb::colorToOle(QColor(10, 20, 30)));
        return indicador;
    }

    std::unique_ptr<EIndicador> semaforo(bool descendente)
    {
        auto indicador = std::make_unique<EIndicador>();
        indicador->setTipo(cSemaforo);
        indicador->setNombre(QStringLiteral("Existencias"));
        auto* config = qobject_cast<ESemaforo*>(indicador->Configuracion());
        config->setFK_Metrica(ClaveMetrica);
        config->setDescendente(descendente);
        return indicador;
    }

    std::unique_ptr<EIndicador> matriz(int tipoGrafico, int metricasGrafico)
    {
        auto indicador = std::make_unique<EIndicador>();
        indicador->setTipo(cMatrizGrafico);
        indicador->setNombre(QStringLiteral("Resumen"));
        auto* config = qobject_cast<EMatrizGrafico*>(indicador->Configuracion());
        config->setMatriz_Metrica1(ClaveMetrica);
        config->setMatriz_Metrica3(ClaveMetrica);
        for (int i = 1; i <= metricasGrafico; ++i)
            config->setProperty(("Grafico_Metrica" + QByteArray::number(i)).constData(), ClaveMetrica);
        config->setGrafico_Titulo(QStringLiteral("Ventas del periodo"));
        config->setGrafico_Tipo(tipoGrafico);
        return indicador;
    }

    DatosPieza datos(const EIndicador* indicador)
    {
        DatosPieza d;
        d.colocado = &colocado;
        d.indicador = indicador;
        d.metricas.insert(ClaveMetrica, &metrica);
        return d;
    }

private slots:
    void initTestCase()
    {
        savedLocale = QLocale();
        QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
    }

    void cleanupTestCase() { QLocale::setDefault(savedLocale); }

    void init()
    {
        metrica.setSys_PK(ClaveMetrica);
        metrica.setTitulo(QStringLiteral("Venta"));
        metrica.setDecimales(2);
        metrica.setFormato(QStringLiteral("#,##0.00"));
        colocado.setMuestra_Dia(true);
        colocado.setMuestra_Semana(true);
        colocado.setMuestra_Mes(true);
        colocado.setMuestra_Ano(true);
        colocado.setPeriodoInicio(cMes);
        colocado.setLimite1(5000);
        colocado.setLimite2(1000);
        colocado.setLimite5(150000);
        colocado.setLimite6(0);
    }

    void barTakesTheColourOfWhereTheValueFalls_data()
    {
        QTest::addColumn<double>("valor");
        QTest::addColumn<int>("zona");
        QTest::addColumn<QColor>("color");
        QTest::addColumn<QString>("texto");
        QTest::newRow("below") << -2500.0 << int(DibujoBarra::Debajo) << Roja << QStringLiteral("-2500,00");
        QTest::newRow("inside") << 75000.0 << int(DibujoBarra::Dentro) << Verde << QStringLiteral("75.000,00");
        QTest::newRow("on the upper bound") << 150000.0 << int(DibujoBarra::Dentro) << Verde << QStringLiteral("150.000,00");
        QTest::newRow("above") << 180000.5 << int(DibujoBarra::Encima) << QColor(0, 0, 255) << QStringLiteral("180.000,50");
    }

    void barTakesTheColourOfWhereTheValueFalls()
    {
        QFETCH(double, valor);
        QFETCH(int, zona);
        QFETCH(QColor, color);
        QFETCH(QString, texto);
        auto indicador = barra();
        ValorFijo fuente(valor);
        PiezaTablero pieza(datos(indicador.get()), fuente);
        QCOMPARE(pieza.tipo(), int(cBarraProgreso));
        const DibujoBarra dibujo = pieza.barra();
        QCOMPARE(int(dibujo.zona()), zona);
        QCOMPARE(dibujo.color(), color);
        QCOMPARE(dibujo.textoValor(), texto);
        QCOMPARE(dibujo.textoMinimo(), QStringLiteral("0,00"));
        QCOMPARE(dibujo.textoMaximo(), QStringLiteral("150.000,00"));
        // The filled part of the track starts at its left end in the zone's colour.
        const QImage imagen = pintado([&](QPainter* p, const QRectF& r) { dibujo.pintar(p, r); }, QSize(300, 60));
        QCOMPARE(imagen.pixelColor(3, 28), color);
    }

    void barMarkMovesWithTheValueInsideTheBounds()
    {
        auto indicador = barra();
        ValorFijo bajo(10000);
        ValorFijo alto(140000);
        const double a = PiezaTablero(datos(indicador.get()), bajo).barra().posicion();
        const double b = PiezaTablero(datos(indicador.get()), alto).barra().posicion();
        QVERIFY(a > 0.1 && a < b && b < 0.9);
    }

    void reversedBoundsStillMakeAnInterval()
    {
        colocado.setLimite5(0);
        colocado.setLimite6(150000);
        auto indicador = barra();
        ValorFijo fuente(75000);
        QCOMPARE(int(PiezaTablero(datos(indicador.get()), fuente).barra().zona()), int(DibujoBarra::Dentro));
    }

    void switchingThePeriodRedrawsWithThatPeriodsBoundsAndColours()
    {
        auto indicador = barra();
        ValorFijo fuente(3000);
        PiezaTablero pieza(datos(indicador.get()), fuente);
        QCOMPARE(pieza.periodo(), int(cMes));
        QCOMPARE(pieza.barra().maximo(), 150000.0);
        QVERIFY(pieza.setPeriodo(cDia));
        QCOMPARE(pieza.periodo(), int(cDia));
        QCOMPARE(pieza.barra().maximo(), 5000.0);
        QCOMPARE(pieza.barra().minimo(), 1000.0);
        QCOMPARE(pieza.barra().color(), QColor(10, 20, 30));
    }

    void lightLightsTheLampOfTheValue_data()
    {
        QTest::addColumn<bool>("descendente");
        QTest::addColumn<double>("valor");
        QTest::addColumn<int>("lampara");
        QTest::addColumn<QColor>("color");
        // Month limits: high 150,000 (upper row), medium 0 (lower row).
        QTest::newRow("ascending, below") << false << -1.0 << int(DibujoSemaforo::Abajo) << Verde;
        QTest::newRow("ascending, between") << false << 10.0 << int(DibujoSemaforo::Medio) << Naranja;
        QTest::newRow("ascending, above") << false << 200000.0 << int(DibujoSemaforo::Arriba) << Roja;
        QTest::newRow("descending, below") << true << -1.0 << int(DibujoSemaforo::Abajo) << Roja;
        QTest::newRow("descending, between") << true << 10.0 << int(DibujoSemaforo::Medio) << Naranja;
        QTest::newRow("descending, above") << true << 200000.0 << int(DibujoSemaforo::Arriba) << Verde;
        QTest::newRow("on the high limit") << true << 150000.0 << int(DibujoSemaforo::Arriba) << Verde;
    }

    void lightLightsTheLampOfTheValue()
    {
        QFETCH(bool, descendente);
        QFETCH(double, valor);
        QFETCH(int, lampara);
        QFETCH(QColor, color);
        auto indicador = semaforo(descendente);
        ValorFijo fuente(valor);
        PiezaTablero pieza(datos(indicador.get()), fuente);
        const DibujoSemaforo dibujo = pieza.semaforo();
        QCOMPARE(int(dibujo.encendida()), lampara);
        QCOMPARE(dibujo.color(dibujo.encendida()), color);
        QCOMPARE(dibujo.textoAlto(), QStringLiteral("150.000,00"));
        QCOMPARE(dibujo.textoMedio(), QStringLiteral("0,00"));
        // Only the lit lamp shines in its colour; the housing is 99 pixels
        // high in a 100-pixel body, its lamps 30 pixels apart from y 20.
        const QImage imagen = pintado([&](QPainter* p, const QRectF& r) { dibujo.pintar(p, r); }, QSize(200, 100));
        for (int i = 0; i < DibujoSemaforo::Lamparas; ++i) {
            const QColor visto = imagen.pixelColor(19, qRound(0.5 + 30.3 * (0.65 + i)));
            QCOMPARE(visto == dibujo.color(DibujoSemaforo::Lampara(i)), i == lampara);
        }
    }

    void lightUsesThePeriodsLimits()
    {
        auto indicador = semaforo(false);
        ValorFijo fuente(3000);
        PiezaTablero pieza(datos(indicador.get()), fuente);
        QCOMPARE(int(pieza.semaforo().encendida()), int(DibujoSemaforo::Medio));
        pieza.setPeriodo(cDia);
        QCOMPARE(pieza.semaforo().limiteAlto(), 5000.0);
        QCOMPARE(pieza.semaforo().limiteMedio(), 1000.0);
        QCOMPARE(int(pieza.semaforo().encendida()), int(DibujoSemaforo::Medio));
        colocado.setLimite2(4000);
        PiezaTablero otra(datos(indicador.get()), fuente);
        otra.setPeriodo(cDia);
        QCOMPARE(int(otra.semaforo().encendida()), int(DibujoSemaforo::Abajo));
    }

    void matrixShowsARowPerMatrixMetric()
    {
        auto indicador = matriz(cBarras2D, 2);
        ValorFijo fuente(1234.5);
        PiezaTablero pieza(datos(indicador.get()), fuente);
        const DibujoMatriz dibujo = pieza.matriz();
        QCOMPARE(dibujo.filas().size(), 2);
        QCOMPARE(dibujo.filas().first().titulo, QStringLiteral("Venta"));
        QCOMPARE(dibujo.filas().first().valor, QStringLiteral("1234,50"));
        QCOMPARE(dibujo.series().size(), 2);
        QCOMPARE(dibujo.series().first().valores.size(), DibujoMatriz::Historia);
        QCOMPARE(dibujo.tituloGrafico(), QStringLiteral("Ventas del periodo"));
    }

    void chartIsDrawnAsItsStoredKind_data()
    {
        QTest::addColumn<int>("tipo");
        QTest::addColumn<int>("metricas");
        QTest::addColumn<int>("serieQt");
        QTest::addColumn<int>("seriesQt");
        QTest::addColumn<bool>("profundidad");
        QTest::newRow("Líneas 2D") << int(cLineas2D) << 3 << int(QAbstractSeries::SeriesTypeLine) << 3 << false;
        QTest::newRow("Barras 2D") << int(cBarras2D) << 5 << int(QAbstractSeries::SeriesTypeBar) << 1 << false;
        QTest::newRow("Barras 3D") << int(cBarras3D) << 2 << int(QAbstractSeries::SeriesTypeBar) << 1 << true;
        QTest::newRow("Pastel") << int(cPie2D) << 4 << int(QAbstractSeries::SeriesTypePie) << 1 << false;
        QTest::newRow("unknown kind") << 99 << 1 << int(QAbstractSeries::SeriesTypeBar) << 1 << false;
    }

    void chartIsDrawnAsItsStoredKind()
    {
        QFETCH(int, tipo);
        QFETCH(int, metricas);
        QFETCH(int, serieQt);
        QFETCH(int, seriesQt);
        QFETCH(bool, profundidad);
        auto indicador = matriz(tipo, metricas);
        ValorFijo fuente(500);
        PiezaTablero pieza(datos(indicador.get()), fuente);
        GraficoMatriz* grafico = pieza.grafico();
        QVERIFY(grafico);
        QCOMPARE(grafico->cantidadSeries(), metricas);
        QCOMPARE(grafico->chart()->series().size(), seriesQt);
        QCOMPARE(int(grafico->chart()->series().first()->type()), serieQt);
        QCOMPARE(grafico->chart()->title(), QStringLiteral("Ventas del periodo"));
        QCOMPARE(grafico->conProfundidad(), profundidad);
        if (auto* pastel = qobject_cast<QPieSeries*>(grafico->chart()->series().first()))
            QCOMPARE(pastel->count(), metricas);
        if (auto* barras = qobject_cast<QBarSeries*>(grafico->chart()->series().first()))
            QCOMPARE(barras->count(), metricas);
    }

    void threeDimensionalBarsShowTheirDepth()
    {
        ValorFijo fuente(500);
        auto plano = matriz(cBarras2D, 1);
        auto hondo = matriz(cBarras3D, 1);
        PiezaTablero piezaPlana(datos(plano.get()), fuente);
        PiezaTablero piezaHonda(datos(hondo.get()), fuente);
        const auto dibujar = [](PiezaTablero& pieza) {
            return pintado([&](QPainter* p, const QRectF& r) { pieza.grafico()->pintar(p, r); }, QSize(200, 160));
        };
        const QImage a = dibujar(piezaPlana);
        const QImage b = dibujar(piezaHonda);
        // The same bar, with top and side faces in shades of its colour.
        const QColor bar = piezaHonda.grafico()->chart()->series().isEmpty()
            ? QColor()
            : qobject_cast<QBarSeries*>(piezaHonda.grafico()->chart()->series().first())->barSets().first()->color();
        int sombras = 0;
        for (int y = 0; y < b.height(); ++y)
            for (int x = 0; x < b.width(); ++x)
                if (parecido(b.pixelColor(x, y), bar.darker(140)) && a.pixelColor(x, y) != b.pixelColor(x, y))
                    ++sombras;
        QVERIFY2(sombras > 20, qPrintable(QString::number(sombras)));
    }

    void smallMatrixTileDrawsItsChartAsAThumbnail_data()
    {
        QTest::addColumn<int>("tipo");
        QTest::newRow("Líneas 2D") << int(cLineas2D);
        QTest::newRow("Barras 2D") << int(cBarras2D);
        QTest::newRow("Pastel") << int(cPie2D);
    }

    void smallMatrixTileDrawsItsChartAsAThumbnail()
    {
        QFETCH(int, tipo);
        auto indicador = matriz(tipo, 1);
        ValoresMuestra muestra;
        PiezaTablero pieza(datos(indicador.get()), muestra);
        const QImage imagen = pintado([&](QPainter* p, const QRectF& r) { pieza.pintar(p, r); }, QSize(150, 70));
        // The first series' colour (blue, softened at the edges of thin lines)
        // shows in the right part of the body, where the chart goes.
        int pintados = 0;
        for (int y = 20; y < 60; ++y)
            for (int x = 75; x < 150; ++x) {
                const QColor c = imagen.pixelColor(x, y);
                pintados += c.blue() > c.red() + 60 && c.blue() > 150;
            }
        QVERIFY2(pintados > 8, qPrintable(QString::number(pintados)));
    }

    void tileOffersOnlyThePeriodsItsPlacementShows()
    {
        colocado.setMuestra_Semana(false);
        colocado.setMuestra_Ano(false);
        colocado.setPeriodoInicio(cAno);
        auto indicador = barra();
        ValorFijo fuente(1);
        PiezaTablero pieza(datos(indicador.get()), fuente);
        QCOMPARE(pieza.periodos(), (QList<int>{cDia, cMes}));
        // Opening on a period the tile does not offer: the first it does.
        QCOMPARE(pieza.periodo(), int(cDia));
        QVERIFY(!pieza.setPeriodo(cAno));
        QCOMPARE(pieza.periodo(), int(cDia));
        QVERIFY(pieza.setPeriodo(cMes));
    }

    void placementWithoutPeriodsOffersAllFour()
    {
        colocado.setMuestra_Dia(false);
        colocado.setMuestra_Semana(false);
        colocado.setMuestra_Mes(false);
        colocado.setMuestra_Ano(false);
        auto indicador = barra();
        ValorFijo fuente(1);
        PiezaTablero pieza(datos(indicador.get()), fuente);
        QCOMPARE(pieza.periodos(), (QList<int>{cDia, cSemana, cMes, cAno}));
        QCOMPARE(pieza.periodo(), int(cMes));
    }

    void eachOfferedPeriodHasATabInTheHeader_data()
    {
        QTest::addColumn<QSize>("tamano");
        QTest::newRow("large") << QSize(480, 200);
        QTest::newRow("small") << QSize(90, 40);
    }

    void eachOfferedPeriodHasATabInTheHeader()
    {
        QFETCH(QSize, tamano);
        colocado.setMuestra_Semana(false);
        auto indicador = barra();
        ValorFijo fuente(1);
        PiezaTablero pieza(datos(indicador.get()), fuente);
        const QRectF area(QPointF(10, 20), QSizeF(tamano));
        QList<int> vistos;
        for (qreal x = area.left(); x < area.right(); x += 1) {
            const int periodo = pieza.periodoEn(area, QPointF(x, area.top() + 8));
            if (periodo >= 0 && !vistos.contains(periodo))
                vistos.append(periodo);
        }
        QCOMPARE(vistos, (QList<int>{cDia, cMes, cAno}));
        QCOMPARE(pieza.periodoEn(area, area.center() + QPointF(0, tamano.height() / 4)), -1);
    }

    void brokenReferencesAreDrawnAsBroken_data()
    {
        QTest::addColumn<int>("caso");
        QTest::addColumn<QString>("motivo");
        QTest::newRow("indicator gone") << 0 << QStringLiteral("El indicador 42 ya no existe");
        QTest::newRow("no configuration row") << 1 << QStringLiteral("«Avance de ventas» no tiene configuración guardada");
        QTest::newRow("metric gone") << 2 << QStringLiteral("La métrica 7 ya no existe");
        QTest::newRow("no metric") << 3 << QStringLiteral("«Avance de ventas» no tiene métrica");
        QTest::newRow("matrix metric gone") << 4 << QStringLiteral("La métrica 7 ya no existe");
        QTest::newRow("unknown kind") << 5 << QStringLiteral("«Avance de ventas» es de un tipo desconocido (9)");
        QTest::newRow("unknown kind, name with placeholders") << 6 << QStringLiteral("«%2 y %1» es de un tipo desconocido (9)");
    }

    void brokenReferencesAreDrawnAsBroken()
    {
        QFETCH(int, caso);
        QFETCH(QString, motivo);
        colocado.setFK_Indicador(42);
        auto indicador = caso == 4 ? matriz(cPie2D, 1) : barra();
        DatosPieza d = datos(caso == 0 ? nullptr : indicador.get());
        d.configuracionGuardada = caso != 1;
        if (caso == 2 || caso == 4)
            d.metricas.clear();
        if (caso == 3)
            qobject_cast<EBarraProgreso*>(indicador->Configuracion())->setFK_Metrica(0);
        if (caso >= 5)
            indicador->setTipo(9);
        if (caso == 6)
            indicador->setNombre(QStringLiteral("%2 y %1"));
        FuenteVigilada muestra;
        PiezaTablero pieza(d, muestra);
        QCOMPARE(pieza.averia(), motivo);
        QCOMPARE(pieza.tipo(), 0);
        QVERIFY(!pieza.grafico());
        // A broken tile's inside is tinted red, a valid one's is white.
        const QImage imagen = pintado([&](QPainter* p, const QRectF& r) { pieza.pintar(p, r); });
        QVERIFY(parecido(imagen.pixelColor(290, 100), QColor(255, 238, 238)));
        QVERIFY(!muestra.preguntada);
    }

    void sampleValuesComeFromTheTilesBoundsAndAreMarked()
    {
        ValoresMuestra muestra;
        QVERIFY(muestra.sonMuestras());
        int dentro = 0;
        for (int clave = 1; clave <= 30; ++clave) {
            const double v = muestra.valor({clave, cMes, 0, 100, 200});
            QCOMPARE(muestra.valor({clave, cMes, 0, 100, 200}), v);
            QVERIFY(v > 80 && v < 220);
            dentro += v >= 100 && v <= 200;
        }
        QVERIFY(dentro > 20);
        QVERIFY(muestra.valor({1, cAno, 0, 0, 0}) > muestra.valor({1, cDia, 0, 0, 0}));
        auto indicador = barra();
        PiezaTablero pieza(datos(indicador.get()), muestra);
        QVERIFY(pieza.esMuestra());
        QVERIFY(pieza.averia().isEmpty());
        const QImage imagen = pintado([&](QPainter* p, const QRectF& r) { pieza.pintar(p, r); });
        QVERIFY(parecido(imagen.pixelColor(290, 112), QColor(255, 236, 179)));
        ValorFijo real(1);
        PiezaTablero sinMuestra(datos(indicador.get()), real);
        const QImage otra = pintado([&](QPainter* p, const QRectF& r) { sinMuestra.pintar(p, r); });
        QCOMPARE(otra.pixelColor(290, 112), QColor(Qt::white));
    }

    void tilesNeverPaintOutsideTheirArea_data()
    {
        QTest::addColumn<int>("tipo");
        QTest::addColumn<QSize>("tamano");
        for (int tipo : {int(cBarraProgreso), int(cSemaforo), int(cMatrizGrafico)}) {
            QTest::addRow("kind %d, tiny", tipo) << tipo << QSize(24, 14);
            QTest::addRow("kind %d, small", tipo) << tipo << QSize(90, 50);
            QTest::addRow("kind %d, large", tipo) << tipo << QSize(600, 400);
        }
    }

    void tilesNeverPaintOutsideTheirArea()
    {
        QFETCH(int, tipo);
        QFETCH(QSize, tamano);
        auto indicador = tipo == cBarraProgreso ? barra() : tipo == cSemaforo ? semaforo(true) : matriz(cLineas2D, 5);
        indicador->setNombre(QString(50000, QChar(0x4E2D)));
        metrica.setTitulo(QStringLiteral("'; DROP TABLE ut_bi_Metrica; --") + QString(500, QLatin1Char('x')));
        ValorFijo fuente(1e15);
        DatosPieza d = datos(indicador.get());
        d.entidad = QString(2000, QChar(0x0645));
        PiezaTablero pieza(d, fuente);
        const QRect area(QPoint(20, 20), tamano);
        QImage imagen(tamano + QSize(40, 40), QImage::Format_ARGB32);
        imagen.fill(Qt::white);
        {
            QPainter painter(&imagen);
            pieza.pintar(&painter, area);
        }
        for (int y = 0; y < imagen.height(); ++y)
            for (int x = 0; x < imagen.width(); ++x)
                if (!area.adjusted(-1, -1, 1, 1).contains(x, y) && imagen.pixelColor(x, y) != QColor(Qt::white))
                    QFAIL(qPrintable(QStringLiteral("painted at %1,%2").arg(x).arg(y)));
    }

    void tileAsksForEveryFigureOfItsPeriodForItsEntity()
    {
        colocado.setFK_Entidad(3);
        auto bar = barra();
        FuenteViva fuente;
        PiezaTablero pieza(datos(bar.get()), fuente);
        const QList<PeticionValor> una = pieza.peticiones();
        QCOMPARE(una.size(), 1);
        QCOMPARE(una[0].metrica, ClaveMetrica);
        QCOMPARE(una[0].periodo, int(cMes));
        QCOMPARE(una[0].atras, 0);
        QCOMPARE(una[0].entidad, 3);
        QCOMPARE(una[0].minimo, 0.0);
        QCOMPARE(una[0].maximo, 150000.0);
        auto resumen = matriz(cLineas2D, 2);
        PiezaTablero tabla(datos(resumen.get()), fuente);
        QVERIFY(tabla.setPeriodo(cAno));
        const QList<PeticionValor> varias = tabla.peticiones();
        // Two rows, then six periods of history for each of the two chart metrics, oldest first.
        QCOMPARE(varias.size(), 2 + 2 * DibujoMatriz::Historia);
        QList<int> atras;
        for (const PeticionValor& p : varias) {
            QCOMPARE(p.entidad, 3);
            QCOMPARE(p.periodo, int(cAno));
            atras.append(p.atras);
        }
        QCOMPARE(atras, (QList<int>{0, 0, 5, 4, 3, 2, 1, 0, 5, 4, 3, 2, 1, 0}));
        QCOMPARE(tabla.matriz().series().first().valores,
                 (QList<double>{6000, 5000, 4000, 3000, 2000, 1000}));
        colocado.setFK_Entidad(0);
        DatosPieza sinIndicador = datos(nullptr);
        QVERIFY(PiezaTablero(sinIndicador, fuente).peticiones().isEmpty());
    }

    void tileWaitingForAFigureIsDrawnBusy_data()
    {
        QTest::addColumn<bool>("esMatriz");
        QTest::addColumn<int>("atras");
        QTest::newRow("bar") << false << 0;
        QTest::newRow("matrix waiting for its oldest period") << true << DibujoMatriz::Historia - 1;
    }
    void tileWaitingForAFigureIsDrawnBusy()
    {
        QFETCH(bool, esMatriz);
        QFETCH(int, atras);
        auto indicador = esMatriz ? matriz(cBarras2D, 1) : barra();
        FuenteViva fuente;
        fuente.atrasPendiente = atras;
        PiezaTablero pieza(datos(indicador.get()), fuente);
        QVERIFY(pieza.calculando());
        QCOMPARE(pieza.errorValores(), QString());
        QVERIFY(!pieza.esMuestra());
        const QColor velo(238, 241, 246);
        const QImage ocupada = pintado([&](QPainter* p, const QRectF& r) { pieza.pintar(p, r); }, QSize(300, 140));
        QCOMPARE(ocupada.pixelColor(150, 100), velo);
        fuente.atrasPendiente = -1;
        pieza.valoresCambiados();
        QVERIFY(!pieza.calculando());
        const QImage lista = pintado([&](QPainter* p, const QRectF& r) { pieza.pintar(p, r); }, QSize(300, 140));
        QVERIFY(lista != ocupada);
        QVERIFY(lista.pixelColor(150, 100) != velo);
    }

    void failedFigureShowsItsMetricAndItsMessage()
    {
        auto resumen = matriz(cLineas2D, 1);
        FuenteViva fuente;
        fuente.atrasFallido = 2;
        PiezaTablero pieza(datos(resumen.get()), fuente);
        QVERIFY(!pieza.calculando());
        QCOMPARE(pieza.errorValores(), QStringLiteral("«Venta»: Línea 2: ReferenceError: x is not defined"));
        const QImage conError = pintado([&](QPainter* p, const QRectF& r) { pieza.pintar(p, r); }, QSize(300, 140));
        // The message is written in the broken tiles' dark red, never the figures.
        bool rojo = false;
        for (int y = 0; y < conError.height() && !rojo; ++y)
            for (int x = 0; x < conError.width() && !rojo; ++x)
                rojo = parecido(conError.pixelColor(x, y), QColor(200, 40, 40));
        QVERIFY(rojo);
        fuente.atrasFallido = -1;
        QCOMPARE(pieza.errorValores(), QString());
    }

    void figuresArrivingBuildTheChartAgain()
    {
        auto resumen = matriz(cLineas2D, 1);
        FuenteViva fuente;
        PiezaTablero pieza(datos(resumen.get()), fuente);
        const auto ultimo = [&pieza] {
            auto* linea = qobject_cast<QXYSeries*>(pieza.grafico()->chart()->series().first());
            return linea ? linea->points().last().y() : std::nan("");
        };
        QCOMPARE(ultimo(), 1000.0);
        fuente.base = 5;
        QCOMPARE(ultimo(), 1000.0);
        pieza.valoresCambiados();
        QCOMPARE(ultimo(), 1005.0);
    }

    void metricFormatWritesDecimalsGroupingAndPercent()
    {
        EMetrica m;
        m.setNombre(QStringLiteral("Margen"));
        m.setDecimales(1);
        m.setFormato(QStringLiteral("0.0%"));
        QCOMPARE(FormatoMetrica(&m).texto(0.256), QStringLiteral("25,6%"));
        QCOMPARE(FormatoMetrica(&m).titulo(), QStringLiteral("Margen"));
        m.setFormato(QStringLiteral("#"));
        m.setDecimales(0);
        QCOMPARE(FormatoMetrica(&m).texto(12345.6), QStringLiteral("12346"));
        m.setFormato(QStringLiteral("#,##0"));
        QCOMPARE(FormatoMetrica(&m).texto(12345.6), QStringLiteral("12.346"));
        m.setDecimales(300);
        QCOMPARE(FormatoMetrica(&m).texto(1), QStringLiteral("1,000000"));
        QCOMPARE(FormatoMetrica(nullptr).texto(3.4), QStringLiteral("3"));
    }
};

QTEST_MAIN(TstPiezaTablero)
#include "tst_piezatablero.moc"
