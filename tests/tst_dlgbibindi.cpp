// The indicator library driven through the engine as a user would: the
// engine opens it, the user clicks nodes and buttons, answers the indicator
// editor and the questions, and the tree and the database are read back.
#include "bibliotecadriver.h"
#include "carpetaprueba.h"
#include "dialogdriver.h"
#include "engine/eengine.h"
#include "fakeusermanagement.h"
#include "library/arbolclaves.h"
#include "library/dlgbibindi.h"
#include "modalanswerer.h"
#include "model/emetrica.h"
#include "model/eperspectiva.h"
#include "testdatabase.h"

#include <QComboBox>
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
const QString SinPerspectivas =
    QStringLiteral("Deben existir perspectivas. Configure perspectivas y métricas en la biblioteca de métricas");
const QString NoEditar = QStringLiteral("No se puede editar una perspectiva, seleccione un indicador");
const QString NoEliminar = QStringLiteral("No se puede eliminar una perspectiva, seleccione un indicador");

QString ik(int clave)
{
    return QStringLiteral("IK_%1").arg(clave);
}

void cerrar(QWidget* w)
{
    pulsar(w, QStringLiteral("Command4"));
}

} // namespace

class TstDlgBibIndi : public QObject {
    Q_OBJECT

    TestDatabase db;
    std::unique_ptr<EEngine> engine;
    std::unique_ptr<FakeUserManagement> um;

    int perspectiva(const QString& nombre, int padre = 0) { return nuevaPerspectiva(db, nombre, padre); }

    int metrica(const QString& nombre, int enPerspectiva) { return nuevaMetrica(db, nombre, enPerspectiva); }

    // A progress bar on a metric, with bounds the editor accepts as they are.
    int indicador(const QString& nombre, int enPerspectiva, int conMetrica = 0)
    {
        const int clave = nuevoIndicador(db, nombre, enPerspectiva);
        db.exec(QStringLiteral("INSERT INTO ut_bi_BarraProg VALUES (%1, %2, 1, 10, 11, 12, 13, 2, 20, 21, 22, 23, "
                               "3, 30, 31, 32, 33, 4, 40, 41, 42, 43)")
                    .arg(clave)
                    .arg(conMetrica));
        return clave;
    }

    int cuenta(const QString& sql) { return db.scalar(sql).toInt(); }

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

    void abrir(ModalAnswerer& a)
    {
        Vigilante vigilante(20000);
        engine->Biblioteca_Indicadores();
        QVERIFY2(!vigilante.vencido, qPrintable(a.seen.join(QStringLiteral(" / "))));
        QVERIFY2(a.allAnswered(), qPrintable(a.seen.join(QStringLiteral(" / "))));
        QVERIFY2(a.unexpected.isEmpty(), qPrintable(a.unexpected.join(QStringLiteral(" / "))));
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
        dlgBibIndi dlg;
        QCOMPARE(dlg.objectName(), QStringLiteral("dlgBibIndi"));
        QCOMPARE(dlg.windowTitle(), QStringLiteral("Biblioteca de indicadores"));
        QVERIFY(control<ArbolClaves>(&dlg, QStringLiteral("tvw")));
        const QList<QPair<const char*, QString>> botones = {
            {"Command1", QStringLiteral("Agregar")},
            {"Command2", QStringLiteral("Editar")},
            {"Command3", QStringLiteral("Eliminar")},
            {"Command4", QStringLiteral("Cerrar")},
        };
        for (const auto& [nombre, texto] : botones)
            QCOMPARE(control<QPushButton>(&dlg, QLatin1String(nombre))->text(), texto);
        QCOMPARE(dlg.findChildren<QPushButton*>().size(), botones.size());
    }

    void refusedRightOpensNothing()
    {
        um->refused = {QStringLiteral("KZ4-TBL-06-000")};
        ModalAnswerer a;
        abrir(a);
        QTest::qWait(50);
        QVERIFY(a.seen.isEmpty());
        QCOMPARE(um->asked, QStringList{QStringLiteral("KZ4-TBL-06-000")});
    }

    void treeShowsPerspectivesWithTheirIndicatorsOnly()
    {
        const int ventas = perspectiva(QStringLiteral("Ventas"));
        const int compras = perspectiva(QStringLiteral("Compras"));
        const int norte = perspectiva(QStringLiteral("Norte"), ventas);
        metrica(QStringLiteral("Venta diaria"), ventas);
        const int barra = indicador(QStringLiteral("Barra"), ventas);
        const int alfa = indicador(QStringLiteral("Alfa"), ventas);
        const int deNorte = indicador(QStringLiteral("Del norte"), norte);
        indicador(QStringLiteral("Sin perspectiva"), 9999999);
        QPointer<QWidget> ventana;
        QStringList vista;
        QList<int> imagenes;
        int hijosDeCompras = -1;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            ventana = w;
            ArbolClaves* t = arbolDe(w);
            vista = forma(t);
            for (int i = 1; i <= t->cuenta(); ++i)
                imagenes.append(ArbolClaves::imagen(t->nodoEn(i)));
            hijosDeCompras = t->nodo(kp(compras))->childCount();
            cerrar(w);
        });
        abrir(a);
        QCOMPARE(um->asked, QStringList{QStringLiteral("KZ4-TBL-06-000")});
        QCOMPARE(vista, (QStringList{kp(compras), kp(ventas), kp(ventas) + '>' + kp(norte),
                                     kp(norte) + '>' + ik(deNorte), kp(ventas) + '>' + ik(alfa),
                                     kp(ventas) + '>' + ik(barra)}));
        // A perspective without indicators is a leaf.
        QCOMPARE(hijosDeCompras, 0);
        QCOMPARE(imagenes, (QList<int>{1, 1, 1, 2, 2, 2}));
        // "Cerrar" unloads the dialog.
        QTRY_VERIFY(ventana.isNull());
    }

    void addWithNothingSelectedAdvisesToConfigurePerspectives_data()
    {
        QTest::addColumn<bool>("conPerspectivas");
        QTest::newRow("empty tree") << false;
        QTest::newRow("perspectives, none selected") << true;
    }

    void addWithNothingSelectedAdvisesToConfigurePerspectives()
    {
        QFETCH(bool, conPerspectivas);
        if (conPerspectivas)
            perspectiva(QStringLiteral("Ventas"));
        QStringList mensajes;
        int nodos = -1;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            nodos = arbolDe(w)->cuenta();
            arbolDe(w)->setFocus();
            pulsar(w, QStringLiteral("Command1"));
        });
        a.expect(responder(&mensajes));
        a.expect([&](QWidget* w) { cerrar(w); });
        abrir(a);
        QCOMPARE(nodos, conPerspectivas ? 1 : 0);
        QCOMPARE(mensajes, QStringList{simple(SinPerspectivas)});
        QCOMPARE(um->asked, QStringList{QStringLiteral("KZ4-TBL-06-000")});
        QCOMPARE(cuenta(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Indicador")), 0);
    }

    void addFilesTheNewIndicatorUnderTheSelection_data()
    {
        QTest::addColumn<bool>("indicadorSeleccionado");
        QTest::newRow("perspective selected") << false;
        QTest::newRow("indicator selected") << true;
    }

    void addFilesTheNewIndicatorUnderTheSelection()
    {
        QFETCH(bool, indicadorSeleccionado);
        perspectiva(QStringLiteral("Compras"));
        const int ventas = perspectiva(QStringLiteral("Ventas"));
        metrica(QStringLiteral("Venta diaria"), ventas);
        const int existente = indicador(QStringLiteral("Existente"), ventas);
        int nueva = 0;
        QString editor;
        QStringList despues;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            clic(w, indicadorSeleccionado ? ik(existente) : kp(ventas));
            empezarRegistro();
            pulsar(w, QStringLiteral("Command1"));
        });
        a.expect([&](QWidget* w) {
            editor = w->objectName();
            escribir(w, QStringLiteral("cNombre"), QStringLiteral("Nuevo indicador"));
            elegirEn(w, QStringLiteral("cMetrica"), QStringLiteral("Venta diaria"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        a.expect([&](QWidget* w) {
            nueva = cuenta(QStringLiteral("SELECT MAX(Sys_PK) FROM ut_bi_Indicador"));
            despues = forma(arbolDe(w));
            cerrar(w);
        });
        abrir(a);
        QCOMPARE(editor, QStringLiteral("dlgPropIndicador"));
        QCOMPARE(um->asked, (QStringList{QStringLiteral("KZ4-TBL-06-000"), QStringLiteral("KZ4-TBL-06-001")}));
        QVERIFY(nueva > existente);
        QCOMPARE(cuenta(QStringLiteral("SELECT uf_FK_Perspectiva FROM ut_bi_Indicador WHERE Sys_PK=%1").arg(nueva)), ventas);
        QVERIFY2(despues.contains(kp(ventas) + '>' + ik(nueva)), qPrintable(despues.join(' ')));
    }

    void cancelledAddLeavesTheTreeAsItWas()
    {
        const int ventas = perspectiva(QStringLiteral("Ventas"));
        metrica(QStringLiteral("Venta diaria"), ventas);
        QStringList antes, despues, seleccionDespues;
        int cargas = -1;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            clic(w, kp(ventas));
            antes = forma(arbolDe(w));
            empezarRegistro();
            pulsar(w, QStringLiteral("Command1"));
        });
        a.expect([](QWidget* w) {
            escribir(w, QStringLiteral("cNombre"), QStringLiteral("Descartado"));
            pulsar(w, QStringLiteral("Command17"));
        });
        a.expect([&](QWidget* w) {
            cargas = cargasDelArbol();
            despues = forma(arbolDe(w));
            seleccionDespues = seleccion(arbolDe(w));
            cerrar(w);
        });
        abrir(a);
        QCOMPARE(cargas, 0);
        QCOMPARE(despues, antes);
        QCOMPARE(seleccionDespues, QStringList{kp(ventas)});
        QCOMPARE(cuenta(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Indicador")), 0);
    }

    void editOnAPerspectiveIsRefused()
    {
        const int ventas = perspectiva(QStringLiteral("Ventas"));
        indicador(QStringLiteral("Barra"), ventas);
        QStringList mensajes;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            clic(w, kp(ventas));
            pulsar(w, QStringLiteral("Command2"));
        });
        a.expect(responder(&mensajes));
        a.expect([&](QWidget* w) { cerrar(w); });
        abrir(a);
        QCOMPARE(mensajes, QStringList{simple(NoEditar)});
        QCOMPARE(um->asked, QStringList{QStringLiteral("KZ4-TBL-06-000")});
    }

    void editOfAnIndicatorOpensTheIndicatorEditorAndRefreshes()
    {
        const int ventas = perspectiva(QStringLiteral("Ventas"));
        const int m = metrica(QStringLiteral("Venta diaria"), ventas);
        const int barra = indicador(QStringLiteral("Barra"), ventas, m);
        QString editor, mostrado, textoNuevo;
        QStringList seleccionDespues;
        int cargas = -1;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            clic(w, ik(barra));
            empezarRegistro();
            pulsar(w, QStringLiteral("Command2"));
        });
        a.expect([&](QWidget* w) {
            editor = w->objectName();
            mostrado = texto(w, QStringLiteral("cNombre"));
            escribir(w, QStringLiteral("cNombre"), QStringLiteral("Barra de ventas"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        a.expect([&](QWidget* w) {
            cargas = cargasDelArbol();
            textoNuevo = arbolDe(w)->nodo(ik(barra))->text(0);
            seleccionDespues = seleccion(arbolDe(w));
            cerrar(w);
        });
        abrir(a);
        QCOMPARE(editor, QStringLiteral("dlgPropIndicador"));
        QCOMPARE(mostrado, QStringLiteral("Barra"));
        QCOMPARE(textoNuevo, QStringLiteral("Barra de ventas"));
        QCOMPARE(cargas, 1);
        QVERIFY(seleccionDespues.isEmpty());
        QCOMPARE(um->asked, (QStringList{QStringLiteral("KZ4-TBL-06-000"), QStringLiteral("KZ4-TBL-06-002")}));
    }

    void cancelledEditLeavesTheTreeUntouched()
    {
        const int ventas = perspectiva(QStringLiteral("Ventas"));
        const int m = metrica(QStringLiteral("Venta diaria"), ventas);
        const int barra = indicador(QStringLiteral("Barra"), ventas, m);
        QStringList antes, despues, seleccionDespues;
        int cargas = -1;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            clic(w, ik(barra));
            antes = forma(arbolDe(w));
            empezarRegistro();
            pulsar(w, QStringLiteral("Command2"));
        });
        a.expect([](QWidget* w) {
            escribir(w, QStringLiteral("cNombre"), QStringLiteral("Cambiado"));
            pulsar(w, QStringLiteral("Command17"));
        });
        a.expect([&](QWidget* w) {
            cargas = cargasDelArbol();
            despues = forma(arbolDe(w));
            seleccionDespues = seleccion(arbolDe(w));
            cerrar(w);
        });
        abrir(a);
        QCOMPARE(cargas, 0);
        QCOMPARE(despues, antes);
        QCOMPARE(seleccionDespues, QStringList{ik(barra)});
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_Nombre FROM ut_bi_Indicador WHERE Sys_PK=%1").arg(barra)).toString(),
                 QStringLiteral("Barra"));
    }

    void editAndDeleteWithNothingSelectedAskToSelectOne()
    {
        const int ventas = perspectiva(QStringLiteral("Ventas"));
        indicador(QStringLiteral("Barra"), ventas);
        QStringList mensajes;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            arbolDe(w)->setFocus();
            pulsar(w, QStringLiteral("Command2"));
        });
        a.expect(responder(&mensajes));
        a.expect([&](QWidget* w) { pulsar(w, QStringLiteral("Command3")); });
        a.expect(responder(&mensajes));
        a.expect([&](QWidget* w) { cerrar(w); });
        abrir(a);
        QCOMPARE(mensajes, (QStringList{simple(Seleccione), simple(Seleccione)}));
        QCOMPARE(um->asked, QStringList{QStringLiteral("KZ4-TBL-06-000")});
        QCOMPARE(cuenta(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Indicador")), 1);
    }

    void deleteOnAPerspectiveAsksFirstThenRefuses_data()
    {
        QTest::addColumn<QString>("respuesta");
        QTest::addColumn<QStringList>("esperados");
        QTest::newRow("answered Sí") << QStringLiteral("Sí") << QStringList{siNo(Pregunta), simple(NoEliminar)};
        QTest::newRow("answered No") << QStringLiteral("No") << QStringList{siNo(Pregunta)};
    }

    void deleteOnAPerspectiveAsksFirstThenRefuses()
    {
        QFETCH(QString, respuesta);
        QFETCH(QStringList, esperados);
        const int ventas = perspectiva(QStringLiteral("Ventas"));
        QStringList mensajes;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            clic(w, kp(ventas));
            pulsar(w, QStringLiteral("Command3"));
        });
        a.expect(responder(&mensajes, respuesta));
        if (esperados.size() > 1)
            a.expect(responder(&mensajes));
        a.expect([&](QWidget* w) { cerrar(w); });
        abrir(a);
        QCOMPARE(mensajes, esperados);
        QCOMPARE(um->asked, QStringList{QStringLiteral("KZ4-TBL-06-000")});
        QCOMPARE(cuenta(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Perspectiva")), 1);
    }

    void deleteOfAnIndicatorAsksItsRightAndRefreshes()
    {
        const int ventas = perspectiva(QStringLiteral("Ventas"));
        const int m = metrica(QStringLiteral("Venta diaria"), ventas);
        const int barra = indicador(QStringLiteral("Barra"), ventas, m);
        const int otro = indicador(QStringLiteral("Otro"), ventas, m);
        QStringList mensajes, despues;
        int cargas = -1;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            clic(w, ik(barra));
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
        QCOMPARE(um->asked, (QStringList{QStringLiteral("KZ4-TBL-06-000"), QStringLiteral("KZ4-TBL-06-003")}));
        QCOMPARE(cargas, 1);
        QCOMPARE(despues, (QStringList{kp(ventas), kp(ventas) + '>' + ik(otro)}));
        QCOMPARE(cuenta(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Indicador WHERE Sys_PK=%1").arg(barra)), 0);
        QCOMPARE(cuenta(QStringLiteral("SELECT COUNT(*) FROM ut_bi_BarraProg WHERE uf_FK_Indicador=%1").arg(barra)), 0);
        QCOMPARE(cuenta(QStringLiteral("SELECT COUNT(*) FROM ut_bi_BarraProg WHERE uf_FK_Indicador=%1").arg(otro)), 1);
    }

    void deleteOfAnIndicatorAnsweredNoChangesNothing()
    {
        const int ventas = perspectiva(QStringLiteral("Ventas"));
        const int barra = indicador(QStringLiteral("Barra"), ventas);
        QStringList mensajes, antes, despues;
        int cargas = -1;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            antes = forma(arbolDe(w));
            clic(w, ik(barra));
            empezarRegistro();
            pulsar(w, QStringLiteral("Command3"));
        });
        a.expect(responder(&mensajes, QStringLiteral("No")));
        a.expect([&](QWidget* w) {
            cargas = cargasDelArbol();
            despues = forma(arbolDe(w));
            cerrar(w);
        });
        abrir(a);
        QCOMPARE(mensajes, QStringList{siNo(Pregunta)});
        QCOMPARE(cargas, 0);
        QCOMPARE(despues, antes);
        QCOMPARE(um->asked, QStringList{QStringLiteral("KZ4-TBL-06-000")});
        QCOMPARE(cuenta(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Indicador")), 1);
    }

    void deleteRefusedByTheRightLeavesTheTreeWithoutAnotherMessage()
    {
        um->refused = {QStringLiteral("KZ4-TBL-06-003")};
        const int ventas = perspectiva(QStringLiteral("Ventas"));
        const int barra = indicador(QStringLiteral("Barra"), ventas);
        QStringList mensajes;
        int cargas = -1;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            clic(w, ik(barra));
            empezarRegistro();
            pulsar(w, QStringLiteral("Command3"));
        });
        a.expect(responder(&mensajes, QStringLiteral("Sí")));
        a.expect([&](QWidget* w) {
            cargas = cargasDelArbol();
            cerrar(w);
        });
        abrir(a);
        QCOMPARE(mensajes, QStringList{siNo(Pregunta)});
        QCOMPARE(cargas, 0);
        QCOMPARE(cuenta(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Indicador")), 1);
    }

    void doubleClickOpensNothing_data()
    {
        QTest::addColumn<bool>("sobreIndicador");
        QTest::newRow("on an indicator") << true;
        QTest::newRow("on a perspective") << false;
    }

    void doubleClickOpensNothing()
    {
        QFETCH(bool, sobreIndicador);
        const int ventas = perspectiva(QStringLiteral("Ventas"));
        const int barra = indicador(QStringLiteral("Barra"), ventas);
        QStringList seleccionDespues;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            dobleClic(w, sobreIndicador ? ik(barra) : kp(ventas));
            QTest::qWait(100);
            seleccionDespues = seleccion(arbolDe(w));
            cerrar(w);
        });
        abrir(a);
        QCOMPARE(ventanas(a), QStringList{QStringLiteral("dlgBibIndi")});
        QCOMPARE(seleccionDespues, QStringList{sobreIndicador ? ik(barra) : kp(ventas)});
        QCOMPARE(um->asked, QStringList{QStringLiteral("KZ4-TBL-06-000")});
    }

    void escapeUnloadsTheLibraryToo()
    {
        QPointer<QWidget> ventana;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            ventana = w;
            QTest::keyClick(w, Qt::Key_Escape);
        });
        abrir(a);
        QTRY_VERIFY(ventana.isNull());
    }

    void everyTextIsWholeAndTabRunsFromTheTreeDown()
    {
        const int ventas = perspectiva(QStringLiteral("Ventas"));
        const int norte = perspectiva(QStringLiteral("Región norte"), ventas);
        indicador(QStringLiteral("Avance de ventas del mes"), ventas);
        indicador(QStringLiteral("Semáforo de cobranza"), norte);
        perspectiva(QStringLiteral("Inventario"));
        QStringList cortados, orden;
        QString foco, defecto;
        CarpetaPrueba carpeta;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            foco = driver::foco(w);
            clic(w, kp(norte));
            cortados = textosCortados(w);
            orden = ordenTab(w, arbolDe(w));
            for (QPushButton* b : w->findChildren<QPushButton*>())
                defecto += b->isDefault() ? b->objectName() : QString();
            QVERIFY(w->grab().save(carpeta.archivo(QStringLiteral("dlgBibIndi.png"))));
            cerrar(w);
        });
        abrir(a);
        QVERIFY2(cortados.isEmpty(), qPrintable(cortados.join(QStringLiteral(", "))));
        QCOMPARE(orden, (QStringList{QStringLiteral("tvw"), QStringLiteral("Command1"), QStringLiteral("Command2"),
                                     QStringLiteral("Command3"), QStringLiteral("Command4")}));
        QCOMPARE(foco, QStringLiteral("tvw"));
        QCOMPARE(defecto, QString());
    }
};

QTEST_MAIN(TstDlgBibIndi)
#include "tst_dlgbibindi.moc"
