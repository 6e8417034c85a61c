// The keyed tree: nodes found by key, positions in adding order, and
// bookkeeping that survives nodes being removed by any route.
#include "library/arbolclaves.h"

#include <QPixmap>
#include <QTest>

namespace {

QIcon icono(Qt::GlobalColor color)
{
    QPixmap pixmap(16, 16);
    pixmap.fill(color);
    return QIcon(pixmap);
}

} // namespace

class TstArbolClaves : public QObject {
    Q_OBJECT

    QList<QIcon> imagenes{icono(Qt::red), icono(Qt::blue)};

    // KP_1 { KP_2 { MT_3 }, KP_4 }, KP_5
    void llenar(ArbolClaves& arbol)
    {
        arbol.setImagenes(imagenes);
        QVERIFY(arbol.agregar(QString(), QStringLiteral("KP_1"), QStringLiteral("Uno"), 1, QStringLiteral("P")));
        QVERIFY(arbol.agregar(QStringLiteral("KP_1"), QStringLiteral("KP_2"), QStringLiteral("Dos"), 1,
                              QStringLiteral("P")));
        QVERIFY(arbol.agregar(QStringLiteral("KP_2"), QStringLiteral("MT_3"), QStringLiteral("Tres"), 2,
                              QStringLiteral("M")));
        QVERIFY(arbol.agregar(QStringLiteral("KP_1"), QStringLiteral("KP_4"), QStringLiteral("Cuatro"), 1,
                              QStringLiteral("P")));
        QVERIFY(arbol.agregar(QString(), QStringLiteral("KP_5"), QStringLiteral("Cinco"), 1, QStringLiteral("P")));
    }

private slots:
    void showsOneColumnWithoutHeader()
    {
        ArbolClaves arbol;
        QCOMPARE(arbol.columnCount(), 1);
        QVERIFY(arbol.isHeaderHidden());
        QCOMPARE(arbol.cuenta(), 0);
    }

    void emptyParentKeyAddsTopLevelNode()
    {
        ArbolClaves arbol;
        QTreeWidgetItem* item =
            arbol.agregar(QString(), QStringLiteral("KP_1"), QStringLiteral("Ventas"), 0, QStringLiteral("P"));
        QVERIFY(item);
        QCOMPARE(arbol.topLevelItemCount(), 1);
        QCOMPARE(arbol.topLevelItem(0), item);
        QCOMPARE(item->parent(), nullptr);
        QCOMPARE(item->text(0), QStringLiteral("Ventas"));
        QCOMPARE(arbol.nodo(QStringLiteral("KP_1")), item);
    }

    void childIsAddedAsLastChildOfItsParent()
    {
        ArbolClaves arbol;
        llenar(arbol);
        QTreeWidgetItem* uno = arbol.nodo(QStringLiteral("KP_1"));
        QCOMPARE(uno->childCount(), 2);
        QCOMPARE(uno->child(0), arbol.nodo(QStringLiteral("KP_2")));
        QCOMPARE(uno->child(1), arbol.nodo(QStringLiteral("KP_4")));
        QCOMPARE(arbol.nodo(QStringLiteral("MT_3"))->parent(), arbol.nodo(QStringLiteral("KP_2")));
        QCOMPARE(arbol.topLevelItemCount(), 2);
        QCOMPARE(arbol.topLevelItem(1), arbol.nodo(QStringLiteral("KP_5")));
    }

    void unknownParentAddsNothing()
    {
        ArbolClaves arbol;
        llenar(arbol);
        QCOMPARE(arbol.agregar(QStringLiteral("KP_99"), QStringLiteral("KP_6"), QStringLiteral("Huérfano"), 1,
                               QStringLiteral("P")),
                 nullptr);
        QCOMPARE(arbol.nodo(QStringLiteral("KP_6")), nullptr);
        QCOMPARE(arbol.cuenta(), 5);
    }

    void takenKeyAddsNothing()
    {
        ArbolClaves arbol;
        llenar(arbol);
        QCOMPARE(arbol.agregar(QString(), QStringLiteral("KP_2"), QStringLiteral("Otro"), 1, QStringLiteral("P")),
                 nullptr);
        QCOMPARE(arbol.cuenta(), 5);
        QCOMPARE(arbol.topLevelItemCount(), 2);
        QCOMPARE(arbol.nodo(QStringLiteral("KP_2"))->text(0), QStringLiteral("Dos"));
    }

    void nodesWithoutKeyNeverClash()
    {
        ArbolClaves arbol;
        QVERIFY(arbol.agregar(QString(), QString(), QStringLiteral("a"), 0, QString()));
        QVERIFY(arbol.agregar(QString(), QString(), QStringLiteral("b"), 0, QString()));
        QCOMPARE(arbol.cuenta(), 2);
        QCOMPARE(arbol.nodo(QString()), nullptr);
    }

    void keyTagAndImageAreKeptInItemData()
    {
        ArbolClaves arbol;
        llenar(arbol);
        QTreeWidgetItem* metrica = arbol.nodo(QStringLiteral("MT_3"));
        QCOMPARE(metrica->data(0, ArbolClaves::RolClave).toString(), QStringLiteral("MT_3"));
        QCOMPARE(metrica->data(0, ArbolClaves::RolTag).toString(), QStringLiteral("M"));
        QCOMPARE(ArbolClaves::clave(metrica), QStringLiteral("MT_3"));
        QCOMPARE(ArbolClaves::tag(metrica), QStringLiteral("M"));
        QCOMPARE(ArbolClaves::imagen(metrica), 2);
        QCOMPARE(ArbolClaves::tag(arbol.nodo(QStringLiteral("KP_1"))), QStringLiteral("P"));
    }

    void noItemHasEmptyKeyAndTag()
    {
        QCOMPARE(ArbolClaves::clave(nullptr), QString());
        QCOMPARE(ArbolClaves::tag(nullptr), QString());
        QCOMPARE(ArbolClaves::imagen(nullptr), 0);
    }

    void imageCountsFromOne()
    {
        ArbolClaves arbol;
        llenar(arbol);
        QCOMPARE(arbol.nodo(QStringLiteral("KP_1"))->icon(0).cacheKey(), imagenes.at(0).cacheKey());
        QCOMPARE(arbol.nodo(QStringLiteral("MT_3"))->icon(0).cacheKey(), imagenes.at(1).cacheKey());
    }

    void imageZeroOrOutOfRangeGivesNoIcon()
    {
        ArbolClaves arbol;
        arbol.setImagenes(imagenes);
        QVERIFY(arbol.agregar(QString(), QStringLiteral("A"), QStringLiteral("a"), 0, QString())->icon(0).isNull());
        QVERIFY(arbol.agregar(QString(), QStringLiteral("B"), QStringLiteral("b"), 3, QString())->icon(0).isNull());
        QVERIFY(arbol.agregar(QString(), QStringLiteral("C"), QStringLiteral("c"), -1, QString())->icon(0).isNull());
        QVERIFY(!arbol.agregar(QString(), QStringLiteral("D"), QStringLiteral("d"), 2, QString())->icon(0).isNull());
    }

    void positionsCountFromOneInAddingOrder()
    {
        ArbolClaves arbol;
        llenar(arbol);
        QCOMPARE(arbol.cuenta(), 5);
        const QStringList claves{QStringLiteral("KP_1"), QStringLiteral("KP_2"), QStringLiteral("MT_3"),
                                 QStringLiteral("KP_4"), QStringLiteral("KP_5")};
        for (int posicion = 1; posicion <= 5; ++posicion)
            QCOMPARE(ArbolClaves::clave(arbol.nodoEn(posicion)), claves.at(posicion - 1));
        QCOMPARE(arbol.nodoEn(0), nullptr);
        QCOMPARE(arbol.nodoEn(6), nullptr);
        QCOMPARE(arbol.nodoEn(-1), nullptr);
    }

    void limpiarForgetsEveryNodeAndKey()
    {
        ArbolClaves arbol;
        llenar(arbol);
        arbol.limpiar();
        QCOMPARE(arbol.topLevelItemCount(), 0);
        QCOMPARE(arbol.cuenta(), 0);
        QCOMPARE(arbol.nodo(QStringLiteral("KP_1")), nullptr);
        QCOMPARE(arbol.nodoEn(1), nullptr);
        QVERIFY(arbol.agregar(QString(), QStringLiteral("KP_1"), QStringLiteral("Otra vez"), 1, QStringLiteral("P")));
        QCOMPARE(arbol.cuenta(), 1);
    }

    void plainClearAlsoForgetsEveryKey()
    {
        ArbolClaves arbol;
        llenar(arbol);
        arbol.clear();
        QCOMPARE(arbol.cuenta(), 0);
        QCOMPARE(arbol.nodo(QStringLiteral("KP_2")), nullptr);
        QVERIFY(arbol.agregar(QString(), QStringLiteral("KP_2"), QStringLiteral("Dos"), 1, QStringLiteral("P")));
    }

    void deletedNodeIsForgottenWithItsDescendants()
    {
        ArbolClaves arbol;
        llenar(arbol);
        delete arbol.nodo(QStringLiteral("KP_2"));
        QCOMPARE(arbol.nodo(QStringLiteral("KP_2")), nullptr);
        QCOMPARE(arbol.nodo(QStringLiteral("MT_3")), nullptr);
        QCOMPARE(arbol.cuenta(), 3);
        QCOMPARE(ArbolClaves::clave(arbol.nodoEn(2)), QStringLiteral("KP_4"));
        QCOMPARE(arbol.agregar(QStringLiteral("KP_2"), QStringLiteral("MT_9"), QStringLiteral("x"), 2,
                               QStringLiteral("M")),
                 nullptr);
    }

    void takenTopLevelNodeIsForgotten()
    {
        ArbolClaves arbol;
        llenar(arbol);
        std::unique_ptr<QTreeWidgetItem> fuera(arbol.takeTopLevelItem(0));
        QCOMPARE(arbol.cuenta(), 1);
        QCOMPARE(arbol.nodo(QStringLiteral("KP_1")), nullptr);
        QCOMPARE(arbol.nodo(QStringLiteral("KP_4")), nullptr);
        QCOMPARE(ArbolClaves::clave(arbol.nodoEn(1)), QStringLiteral("KP_5"));
    }

    void everyKeyFindsItsOwnNode()
    {
        ArbolClaves arbol;
        QStringList claves;
        for (const char* prefijo : {"KP_", "MT_", "IK_"}) {
            for (int i = 0; i < 5000; ++i)
                claves.append(QLatin1String(prefijo) + QString::number(i));
        }
        claves << QStringLiteral("KP_1 ") << QStringLiteral("KP_") << QStringLiteral("日本_1")
               << QStringLiteral("日本_12") << QStringLiteral("Ελ_1") << QString(300, QLatin1Char('x'));
        for (const QString& clave : std::as_const(claves))
            QVERIFY(arbol.agregar(QString(), clave, clave, 0, QStringLiteral("P")));
        QCOMPARE(arbol.cuenta(), claves.size());
        for (const QString& clave : std::as_const(claves))
            QCOMPARE(arbol.nodo(clave)->text(0), clave);
        QCOMPARE(arbol.nodo(QStringLiteral("KP_5000")), nullptr);
        QCOMPARE(arbol.nodo(QStringLiteral("日本_2")), nullptr);
        QCOMPARE(arbol.agregar(QStringLiteral("日本_12"), QStringLiteral("日本_1"), QString(), 0, QString()), nullptr);
    }

    void textsShowExactly()
    {
        ArbolClaves arbol;
        const QString texto = QStringLiteral("O'Brien  日本語 Ελληνικά العربية ");
        QCOMPARE(arbol.agregar(QString(), QStringLiteral("KP_1"), texto, 0, QStringLiteral("P"))->text(0), texto);
    }
};

QTEST_MAIN(TstArbolClaves)
#include "tst_arbolclaves.moc"
