// The keys the undo history shares between the steps of one item.
#include "almacenelementos.h"
#include "model/vendimarbi.h"

#include <QTest>

class TstAlmacenElementos : public QObject {
    Q_OBJECT

private slots:
    void everyStepOfAnItemSharesOneKey()
    {
        AlmacenElementos almacen(nullptr);
        const auto a = almacen.clave(VendimarBI::cFigura, 5);
        QCOMPARE(almacen.clave(VendimarBI::cFigura, 5), a);
        QVERIFY(almacen.clave(VendimarBI::ctabindicador, 5) != a);
        QCOMPARE(a->pk, 5);
    }

    void aDeletedItemsNumberGivenAgainIsAnotherItem()
    {
        AlmacenElementos almacen(nullptr);
        const auto borrada = almacen.clave(VendimarBI::cFigura, 5);
        QCOMPARE(almacen.soltar(VendimarBI::cFigura, 5), borrada);
        const auto nueva = almacen.clave(VendimarBI::cFigura, 5);
        QVERIFY(nueva != borrada);
        QCOMPARE(borrada->pk, 5);
    }
};

QTEST_MAIN(TstAlmacenElementos)
#include "tst_almacenelementos.moc"
