// The metric library driven through the engine as a user would: the engine
// opens it, the user clicks nodes and buttons, answers the editors and the
// questions, and the tree and the database are read back.
#include "bibliotecadriver.h"
#include "carpetaprueba.h"
#include "dialogdriver.h"
#include "engine/eengine.h"
#include "fakeusermanagement.h"
#include "library/arbolclaves.h"
#include "library/dlgbibdatos.h"
#include "modalanswerer.h"
#include "model/emetrica.h"
#include "model/eperspectiva.h"
#include "testdatabase.h"

#include <QElapsedTimer>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>
#include <memory>

using namespace driver;
using namespace biblioteca;

namespace {

const QString Seleccione = QStringLiteral("Seleccione un elemento");
const QString TieneHijos = QStringLiteral("No se puede eliminar el elemento porque tiene nodos hijo.");

QString mt(int clave)
{
    return QStringLiteral("MT_%1").arg(clave);
}

void cerrar(QWidget* w)
{
    pulsar(w, QStringLiteral("cCerrar"));
}

} // namespace

class TstDlgBibdatos : public QObject {
    Q_OBJECT

    TestDatabase db;
    std::unique_ptr<EEngine> engine;
    std::unique_ptr<FakeUserManagement> um;

    int perspectiva(const QString& nombre, int padre = 0) { return nuevaPerspectiva(db, nombre, padre); }

    int metrica(const QString& nombre, int enPerspectiva) { return nuevaMetrica(db, nombre, enPerspectiva); }

    int indicador(const QString& nombre, int enPerspectiva) { return nuevoIndicador(db, nombre, enPerspectiva); }

    int cuenta(const QString& sql) { return db.scalar(sql).toInt(); }

    // How many times the tree was loaded since the log was last cleared.
    int cargasDelArbol()
    {
        int n = 0;
        for (const QString& sql : db.connection().executedSql())
            n += sql.startsWith(ConsultaArbol) ? 1 : 0;
        return n;
    }

    void empezarRegistro()
    {
        db.connection().clearLog();
        db.connection().setLogSql(true);
    }

    // Opens the library through the engine while the answerer drives it.
    void abrir(ModalAnswerer& a, int limite = 20000)
    {
        Vigilante vigilante(limite);
        engine->Biblioteca_Metricas();
        QVERIFY2(!vigilante.vencido, qPrintable(a.seen.join(QStringLiteral(" / "))));
        QVERIFY2(a.allAnswered(), qPrintable(a.seen.join(QStringLiteral(" / "))));
        QVERIFY2(a.unexpected.isEmpty(), qPrintable(a.unexpected.join(QStringLiteral(" / "))));
    }

    static void llenarMetrica(QWidget* w, const QString& nombre)
    {
        escribir(w, QStringLiteral("cNombre"), nombre);
        escribir(w, QStringLiteral("cTitulo"), QStringLiteral("Venta"));
        escribir(w, QStringLiteral("cDescrip"), QStringLiteral("Importe vendido"));
    }

private slots:
    void initTestCase() { VBI_CREATE_TEST_DATABASE(db); }

    void init()
    {
        db.clear();
        db.connection().setLogSql(false);
        engine = std::make_unique<EEngine>();
        um = std::make_unique<FakeUserManagement>();
        engine->SetConnection(&db.connection(), 1);
        engine->SetUM(um.get());
    }

    void cleanup() { db.connection().setLogSql(false); }

    void controlsCarryTheirNamesAndCaptions()
    {
        dlgBibdatos dlg;
        QCOMPARE(dlg.objectName(), QStringLiteral("dlgBibdatos"));
        QCOMPARE(dlg.windowTitle(), QStringLiteral("Biblioteca de métricas"));
        QVERIFY(control<ArbolClaves>(&dlg, QStringLiteral("tvw")));
        const QList<QPair<const char*, QString>> botones = {
            {"cAd1", QStringLiteral("Agregar perspectiva")},
            {"Command1", QStringLiteral("Agregar métrica")},
            {"Command2", QStringLiteral("Editar")},
            {"Command3", QStringLiteral("Eliminar")},
            {"cCerrar", QStringLiteral("&Cerrar")},
        };
        for (const auto& [nombre, texto] : botones)
            QCOMPARE(control<QPushButton>(&dlg, QLatin1String(nombre))->text(), texto);
        QCOMPARE(dlg.findChildren<QPushButton*>().size(), botones.size());
    }

    void refusedRightOpensNothing()
    {
        um->refused = {QStringLiteral("KZ4-TBL-05-000")};
        ModalAnswerer a;
        abrir(a);
        QTest::qWait(50);
        QVERIFY(a.seen.isEmpty());
        QCOMPARE(um->asked, QStringList{QStringLiteral("KZ4-TBL-05-000")});
    }

    void openingShowsPerspectivesAndMetricsExpandedWithTheirPictures()
    {
        const int ventas = perspectiva(QStringLiteral("Ventas"));
        const int compras = perspectiva(QStringLiteral("Compras"));
        const int norte = perspectiva(QStringLiteral("Norte"), ventas);
        const int diaria = metrica(QStringLiteral("Venta diaria"), ventas);
        const int anual = metrica(QStringLiteral("Venta anual"), ventas);
        const int norteM = metrica(QStringLiteral("Venta norte"), norte);
        metrica(QStringLiteral("Sin perspectiva"), 9999999);
        indicador(QStringLiteral("Indicador"), ventas);
        QPointer<QWidget> ventana;
        QStringList vista;
        QList<int> imagenes;
        QList<bool> expandidos;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            ventana = w;
            ArbolClaves* t = arbolDe(w);
            vista = forma(t);
            for (int i = 1; i <= t->cuenta(); ++i) {
                imagenes.append(ArbolClaves::imagen(t->nodoEn(i)));
                if (t->nodoEn(i)->childCount() > 0)
                    expandidos.append(t->nodoEn(i)->isExpanded());
            }
            QVERIFY(seleccion(t).isEmpty());
            cerrar(w);
        });
        abrir(a);
        QCOMPARE(um->asked, QStringList{QStringLiteral("KZ4-TBL-05-000")});
        QCOMPARE(vista, (QStringList{kp(compras), kp(ventas), kp(ventas) + '>' + kp(norte),
                                     kp(norte) + '>' + mt(norteM), kp(ventas) + '>' + mt(anual),
                                     kp(ventas) + '>' + mt(diaria)}));
        QCOMPARE(imagenes, (QList<int>{1, 1, 1, 2, 2, 2}));
        QCOMPARE(expandidos, (QList<bool>{true, true}));
        // "&Cerrar" unloads the dialog.
        QTRY_VERIFY(ventana.isNull());
    }

    void typicalFlowAddsAMetricToTheSelectedPerspective()
    {
        const int ventas = perspectiva(QStringLiteral("Ventas"));
        perspectiva(QStringLiteral("Compras"));
        int nueva = 0;
        QStringList antes;
        QStringList despues;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            antes = forma(arbolDe(w));
            clic(w, kp(ventas));
            pulsar(w, QStringLiteral("Command1"));
        });
        a.expect([&](QWidget* w) {
            QCOMPARE(w->objectName(), QStringLiteral("dlgDato"));
            llenarMetrica(w, QStringLiteral("Venta diaria"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        a.expect([&](QWidget* w) {
            nueva = cuenta(QStringLiteral("SELECT MAX(Sys_PK) FROM ut_bi_Metrica"));
            despues = forma(arbolDe(w));
            cerrar(w);
        });
        abrir(a);
        QCOMPARE(ventanas(a), (QStringList{QStringLiteral("dlgBibdatos"), QStringLiteral("dlgDato"),
                                           QStringLiteral("dlgBibdatos")}));
        QCOMPARE(um->asked, (QStringList{QStringLiteral("KZ4-TBL-05-000"), QStringLiteral("KZ4-TBL-05-004")}));
        QVERIFY(nueva > 0);
        QCOMPARE(cuenta(QStringLiteral("SELECT uf_FK_Perspectiva FROM ut_bi_Metrica WHERE Sys_PK=%1").arg(nueva)), ventas);
        QVERIFY(!antes.contains(kp(ventas) + '>' + mt(nueva)));
        QVERIFY(despues.contains(kp(ventas) + '>' + mt(nueva)));
        QCOMPARE(despues.size(), antes.size() + 1);
    }

    void addMetricWithNothingSelectedPassesParentZero()
    {
        perspectiva(QStringLiteral("Ventas"));
        ModalAnswerer a;
        a.expect([&](QWidget* w) { pulsar(w, QStringLiteral("Command1")); });
        a.expect([&](QWidget* w) {
            llenarMetrica(w, QStringLiteral("Suelta"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        a.expect([&](QWidget* w) { cerrar(w); });
        abrir(a);
        QCOMPARE(um->asked, (QStringList{QStringLiteral("KZ4-TBL-05-000"), QStringLiteral("KZ4-TBL-05-004")}));
        QCOMPARE(cuenta(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Metrica WHERE uf_FK_Perspectiva=0")), 1);
    }

    void addPerspectiveParentFollowsTheSelection_data()
    {
        QTest::addColumn<QString>("seleccionado");
        QTest::addColumn<QString>("padreEsperado");
        QTest::newRow("nothing selected: top level") << QString() << QString();
        QTest::newRow("perspective selected: inside it") << QStringLiteral("sub") << QStringLiteral("sub");
        QTest::newRow("metric selected: inside the metric's perspective") << QStringLiteral("metrica")
                                                                          << QStringLiteral("sub");
    }

    void addPerspectiveParentFollowsTheSelection()
    {
        QFETCH(QString, seleccionado);
        QFETCH(QString, padreEsperado);
        const int raiz = perspectiva(QStringLiteral("Raíz"));
        const int sub = perspectiva(QStringLiteral("Sub"), raiz);
        const int m = metrica(QStringLiteral("Métrica"), sub);
        const QMap<QString, QString> nodos = {{QStringLiteral("sub"), kp(sub)}, {QStringLiteral("metrica"), mt(m)}};
        const int padre = padreEsperado.isEmpty() ? 0 : sub;
        int nueva = 0;
        QStringList despues;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            if (!seleccionado.isEmpty())
                clic(w, nodos.value(seleccionado));
            pulsar(w, QStringLiteral("cAd1"));
        });
        a.expect([&](QWidget* w) {
            QCOMPARE(w->objectName(), QStringLiteral("dlgPropPers"));
            escribir(w, QStringLiteral("cNombre"), QStringLiteral("Nueva"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        a.expect([&](QWidget* w) {
            nueva = cuenta(QStringLiteral("SELECT MAX(Sys_PK) FROM ut_bi_Perspectiva"));
            despues = forma(arbolDe(w));
            cerrar(w);
        });
        abrir(a);
        QCOMPARE(um->asked, (QStringList{QStringLiteral("KZ4-TBL-05-000"), QStringLiteral("KZ4-TBL-05-001")}));
        QCOMPARE(cuenta(QStringLiteral("SELECT uf_padre FROM ut_bi_Perspectiva WHERE Sys_PK=%1").arg(nueva)), padre);
        QVERIFY2(despues.contains(padre ? kp(sub) + '>' + kp(nueva) : kp(nueva)), qPrintable(despues.join(' ')));
    }

    void cancelledOrRefusedAddLeavesTheTreeAsItWas_data()
    {
        QTest::addColumn<bool>("rechazado");
        QTest::newRow("editor cancelled") << false;
        QTest::newRow("right refused") << true;
    }

    void cancelledOrRefusedAddLeavesTheTreeAsItWas()
    {
        QFETCH(bool, rechazado);
        if (rechazado)
            um->refused = {QStringLiteral("KZ4-TBL-05-001"), QStringLiteral("KZ4-TBL-05-004")};
        const int ventas = perspectiva(QStringLiteral("Ventas"));
        QStringList antes, despues, seleccionAntes, seleccionDespues;
        int cargas = -1;
        ModalAnswerer a;
        auto cancelar = [](QWidget* w) { pulsar(w, QStringLiteral("cCancelar")); };
        a.expect([&](QWidget* w) {
            clic(w, kp(ventas));
            antes = forma(arbolDe(w));
            seleccionAntes = seleccion(arbolDe(w));
            empezarRegistro();
            pulsar(w, QStringLiteral("cAd1"));
            if (rechazado) {
                // Nothing opened: the library is still the active window.
                pulsar(w, QStringLiteral("Command1"));
                cargas = cargasDelArbol();
                despues = forma(arbolDe(w));
                seleccionDespues = seleccion(arbolDe(w));
                cerrar(w);
            }
        });
        if (!rechazado) {
            a.expect(cancelar);
            a.expect([&](QWidget* w) { pulsar(w, QStringLiteral("Command1")); });
            a.expect(cancelar);
            a.expect([&](QWidget* w) {
                cargas = cargasDelArbol();
                despues = forma(arbolDe(w));
                seleccionDespues = seleccion(arbolDe(w));
                cerrar(w);
            });
        }
        abrir(a);
        QCOMPARE(cargas, 0);
        QCOMPARE(despues, antes);
        QCOMPARE(seleccionDespues, QStringList{kp(ventas)});
        QCOMPARE(seleccionAntes, QStringList{kp(ventas)});
        QCOMPARE(cuenta(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Perspectiva")), 1);
        QCOMPARE(cuenta(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Metrica")), 0);
        QCOMPARE(um->asked, (QStringList{QStringLiteral("KZ4-TBL-05-000"), QStringLiteral("KZ4-TBL-05-001"),
                                         QStringLiteral("KZ4-TBL-05-004")}));
    }

    void editOfAPerspectiveOpensThePerspectiveEditorAndRefreshes()
    {
        const int ventas = perspectiva(QStringLiteral("Ventas"));
        QString mostrado, textoNuevo;
        QStringList seleccionDespues;
        int cargas = -1;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            clic(w, kp(ventas));
            empezarRegistro();
            pulsar(w, QStringLiteral("Command2"));
        });
        a.expect([&](QWidget* w) {
            QCOMPARE(w->objectName(), QStringLiteral("dlgPropPers"));
            mostrado = texto(w, QStringLiteral("cNombre"));
            escribir(w, QStringLiteral("cNombre"), QStringLiteral("Ventas netas"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        a.expect([&](QWidget* w) {
            cargas = cargasDelArbol();
            textoNuevo = arbolDe(w)->nodo(kp(ventas))->text(0);
            seleccionDespues = seleccion(arbolDe(w));
            cerrar(w);
        });
        abrir(a);
        QCOMPARE(mostrado, QStringLiteral("Ventas"));
        QCOMPARE(textoNuevo, QStringLiteral("Ventas netas"));
        QCOMPARE(cargas, 1);
        // The tree is rebuilt, so the selection is gone.
        QVERIFY(seleccionDespues.isEmpty());
        QCOMPARE(um->asked, (QStringList{QStringLiteral("KZ4-TBL-05-000"), QStringLiteral("KZ4-TBL-05-002")}));
    }

    void editOfAMetricOpensTheMetricEditorAndRefreshes()
    {
        const int ventas = perspectiva(QStringLiteral("Ventas"));
        const int m = metrica(QStringLiteral("Venta diaria"), ventas);
        QString mostrado, textoNuevo;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            clic(w, mt(m));
            pulsar(w, QStringLiteral("Command2"));
        });
        a.expect([&](QWidget* w) {
            QCOMPARE(w->objectName(), QStringLiteral("dlgDato"));
            mostrado = texto(w, QStringLiteral("cNombre"));
            escribir(w, QStringLiteral("cNombre"), QStringLiteral("Venta por día"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        a.expect([&](QWidget* w) {
            textoNuevo = arbolDe(w)->nodo(mt(m))->text(0);
            cerrar(w);
        });
        abrir(a);
        QCOMPARE(mostrado, QStringLiteral("Venta diaria"));
        QCOMPARE(textoNuevo, QStringLiteral("Venta por día"));
        QCOMPARE(um->asked, (QStringList{QStringLiteral("KZ4-TBL-05-000"), QStringLiteral("KZ4-TBL-05-005")}));
    }

    void doubleClickEditsTheNode_data()
    {
        QTest::addColumn<bool>("esMetrica");
        QTest::addColumn<QString>("editor");
        QTest::addColumn<QString>("derecho");
        QTest::newRow("perspective") << false << QStringLiteral("dlgPropPers") << QStringLiteral("KZ4-TBL-05-002");
        QTest::newRow("metric") << true << QStringLiteral("dlgDato") << QStringLiteral("KZ4-TBL-05-005");
    }

    void doubleClickEditsTheNode()
    {
        QFETCH(bool, esMetrica);
        QFETCH(QString, editor);
        QFETCH(QString, derecho);
        const int ventas = perspectiva(QStringLiteral("Ventas"));
        const int m = metrica(QStringLiteral("Venta diaria"), ventas);
        const QString nodo = esMetrica ? mt(m) : kp(ventas);
        QString abierto, nombre, textoNuevo;
        ModalAnswerer a;
        a.expect([&](QWidget* w) { dobleClic(w, nodo); });
        a.expect([&](QWidget* w) {
            abierto = w->objectName();
            nombre = texto(w, QStringLiteral("cNombre"));
            escribir(w, QStringLiteral("cNombre"), QStringLiteral("Renombrado"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        a.expect([&](QWidget* w) {
            textoNuevo = arbolDe(w)->nodo(nodo)->text(0);
            cerrar(w);
        });
        abrir(a);
        QCOMPARE(abierto, editor);
        QCOMPARE(nombre, esMetrica ? QStringLiteral("Venta diaria") : QStringLiteral("Ventas"));
        QCOMPARE(textoNuevo, QStringLiteral("Renombrado"));
        QCOMPARE(um->asked, (QStringList{QStringLiteral("KZ4-TBL-05-000"), derecho}));
    }

    void cancelledEditorLeavesTheTreeUntouched_data()
    {
        QTest::addColumn<bool>("esMetrica");
        QTest::addColumn<bool>("porDobleClic");
        QTest::newRow("perspective, button") << false << false;
        QTest::newRow("metric, button") << true << false;
        QTest::newRow("metric, double click") << true << true;
    }

    void cancelledEditorLeavesTheTreeUntouched()
    {
        QFETCH(bool, esMetrica);
        QFETCH(bool, porDobleClic);
        const int ventas = perspectiva(QStringLiteral("Ventas"));
        const int m = metrica(QStringLiteral("Venta diaria"), ventas);
        const QString nodo = esMetrica ? mt(m) : kp(ventas);
        QStringList antes, despues, seleccionDespues;
        QList<bool> expandidosAntes, expandidosDespues;
        int cargas = -1;
        auto expandidos = [](ArbolClaves* t) {
            QList<bool> e;
            for (int i = 1; i <= t->cuenta(); ++i)
                e.append(t->nodoEn(i)->isExpanded());
            return e;
        };
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            antes = forma(arbolDe(w));
            expandidosAntes = expandidos(arbolDe(w));
            empezarRegistro();
            if (porDobleClic) {
                dobleClic(w, nodo);
            } else {
                clic(w, nodo);
                pulsar(w, QStringLiteral("Command2"));
            }
        });
        a.expect([&](QWidget* w) {
            escribir(w, QStringLiteral("cNombre"), QStringLiteral("Cambiado"));
            pulsar(w, QStringLiteral("cCancelar"));
        });
        a.expect([&](QWidget* w) {
            cargas = cargasDelArbol();
            despues = forma(arbolDe(w));
            expandidosDespues = expandidos(arbolDe(w));
            seleccionDespues = seleccion(arbolDe(w));
            cerrar(w);
        });
        abrir(a);
        QCOMPARE(cargas, 0);
        QCOMPARE(despues, antes);
        QCOMPARE(expandidosDespues, expandidosAntes);
        QCOMPARE(seleccionDespues, QStringList{nodo});
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_Nombre FROM ut_bi_Perspectiva WHERE Sys_PK=%1").arg(ventas)).toString(),
                 QStringLiteral("Ventas"));
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_Nombre FROM ut_bi_Metrica WHERE Sys_PK=%1").arg(m)).toString(),
                 QStringLiteral("Venta diaria"));
    }

    void editAndDeleteWithNothingSelectedAskToSelectOne()
    {
        const int ventas = perspectiva(QStringLiteral("Ventas"));
        metrica(QStringLiteral("Venta diaria"), ventas);
        QStringList mensajes;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            // Giving the tree the focus is no choice of a node.
            arbolDe(w)->setFocus();
            pulsar(w, QStringLiteral("Command2"));
        });
        a.expect(responder(&mensajes));
        a.expect([&](QWidget* w) { pulsar(w, QStringLiteral("Command3")); });
        a.expect(responder(&mensajes));
        a.expect([&](QWidget* w) { cerrar(w); });
        abrir(a);
        QCOMPARE(mensajes, (QStringList{simple(Seleccione), simple(Seleccione)}));
        QCOMPARE(um->asked, QStringList{QStringLiteral("KZ4-TBL-05-000")});
        QCOMPARE(cuenta(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Perspectiva")), 1);
        QCOMPARE(cuenta(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Metrica")), 1);
    }

    void deleteOfAPerspectiveWithChildrenAsksFirstThenRefuses_data()
    {
        QTest::addColumn<bool>("conSubperspectiva");
        QTest::newRow("with a sub-perspective") << true;
        QTest::newRow("with a metric") << false;
    }

    void deleteOfAPerspectiveWithChildrenAsksFirstThenRefuses()
    {
        QFETCH(bool, conSubperspectiva);
        const int ventas = perspectiva(QStringLiteral("Ventas"));
        if (conSubperspectiva)
            perspectiva(QStringLiteral("Norte"), ventas);
        else
            metrica(QStringLiteral("Venta diaria"), ventas);
        QStringList mensajes, antes, despues;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            antes = forma(arbolDe(w));
            clic(w, kp(ventas));
            pulsar(w, QStringLiteral("Command3"));
        });
        a.expect(responder(&mensajes, QStringLiteral("Sí")));
        a.expect(responder(&mensajes));
        a.expect([&](QWidget* w) {
            despues = forma(arbolDe(w));
            cerrar(w);
        });
        abrir(a);
        QCOMPARE(mensajes, (QStringList{siNo(Pregunta), simple(TieneHijos)}));
        QCOMPARE(despues, antes);
        QCOMPARE(um->asked, QStringList{QStringLiteral("KZ4-TBL-05-000")});
        QCOMPARE(cuenta(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Perspectiva")), conSubperspectiva ? 2 : 1);
        QCOMPARE(cuenta(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Metrica")), conSubperspectiva ? 0 : 1);
    }

    void deleteAnsweredNoChangesNothing_data()
    {
        QTest::addColumn<bool>("esMetrica");
        QTest::newRow("leaf perspective") << false;
        QTest::newRow("metric") << true;
    }

    void deleteAnsweredNoChangesNothing()
    {
        QFETCH(bool, esMetrica);
        const int ventas = perspectiva(QStringLiteral("Ventas"));
        const int hoja = perspectiva(QStringLiteral("Vacía"));
        const int m = metrica(QStringLiteral("Venta diaria"), ventas);
        const QString nodo = esMetrica ? mt(m) : kp(hoja);
        QStringList mensajes, antes, despues, seleccionDespues;
        int cargas = -1;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            antes = forma(arbolDe(w));
            clic(w, nodo);
            empezarRegistro();
            pulsar(w, QStringLiteral("Command3"));
        });
        a.expect(responder(&mensajes, QStringLiteral("No")));
        a.expect([&](QWidget* w) {
            cargas = cargasDelArbol();
            despues = forma(arbolDe(w));
            seleccionDespues = seleccion(arbolDe(w));
            cerrar(w);
        });
        abrir(a);
        QCOMPARE(mensajes, QStringList{siNo(Pregunta)});
        QCOMPARE(cargas, 0);
        QCOMPARE(despues, antes);
        QCOMPARE(seleccionDespues, QStringList{nodo});
        QCOMPARE(um->asked, QStringList{QStringLiteral("KZ4-TBL-05-000")});
        QCOMPARE(cuenta(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Perspectiva")), 2);
        QCOMPARE(cuenta(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Metrica")), 1);
    }

    void deleteOfALeafAsksItsRightAndRefreshes_data()
    {
        QTest::addColumn<bool>("esMetrica");
        QTest::addColumn<QString>("derecho");
        QTest::newRow("leaf perspective") << false << QStringLiteral("KZ4-TBL-05-003");
        QTest::newRow("metric") << true << QStringLiteral("KZ4-TBL-05-006");
    }

    void deleteOfALeafAsksItsRightAndRefreshes()
    {
        QFETCH(bool, esMetrica);
        QFETCH(QString, derecho);
        const int ventas = perspectiva(QStringLiteral("Ventas"));
        const int hoja = perspectiva(QStringLiteral("Vacía"), ventas);
        const int m = metrica(QStringLiteral("Venta diaria"), ventas);
        const QString nodo = esMetrica ? mt(m) : kp(hoja);
        QStringList mensajes, despues;
        int cargas = -1;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            clic(w, nodo);
            empezarRegistro();
            pulsar(w, QStringLiteral("Command3"));
        });
        a.expect(responder(&mensajes, QStringLiteral("Sí")));
        a.expect([&](QWidget* w) {
            cargas = cargasDelArbol();
            despues = forma(arbolDe(w));
            cerrar(w);
        });
        abrir(a);
        QCOMPARE(mensajes, QStringList{siNo(Pregunta)});
        QCOMPARE(um->asked, (QStringList{QStringLiteral("KZ4-TBL-05-000"), derecho}));
        QCOMPARE(cargas, 1);
        const QString quedan = esMetrica ? kp(ventas) + '>' + kp(hoja) : kp(ventas) + '>' + mt(m);
        QCOMPARE(despues, (QStringList{kp(ventas), quedan}));
        QCOMPARE(cuenta(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Perspectiva")), esMetrica ? 2 : 1);
        QCOMPARE(cuenta(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Metrica")), esMetrica ? 0 : 1);
    }

    void deleteRefusedByTheRightLeavesTheTreeWithoutAnotherMessage()
    {
        um->refused = {QStringLiteral("KZ4-TBL-05-006")};
        const int ventas = perspectiva(QStringLiteral("Ventas"));
        const int m = metrica(QStringLiteral("Venta diaria"), ventas);
        QStringList mensajes, antes, despues;
        int cargas = -1;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            antes = forma(arbolDe(w));
            clic(w, mt(m));
            empezarRegistro();
            pulsar(w, QStringLiteral("Command3"));
        });
        a.expect(responder(&mensajes, QStringLiteral("Sí")));
        a.expect([&](QWidget* w) {
            cargas = cargasDelArbol();
            despues = forma(arbolDe(w));
            cerrar(w);
        });
        abrir(a);
        QCOMPARE(mensajes, QStringList{siNo(Pregunta)});
        QCOMPARE(cargas, 0);
        QCOMPARE(despues, antes);
        QCOMPARE(cuenta(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Metrica")), 1);
        QCOMPARE(um->asked, (QStringList{QStringLiteral("KZ4-TBL-05-000"), QStringLiteral("KZ4-TBL-05-006")}));
    }

    // Indicators are not in this tree, so they do not hold the perspective back.
    void perspectiveHoldingOnlyIndicatorsIsDeletedAndTheyStay()
    {
        const int ventas = perspectiva(QStringLiteral("Ventas"));
        const int ind = indicador(QStringLiteral("Indicador"), ventas);
        QStringList mensajes, despues;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            QCOMPARE(arbolDe(w)->nodo(kp(ventas))->childCount(), 0);
            clic(w, kp(ventas));
            pulsar(w, QStringLiteral("Command3"));
        });
        a.expect(responder(&mensajes, QStringLiteral("Sí")));
        a.expect([&](QWidget* w) {
            despues = forma(arbolDe(w));
            cerrar(w);
        });
        abrir(a);
        QCOMPARE(mensajes, QStringList{siNo(Pregunta)});
        QVERIFY(despues.isEmpty());
        QCOMPARE(cuenta(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Perspectiva")), 0);
        QCOMPARE(cuenta(QStringLiteral("SELECT uf_FK_Perspectiva FROM ut_bi_Indicador WHERE Sys_PK=%1").arg(ind)), ventas);
    }

    void escapeAndTheCloseBoxUnloadTheLibraryToo_data()
    {
        QTest::addColumn<bool>("escape");
        QTest::newRow("escape") << true;
        QTest::newRow("close box") << false;
    }

    void escapeAndTheCloseBoxUnloadTheLibraryToo()
    {
        QFETCH(bool, escape);
        QPointer<QWidget> ventana;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            ventana = w;
            if (escape)
                QTest::keyClick(w, Qt::Key_Escape);
            else
                w->close();
        });
        abrir(a);
        QTRY_VERIFY(ventana.isNull());
    }

    void largeLibraryOpensWithEveryNode()
    {
        // Keys far above anything the database hands out, so later inserts
        // through the identity columns never meet them.
        constexpr int BaseP = 5000000;
        constexpr int BaseM = 6000000;
        constexpr int Raices = 200;
        constexpr int Perspectivas = 2000;
        constexpr int Metricas = 20000;
        auto insertar = [&](const QString& cabecera, int total, const std::function<QString(int)>& fila) {
            for (int desde = 0; desde < total; desde += 500) {
                QStringList filas;
                for (int i = desde; i < qMin(total, desde + 500); ++i)
                    filas.append(fila(i));
                db.exec(cabecera + filas.join(QLatin1Char(',')));
            }
        };
        // 200 top-level perspectives, each with nine sub-perspectives; ten metrics in each of the 2,000.
        auto padreDe = [&](int i) { return i < Raices ? 0 : BaseP + (i - Raices) / 9; };
        insertar(QStringLiteral("INSERT INTO ut_bi_Perspectiva (Sys_PK, uf_Nombre, uf_Entidad, uf_Grupos, uf_padre) VALUES "),
                 Perspectivas, [&](int i) {
                     return QStringLiteral("(%1, 'Perspectiva %2', '@', '*', %3)")
                         .arg(BaseP + i)
                         .arg(i, 4, 10, QLatin1Char('0'))
                         .arg(padreDe(i));
                 });
        insertar(QStringLiteral("INSERT INTO ut_bi_Metrica (Sys_PK, uf_Nombre, uf_FK_Perspectiva) VALUES "), Metricas,
                 [&](int i) {
                     return QStringLiteral("(%1, 'Métrica %2', %3)")
                         .arg(BaseM + i)
                         .arg(i, 5, 10, QLatin1Char('0'))
                         .arg(BaseP + i / 10);
                 });
        QCOMPARE(cuenta(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Metrica")), Metricas);

        int nodos = 0, raices = 0, perspectivas = 0, metricas = 0, malPuestos = 0, plegados = 0;
        qint64 apertura = -1;
        QElapsedTimer reloj;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            apertura = reloj.elapsed();
            ArbolClaves* t = arbolDe(w);
            nodos = t->cuenta();
            raices = t->topLevelItemCount();
            for (int i = 1; i <= t->cuenta(); ++i) {
                const QTreeWidgetItem* item = t->nodoEn(i);
                const int clave = ArbolClaves::clave(item).mid(3).toInt();
                const QString padre = ArbolClaves::clave(item->parent());
                if (ArbolClaves::tag(item) == QLatin1String("P")) {
                    ++perspectivas;
                    const int p = padreDe(clave - BaseP);
                    malPuestos += (p ? padre != kp(p) : !padre.isEmpty()) ? 1 : 0;
                    const int hijos = (clave - BaseP < Raices ? 9 : 0) + 10;
                    malPuestos += item->childCount() != hijos ? 1 : 0;
                } else {
                    ++metricas;
                    malPuestos += padre != kp(BaseP + (clave - BaseM) / 10) ? 1 : 0;
                }
                if (item->childCount() > 0 && !item->isExpanded())
                    ++plegados;
            }
            cerrar(w);
        });
        reloj.start();
        abrir(a, 120000);
        qInfo("2,000 perspectives and 20,000 metrics shown in %lld ms", apertura);
        QCOMPARE(nodos, Perspectivas + Metricas);
        QCOMPARE(raices, Raices);
        QCOMPARE(perspectivas, Perspectivas);
        QCOMPARE(metricas, Metricas);
        QCOMPARE(malPuestos, 0);
        QCOMPARE(plegados, 0);
        QVERIFY2(apertura < 30000, "the library took too long to open");
    }

    void everyTextIsWholeAndTabRunsFromTheTreeDown()
    {
        const int ventas = perspectiva(QStringLiteral("Ventas"));
        perspectiva(QStringLiteral("Devoluciones de clientes"), ventas);
        metrica(QStringLiteral("Venta diaria"), ventas);
        metrica(QStringLiteral("Ticket promedio"), ventas);
        perspectiva(QStringLiteral("Inventario"));
        QStringList cortados, orden;
        QString foco, defecto;
        CarpetaPrueba carpeta;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            foco = driver::foco(w);
            clic(w, kp(ventas));
            cortados = textosCortados(w);
            orden = ordenTab(w, arbolDe(w));
            for (QPushButton* b : w->findChildren<QPushButton*>())
                defecto += b->isDefault() ? b->objectName() : QString();
            QVERIFY(w->grab().save(carpeta.archivo(QStringLiteral("dlgBibdatos.png"))));
            cerrar(w);
        });
        abrir(a);
        QVERIFY2(cortados.isEmpty(), qPrintable(cortados.join(QStringLiteral(", "))));
        QCOMPARE(orden, (QStringList{QStringLiteral("tvw"), QStringLiteral("cAd1"), QStringLiteral("Command1"),
                                     QStringLiteral("Command2"), QStringLiteral("Command3"), QStringLiteral("cCerrar")}));
        QCOMPARE(foco, QStringLiteral("tvw"));
        QCOMPARE(defecto, QString());
    }
};

QTEST_MAIN(TstDlgBibdatos)
#include "tst_dlgbibdatos.moc"
