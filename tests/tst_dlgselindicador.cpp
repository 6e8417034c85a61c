// The indicator picker driven through the engine as a user would: the
// engine opens it, the user clicks perspectives and indicators, accepts or
// cancels, and what the engine returns is checked.
#include "bibliotecadriver.h"
#include "carpetaprueba.h"
#include "dialogdriver.h"
#include "engine/eengine.h"
#include "fakeusermanagement.h"
#include "library/arbolclaves.h"
#include "library/dlgselindicador.h"
#include "modalanswerer.h"
#include "model/emetrica.h"
#include "model/eperspectiva.h"
#include "testdatabase.h"

#include <QComboBox>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>
#include <memory>

using namespace driver;
using namespace biblioteca;

namespace {

const QString DebeSeleccionar = QStringLiteral("Debe seleccionar un indicador de la lista a la derecha");

QListWidget* listaDe(QWidget* w)
{
    return control<QListWidget>(w, QStringLiteral("lst"));
}

QStringList textos(const QListWidget* l)
{
    QStringList t;
    for (int i = 0; i < l->count(); ++i)
        t.append(l->item(i)->text());
    return t;
}

QList<int> datos(const QListWidget* l)
{
    QList<int> d;
    for (int i = 0; i < l->count(); ++i)
        d.append(l->item(i)->data(Qt::UserRole).toInt());
    return d;
}

// The selected entries' texts.
QStringList elegidos(const QListWidget* l)
{
    QStringList t;
    for (const QListWidgetItem* item : l->selectedItems())
        t.append(item->text());
    return t;
}

QPoint centroDeEntrada(QListWidget* l, const QString& texto)
{
    const QList<QListWidgetItem*> hallados = l->findItems(texto, Qt::MatchExactly);
    if (hallados.isEmpty()) {
        qWarning("no entry %s", qPrintable(texto));
        return {};
    }
    l->scrollToItem(hallados.first());
    return l->visualItemRect(hallados.first()).center();
}

void clicEnLista(QWidget* w, const QString& texto)
{
    QListWidget* l = listaDe(w);
    QTest::mouseClick(l->viewport(), Qt::LeftButton, {}, centroDeEntrada(l, texto));
}

void dobleClicEnLista(QWidget* w, const QString& texto)
{
    QListWidget* l = listaDe(w);
    const QPoint punto = centroDeEntrada(l, texto);
    QTest::mouseClick(l->viewport(), Qt::LeftButton, {}, punto);
    QTest::mouseDClick(l->viewport(), Qt::LeftButton, {}, punto);
}

} // namespace

class TstDlgSelIndicador : public QObject {
    Q_OBJECT

    TestDatabase db;
    std::unique_ptr<EEngine> engine;
    std::unique_ptr<FakeUserManagement> um;

    int perspectiva(const QString& nombre, int padre = 0) { return nuevaPerspectiva(db, nombre, padre); }

    int metrica(const QString& nombre, int enPerspectiva) { return nuevaMetrica(db, nombre, enPerspectiva); }

    int indicador(const QString& nombre, int enPerspectiva) { return nuevoIndicador(db, nombre, enPerspectiva); }

    // Picks through the engine while the answerer drives the picker.
    int elegir(ModalAnswerer& a)
    {
        Vigilante vigilante(20000);
        const int clave = engine->Seleccionar_Indicador();
        [&] {
            QVERIFY2(!vigilante.vencido, qPrintable(a.seen.join(QStringLiteral(" / "))));
            QVERIFY2(a.allAnswered(), qPrintable(a.seen.join(QStringLiteral(" / "))));
            QVERIFY2(a.unexpected.isEmpty(), qPrintable(a.unexpected.join(QStringLiteral(" / "))));
        }();
        return clave;
    }

    // Ventas (first by name) with two indicators, Compras with one, Vacía with none.
    int ventas = 0, compras = 0, vacia = 0, alfa = 0, beta = 0, gamma = 0;

    void biblioteca()
    {
        vacia = perspectiva(QStringLiteral("Vacía"));
        ventas = perspectiva(QStringLiteral("Ventas"));
        compras = perspectiva(QStringLiteral("Compras de temporada"), ventas);
        beta = indicador(QStringLiteral("Beta"), ventas);
        alfa = indicador(QStringLiteral("Alfa"), ventas);
        gamma = indicador(QStringLiteral("Gamma"), compras);
        metrica(QStringLiteral("Venta diaria"), ventas);
    }

private slots:
    void initTestCase() { VBI_CREATE_TEST_DATABASE(db); }

    void init()
    {
        db.clear();
        engine = std::make_unique<EEngine>();
        um = std::make_unique<FakeUserManagement>();
        engine->SetConnection(&db.connection(), 1);
        engine->SetUM(um.get());
    }

    void controlsCarryTheirNamesAndCaptions()
    {
        dlgSelIndicador dlg;
        QCOMPARE(dlg.objectName(), QStringLiteral("dlgSelIndicador"));
        QCOMPARE(dlg.windowTitle(), QStringLiteral("Seleccionar indicador"));
        QVERIFY(control<ArbolClaves>(&dlg, QStringLiteral("tvw")));
        QVERIFY(control<QListWidget>(&dlg, QStringLiteral("lst")));
        const QList<QPair<const char*, QString>> botones = {
            {"cmdAceptar", QStringLiteral("&Aceptar")},
            {"Command1", QStringLiteral("&Cancelar")},
            {"Command2", QStringLiteral("Crear y administrar  indicadores")},
        };
        for (const auto& [nombre, texto] : botones)
            QCOMPARE(control<QPushButton>(&dlg, QLatin1String(nombre))->text(), texto);
        QCOMPARE(dlg.findChildren<QPushButton*>().size(), botones.size());
        QVERIFY(control<QPushButton>(&dlg, QStringLiteral("cmdAceptar"))->isDefault());
        QCOMPARE(dlg.Resultado(), 0);
    }

    void refusedRightReturnsZeroAndOpensNothing()
    {
        biblioteca();
        um->refused = {QStringLiteral("KZ4-TBL-03-000")};
        ModalAnswerer a;
        QCOMPARE(elegir(a), 0);
        QTest::qWait(50);
        QVERIFY(a.seen.isEmpty());
        QCOMPARE(um->asked, QStringList{QStringLiteral("KZ4-TBL-03-000")});
    }

    void withoutPerspectivesItOpensEmptyAndAceptarAsksForAnIndicator()
    {
        // An indicator whose perspective is gone is no reason to show anything.
        indicador(QStringLiteral("Huérfano"), 9999999);
        int nodos = -1, entradas = -1;
        QString foco;
        QStringList mensajes;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            nodos = arbolDe(w)->cuenta();
            entradas = listaDe(w)->count();
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        a.expect(responder(&mensajes));
        a.expect([&](QWidget* w) {
            foco = driver::foco(w);
            pulsar(w, QStringLiteral("Command1"));
        });
        QCOMPARE(elegir(a), 0);
        QCOMPARE(nodos, 0);
        QCOMPARE(entradas, 0);
        QCOMPARE(mensajes, QStringList{simple(DebeSeleccionar)});
        QCOMPARE(foco, QStringLiteral("lst"));
        QCOMPARE(um->asked, QStringList{QStringLiteral("KZ4-TBL-03-000")});
    }

    void treeShowsPerspectivesOnlyWithTheFirstSelected()
    {
        biblioteca();
        QStringList vista, seleccionArbol;
        QList<int> imagenes;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            vista = forma(arbolDe(w));
            seleccionArbol = seleccion(arbolDe(w));
            for (int i = 1; i <= arbolDe(w)->cuenta(); ++i)
                imagenes.append(ArbolClaves::imagen(arbolDe(w)->nodoEn(i)));
            pulsar(w, QStringLiteral("Command1"));
        });
        QCOMPARE(elegir(a), 0);
        // No metric and no indicator hangs in this tree.
        QCOMPARE(vista, (QStringList{kp(vacia), kp(ventas), kp(ventas) + '>' + kp(compras)}));
        QCOMPARE(seleccionArbol, QStringList{kp(vacia)});
        QCOMPARE(imagenes, (QList<int>{1, 1, 1}));
    }

    void openingSelectsTheFirstIndicatorSoAceptarReturnsItAtOnce()
    {
        const int ventasSola = perspectiva(QStringLiteral("Ventas"));
        const int beta = indicador(QStringLiteral("Beta"), ventasSola);
        const int alfa = indicador(QStringLiteral("Alfa"), ventasSola);
        QStringList seleccionArbol, lista, elegida;
        QList<int> claves;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            seleccionArbol = seleccion(arbolDe(w));
            lista = textos(listaDe(w));
            claves = datos(listaDe(w));
            elegida = elegidos(listaDe(w));
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        QCOMPARE(elegir(a), alfa);
        QCOMPARE(seleccionArbol, QStringList{kp(ventasSola)});
        QCOMPARE(lista, (QStringList{QStringLiteral("Alfa"), QStringLiteral("Beta")}));
        QCOMPARE(claves, (QList<int>{alfa, beta}));
        QCOMPARE(elegida, QStringList{QStringLiteral("Alfa")});
        QCOMPARE(um->asked, QStringList{QStringLiteral("KZ4-TBL-03-000")});
    }

    void firstPerspectiveWithoutIndicatorsOpensWithAnEmptyList()
    {
        biblioteca();
        int entradas = -1;
        QStringList mensajes;
        QString foco;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            entradas = listaDe(w)->count();
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        a.expect(responder(&mensajes));
        a.expect([&](QWidget* w) {
            foco = driver::foco(w);
            pulsar(w, QStringLiteral("Command1"));
        });
        QCOMPARE(elegir(a), 0);
        QCOMPARE(entradas, 0);
        QCOMPARE(mensajes, QStringList{simple(DebeSeleccionar)});
        QCOMPARE(foco, QStringLiteral("lst"));
    }

    void clickingAPerspectiveListsItsIndicators()
    {
        biblioteca();
        QStringList deVentas, elegidaVentas, deCompras, deVacia, elegidaVacia;
        QStringList mensajes;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            clic(w, kp(ventas));
            deVentas = textos(listaDe(w));
            elegidaVentas = elegidos(listaDe(w));
            clic(w, kp(compras));
            deCompras = textos(listaDe(w));
            clic(w, kp(vacia));
            deVacia = textos(listaDe(w));
            elegidaVacia = elegidos(listaDe(w));
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        a.expect(responder(&mensajes));
        a.expect([&](QWidget* w) {
            clic(w, kp(compras));
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        QCOMPARE(elegir(a), gamma);
        QCOMPARE(deVentas, (QStringList{QStringLiteral("Alfa"), QStringLiteral("Beta")}));
        QCOMPARE(elegidaVentas, QStringList{QStringLiteral("Alfa")});
        QCOMPARE(deCompras, QStringList{QStringLiteral("Gamma")});
        QVERIFY(deVacia.isEmpty());
        QVERIFY(elegidaVacia.isEmpty());
        QCOMPARE(mensajes, QStringList{simple(DebeSeleccionar)});
    }

    void anotherEntryPickedIsReturned()
    {
        biblioteca();
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            clic(w, kp(ventas));
            clicEnLista(w, QStringLiteral("Beta"));
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        QCOMPARE(elegir(a), beta);
    }

    void doubleClickOnAnEntryAccepts()
    {
        biblioteca();
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            clic(w, kp(ventas));
            dobleClicEnLista(w, QStringLiteral("Beta"));
        });
        QCOMPARE(elegir(a), beta);
        QCOMPARE(ventanas(a), QStringList{QStringLiteral("dlgSelIndicador")});
    }

    void enterTakesTheSelectedEntry()
    {
        biblioteca();
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            clic(w, kp(ventas));
            QTest::keyClick(arbolDe(w), Qt::Key_Return);
        });
        QCOMPARE(elegir(a), alfa);
    }

    void cancelReturnsZeroAlsoAfterASelection_data()
    {
        QTest::addColumn<int>("forma");
        QTest::newRow("&Cancelar") << 0;
        QTest::newRow("escape") << 1;
        QTest::newRow("close box") << 2;
    }

    void cancelReturnsZeroAlsoAfterASelection()
    {
        QFETCH(int, forma);
        biblioteca();
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            clic(w, kp(ventas));
            clicEnLista(w, QStringLiteral("Beta"));
            if (forma == 0)
                pulsar(w, QStringLiteral("Command1"));
            else if (forma == 1)
                QTest::keyClick(w, Qt::Key_Escape);
            else
                w->close();
        });
        QCOMPARE(elegir(a), 0);
    }

    void libraryButtonOpensTheLibraryAndPreparesThePickerAgain()
    {
        biblioteca();
        int nuevo = 0;
        QString padreDeLaBiblioteca;
        QStringList seleccionArbol, lista, elegida;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            clic(w, kp(compras));
            pulsar(w, QStringLiteral("Command2"));
        });
        a.expect([&](QWidget* w) {
            padreDeLaBiblioteca = w->objectName() + QLatin1Char('/')
                                  + (w->parentWidget() ? w->parentWidget()->objectName() : QString());
            clic(w, kp(ventas));
            pulsar(w, QStringLiteral("Command1"));
        });
        a.expect([](QWidget* w) {
            escribir(w, QStringLiteral("cNombre"), QStringLiteral("Aaa nuevo"));
            elegirEn(w, QStringLiteral("cMetrica"), QStringLiteral("Venta diaria"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        a.expect([&](QWidget* w) {
            nuevo = db.scalar(QStringLiteral("SELECT MAX(Sys_PK) FROM ut_bi_Indicador")).toInt();
            pulsar(w, QStringLiteral("Command4"));
        });
        a.expect([&](QWidget* w) {
            seleccionArbol = seleccion(arbolDe(w));
            clic(w, kp(ventas));
            lista = textos(listaDe(w));
            elegida = elegidos(listaDe(w));
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        const int elegido = elegir(a);
        QCOMPARE(elegido, nuevo);
        QVERIFY(nuevo > 0);
        QCOMPARE(padreDeLaBiblioteca, QStringLiteral("dlgBibIndi/dlgSelIndicador"));
        QCOMPARE(ventanas(a), (QStringList{QStringLiteral("dlgSelIndicador"), QStringLiteral("dlgBibIndi"),
                                           QStringLiteral("dlgPropIndicador"), QStringLiteral("dlgBibIndi"),
                                           QStringLiteral("dlgSelIndicador")}));
        QCOMPARE(um->asked, (QStringList{QStringLiteral("KZ4-TBL-03-000"), QStringLiteral("KZ4-TBL-06-000"),
                                         QStringLiteral("KZ4-TBL-06-001")}));
        // Prepared again: the first perspective is selected once more.
        QCOMPARE(seleccionArbol, QStringList{kp(vacia)});
        QCOMPARE(lista, (QStringList{QStringLiteral("Aaa nuevo"), QStringLiteral("Alfa"), QStringLiteral("Beta")}));
        QCOMPARE(elegida, QStringList{QStringLiteral("Aaa nuevo")});
    }

    void newPerspectiveFirstByNameIsShownAndListedAfterTheLibrary()
    {
        biblioteca();
        int nueva = 0, nuevo = 0;
        QStringList lista, seleccionArbol;
        ModalAnswerer a;
        a.expect([](QWidget* w) { pulsar(w, QStringLiteral("Command2")); });
        a.expect([&](QWidget* w) {
            // Somebody else files a new first perspective with an indicator meanwhile.
            nueva = perspectiva(QStringLiteral("Aaa"));
            nuevo = indicador(QStringLiteral("Nuevo"), nueva);
            pulsar(w, QStringLiteral("Command4"));
        });
        a.expect([&](QWidget* w) {
            seleccionArbol = seleccion(arbolDe(w));
            lista = textos(listaDe(w));
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        const int elegido = elegir(a);
        QCOMPARE(elegido, nuevo);
        QCOMPARE(seleccionArbol, QStringList{kp(nueva)});
        QCOMPARE(lista, QStringList{QStringLiteral("Nuevo")});
    }

    void libraryRefusedStillPreparesThePickerAgain()
    {
        biblioteca();
        um->refused = {QStringLiteral("KZ4-TBL-06-000")};
        QStringList antes, seleccionArbol, lista;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            clic(w, kp(ventas));
            antes = textos(listaDe(w));
            // Nothing opens: the picker is prepared again at once.
            pulsar(w, QStringLiteral("Command2"));
            seleccionArbol = seleccion(arbolDe(w));
            lista = textos(listaDe(w));
            pulsar(w, QStringLiteral("Command1"));
        });
        QCOMPARE(elegir(a), 0);
        QCOMPARE(antes, (QStringList{QStringLiteral("Alfa"), QStringLiteral("Beta")}));
        QCOMPARE(seleccionArbol, QStringList{kp(vacia)});
        QVERIFY(lista.isEmpty());
        QCOMPARE(um->asked, (QStringList{QStringLiteral("KZ4-TBL-03-000"), QStringLiteral("KZ4-TBL-06-000")}));
    }

    // With no perspective left the preparation stops before the list.
    void listIsLeftAsItWasWhenNoPerspectiveRemains()
    {
        const int sola = perspectiva(QStringLiteral("Ventas"));
        indicador(QStringLiteral("Alfa"), sola);
        int nodos = -1;
        QStringList lista;
        ModalAnswerer a;
        a.expect([](QWidget* w) { pulsar(w, QStringLiteral("Command2")); });
        a.expect([&](QWidget* w) {
            db.openAnother()->Execute(QStringLiteral("DELETE FROM ut_bi_Perspectiva"));
            pulsar(w, QStringLiteral("Command4"));
        });
        a.expect([&](QWidget* w) {
            nodos = arbolDe(w)->cuenta();
            lista = textos(listaDe(w));
            pulsar(w, QStringLiteral("Command1"));
        });
        QCOMPARE(elegir(a), 0);
        QCOMPARE(nodos, 0);
        QCOMPARE(lista, QStringList{QStringLiteral("Alfa")});
    }

    void everyTextIsWholeAndTabRunsFromTheTreeToTheButtons()
    {
        biblioteca();
        indicador(QStringLiteral("Avance de ventas del mes en curso"), ventas);
        QStringList cortados, orden;
        QString foco, defecto;
        CarpetaPrueba carpeta;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            foco = driver::foco(w);
            clic(w, kp(ventas));
            cortados = textosCortados(w);
            orden = ordenTab(w, arbolDe(w));
            arbolDe(w)->setFocus();
            for (QPushButton* b : w->findChildren<QPushButton*>())
                defecto += b->isDefault() ? b->objectName() : QString();
            QVERIFY(w->grab().save(carpeta.archivo(QStringLiteral("dlgSelIndicador.png"))));
            pulsar(w, QStringLiteral("Command1"));
        });
        QCOMPARE(elegir(a), 0);
        QVERIFY2(cortados.isEmpty(), qPrintable(cortados.join(QStringLiteral(", "))));
        QCOMPARE(orden, (QStringList{QStringLiteral("tvw"), QStringLiteral("lst"), QStringLiteral("Command2"),
                                     QStringLiteral("cmdAceptar"), QStringLiteral("Command1")}));
        QCOMPARE(foco, QStringLiteral("tvw"));
        QCOMPARE(defecto, QStringLiteral("cmdAceptar"));
    }
};

QTEST_MAIN(TstDlgSelIndicador)
#include "tst_dlgselindicador.moc"
