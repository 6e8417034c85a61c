// The library loaders: the perspective tree with its one-pass placement and
// expansion walk, the metric and indicator lists, and selection by key.
#include "library/arbolclaves.h"
#include "library/mdl_functions.h"
#include "testdatabase.h"

#include <QComboBox>
#include <QElapsedTimer>
#include <QListWidget>
#include <QPixmap>
#include <QTest>

namespace {

const QString SqlPerspectivas =
    QStringLiteral("Select Sys_PK, uf_Nombre, uf_padre FROM ut_bi_Perspectiva Order By uf_padre, uf_Nombre");
const QString SqlMetricas = QStringLiteral(
    "Select Sys_PK, uf_Nombre, uf_FK_Perspectiva FROM ut_bi_Metrica Order By uf_FK_Perspectiva, uf_Nombre");
const QString SqlIndicadores = QStringLiteral(
    "Select Sys_PK, uf_Nombre, uf_FK_Perspectiva FROM ut_bi_Indicador Order By uf_FK_Perspectiva, uf_Nombre");

const QString Exotico = QStringLiteral("O'Brien d'Ávila 日本語 Ελληνικά العربية");

QIcon icono(Qt::GlobalColor color)
{
    QPixmap pixmap(16, 16);
    pixmap.fill(color);
    return QIcon(pixmap);
}

QString literal(const QString& texto)
{
    QString escapado = texto;
    return QLatin1Char('\'') + escapado.replace(QLatin1Char('\''), QStringLiteral("''")) + QLatin1Char('\'');
}

QStringList textos(const QListWidget& lista)
{
    QStringList result;
    for (int i = 0; i < lista.count(); ++i)
        result << lista.item(i)->text();
    return result;
}

QList<int> datos(const QListWidget& lista)
{
    QList<int> result;
    for (int i = 0; i < lista.count(); ++i)
        result << lista.item(i)->data(Qt::UserRole).toInt();
    return result;
}

QStringList textos(const QComboBox& lista)
{
    QStringList result;
    for (int i = 0; i < lista.count(); ++i)
        result << lista.itemText(i);
    return result;
}

QList<int> datos(const QComboBox& lista)
{
    QList<int> result;
    for (int i = 0; i < lista.count(); ++i)
        result << lista.itemData(i, Qt::UserRole).toInt();
    return result;
}

// The keys of the children of a node (or of the top level), in shown order.
QStringList hijos(const ArbolClaves& arbol, const QString& clave = QString())
{
    QStringList result;
    if (clave.isEmpty()) {
        for (int i = 0; i < arbol.topLevelItemCount(); ++i)
            result << ArbolClaves::clave(arbol.topLevelItem(i));
        return result;
    }
    const QTreeWidgetItem* item = arbol.nodo(clave);
    if (!item)
        return {QStringLiteral("<missing>")};
    for (int i = 0; i < item->childCount(); ++i)
        result << ArbolClaves::clave(item->child(i));
    return result;
}

} // namespace

class TstMdlFunctions : public QObject {
    Q_OBJECT

    TestDatabase db;
    const QList<QIcon> imagenes{icono(Qt::red), icono(Qt::blue)};

    QObject* cnx() { return &db.connection(); }

    void perspectiva(int pk, const QString& nombre, int padre)
    {
        db.exec(QStringLiteral("INSERT INTO ut_bi_Perspectiva (Sys_PK, uf_Nombre, uf_padre) VALUES (%1, %2, %3)")
                    .arg(pk)
                    .arg(literal(nombre))
                    .arg(padre));
    }
    void metrica(int pk, const QString& nombre, int perspectiva)
    {
        db.exec(QStringLiteral("INSERT INTO ut_bi_Metrica (Sys_PK, uf_Nombre, uf_FK_Perspectiva) VALUES (%1, %2, %3)")
                    .arg(pk)
                    .arg(literal(nombre))
                    .arg(perspectiva));
    }
    void indicador(int pk, const QString& nombre, int perspectiva)
    {
        db.exec(QStringLiteral("INSERT INTO ut_bi_Indicador (Sys_PK, uf_Nombre, uf_Tipo, uf_FK_Perspectiva) "
                               "VALUES (%1, %2, 1, %3)")
                    .arg(pk)
                    .arg(literal(nombre))
                    .arg(perspectiva));
    }

    // Fills a fresh tree with the SQL log on; answers the SQL that ran.
    QStringList llenar(ArbolClaves& arbol, short p, short m, short i)
    {
        arbol.setImagenes(imagenes);
        db.connection().clearLog();
        db.connection().setLogSql(true);
        mdl_functions::LlenarArbol(cnx(), &arbol, p, m, i);
        db.connection().setLogSql(false);
        return db.connection().executedSql();
    }

    // Ventas(10) { Norte(12) { Cobro(31 metric) }, Sur(11) }, Compras(20);
    // metrics Margen(30), Alcance(32) under Ventas; indicators under Ventas and Sur.
    void biblioteca()
    {
        perspectiva(10, QStringLiteral("Ventas"), 0);
        perspectiva(20, QStringLiteral("Compras"), 0);
        perspectiva(11, QStringLiteral("Sur"), 10);
        perspectiva(12, QStringLiteral("Norte"), 10);
        metrica(30, QStringLiteral("Margen"), 10);
        metrica(31, QStringLiteral("Cobro"), 12);
        metrica(32, QStringLiteral("Alcance"), 10);
        indicador(40, QStringLiteral("Semáforo"), 10);
        indicador(41, QStringLiteral("Barra"), 11);
    }

    // Every node in the tree, walked from the top.
    static int nodosVisibles(const ArbolClaves& arbol)
    {
        int n = 0;
        QList<const QTreeWidgetItem*> pendientes;
        for (int i = 0; i < arbol.topLevelItemCount(); ++i)
            pendientes << arbol.topLevelItem(i);
        while (!pendientes.isEmpty()) {
            const QTreeWidgetItem* item = pendientes.takeLast();
            ++n;
            for (int i = 0; i < item->childCount(); ++i)
                pendientes << item->child(i);
        }
        return n;
    }

private slots:
    void initTestCase() { VBI_CREATE_TEST_DATABASE(db); }
    void init()
    {
        db.clear();
        db.connection().setLogSql(false);
    }

    // --- LlenarArbol -------------------------------------------------------

    void treeWithoutPerspectivesIsEmptyAndRunsOnlyThePerspectiveQuery()
    {
        metrica(30, QStringLiteral("Margen"), 10);
        indicador(40, QStringLiteral("Barra"), 10);
        ArbolClaves arbol;
        QCOMPARE(llenar(arbol, 1, 2, 2), QStringList{SqlPerspectivas});
        QCOMPARE(arbol.topLevelItemCount(), 0);
        QCOMPARE(arbol.cuenta(), 0);
    }

    void treeRemovesOldNodesBeforeFilling()
    {
        ArbolClaves arbol;
        arbol.agregar(QString(), QStringLiteral("KP_77"), QStringLiteral("Vieja"), 1, QStringLiteral("P"));
        llenar(arbol, 1, 0, 0);
        QCOMPARE(arbol.topLevelItemCount(), 0);
        QCOMPARE(arbol.nodo(QStringLiteral("KP_77")), nullptr);

        biblioteca();
        arbol.agregar(QString(), QStringLiteral("KP_77"), QStringLiteral("Vieja"), 1, QStringLiteral("P"));
        llenar(arbol, 1, 2, 0);
        QCOMPARE(arbol.nodo(QStringLiteral("KP_77")), nullptr);
        QCOMPARE(arbol.cuenta(), 7);
        QCOMPARE(nodosVisibles(arbol), 7);
    }

    void treeQueriesAreRunOncePerKindWithTheirExactTexts()
    {
        biblioteca();
        ArbolClaves arbol;
        QCOMPARE(llenar(arbol, 1, 2, 2), (QStringList{SqlPerspectivas, SqlMetricas, SqlIndicadores}));
    }

    void perspectiveReadBeforeItsParentIsLeftOutWithEverythingBelowIt()
    {
        perspectiva(9, QStringLiteral("Z"), 0);
        perspectiva(8, QStringLiteral("Y"), 9);
        perspectiva(3, QStringLiteral("X"), 8);
        perspectiva(500, QStringLiteral("Debajo de X"), 3);
        metrica(501, QStringLiteral("Métrica de X"), 3);
        indicador(502, QStringLiteral("Indicador de X"), 3);
        metrica(503, QStringLiteral("Métrica de Y"), 8);
        ArbolClaves arbol;
        llenar(arbol, 1, 2, 2);
        QCOMPARE(hijos(arbol), QStringList{QStringLiteral("KP_9")});
        QCOMPARE(hijos(arbol, QStringLiteral("KP_9")), QStringList{QStringLiteral("KP_8")});
        QCOMPARE(hijos(arbol, QStringLiteral("KP_8")), QStringList{QStringLiteral("MT_503")});
        QCOMPARE(arbol.nodo(QStringLiteral("KP_3")), nullptr);
        QCOMPARE(arbol.nodo(QStringLiteral("KP_500")), nullptr);
        QCOMPARE(arbol.nodo(QStringLiteral("MT_501")), nullptr);
        QCOMPARE(arbol.nodo(QStringLiteral("IK_502")), nullptr);
        QCOMPARE(arbol.cuenta(), 3);
        QCOMPARE(nodosVisibles(arbol), 3);
    }

    void perspectiveWhoseParentIsReadFirstIsShown()
    {
        perspectiva(9, QStringLiteral("Z"), 0);
        perspectiva(8, QStringLiteral("Y"), 9);
        perspectiva(3, QStringLiteral("X"), 9);
        ArbolClaves arbol;
        llenar(arbol, 1, 0, 0);
        QCOMPARE(hijos(arbol), QStringList{QStringLiteral("KP_9")});
        QCOMPARE(hijos(arbol, QStringLiteral("KP_9")), (QStringList{QStringLiteral("KP_3"), QStringLiteral("KP_8")}));
        QCOMPARE(arbol.cuenta(), 3);
    }

    void siblingsAppearInNameOrder()
    {
        perspectiva(1, QStringLiteral("Gamma"), 0);
        perspectiva(2, QStringLiteral("Alfa"), 0);
        perspectiva(3, QStringLiteral("Beta"), 0);
        perspectiva(4, QStringLiteral("Dos"), 2);
        perspectiva(5, QStringLiteral("Cero"), 2);
        perspectiva(6, QStringLiteral("Uno"), 2);
        ArbolClaves arbol;
        llenar(arbol, 1, 0, 0);
        QCOMPARE(hijos(arbol), (QStringList{QStringLiteral("KP_2"), QStringLiteral("KP_3"), QStringLiteral("KP_1")}));
        QCOMPARE(hijos(arbol, QStringLiteral("KP_2")),
                 (QStringList{QStringLiteral("KP_5"), QStringLiteral("KP_4"), QStringLiteral("KP_6")}));
    }

    void metricsFollowChildPerspectivesInNameOrder()
    {
        biblioteca();
        ArbolClaves arbol;
        llenar(arbol, 1, 2, 0);
        QCOMPARE(hijos(arbol), (QStringList{QStringLiteral("KP_20"), QStringLiteral("KP_10")}));
        QCOMPARE(hijos(arbol, QStringLiteral("KP_10")),
                 (QStringList{QStringLiteral("KP_12"), QStringLiteral("KP_11"), QStringLiteral("MT_32"),
                              QStringLiteral("MT_30")}));
        QCOMPARE(hijos(arbol, QStringLiteral("KP_12")), QStringList{QStringLiteral("MT_31")});
    }

    void indicatorsFollowChildPerspectivesInNameOrder()
    {
        biblioteca();
        indicador(42, QStringLiteral("Avance"), 10);
        ArbolClaves arbol;
        llenar(arbol, 1, 0, 2);
        QCOMPARE(hijos(arbol, QStringLiteral("KP_10")),
                 (QStringList{QStringLiteral("KP_12"), QStringLiteral("KP_11"), QStringLiteral("IK_42"),
                              QStringLiteral("IK_40")}));
        QCOMPARE(hijos(arbol, QStringLiteral("KP_11")), QStringList{QStringLiteral("IK_41")});
    }

    void metricOfMissingPerspectiveIsNotShown()
    {
        biblioteca();
        metrica(33, QStringLiteral("Suelta"), 999);
        metrica(34, QStringLiteral("Sin perspectiva"), 0);
        ArbolClaves arbol;
        llenar(arbol, 1, 2, 0);
        QCOMPARE(arbol.nodo(QStringLiteral("MT_33")), nullptr);
        QCOMPARE(arbol.nodo(QStringLiteral("MT_34")), nullptr);
        QCOMPARE(arbol.cuenta(), 7);
    }

    void indicatorOfMissingPerspectiveIsNotShown()
    {
        biblioteca();
        indicador(43, QStringLiteral("Suelto"), 999);
        ArbolClaves arbol;
        llenar(arbol, 1, 0, 2);
        QCOMPARE(arbol.nodo(QStringLiteral("IK_43")), nullptr);
        QCOMPARE(arbol.cuenta(), 6);
    }

    void metricLibraryHoldsPerspectivesAndMetricsOnly()
    {
        biblioteca();
        ArbolClaves arbol;
        QCOMPARE(llenar(arbol, 1, 2, 0), (QStringList{SqlPerspectivas, SqlMetricas}));
        QCOMPARE(arbol.cuenta(), 7);
        for (int posicion = 1; posicion <= arbol.cuenta(); ++posicion)
            QVERIFY(ArbolClaves::tag(arbol.nodoEn(posicion)) != QStringLiteral("I"));
        QVERIFY(arbol.nodo(QStringLiteral("MT_30")));
    }

    void indicatorLibraryHoldsPerspectivesAndIndicatorsOnly()
    {
        biblioteca();
        ArbolClaves arbol;
        QCOMPARE(llenar(arbol, 1, 0, 2), (QStringList{SqlPerspectivas, SqlIndicadores}));
        QCOMPARE(arbol.cuenta(), 6);
        for (int posicion = 1; posicion <= arbol.cuenta(); ++posicion)
            QVERIFY(ArbolClaves::tag(arbol.nodoEn(posicion)) != QStringLiteral("M"));
        QVERIFY(arbol.nodo(QStringLiteral("IK_41")));
    }

    void pickerHoldsPerspectivesOnly()
    {
        biblioteca();
        ArbolClaves arbol;
        QCOMPARE(llenar(arbol, 1, 0, 0), QStringList{SqlPerspectivas});
        QCOMPARE(arbol.cuenta(), 4);
        for (int posicion = 1; posicion <= arbol.cuenta(); ++posicion)
            QCOMPARE(ArbolClaves::tag(arbol.nodoEn(posicion)), QStringLiteral("P"));
    }

    void negativeImagesLoadNeitherMetricsNorIndicators()
    {
        biblioteca();
        ArbolClaves arbol;
        QCOMPARE(llenar(arbol, 1, -1, -2), QStringList{SqlPerspectivas});
        QCOMPARE(arbol.cuenta(), 4);
    }

    void nodesCarryPrefixedKeysTextsTagsAndImages()
    {
        perspectiva(12, QStringLiteral("Ventas"), 0);
        metrica(5, QStringLiteral("Margen"), 12);
        indicador(7, QStringLiteral("Avance"), 12);
        ArbolClaves arbol;
        llenar(arbol, 1, 2, 2);

        const QTreeWidgetItem* p = arbol.nodo(QStringLiteral("KP_12"));
        QVERIFY(p);
        QCOMPARE(p->text(0), QStringLiteral("Ventas"));
        QCOMPARE(ArbolClaves::tag(p), QStringLiteral("P"));
        QCOMPARE(ArbolClaves::imagen(p), 1);
        QCOMPARE(p->icon(0).cacheKey(), imagenes.at(0).cacheKey());

        const QTreeWidgetItem* m = arbol.nodo(QStringLiteral("MT_5"));
        QVERIFY(m);
        QCOMPARE(m->text(0), QStringLiteral("Margen"));
        QCOMPARE(ArbolClaves::tag(m), QStringLiteral("M"));
        QCOMPARE(ArbolClaves::imagen(m), 2);
        QCOMPARE(m->icon(0).cacheKey(), imagenes.at(1).cacheKey());

        const QTreeWidgetItem* i = arbol.nodo(QStringLiteral("IK_7"));
        QVERIFY(i);
        QCOMPARE(i->text(0), QStringLiteral("Avance"));
        QCOMPARE(ArbolClaves::tag(i), QStringLiteral("I"));
        QCOMPARE(ArbolClaves::imagen(i), 2);

        // The dialogs recover the row key by dropping the prefix.
        QCOMPARE(ArbolClaves::clave(p).mid(3).toInt(), 12);
    }

    void everyNodeButTheLastAddedIsExpanded()
    {
        biblioteca();
        ArbolClaves arbol;
        llenar(arbol, 1, 2, 0);
        const int cuenta = arbol.cuenta();
        QCOMPARE(cuenta, 7);
        for (int posicion = 1; posicion < cuenta; ++posicion)
            QVERIFY2(arbol.nodoEn(posicion)->isExpanded(), qPrintable(ArbolClaves::clave(arbol.nodoEn(posicion))));
        QCOMPARE(ArbolClaves::clave(arbol.nodoEn(cuenta)), QStringLiteral("MT_31"));
        QVERIFY(!arbol.nodoEn(cuenta)->isExpanded());
    }

    void childlessNodeEarlyInTheWalkIsExpandedToo()
    {
        // Order by parent: Aislada(1) and Otra(2) at the top, Hoja(3) under Otra.
        perspectiva(1, QStringLiteral("Aislada"), 0);
        perspectiva(2, QStringLiteral("Otra"), 0);
        perspectiva(3, QStringLiteral("Hoja"), 2);
        ArbolClaves arbol;
        llenar(arbol, 1, 0, 0);
        QCOMPARE(ArbolClaves::clave(arbol.nodoEn(1)), QStringLiteral("KP_1"));
        QCOMPARE(arbol.nodoEn(1)->childCount(), 0);
        QVERIFY(arbol.nodoEn(1)->isExpanded());
        QVERIFY(arbol.nodo(QStringLiteral("KP_2"))->isExpanded());
        QCOMPARE(ArbolClaves::clave(arbol.nodoEn(3)), QStringLiteral("KP_3"));
        QVERIFY(!arbol.nodoEn(3)->isExpanded());
    }

    void everyNodeWithChildrenIsExpanded()
    {
        biblioteca();
        ArbolClaves arbol;
        llenar(arbol, 1, 2, 2);
        for (int posicion = 1; posicion <= arbol.cuenta(); ++posicion) {
            const QTreeWidgetItem* item = arbol.nodoEn(posicion);
            if (item->childCount() > 0)
                QVERIFY2(item->isExpanded(), qPrintable(ArbolClaves::clave(item)));
        }
        QCOMPARE(arbol.nodoEn(arbol.cuenta())->childCount(), 0);
        QVERIFY(!arbol.nodoEn(arbol.cuenta())->isExpanded());
    }

    void loneNodeStaysCollapsed()
    {
        perspectiva(1, QStringLiteral("Sola"), 0);
        ArbolClaves arbol;
        llenar(arbol, 1, 0, 0);
        QCOMPARE(arbol.cuenta(), 1);
        QVERIFY(!arbol.nodoEn(1)->isExpanded());
    }

    void treePaintsAgainAfterTheFill()
    {
        biblioteca();
        ArbolClaves arbol;
        llenar(arbol, 1, 2, 2);
        QVERIFY(arbol.updatesEnabled());

        ArbolClaves congelado;
        congelado.setUpdatesEnabled(false);
        llenar(congelado, 1, 2, 2);
        QVERIFY(!congelado.updatesEnabled());
    }

    void rowsWithNullsNeverBreakTheFill()
    {
        perspectiva(1, QStringLiteral("Ventas"), 0);
        db.exec(QStringLiteral("INSERT INTO ut_bi_Perspectiva (Sys_PK, uf_Nombre, uf_padre) VALUES (2, NULL, 1)"));
        db.exec(QStringLiteral("INSERT INTO ut_bi_Perspectiva (Sys_PK, uf_Nombre, uf_padre) VALUES (3, 'Sin padre', NULL)"));
        perspectiva(4, QStringLiteral("Bajo la anónima"), 2);
        db.exec(QStringLiteral("INSERT INTO ut_bi_Metrica (Sys_PK, uf_Nombre, uf_FK_Perspectiva) VALUES (5, NULL, 1)"));
        db.exec(QStringLiteral("INSERT INTO ut_bi_Metrica (Sys_PK, uf_Nombre, uf_FK_Perspectiva) VALUES (6, 'Huérfana', NULL)"));
        db.exec(QStringLiteral("INSERT INTO ut_bi_Indicador (Sys_PK, uf_Nombre, uf_FK_Perspectiva) VALUES (7, NULL, 2)"));
        ArbolClaves arbol;
        llenar(arbol, 1, 2, 2);
        // A nameless row keeps its place, with an empty text.
        QVERIFY(arbol.nodo(QStringLiteral("KP_2")));
        QCOMPARE(arbol.nodo(QStringLiteral("KP_2"))->text(0), QString());
        QCOMPARE(hijos(arbol, QStringLiteral("KP_2")), (QStringList{QStringLiteral("KP_4"), QStringLiteral("IK_7")}));
        QCOMPARE(arbol.nodo(QStringLiteral("MT_5"))->text(0), QString());
        // A row that names no parent cannot be attached.
        QCOMPARE(arbol.nodo(QStringLiteral("KP_3")), nullptr);
        QCOMPARE(arbol.nodo(QStringLiteral("MT_6")), nullptr);
        QCOMPARE(arbol.cuenta(), 5);
    }

    void treeWithoutConnectionIsEmpty()
    {
        ArbolClaves arbol;
        arbol.agregar(QString(), QStringLiteral("KP_1"), QStringLiteral("Vieja"), 1, QStringLiteral("P"));
        mdl_functions::LlenarArbol(nullptr, &arbol, 1, 2, 2);
        QCOMPARE(arbol.cuenta(), 0);
        QCOMPARE(arbol.topLevelItemCount(), 0);
        mdl_functions::LlenarArbol(cnx(), nullptr, 1, 2, 2);
    }

    void namesWithApostrophesAndOtherScriptsShowExactly()
    {
        perspectiva(1, Exotico, 0);
        metrica(2, Exotico, 1);
        indicador(3, Exotico, 1);
        ArbolClaves arbol;
        llenar(arbol, 1, 2, 2);
        QCOMPARE(arbol.nodo(QStringLiteral("KP_1"))->text(0), Exotico);
        QCOMPARE(arbol.nodo(QStringLiteral("MT_2"))->text(0), Exotico);
        QCOMPARE(arbol.nodo(QStringLiteral("IK_3"))->text(0), Exotico);

        QListWidget metricas;
        mdl_functions::LlenarListaMetricas(cnx(), 1, &metricas);
        QCOMPARE(textos(metricas), QStringList{Exotico});
        QComboBox combo;
        mdl_functions::LlenarListaMetricas(cnx(), 1, &combo);
        QCOMPARE(textos(combo), QStringList{Exotico});
        QListWidget indicadores;
        mdl_functions::LlenarListaIndicadores(cnx(), &indicadores, 1);
        QCOMPARE(textos(indicadores), QStringList{Exotico});
    }

    void largeLibraryLoadsQuicklyWithThreeQueries()
    {
        // 100 top perspectives, 900 below them, 1000 one level further down:
        // every parent sorts before its children, so all of them attach.
        auto insertar = [&](const QString& cabecera, int desde, int hasta, auto fila) {
            const int porSentencia = 1000;
            for (int inicio = desde; inicio <= hasta; inicio += porSentencia) {
                QStringList valores;
                for (int k = inicio; k <= std::min(hasta, inicio + porSentencia - 1); ++k)
                    valores << fila(k);
                db.exec(cabecera + valores.join(QLatin1Char(',')));
            }
        };
        const QString cabeceraP =
            QStringLiteral("INSERT INTO ut_bi_Perspectiva (Sys_PK, uf_Nombre, uf_padre) VALUES ");
        insertar(cabeceraP, 1, 2000, [](int k) {
            const int padre = k <= 100 ? 0 : k <= 1000 ? (k - 101) % 100 + 1 : (k - 1001) % 900 + 101;
            return QStringLiteral("(%1,'Perspectiva %2',%3)").arg(k).arg(k, 5, 10, QLatin1Char('0')).arg(padre);
        });
        insertar(QStringLiteral("INSERT INTO ut_bi_Metrica (Sys_PK, uf_Nombre, uf_FK_Perspectiva) VALUES "), 1, 20000,
                 [](int k) { return QStringLiteral("(%1,'Metrica %1',%2)").arg(k).arg((k - 1) % 2000 + 1); });
        insertar(QStringLiteral("INSERT INTO ut_bi_Indicador (Sys_PK, uf_Nombre, uf_FK_Perspectiva) VALUES "), 1,
                 20000, [](int k) { return QStringLiteral("(%1,'Indicador %1',%2)").arg(k).arg((k - 1) % 2000 + 1); });

        ArbolClaves arbol;
        QElapsedTimer reloj;
        reloj.start();
        const QStringList sql = llenar(arbol, 1, 2, 2);
        const qint64 ms = reloj.elapsed();
        qInfo("42,000 nodes loaded in %lld ms", ms);

        QCOMPARE(sql, (QStringList{SqlPerspectivas, SqlMetricas, SqlIndicadores}));
        QCOMPARE(arbol.cuenta(), 42000);
        QCOMPARE(nodosVisibles(arbol), 42000);
        QCOMPARE(arbol.topLevelItemCount(), 100);
        QCOMPARE(arbol.nodo(QStringLiteral("KP_1500"))->parent(), arbol.nodo(QStringLiteral("KP_600")));
        QCOMPARE(arbol.nodo(QStringLiteral("MT_20000"))->parent(), arbol.nodo(QStringLiteral("KP_2000")));
        QVERIFY(arbol.nodo(QStringLiteral("KP_1"))->isExpanded());
        QVERIFY(!arbol.nodoEn(42000)->isExpanded());
        // Generous: a fill that searched for parents row by row would take minutes.
        QVERIFY2(ms < 20000, qPrintable(QStringLiteral("%1 ms").arg(ms)));
    }

    // --- LlenarListaMetricas ----------------------------------------------

    void metricListShowsNamesInOrderWithKeysAsItemData()
    {
        biblioteca();
        QListWidget lista;
        mdl_functions::LlenarListaMetricas(cnx(), 10, &lista);
        QCOMPARE(textos(lista), (QStringList{QStringLiteral("Alcance"), QStringLiteral("Margen")}));
        QCOMPARE(datos(lista), (QList<int>{32, 30}));
        QCOMPARE(lista.item(0)->data(Qt::UserRole).typeId(), QMetaType::Int);
    }

    void metricComboShowsNamesInOrderWithKeysAsItemData()
    {
        biblioteca();
        QComboBox lista;
        mdl_functions::LlenarListaMetricas(cnx(), 10, &lista);
        QCOMPARE(textos(lista), (QStringList{QStringLiteral("Alcance"), QStringLiteral("Margen")}));
        QCOMPARE(datos(lista), (QList<int>{32, 30}));
        QCOMPARE(lista.itemData(0, Qt::UserRole).typeId(), QMetaType::Int);
    }

    void metricListRunsItsExactQuery()
    {
        biblioteca();
        QListWidget lista;
        QComboBox combo;
        db.connection().setLogSql(true);
        mdl_functions::LlenarListaMetricas(cnx(), 12, &lista);
        mdl_functions::LlenarListaMetricas(cnx(), 12, &combo);
        db.connection().setLogSql(false);
        const QString sql =
            QStringLiteral("Select Sys_PK, uf_Nombre FROM ut_bi_Metrica Where uf_FK_Perspectiva=12 Order by uf_Nombre");
        QCOMPARE(db.connection().executedSql(), (QStringList{sql, sql}));
    }

    void metricListReplacesOldEntries()
    {
        biblioteca();
        QListWidget lista;
        lista.addItems({QStringLiteral("vieja 1"), QStringLiteral("vieja 2")});
        mdl_functions::LlenarListaMetricas(cnx(), 12, &lista);
        QCOMPARE(textos(lista), QStringList{QStringLiteral("Cobro")});
        mdl_functions::LlenarListaMetricas(cnx(), 20, &lista);
        QCOMPARE(lista.count(), 0);

        QComboBox combo;
        combo.addItems({QStringLiteral("vieja 1"), QStringLiteral("vieja 2")});
        mdl_functions::LlenarListaMetricas(cnx(), 20, &combo);
        QCOMPARE(combo.count(), 0);
        mdl_functions::LlenarListaMetricas(nullptr, 12, &combo);
        QCOMPARE(combo.count(), 0);
    }

    void metricListIsClearedBeforeItsQueryRuns()
    {
        biblioteca();
        QListWidget lista;
        lista.addItem(QStringLiteral("vieja"));
        int consultasAlLimpiar = -1;
        connect(lista.model(), &QAbstractItemModel::modelAboutToBeReset, this,
                [&] { consultasAlLimpiar = int(db.connection().executedSql().size()); });
        db.connection().setLogSql(true);
        mdl_functions::LlenarListaMetricas(cnx(), 10, &lista);
        db.connection().setLogSql(false);
        QCOMPARE(consultasAlLimpiar, 0);
    }

    // --- LlenarListaIndicadores -------------------------------------------

    void indicatorListShowsNamesInOrderWithKeysAsItemData()
    {
        biblioteca();
        indicador(42, QStringLiteral("Avance"), 10);
        QListWidget lista;
        db.connection().setLogSql(true);
        mdl_functions::LlenarListaIndicadores(cnx(), &lista, 10);
        db.connection().setLogSql(false);
        QCOMPARE(textos(lista), (QStringList{QStringLiteral("Avance"), QStringLiteral("Semáforo")}));
        QCOMPARE(datos(lista), (QList<int>{42, 40}));
        QCOMPARE(db.connection().executedSql(),
                 QStringList{QStringLiteral(
                     "Select Sys_PK, uf_Nombre FROM ut_bi_Indicador Where uf_FK_Perspectiva=10 Order By uf_Nombre")});
    }

    void indicatorListRunsItsQueryBeforeClearing()
    {
        biblioteca();
        QListWidget lista;
        lista.addItem(QStringLiteral("vieja"));
        int consultasAlLimpiar = -1;
        connect(lista.model(), &QAbstractItemModel::modelAboutToBeReset, this,
                [&] { consultasAlLimpiar = int(db.connection().executedSql().size()); });
        db.connection().setLogSql(true);
        mdl_functions::LlenarListaIndicadores(cnx(), &lista, 10);
        db.connection().setLogSql(false);
        QCOMPARE(consultasAlLimpiar, 1);
    }

    void indicatorListIsEmptiedWhenThePerspectiveHasNone()
    {
        biblioteca();
        QListWidget lista;
        lista.addItems({QStringLiteral("vieja 1"), QStringLiteral("vieja 2")});
        mdl_functions::LlenarListaIndicadores(cnx(), &lista, 20);
        QCOMPARE(lista.count(), 0);
    }

    void indicatorListIsEmptiedWhenTheQueryFails()
    {
        QListWidget lista;
        lista.addItems({QStringLiteral("vieja 1"), QStringLiteral("vieja 2")});
        mdl_functions::LlenarListaIndicadores(nullptr, &lista, 10);
        QCOMPARE(lista.count(), 0);
    }

    void nullListsAreIgnored()
    {
        biblioteca();
        mdl_functions::LlenarListaMetricas(cnx(), 10, static_cast<QListWidget*>(nullptr));
        mdl_functions::LlenarListaMetricas(cnx(), 10, static_cast<QComboBox*>(nullptr));
        mdl_functions::LlenarListaIndicadores(cnx(), nullptr, 10);
        mdl_functions::SeleccionarPorClave(static_cast<QListWidget*>(nullptr), 1);
        mdl_functions::SeleccionarPorClave(static_cast<QComboBox*>(nullptr), 1);
    }

    void nullNameInListShowsEmptyEntryWithItsKey()
    {
        db.exec(QStringLiteral("INSERT INTO ut_bi_Metrica (Sys_PK, uf_Nombre, uf_FK_Perspectiva) VALUES (5, NULL, 1)"));
        QListWidget lista;
        mdl_functions::LlenarListaMetricas(cnx(), 1, &lista);
        QCOMPARE(textos(lista), QStringList{QString()});
        QCOMPARE(datos(lista), QList<int>{5});
    }

    // --- SeleccionarPorClave ----------------------------------------------

    void selectionByKeyPicksTheFirstMatchingListEntry()
    {
        QListWidget lista;
        const QList<int> claves{4, 7, 9, 7};
        for (int clave : claves) {
            auto* item = new QListWidgetItem(QString::number(clave), &lista);
            item->setData(Qt::UserRole, clave);
        }
        mdl_functions::SeleccionarPorClave(&lista, 7);
        QCOMPARE(lista.currentRow(), 1);
        QCOMPARE(lista.selectedItems(), QList<QListWidgetItem*>{lista.item(1)});
        mdl_functions::SeleccionarPorClave(&lista, 9);
        QCOMPARE(lista.currentRow(), 2);
        QCOMPARE(lista.selectedItems(), QList<QListWidgetItem*>{lista.item(2)});
    }

    void selectionByKeyPicksTheFirstMatchingComboEntry()
    {
        QComboBox lista;
        const QList<int> claves{4, 7, 9, 7};
        for (int clave : claves)
            lista.addItem(QString::number(clave), clave);
        mdl_functions::SeleccionarPorClave(&lista, 7);
        QCOMPARE(lista.currentIndex(), 1);
        mdl_functions::SeleccionarPorClave(&lista, 4);
        QCOMPARE(lista.currentIndex(), 0);
    }

    void selectionByUnknownKeyLeavesNothingSelected()
    {
        QListWidget lista;
        QComboBox combo;
        for (int clave : {4, 7}) {
            (new QListWidgetItem(QString::number(clave), &lista))->setData(Qt::UserRole, clave);
            combo.addItem(QString::number(clave), clave);
        }
        lista.setCurrentRow(1);
        combo.setCurrentIndex(1);
        mdl_functions::SeleccionarPorClave(&lista, 99);
        mdl_functions::SeleccionarPorClave(&combo, 99);
        QCOMPARE(lista.currentRow(), -1);
        QVERIFY(lista.selectedItems().isEmpty());
        QCOMPARE(combo.currentIndex(), -1);
    }

    void selectionByKeyOfAnEmptyListSelectsNothing()
    {
        QListWidget lista;
        QComboBox combo;
        mdl_functions::SeleccionarPorClave(&lista, 0);
        mdl_functions::SeleccionarPorClave(&combo, 0);
        QCOMPARE(lista.currentRow(), -1);
        QCOMPARE(combo.currentIndex(), -1);
    }

    void entryWithoutItemDataCountsAsKeyZero()
    {
        QComboBox combo;
        combo.addItem(QStringLiteral("con clave"), 3);
        combo.addItem(QStringLiteral("sin clave"));
        mdl_functions::SeleccionarPorClave(&combo, 0);
        QCOMPARE(combo.currentIndex(), 1);
    }

    void selectionByKeyFindsWhatTheLoadersStored()
    {
        biblioteca();
        QListWidget lista;
        QComboBox combo;
        mdl_functions::LlenarListaMetricas(cnx(), 10, &lista);
        mdl_functions::LlenarListaMetricas(cnx(), 10, &combo);
        mdl_functions::SeleccionarPorClave(&lista, 30);
        mdl_functions::SeleccionarPorClave(&combo, 30);
        QCOMPARE(lista.currentItem()->text(), QStringLiteral("Margen"));
        QCOMPARE(combo.currentText(), QStringLiteral("Margen"));
    }
};

QTEST_MAIN(TstMdlFunctions)
#include "tst_mdl_functions.moc"
