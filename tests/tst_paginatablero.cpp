// The rules that keep a dashboard's items on its page and on the grid, and
// find a free spot for a new one.
#include "elementotablero.h"
#include "model/efigura.h"
#include "paginatablero.h"

#include <QFontMetricsF>
#include <QTest>

class TstPaginaTablero : public QObject {
    Q_OBJECT

private slots:
    void theFullPageIsTenThousandBySevenThousandTwips()
    {
        QCOMPARE(PaginaTablero().area(), QRectF(0, 0, 667, 467));
    }

    void positionsSnapToTheGridAndStayOnThePage()
    {
        PaginaTablero pagina;
        const QSizeF tamano(100, 50);
        QCOMPARE(pagina.ajustarPosicion(QPointF(33, 47), tamano), QPointF(30, 50));
        QCOMPARE(pagina.ajustarPosicion(QPointF(-40, -1), tamano), QPointF(0, 0));
        QCOMPARE(pagina.ajustarPosicion(QPointF(5000, 5000), tamano), QPointF(567, 417));
        pagina.setRejilla(false);
        QCOMPARE(pagina.ajustarPosicion(QPointF(33, 47), tamano), QPointF(33, 47));
    }

    void anItemLargerThanThePageStandsAtItsOrigin()
    {
        QCOMPARE(PaginaTablero().ajustarPosicion(QPointF(50, 50), QSizeF(900, 600)), QPointF(0, 0));
    }

    void sizesSnapTheirFarEdgeAndEndAtThePagesEdge()
    {
        PaginaTablero pagina;
        QCOMPARE(pagina.ajustarTamano(QPointF(15, 20), QSizeF(103, 44)), QSizeF(105, 40));
        QCOMPARE(pagina.ajustarTamano(QPointF(600, 400), QSizeF(300, 300)), QSizeF(67, 67));
        QCOMPARE(pagina.ajustarTamano(QPointF(100, 100), QSizeF(-50, 3)), QSizeF(20, 20));
        pagina.setRejilla(false);
        QCOMPARE(pagina.ajustarTamano(QPointF(15, 20), QSizeF(103, 44)), QSizeF(103, 44));
    }

    void newSizesAreWholeStepsNeverSmallerThanNeeded()
    {
        PaginaTablero pagina;
        QCOMPARE(pagina.tamanoNuevo(QSizeF(101, 31)), QSizeF(110, 40));
        QCOMPARE(pagina.tamanoNuevo(QSizeF(3, 3)), QSizeF(20, 20));
        QCOMPARE(pagina.tamanoNuevo(QSizeF(5000, 5000)), QSizeF(667, 467));
    }

    void theFreeSpotIsTheFirstOneRowByRowInTheVisiblePart()
    {
        PaginaTablero pagina;
        const QSizeF tamano(100, 50);
        QCOMPARE(pagina.huecoLibre(tamano, {}, pagina.area()), QPointF(10, 10));
        const QList<QRectF> ocupados{QRectF(10, 10, 200, 60)};
        QCOMPARE(pagina.huecoLibre(tamano, ocupados, pagina.area()), QPointF(220, 10));
        // Scrolled down, the spot is found in what the user sees.
        QCOMPARE(pagina.huecoLibre(tamano, ocupados, QRectF(-20, 200, 400, 300)), QPointF(10, 210));
    }

    void aFullViewSendsTheNewItemElsewhereOnThePage()
    {
        PaginaTablero pagina;
        const QList<QRectF> ocupados{QRectF(0, 0, 300, 200)};
        QCOMPARE(pagina.huecoLibre(QSizeF(100, 50), ocupados, QRectF(0, 0, 250, 150)), QPointF(310, 10));
    }

    void aFullPageStillGivesASpotOnIt()
    {
        PaginaTablero pagina;
        const QList<QRectF> ocupados{pagina.area()};
        QCOMPARE(pagina.huecoLibre(QSizeF(100, 50), ocupados, QRectF(200, 100, 300, 300)), QPointF(200, 100));
        QCOMPARE(pagina.huecoLibre(QSizeF(100, 50), ocupados, QRectF(-900, -900, 10, 10)), QPointF(0, 0));
    }

    void aSixteenPointTitleFitsOnOneLine()
    {
        EFigura titulo;
        titulo.setTexto(QStringLiteral("Ventas del trimestre por sucursal"));
        titulo.setFuente(QStringLiteral("DejaVu Sans"));
        titulo.setTam_fuente(16);
        QFont fuente(titulo.Fuente());
        fuente.setPointSize(16);
        const QFontMetricsF metricas(fuente);
        const QSizeF tamano = ElementoTablero::tamanoParaTexto(&titulo, 647);
        QVERIFY(tamano.width() >= metricas.horizontalAdvance(titulo.Texto()) + 4);
        QVERIFY(tamano.height() >= metricas.height());
        QVERIFY(tamano.height() < 2 * metricas.height());
    }

    void aLongTextWrapsWithinTheWidthItIsGiven()
    {
        EFigura nota;
        nota.setTexto(QString(40, QLatin1Char(' ')).replace(QLatin1Char(' '), QStringLiteral("palabra ")));
        nota.setFuente(QStringLiteral("DejaVu Sans"));
        nota.setTam_fuente(10);
        const QSizeF tamano = ElementoTablero::tamanoParaTexto(&nota, 300);
        QVERIFY(tamano.width() <= 300);
        QVERIFY(tamano.height() > 3 * QFontMetricsF(QFont(nota.Fuente(), 10)).height());
    }

    void aHugeTextIsGivenAtMostThePage()
    {
        EFigura enorme;
        enorme.setTexto(QString(50000, QLatin1Char('x')).replace(QStringLiteral("xxxxxxx"), QStringLiteral("xxxxxx ")));
        enorme.setFuente(QStringLiteral("DejaVu Sans"));
        enorme.setTam_fuente(12);
        PaginaTablero pagina;
        const QSizeF tamano = pagina.tamanoNuevo(ElementoTablero::tamanoParaTexto(&enorme, 647));
        QVERIFY(tamano.width() <= 650);
        QCOMPARE(tamano.height(), 467.0);
        QCOMPARE(pagina.huecoLibre(tamano, {QRectF(10, 10, 100, 100)}, pagina.area()), QPointF(0, 0));
    }
};

QTEST_MAIN(TstPaginaTablero)
#include "tst_paginatablero.moc"
