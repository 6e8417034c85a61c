// The indicator property dialog, shown modally and driven as a user would:
// typing, picking metrics, pressing buttons and answering every message, then
// reading back what reached the database.
#include "carpetaprueba.h"
#include "designer/dlgpropindicador.h"
#include "designer/muestra.h"
#include "dialogdriver.h"
#include "engine/eengine.h"
#include "modalanswerer.h"
#include "model/vendimarbi.h"
#include "testdatabase.h"
#include "vb/vb.h"

#include <QAbstractButton>
#include <QClipboard>
#include <QColorDialog>
#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <memory>

using namespace driver;

namespace {

constexpr int Azul = 0x00FF0000;
constexpr int Rojo = 0x000000FF;
constexpr int VerdeBarra = 0x0000C000;
constexpr int LamparaNaranja = 0x000080FF;
constexpr int LamparaVerde = 0x0000FF00;

QString nombreMetrica(int i)
{
    return QStringLiteral("Métrica %1").arg(i, 2, 10, QLatin1Char('0'));
}

QListWidget* lista(QWidget* w, const char* nombre)
{
    return control<QListWidget>(w, QLatin1String(nombre));
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

// Clicks an entry of a list box, as a user picks it.
void elegir(QListWidget* l, const QString& texto)
{
    const QList<QListWidgetItem*> hallados = l->findItems(texto, Qt::MatchExactly);
    if (hallados.isEmpty()) {
        qWarning("no entry %s in %s", qPrintable(texto), qPrintable(l->objectName()));
        return;
    }
    l->setCurrentItem(hallados.first());
}

// Picks the entry of a drop-down list by its text.
void elegirEn(QWidget* w, const QString& combo, const QString& texto)
{
    auto* c = control<QComboBox>(w, combo);
    c->setCurrentIndex(c->findText(texto));
}

// Picks each metric in "Métricas disponibles" and presses the add button.
void agregar(QWidget* w, const QList<int>& numeros)
{
    for (int n : numeros) {
        elegir(lista(w, "lstMetricas"), nombreMetrica(n));
        pulsar(w, QStringLiteral("cAdd"));
    }
}

int pestana(QWidget* w, const char* nombre)
{
    return control<QTabWidget>(w, QLatin1String(nombre))->currentIndex();
}

void irAPestana(QWidget* w, const char* nombre, int indice)
{
    control<QTabWidget>(w, QLatin1String(nombre))->setCurrentIndex(indice);
}

int colorDe(QWidget* w, const QString& nombre)
{
    return control<Muestra>(w, nombre)->colorOle();
}

bool panelVisible(QWidget* w, const char* nombre)
{
    return !control<QWidget>(w, QLatin1String(nombre))->isHidden();
}

QStringList panelesVisibles(QWidget* w)
{
    QStringList v;
    for (const char* nombre : {"picBarra", "picMatriz", "picSemaforo"}) {
        if (panelVisible(w, nombre))
            v.append(QLatin1String(nombre));
    }
    return v;
}

bool marcada(QWidget* w, const char* opcion)
{
    return control<QRadioButton>(w, QLatin1String(opcion))->isChecked();
}

// The texts of the message boxes among the modal windows seen.
QStringList mensajes(const ModalAnswerer& a)
{
    QStringList m;
    for (const QString& visto : a.seen) {
        const QStringList partes = visto.split(QLatin1Char('|'));
        if (partes.value(0) == QLatin1String("MsgBox"))
            m.append(partes.mid(2).join(QLatin1Char('|')));
    }
    return m;
}

// Every window seen, by objectName only, to check the order of turns.
QStringList ventanas(const ModalAnswerer& a)
{
    QStringList v;
    for (const QString& visto : a.seen)
        v.append(visto.section(QLatin1Char('|'), 0, 0));
    return v;
}

// Checks that every text of the visible controls fits its control whole.
QStringList textosCortados(QWidget* dlg)
{
    QStringList cortados;
    for (QLabel* l : dlg->findChildren<QLabel*>()) {
        if (l->isVisible() && !l->text().isEmpty()
            && (l->width() < l->sizeHint().width() || l->height() < l->sizeHint().height()))
            cortados.append(l->text());
    }
    for (QAbstractButton* b : dlg->findChildren<QAbstractButton*>()) {
        if (b->isVisible() && !b->text().isEmpty()
            && (b->width() < b->sizeHint().width() || b->height() < b->sizeHint().height()))
            cortados.append(b->text());
    }
    for (QTabBar* t : dlg->findChildren<QTabBar*>()) {
        if (!t->isVisible())
            continue;
        for (int i = 0; i < t->count(); ++i) {
            if (t->tabRect(i).width() < t->fontMetrics().horizontalAdvance(t->tabText(i)) + 8
                || t->tabRect(i).right() > t->width())
                cortados.append(t->tabText(i));
        }
    }
    for (QComboBox* c : dlg->findChildren<QComboBox*>()) {
        if (!c->isVisible())
            continue;
        for (int i = 0; i < c->count(); ++i) {
            if (c->fontMetrics().horizontalAdvance(c->itemText(i)) > c->width() - 30)
                cortados.append(c->itemText(i));
        }
    }
    return cortados;
}

} // namespace

class TstDlgPropIndicador : public QObject {
    Q_OBJECT

    TestDatabase db;
    std::unique_ptr<EEngine> engine;
    std::unique_ptr<dlgPropIndicador> dlg;
    int perspectiva = 0;
    int otraPerspectiva = 0;
    int metricaAjena = 0;
    QMap<int, int> metrica; // number in the name -> key
    QStringList cajasNoSimples;
    QLocale localeOriginal;

    QVariant valor(const QString& sql) { return db.scalar(sql); }

    int cuenta(const QString& tabla, int indicador)
    {
        const QString columna = tabla == QLatin1String("ut_bi_Indicador") ? QStringLiteral("Sys_PK")
                                                                          : QStringLiteral("uf_FK_Indicador");
        return valor(QStringLiteral("SELECT COUNT(*) FROM %1 WHERE %2=%3").arg(tabla, columna).arg(indicador)).toInt();
    }

    int total(const QString& tabla) { return valor(QStringLiteral("SELECT COUNT(*) FROM %1").arg(tabla)).toInt(); }

    QVariant columna(const QString& tabla, const QString& col, int indicador)
    {
        return valor(QStringLiteral("SELECT %1 FROM %2 WHERE uf_FK_Indicador=%3").arg(col, tabla).arg(indicador));
    }

    QVariant fila(const QString& col, int indicador)
    {
        return valor(QStringLiteral("SELECT %1 FROM ut_bi_Indicador WHERE Sys_PK=%2").arg(col).arg(indicador));
    }

    int insertarIndicador(const QString& nombre, int tipo, int enPerspectiva)
    {
        db.exec(QStringLiteral("INSERT INTO ut_bi_Indicador (uf_Nombre, uf_Tipo, uf_FK_Perspectiva) VALUES ('%1', %2, %3)")
                    .arg(nombre)
                    .arg(tipo)
                    .arg(enPerspectiva));
        return valor(QStringLiteral("SELECT MAX(Sys_PK) FROM ut_bi_Indicador")).toInt();
    }

    void nuevoDialogo()
    {
        dlg = std::make_unique<dlgPropIndicador>();
        dlg->setEngine(engine.get());
    }

    // Shows the dialog modally while the answerer drives it. A watchdog
    // closes whatever is left open, so a broken expectation fails instead of
    // hanging.
    int mostrar(ModalAnswerer& a)
    {
        bool vencido = false;
        QTimer perro;
        perro.setInterval(15000);
        connect(&perro, &QTimer::timeout, this, [&] {
            vencido = true;
            QWidget* modal = QApplication::activeModalWidget();
            if (modal == dlg.get() || !modal)
                dlg->reject();
            else
                QMetaObject::invokeMethod(modal, "reject", Qt::QueuedConnection);
        });
        perro.start();
        dlg->exec();
        perro.stop();
        if (vencido)
            qWarning("the dialog was left open: %s", qPrintable(a.seen.join(QStringLiteral(" / "))));
        return vencido ? -1 : dlg->Resultado();
    }

    // Answers a message box with its only button, noting any box that is not
    // a plain one (OK only, no icon, the application's title).
    ModalAnswerer::Handler aceptar()
    {
        return [this](QWidget* w) {
            auto* box = qobject_cast<QMessageBox*>(w);
            if (!box || box->icon() != QMessageBox::NoIcon || box->buttons().size() != 1
                || box->windowTitle() != QLatin1String("VendimarBI"))
                cajasNoSimples.append(box ? box->text() : w->objectName());
            ModalAnswerer::press(w, QStringLiteral("Aceptar"));
        };
    }

    static void cerrar(QWidget* w) { pulsar(w, QStringLiteral("Command17")); }

    static void terminado(const ModalAnswerer& a)
    {
        QVERIFY2(a.allAnswered(), qPrintable(a.seen.join(QStringLiteral(" / "))));
        QVERIFY2(a.unexpected.isEmpty(), qPrintable(a.unexpected.join(QStringLiteral(" / "))));
    }

    // A new progress bar named and given a metric, ready to accept.
    static void barraLista(QWidget* w, const QString& nombre = QStringLiteral("Ventas del día"))
    {
        escribir(w, QStringLiteral("cNombre"), nombre);
        elegirEn(w, QStringLiteral("cMetrica"), nombreMetrica(1));
    }

    static void semaforoListo(QWidget* w)
    {
        escribir(w, QStringLiteral("cNombre"), QStringLiteral("Semáforo de ventas"));
        pulsar(w, QStringLiteral("opt3"));
        elegirEn(w, QStringLiteral("cMetrica2"), nombreMetrica(2));
        const char* limites[8] = {"90", "10", "80", "20", "70", "30", "60", "40"};
        for (int i = 0; i < 8; ++i)
            escribir(w, QStringLiteral("cL%1").arg(i + 1), QLatin1String(limites[i]));
    }

private slots:
    void initTestCase()
    {
        VBI_CREATE_TEST_DATABASE(db);
        localeOriginal = QLocale();
        // Numbers are typed the way an English-locale user types them unless
        // a test says otherwise.
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    }

    void cleanupTestCase() { QLocale::setDefault(localeOriginal); }

    void init()
    {
        db.clear();
        db.exec(QStringLiteral("INSERT INTO ut_bi_Perspectiva (uf_Nombre, uf_padre) VALUES ('Ventas', 0)"));
        perspectiva = valor(QStringLiteral("SELECT Sys_PK FROM ut_bi_Perspectiva WHERE uf_Nombre='Ventas'")).toInt();
        db.exec(QStringLiteral("INSERT INTO ut_bi_Perspectiva (uf_Nombre, uf_padre) VALUES ('Compras', 0)"));
        otraPerspectiva = valor(QStringLiteral("SELECT Sys_PK FROM ut_bi_Perspectiva WHERE uf_Nombre='Compras'")).toInt();
        // Inserted out of order: the lists show them by name.
        for (int i = 12; i >= 1; --i) {
            db.exec(QStringLiteral("INSERT INTO ut_bi_Metrica (uf_Nombre, uf_FK_Perspectiva) VALUES ('%1', %2)")
                        .arg(nombreMetrica(i))
                        .arg(perspectiva));
        }
        db.exec(QStringLiteral("INSERT INTO ut_bi_Metrica (uf_Nombre, uf_FK_Perspectiva) VALUES ('Métrica ajena', %1)")
                    .arg(otraPerspectiva));
        metrica.clear();
        for (int i = 1; i <= 12; ++i)
            metrica[i] = valor(QStringLiteral("SELECT Sys_PK FROM ut_bi_Metrica WHERE uf_Nombre='%1'").arg(nombreMetrica(i)))
                             .toInt();
        metricaAjena = valor(QStringLiteral("SELECT Sys_PK FROM ut_bi_Metrica WHERE uf_Nombre='Métrica ajena'")).toInt();
        engine = std::make_unique<EEngine>();
        engine->SetConnection(&db.connection(), 1);
        cajasNoSimples.clear();
        nuevoDialogo();
    }

    void cleanup()
    {
        dlg.reset();
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        QVERIFY2(cajasNoSimples.isEmpty(), qPrintable(cajasNoSimples.join(QStringLiteral(" / "))));
    }

    // --- Controls -------------------------------------------------------

    void controlsCarryTheirNamesCaptionsAndDefaults()
    {
        QWidget* w = dlg.get();
        QCOMPARE(w->objectName(), QStringLiteral("dlgPropIndicador"));
        QCOMPARE(w->windowTitle(), QStringLiteral("Propiedades de indicador"));
        QCOMPARE(control<QLineEdit>(w, QStringLiteral("cNombre"))->maxLength(), 50);
        QCOMPARE(control<QRadioButton>(w, QStringLiteral("opt1"))->text(), QStringLiteral("Barra de progreso"));
        QCOMPARE(control<QRadioButton>(w, QStringLiteral("opt2"))->text(), QStringLiteral("Matriz y gráfico"));
        QCOMPARE(control<QRadioButton>(w, QStringLiteral("opt3"))->text(), QStringLiteral("Semáforo"));
        QVERIFY(control<QWidget>(w, QStringLiteral("pic1")));
        QVERIFY(!control<QLabel>(w, QStringLiteral("imgPreview"))->pixmap().isNull());
        auto* aceptar = control<QPushButton>(w, QStringLiteral("cAceptar"));
        QCOMPARE(aceptar->text(), QStringLiteral("&Aceptar"));
        QVERIFY(aceptar->isDefault());
        QCOMPARE(control<QPushButton>(w, QStringLiteral("Command17"))->text(), QStringLiteral("&Cancelar"));
        for (const char* panel : {"picBarra", "picSemaforo", "picMatriz"})
            QVERIFY(control<QWidget>(w, QLatin1String(panel)));
        QVERIFY(control<QComboBox>(w, QStringLiteral("cMetrica")));
        QVERIFY(control<QComboBox>(w, QStringLiteral("cMetrica2")));

        const QStringList periodos{QStringLiteral("Día"), QStringLiteral("Semana"), QStringLiteral("Mes"),
                                   QStringLiteral("Año")};
        for (const char* tab : {"sTabBarra", "sTabSemaforo"}) {
            auto* t = control<QTabWidget>(w, QLatin1String(tab));
            QCOMPARE(t->count(), 4);
            for (int p = 0; p < 4; ++p)
                QCOMPARE(t->tabText(p), periodos.at(p));
        }
        for (int p = 0; p < 4; ++p) {
            QCOMPARE(texto(w, QStringLiteral("cMin(%1)").arg(p)), QStringLiteral("0"));
            QCOMPARE(texto(w, QStringLiteral("cMax(%1)").arg(p)), QStringLiteral("100"));
            QCOMPARE(colorDe(w, QStringLiteral("cColor(%1)").arg(p)), Azul);
            QCOMPARE(colorDe(w, QStringLiteral("lblColorMin(%1)").arg(p)), Rojo);
            QCOMPARE(colorDe(w, QStringLiteral("lblColorMax(%1)").arg(p)), VerdeBarra);
            QCOMPARE(control<Muestra>(w, QStringLiteral("cColor(%1)").arg(p))->property("colorOle").toInt(), Azul);
        }
        const int lamparas[3] = {Rojo, LamparaNaranja, LamparaVerde};
        const int tops[3] = {735, 1380, 2025};
        for (int i = 0; i < 3; ++i) {
            auto* lampara = control<Muestra>(w, QStringLiteral("lblSemColor(%1)").arg(i));
            QCOMPARE(lampara->colorOle(), lamparas[i]);
            QCOMPARE(lampara->geometry(), QRect(1140 / 15, tops[i] / 15, 1515 / 15, 645 / 15));
            QVERIFY(!lampara->clicable());
        }
        QCOMPARE(control<QPushButton>(w, QStringLiteral("cmdInvert"))->text(), QStringLiteral("Invertir sentido"));
        for (int i = 1; i <= 8; ++i)
            QCOMPARE(texto(w, QStringLiteral("cL%1").arg(i)), QString());

        auto* tabM = control<QTabWidget>(w, QStringLiteral("cTabM"));
        QCOMPARE(tabM->count(), 3);
        QCOMPARE(tabM->tabText(0), QStringLiteral("Matriz de datos"));
        QCOMPARE(tabM->tabText(1), QStringLiteral("Gráfico"));
        QCOMPARE(tabM->tabText(2), QStringLiteral("Preferencias del gráfico"));
        QVERIFY(tabM->widget(0)->isAncestorOf(lista(w, "lstSelMatriz")));
        QVERIFY(tabM->widget(1)->isAncestorOf(lista(w, "lstGraf")));
        QVERIFY(tabM->widget(2)->isAncestorOf(control<QLineEdit>(w, QStringLiteral("cTitGraf"))));
        QVERIFY(tabM->widget(2)->isAncestorOf(control<QComboBox>(w, QStringLiteral("cTipoGraf"))));
        QVERIFY(lista(w, "lstMetricas"));
        for (const char* boton : {"cAdd", "Command3", "Command4", "Command5"}) {
            auto* b = control<QToolButton>(w, QLatin1String(boton));
            QVERIFY(b->text().isEmpty() || b->toolButtonStyle() == Qt::ToolButtonIconOnly);
            QVERIFY(!b->icon().isNull());
            QVERIFY(!b->toolTip().isEmpty());
        }
        QCOMPARE(control<QPushButton>(w, QStringLiteral("Command6"))->text(), QStringLiteral("Subir"));
        QCOMPARE(control<QPushButton>(w, QStringLiteral("Command7"))->text(), QStringLiteral("Bajar"));

        QStringList etiquetas;
        for (QLabel* l : w->findChildren<QLabel*>())
            etiquetas.append(l->text());
        const QList<QPair<QString, int>> esperadas{{QStringLiteral("Nombre:"), 1},
                                                   {QStringLiteral("Tipo:"), 1},
                                                   {QStringLiteral("Métrica:"), 2},
                                                   {QStringLiteral("Mínimo:"), 4},
                                                   {QStringLiteral("Máximo:"), 4},
                                                   {QStringLiteral("Color:"), 12},
                                                   {QStringLiteral("(Valores dentro del intervalo)"), 4},
                                                   {QStringLiteral("(Valores debajo del intervalo)"), 4},
                                                   {QStringLiteral("(Valores encima del intervalo)"), 4},
                                                   {QStringLiteral("Límite alto:"), 4},
                                                   {QStringLiteral("Límite medio:"), 4},
                                                   {QStringLiteral("Métricas disponibles"), 1},
                                                   {QStringLiteral("Título:"), 1},
                                                   {QStringLiteral("Tipo de gráfico:"), 1}};
        for (const auto& [etiqueta, veces] : esperadas)
            QVERIFY2(etiquetas.count(etiqueta) == veces, qPrintable(etiqueta));
        QCOMPARE(dlg->Resultado(), 0);
    }

    void nuevoOffersAProgressBarWithTheMetricsOfThePerspective()
    {
        QWidget* w = dlg.get();
        dlg->Nuevo(perspectiva);
        QCOMPARE(texto(w, QStringLiteral("cNombre")), QString());
        QVERIFY(marcada(w, "opt1"));
        QCOMPARE(panelesVisibles(w), QStringList{QStringLiteral("picBarra")});
        QStringList nombres;
        QList<int> claves;
        for (int i = 1; i <= 12; ++i) {
            nombres.append(nombreMetrica(i));
            claves.append(metrica[i]);
        }
        for (const char* combo : {"cMetrica", "cMetrica2"}) {
            auto* c = control<QComboBox>(w, QLatin1String(combo));
            QCOMPARE(c->count(), 12);
            for (int i = 0; i < 12; ++i) {
                QCOMPARE(c->itemText(i), nombres.at(i));
                QCOMPARE(c->itemData(i, Qt::UserRole).toInt(), claves.at(i));
            }
            // The user chooses the metric: none is chosen for them.
            QCOMPARE(c->currentIndex(), -1);
        }
        QCOMPARE(textos(lista(w, "lstMetricas")), nombres);
        QCOMPARE(datos(lista(w, "lstMetricas")), claves);
        auto* tipo = control<QComboBox>(w, QStringLiteral("cTipoGraf"));
        QCOMPARE(tipo->count(), 4);
        QCOMPARE(tipo->itemText(0), QStringLiteral("Líneas 2D"));
        QCOMPARE(tipo->itemText(1), QStringLiteral("Barras 2D"));
        QCOMPARE(tipo->itemText(2), QStringLiteral("Barras 3D"));
        QCOMPARE(tipo->itemText(3), QStringLiteral("Pastel"));
        QCOMPARE(tipo->currentIndex(), 0);
        QVERIFY(lista(w, "lstSelMatriz")->count() == 0 && lista(w, "lstGraf")->count() == 0);
        QCOMPARE(pestana(w, "cTabM"), 0);
    }

    void eachOptionShowsItsPanelAndTheOthersKeepTheirContents()
    {
        dlg->Nuevo(perspectiva);
        ModalAnswerer a;
        QStringList vistos;
        a.expect([&](QWidget* w) {
            escribir(w, QStringLiteral("cMin(0)"), QStringLiteral("7"));
            QTest::mouseClick(control<QRadioButton>(w, QStringLiteral("opt2")), Qt::LeftButton);
            vistos.append(panelesVisibles(w).join(QLatin1Char(',')));
            agregar(w, {3});
            QTest::mouseClick(control<QRadioButton>(w, QStringLiteral("opt3")), Qt::LeftButton);
            vistos.append(panelesVisibles(w).join(QLatin1Char(',')));
            escribir(w, QStringLiteral("cL1"), QStringLiteral("5"));
            QTest::mouseClick(control<QRadioButton>(w, QStringLiteral("opt1")), Qt::LeftButton);
            vistos.append(panelesVisibles(w).join(QLatin1Char(',')));
            vistos.append(texto(w, QStringLiteral("cMin(0)")));
            vistos.append(textos(lista(w, "lstSelMatriz")).join(QLatin1Char(',')));
            vistos.append(texto(w, QStringLiteral("cL1")));
            vistos.append(QString::number(control<QWidget>(w, QStringLiteral("picBarra"))->isVisible()));
            cerrar(w);
        });
        QCOMPARE(mostrar(a), 0);
        terminado(a);
        QCOMPARE(vistos, (QStringList{QStringLiteral("picMatriz"), QStringLiteral("picSemaforo"),
                                      QStringLiteral("picBarra"), QStringLiteral("7"), nombreMetrica(3),
                                      QStringLiteral("5"), QStringLiteral("1")}));
    }

    void tabOrderRunsFromTheNameThroughThePanelToTheButtons()
    {
        dlg->Nuevo(perspectiva);
        QWidget* w = dlg.get();
        QStringList cadena;
        QWidget* actual = control<QWidget>(w, QStringLiteral("cNombre"));
        for (int paso = 0; paso < 400 && actual; ++paso) {
            if (!actual->objectName().isEmpty() && !cadena.contains(actual->objectName()))
                cadena.append(actual->objectName());
            actual = actual->nextInFocusChain();
            if (actual == w)
                break;
        }
        const QStringList orden{QStringLiteral("cNombre"),  QStringLiteral("opt1"),    QStringLiteral("cMetrica"),
                                QStringLiteral("cMin(0)"),  QStringLiteral("cMax(0)"), QStringLiteral("cAceptar"),
                                QStringLiteral("Command17")};
        for (int i = 1; i < orden.size(); ++i)
            QVERIFY2(cadena.indexOf(orden.at(i - 1)) < cadena.indexOf(orden.at(i)), qPrintable(orden.at(i)));
        QVERIFY(cadena.indexOf(QStringLiteral("lstMetricas")) < cadena.indexOf(QStringLiteral("cAdd")));
        QVERIFY(cadena.indexOf(QStringLiteral("cMetrica2")) < cadena.indexOf(QStringLiteral("cL1")));
        QVERIFY(cadena.indexOf(QStringLiteral("cL1")) < cadena.indexOf(QStringLiteral("cL2")));
    }

    // --- Name -----------------------------------------------------------

    void blankNameIsRefusedWithTheFocusOnTheName()
    {
        dlg->Nuevo(perspectiva);
        ModalAnswerer a;
        QString foco1;
        a.expect([](QWidget* w) {
            barraLista(w, QStringLiteral("    "));
            control<QWidget>(w, QStringLiteral("cMin(0)"))->setFocus();
            pulsar(w, QStringLiteral("cAceptar"));
        });
        a.expect(aceptar());
        a.expect([&](QWidget* w) {
            foco1 = foco(w);
            escribir(w, QStringLiteral("cNombre"), QString());
            pulsar(w, QStringLiteral("cAceptar"));
        });
        a.expect(aceptar());
        a.expect(cerrar);
        QCOMPARE(mostrar(a), 0);
        terminado(a);
        QCOMPARE(mensajes(a), (QStringList{QStringLiteral("Indique el nombre del indicador"),
                                           QStringLiteral("Indique el nombre del indicador")}));
        QCOMPARE(foco1, QStringLiteral("cNombre"));
        QCOMPARE(total(QStringLiteral("ut_bi_Indicador")), 0);
    }

    void nameWithSurroundingBlanksIsStoredWithThemAsAProgressBar()
    {
        dlg->Nuevo(perspectiva);
        ModalAnswerer a;
        a.expect([](QWidget* w) {
            barraLista(w, QStringLiteral("  Ventas del día  "));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        const int clave = mostrar(a);
        terminado(a);
        QVERIFY(clave > 0);
        QCOMPARE(a.seen.size(), 1);
        QCOMPARE(fila(QStringLiteral("uf_Nombre"), clave).toString(), QStringLiteral("  Ventas del día  "));
        QCOMPARE(fila(QStringLiteral("uf_Tipo"), clave).toInt(), 1);
        QCOMPARE(fila(QStringLiteral("uf_FK_Perspectiva"), clave).toInt(), perspectiva);
        const QString t = QStringLiteral("ut_bi_BarraProg");
        QCOMPARE(cuenta(t, clave), 1);
        QCOMPARE(columna(t, QStringLiteral("uf_FK_Metrica"), clave).toInt(), metrica[1]);
        for (const char* p : {"Dia", "Semana", "Mes", "Ano"}) {
            const QString periodo = QLatin1String(p);
            QCOMPARE(columna(t, QStringLiteral("uf_%1_Min").arg(periodo), clave).toDouble(), 0.0);
            QCOMPARE(columna(t, QStringLiteral("uf_%1_Max").arg(periodo), clave).toDouble(), 100.0);
            QCOMPARE(columna(t, QStringLiteral("uf_%1_Color").arg(periodo), clave).toInt(), Azul);
            QCOMPARE(columna(t, QStringLiteral("uf_%1_ColorDebajo").arg(periodo), clave).toInt(), Rojo);
            QCOMPARE(columna(t, QStringLiteral("uf_%1_ColorArriba").arg(periodo), clave).toInt(), VerdeBarra);
        }
        QCOMPARE(total(QStringLiteral("ut_bi_Semaforo")) + total(QStringLiteral("ut_bi_MatrizGraf")), 0);
    }

    void hostileNamesRoundTrip_data()
    {
        QTest::addColumn<QString>("nombre");
        QTest::newRow("apostrophes") << QStringLiteral("O'Brien's 'KPI'");
        QTest::newRow("quotes") << QStringLiteral("Indicador \"principal\"");
        QTest::newRow("sql") << QStringLiteral("x'); DROP TABLE ut_bi_Indicador; --");
        QTest::newRow("wildcards") << QStringLiteral("100% \\ _ %");
        QTest::newRow("non-latin") << QStringLiteral("Продажи 売上 مبيعات Ωμέγα");
        QTest::newRow("emoji") << QStringLiteral("Ventas 📈🚀 ñandú");
        QTest::newRow("fifty") << QString(50, QChar(0x00F1));
    }

    void hostileNamesRoundTrip()
    {
        QFETCH(QString, nombre);
        dlg->Nuevo(perspectiva);
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            barraLista(w, nombre);
            pulsar(w, QStringLiteral("cAceptar"));
        });
        const int clave = mostrar(a);
        terminado(a);
        QVERIFY(clave > 0);
        QCOMPARE(fila(QStringLiteral("uf_Nombre"), clave).toString(), nombre);

        nuevoDialogo();
        dlg->Edit(clave);
        QCOMPARE(texto(dlg.get(), QStringLiteral("cNombre")), nombre);
        QCOMPARE(total(QStringLiteral("ut_bi_Indicador")), 1);
    }

    void longPasteIntoTheNameIsCutToFifty()
    {
        dlg->Nuevo(perspectiva);
        const QString largo = QString(50000, QLatin1Char('x'));
        QGuiApplication::clipboard()->setText(largo);
        QCOMPARE(QGuiApplication::clipboard()->text().size(), 50000);
        ModalAnswerer a;
        QString pegado;
        a.expect([&](QWidget* w) {
            auto* nombre = control<QLineEdit>(w, QStringLiteral("cNombre"));
            nombre->setFocus();
            nombre->paste();
            pegado = nombre->text();
            elegirEn(w, QStringLiteral("cMetrica"), nombreMetrica(1));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        const int clave = mostrar(a);
        terminado(a);
        QCOMPARE(pegado, QString(50, QLatin1Char('x')));
        QVERIFY(clave > 0);
        QCOMPARE(fila(QStringLiteral("uf_Nombre"), clave).toString(), QString(50, QLatin1Char('x')));
    }

    // --- Progress bar -------------------------------------------------

    void barStoresTheBoundsAndColoursOfEveryPeriod()
    {
        dlg->Nuevo(perspectiva);
        ModalAnswerer a;
        a.expect([](QWidget* w) {
            barraLista(w);
            elegirEn(w, QStringLiteral("cMetrica"), nombreMetrica(7));
            const char* minimos[4] = {"1", "-2.5", "3", "4000"};
            const char* maximos[4] = {"10", "20", "30.75", "40000"};
            for (int p = 0; p < 4; ++p) {
                escribir(w, QStringLiteral("cMin(%1)").arg(p), QLatin1String(minimos[p]));
                escribir(w, QStringLiteral("cMax(%1)").arg(p), QLatin1String(maximos[p]));
            }
            pulsar(w, QStringLiteral("cAceptar"));
        });
        const int clave = mostrar(a);
        terminado(a);
        QVERIFY(clave > 0);
        const QString t = QStringLiteral("ut_bi_BarraProg");
        QCOMPARE(columna(t, QStringLiteral("uf_FK_Metrica"), clave).toInt(), metrica[7]);
        QCOMPARE(columna(t, QStringLiteral("uf_Dia_Min"), clave).toDouble(), 1.0);
        QCOMPARE(columna(t, QStringLiteral("uf_Semana_Min"), clave).toDouble(), -2.5);
        QCOMPARE(columna(t, QStringLiteral("uf_Mes_Min"), clave).toDouble(), 3.0);
        QCOMPARE(columna(t, QStringLiteral("uf_Ano_Min"), clave).toDouble(), 4000.0);
        QCOMPARE(columna(t, QStringLiteral("uf_Dia_Max"), clave).toDouble(), 10.0);
        QCOMPARE(columna(t, QStringLiteral("uf_Semana_Max"), clave).toDouble(), 20.0);
        QCOMPARE(columna(t, QStringLiteral("uf_Mes_Max"), clave).toDouble(), 30.75);
        QCOMPARE(columna(t, QStringLiteral("uf_Ano_Max"), clave).toDouble(), 40000.0);
    }

    void barWithoutMetricIsRefusedWithTheFocusOnTheMetric()
    {
        dlg->Nuevo(perspectiva);
        ModalAnswerer a;
        QString enFoco;
        a.expect([](QWidget* w) {
            escribir(w, QStringLiteral("cNombre"), QStringLiteral("Sin métrica"));
            control<QWidget>(w, QStringLiteral("cNombre"))->setFocus();
            pulsar(w, QStringLiteral("cAceptar"));
        });
        a.expect(aceptar());
        a.expect([&](QWidget* w) {
            enFoco = foco(w);
            cerrar(w);
        });
        QCOMPARE(mostrar(a), 0);
        terminado(a);
        QCOMPARE(mensajes(a), QStringList{QStringLiteral("Debe seleccionar una métrica para el indicador")});
        QCOMPARE(enFoco, QStringLiteral("cMetrica"));
        QCOMPARE(total(QStringLiteral("ut_bi_Indicador")), 0);
    }

    void equalDayBoundsAreRefusedOnTheDayTab()
    {
        dlg->Nuevo(perspectiva);
        ModalAnswerer a;
        int tab = -1;
        a.expect([](QWidget* w) {
            barraLista(w);
            escribir(w, QStringLiteral("cMin(0)"), QStringLiteral("50"));
            escribir(w, QStringLiteral("cMax(0)"), QStringLiteral("50"));
            irAPestana(w, "sTabBarra", 3);
            pulsar(w, QStringLiteral("cAceptar"));
        });
        a.expect(aceptar());
        a.expect([&](QWidget* w) {
            tab = pestana(w, "sTabBarra");
            cerrar(w);
        });
        QCOMPARE(mostrar(a), 0);
        terminado(a);
        QCOMPARE(mensajes(a), QStringList{QStringLiteral("El máximo debe ser mayor al mínimo")});
        QCOMPARE(tab, 0);
        QCOMPARE(total(QStringLiteral("ut_bi_Indicador")), 0);
    }

    void wrongMonthBoundsShowTheMonthTabAfterAFineDay()
    {
        dlg->Nuevo(perspectiva);
        ModalAnswerer a;
        int tab = -1;
        a.expect([](QWidget* w) {
            barraLista(w);
            escribir(w, QStringLiteral("cMin(0)"), QStringLiteral("10"));
            escribir(w, QStringLiteral("cMax(0)"), QStringLiteral("20"));
            escribir(w, QStringLiteral("cMin(2)"), QStringLiteral("30"));
            escribir(w, QStringLiteral("cMax(2)"), QStringLiteral("5"));
            escribir(w, QStringLiteral("cMin(3)"), QStringLiteral("300"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        a.expect(aceptar());
        a.expect([&](QWidget* w) {
            tab = pestana(w, "sTabBarra");
            escribir(w, QStringLiteral("cMax(2)"), QStringLiteral("35"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        a.expect(aceptar());
        a.expect([&](QWidget* w) {
            tab = tab * 10 + pestana(w, "sTabBarra");
            escribir(w, QStringLiteral("cMax(3)"), QStringLiteral("301"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        const int clave = mostrar(a);
        terminado(a);
        QCOMPARE(mensajes(a), (QStringList{QStringLiteral("El máximo debe ser mayor al mínimo"),
                                           QStringLiteral("El máximo debe ser mayor al mínimo")}));
        QCOMPARE(tab, 23);
        QVERIFY(clave > 0);
        QCOMPARE(columna(QStringLiteral("ut_bi_BarraProg"), QStringLiteral("uf_Mes_Max"), clave).toDouble(), 35.0);
    }

    void configurationIsWrittenBeforeItIsChecked()
    {
        dlg->Nuevo(perspectiva);
        ModalAnswerer a;
        a.expect([](QWidget* w) {
            barraLista(w);
            escribir(w, QStringLiteral("cMin(0)"), QStringLiteral("50"));
            escribir(w, QStringLiteral("cMax(0)"), QStringLiteral("50"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        a.expect(aceptar());
        a.expect([](QWidget* w) {
            // Not a number: the bound keeps what the refused accept wrote (50).
            escribir(w, QStringLiteral("cMin(0)"), QStringLiteral("abc"));
            escribir(w, QStringLiteral("cMax(0)"), QStringLiteral("60"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        const int clave = mostrar(a);
        terminado(a);
        QVERIFY(clave > 0);
        QCOMPARE(columna(QStringLiteral("ut_bi_BarraProg"), QStringLiteral("uf_Dia_Min"), clave).toDouble(), 50.0);
        QCOMPARE(columna(QStringLiteral("ut_bi_BarraProg"), QStringLiteral("uf_Dia_Max"), clave).toDouble(), 60.0);
    }

    void textThatIsNoNumberKeepsTheStoredValue()
    {
        const int clave = insertarIndicador(QStringLiteral("Barra guardada"), 1, perspectiva);
        db.exec(QStringLiteral("INSERT INTO ut_bi_BarraProg (uf_FK_Indicador, uf_FK_Metrica, uf_Dia_Min, uf_Dia_Max, "
                               "uf_Semana_Min, uf_Semana_Max, uf_Mes_Min, uf_Mes_Max, uf_Ano_Min, uf_Ano_Max) "
                               "VALUES (%1, %2, 1, 10, 5, 20, 3, 30, 4, 40)")
                    .arg(clave)
                    .arg(metrica[2]));
        dlg->Edit(clave);
        ModalAnswerer a;
        a.expect([](QWidget* w) {
            escribir(w, QStringLiteral("cMin(1)"), QStringLiteral("xyz"));
            escribir(w, QStringLiteral("cMax(1)"), QString());
            pulsar(w, QStringLiteral("cAceptar"));
        });
        QCOMPARE(mostrar(a), clave);
        terminado(a);
        QCOMPARE(columna(QStringLiteral("ut_bi_BarraProg"), QStringLiteral("uf_Semana_Min"), clave).toDouble(), 5.0);
        QCOMPARE(columna(QStringLiteral("ut_bi_BarraProg"), QStringLiteral("uf_Semana_Max"), clave).toDouble(), 20.0);
        QCOMPARE(cuenta(QStringLiteral("ut_bi_BarraProg"), clave), 1);
    }

    void editOfABarFillsEveryControlAndSavesItBackUnchanged()
    {
        const int clave = insertarIndicador(QStringLiteral("Barra guardada"), 1, perspectiva);
        db.exec(QStringLiteral("INSERT INTO ut_bi_BarraProg VALUES (%1, %2, 1, 10, 11, 12, 13, 2, 20, 21, 22, 23, "
                               "3, 30, 31, 32, 33, 4.5, 40, 41, 42, 43)")
                    .arg(clave)
                    .arg(metrica[4]));
        dlg->Edit(clave);
        QWidget* w = dlg.get();
        QCOMPARE(texto(w, QStringLiteral("cNombre")), QStringLiteral("Barra guardada"));
        QVERIFY(marcada(w, "opt1"));
        QCOMPARE(panelesVisibles(w), QStringList{QStringLiteral("picBarra")});
        QCOMPARE(texto(w, QStringLiteral("cMetrica")), nombreMetrica(4));
        const char* minimos[4] = {"1", "2", "3", "4.5"};
        for (int p = 0; p < 4; ++p) {
            QCOMPARE(texto(w, QStringLiteral("cMin(%1)").arg(p)), QLatin1String(minimos[p]));
            QCOMPARE(texto(w, QStringLiteral("cMax(%1)").arg(p)), QString::number((p + 1) * 10));
            QCOMPARE(colorDe(w, QStringLiteral("cColor(%1)").arg(p)), (p + 1) * 10 + 1);
            QCOMPARE(colorDe(w, QStringLiteral("lblColorMin(%1)").arg(p)), (p + 1) * 10 + 2);
            QCOMPARE(colorDe(w, QStringLiteral("lblColorMax(%1)").arg(p)), (p + 1) * 10 + 3);
        }
        ModalAnswerer a;
        a.expect([](QWidget* w) { pulsar(w, QStringLiteral("cAceptar")); });
        QCOMPARE(mostrar(a), clave);
        terminado(a);
        const QString t = QStringLiteral("ut_bi_BarraProg");
        QCOMPARE(cuenta(t, clave), 1);
        QCOMPARE(total(QStringLiteral("ut_bi_Indicador")), 1);
        QCOMPARE(columna(t, QStringLiteral("uf_FK_Metrica"), clave).toInt(), metrica[4]);
        QCOMPARE(columna(t, QStringLiteral("uf_Ano_Min"), clave).toDouble(), 4.5);
        QCOMPARE(columna(t, QStringLiteral("uf_Mes_Color"), clave).toInt(), 31);
        QCOMPARE(columna(t, QStringLiteral("uf_Semana_ColorDebajo"), clave).toInt(), 22);
        QCOMPARE(columna(t, QStringLiteral("uf_Dia_ColorArriba"), clave).toInt(), 13);
    }

    void numbersAreShownInTheUsersLocale()
    {
        QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
        const int clave = insertarIndicador(QStringLiteral("Decimales"), 1, perspectiva);
        db.exec(QStringLiteral("INSERT INTO ut_bi_BarraProg (uf_FK_Indicador, uf_FK_Metrica, uf_Dia_Min, uf_Dia_Max) "
                               "VALUES (%1, %2, 2.5, 1234567.25)")
                    .arg(clave)
                    .arg(metrica[1]));
        dlg->Edit(clave);
        QCOMPARE(texto(dlg.get(), QStringLiteral("cMin(0)")), QStringLiteral("2,5"));
        QCOMPARE(texto(dlg.get(), QStringLiteral("cMax(0)")), QStringLiteral("1234567,25"));
    }

    // --- Colours ------------------------------------------------------

    void colourPickConfirmedChangesTheSwatchAndIsStored()
    {
        dlg->Nuevo(perspectiva);
        ModalAnswerer a;
        int antes = 0;
        QColor propuesto;
        a.expect([](QWidget* w) {
            barraLista(w);
            irAPestana(w, "sTabBarra", 1);
            QTest::mouseClick(control<QWidget>(w, QStringLiteral("cColor(1)")), Qt::LeftButton);
        });
        a.expect([&](QWidget* w) {
            auto* cmd = qobject_cast<QColorDialog*>(w);
            QVERIFY(cmd);
            propuesto = cmd->currentColor();
            cmd->setCurrentColor(QColor(10, 20, 30));
            cmd->accept();
        });
        a.expect([&](QWidget* w) {
            antes = colorDe(w, QStringLiteral("cColor(1)"));
            irAPestana(w, "sTabBarra", 2);
            QTest::mouseClick(control<QWidget>(w, QStringLiteral("lblColorMax(2)")), Qt::LeftButton);
        });
        a.expect([](QWidget* w) {
            auto* cmd = qobject_cast<QColorDialog*>(w);
            cmd->setCurrentColor(QColor(1, 2, 3));
            cmd->accept();
        });
        a.expect([](QWidget* w) {
            irAPestana(w, "sTabBarra", 3);
            QTest::mouseClick(control<QWidget>(w, QStringLiteral("lblColorMin(3)")), Qt::LeftButton);
        });
        a.expect([](QWidget* w) {
            auto* cmd = qobject_cast<QColorDialog*>(w);
            cmd->setCurrentColor(QColor(200, 100, 50));
            cmd->accept();
        });
        a.expect([](QWidget* w) { pulsar(w, QStringLiteral("cAceptar")); });
        const int clave = mostrar(a);
        terminado(a);
        QCOMPARE(ventanas(a), (QStringList{QStringLiteral("dlgPropIndicador"), QStringLiteral("CMD"),
                                           QStringLiteral("dlgPropIndicador"), QStringLiteral("CMD"),
                                           QStringLiteral("dlgPropIndicador"), QStringLiteral("CMD"),
                                           QStringLiteral("dlgPropIndicador")}));
        // The colour dialog does not start on the swatch's colour.
        QVERIFY(propuesto != vb::oleToColor(Azul));
        QCOMPARE(antes, 0x001E140A);
        QVERIFY(clave > 0);
        const QString t = QStringLiteral("ut_bi_BarraProg");
        QCOMPARE(columna(t, QStringLiteral("uf_Semana_Color"), clave).toInt(), 0x001E140A);
        QCOMPARE(columna(t, QStringLiteral("uf_Mes_ColorArriba"), clave).toInt(), 0x00030201);
        QCOMPARE(columna(t, QStringLiteral("uf_Ano_ColorDebajo"), clave).toInt(), 0x003264C8);
        QCOMPARE(columna(t, QStringLiteral("uf_Dia_Color"), clave).toInt(), Azul);
        QCOMPARE(columna(t, QStringLiteral("uf_Semana_ColorArriba"), clave).toInt(), VerdeBarra);
    }

    void colourPickCancelledLeavesTheSwatch()
    {
        dlg->Nuevo(perspectiva);
        ModalAnswerer a;
        int despues = 0;
        a.expect([](QWidget* w) {
            barraLista(w);
            QTest::mouseClick(control<QWidget>(w, QStringLiteral("lblColorMin(0)")), Qt::LeftButton);
        });
        a.expect([](QWidget* w) {
            auto* cmd = qobject_cast<QColorDialog*>(w);
            cmd->setCurrentColor(QColor(9, 9, 9));
            cmd->reject();
        });
        a.expect([&](QWidget* w) {
            despues = colorDe(w, QStringLiteral("lblColorMin(0)"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        const int clave = mostrar(a);
        terminado(a);
        QCOMPARE(despues, Rojo);
        QVERIFY(clave > 0);
        QCOMPARE(columna(QStringLiteral("ut_bi_BarraProg"), QStringLiteral("uf_Dia_ColorDebajo"), clave).toInt(), Rojo);
    }

    void lampsAreNotClickable()
    {
        dlg->Nuevo(perspectiva);
        ModalAnswerer a;
        QList<int> colores;
        a.expect([&](QWidget* w) {
            pulsar(w, QStringLiteral("opt3"));
            for (int i = 0; i < 3; ++i)
                QTest::mouseClick(control<QWidget>(w, QStringLiteral("lblSemColor(%1)").arg(i)), Qt::LeftButton);
            QTest::qWait(50);
            for (int i = 0; i < 3; ++i)
                colores.append(colorDe(w, QStringLiteral("lblSemColor(%1)").arg(i)));
            cerrar(w);
        });
        QCOMPARE(mostrar(a), 0);
        terminado(a);
        QCOMPARE(ventanas(a), QStringList{QStringLiteral("dlgPropIndicador")});
        QCOMPARE(colores, (QList<int>{Rojo, LamparaNaranja, LamparaVerde}));
    }

    // --- Traffic light -----------------------------------------------

    void lightWithoutMetricIsRefusedWithTheFocusOnTheMetric()
    {
        dlg->Nuevo(perspectiva);
        ModalAnswerer a;
        QString enFoco;
        a.expect([](QWidget* w) {
            semaforoListo(w);
            control<QComboBox>(w, QStringLiteral("cMetrica2"))->setCurrentIndex(-1);
            pulsar(w, QStringLiteral("cAceptar"));
        });
        a.expect(aceptar());
        a.expect([&](QWidget* w) {
            enFoco = foco(w);
            cerrar(w);
        });
        QCOMPARE(mostrar(a), 0);
        terminado(a);
        QCOMPARE(mensajes(a), QStringList{QStringLiteral("Debe seleccionar una métrica para el semáforo")});
        QCOMPARE(enFoco, QStringLiteral("cMetrica2"));
    }

    void newLightWithEmptyLimitsIsRefused()
    {
        dlg->Nuevo(perspectiva);
        ModalAnswerer a;
        int tab = -1;
        a.expect([](QWidget* w) {
            escribir(w, QStringLiteral("cNombre"), QStringLiteral("Semáforo vacío"));
            pulsar(w, QStringLiteral("opt3"));
            elegirEn(w, QStringLiteral("cMetrica2"), nombreMetrica(2));
            irAPestana(w, "sTabSemaforo", 2);
            pulsar(w, QStringLiteral("cAceptar"));
        });
        a.expect(aceptar());
        a.expect([&](QWidget* w) {
            tab = pestana(w, "sTabSemaforo");
            cerrar(w);
        });
        QCOMPARE(mostrar(a), 0);
        terminado(a);
        QCOMPARE(mensajes(a), QStringList{QStringLiteral("El límite alto no puede ser menor o igual al límite medio")});
        QCOMPARE(tab, 0);
        QCOMPARE(total(QStringLiteral("ut_bi_Indicador")), 0);
    }

    void equalLightLimitsAreRefusedEitherWay_data()
    {
        QTest::addColumn<bool>("invertido");
        QTest::newRow("ascending") << false;
        QTest::newRow("descending") << true;
    }

    void equalLightLimitsAreRefusedEitherWay()
    {
        QFETCH(bool, invertido);
        dlg->Nuevo(perspectiva);
        ModalAnswerer a;
        int tab = -1;
        a.expect([&](QWidget* w) {
            semaforoListo(w);
            if (invertido)
                pulsar(w, QStringLiteral("cmdInvert"));
            escribir(w, QStringLiteral("cL5"), QStringLiteral("80"));
            escribir(w, QStringLiteral("cL6"), QStringLiteral("80"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        a.expect(aceptar());
        a.expect([&](QWidget* w) {
            tab = pestana(w, "sTabSemaforo");
            // A high limit below the medium one is refused the same way.
            escribir(w, QStringLiteral("cL6"), QStringLiteral("85"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        a.expect(aceptar());
        a.expect([&](QWidget* w) {
            escribir(w, QStringLiteral("cL6"), QStringLiteral("79.5"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        const int clave = mostrar(a);
        terminado(a);
        QCOMPARE(mensajes(a),
                 (QStringList{QStringLiteral("El límite alto no puede ser menor o igual al límite medio"),
                              QStringLiteral("El límite alto no puede ser menor o igual al límite medio")}));
        QCOMPARE(tab, 2);
        QVERIFY(clave > 0);
        QCOMPARE(fila(QStringLiteral("uf_Tipo"), clave).toInt(), 3);
        const QString t = QStringLiteral("ut_bi_Semaforo");
        QCOMPARE(cuenta(t, clave), 1);
        QCOMPARE(columna(t, QStringLiteral("uf_FK_Metrica"), clave).toInt(), metrica[2]);
        QCOMPARE(columna(t, QStringLiteral("uf_Invertido"), clave).toInt(), invertido ? 1 : 0);
        const double limites[8] = {90, 10, 80, 20, 80, 79.5, 60, 40};
        const char* columnas[8] = {"uf_Dia_Lim1", "uf_Dia_Lim2", "uf_Semana_Lim1", "uf_Semana_Lim2",
                                   "uf_Mes_Lim1", "uf_Mes_Lim2", "uf_Ano_Lim1",    "uf_Ano_Lim2"};
        for (int i = 0; i < 8; ++i)
            QCOMPARE(columna(t, QLatin1String(columnas[i]), clave).toDouble(), limites[i]);
        QCOMPARE(total(QStringLiteral("ut_bi_BarraProg")), 0);
    }

    void invertingTwiceRestoresTheLampsAndOnceStoresDescending()
    {
        dlg->Nuevo(perspectiva);
        ModalAnswerer a;
        QList<int> tras1, tras2;
        a.expect([&](QWidget* w) {
            semaforoListo(w);
            pulsar(w, QStringLiteral("cmdInvert"));
            for (int i = 0; i < 3; ++i)
                tras1.append(colorDe(w, QStringLiteral("lblSemColor(%1)").arg(i)));
            pulsar(w, QStringLiteral("cmdInvert"));
            for (int i = 0; i < 3; ++i)
                tras2.append(colorDe(w, QStringLiteral("lblSemColor(%1)").arg(i)));
            pulsar(w, QStringLiteral("cmdInvert"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        const int clave = mostrar(a);
        terminado(a);
        QCOMPARE(tras1, (QList<int>{LamparaVerde, LamparaNaranja, Rojo}));
        QCOMPARE(tras2, (QList<int>{Rojo, LamparaNaranja, LamparaVerde}));
        QVERIFY(clave > 0);
        QCOMPARE(columna(QStringLiteral("ut_bi_Semaforo"), QStringLiteral("uf_Invertido"), clave).toInt(), 1);
    }

    void loadingALightPaintsItsDirectionAndLeavesTheMiddleLamp_data()
    {
        QTest::addColumn<int>("invertido");
        QTest::addColumn<int>("arriba");
        QTest::addColumn<int>("abajo");
        QTest::newRow("descending") << 1 << LamparaVerde << Rojo;
        QTest::newRow("stored -1") << -1 << LamparaVerde << Rojo;
        QTest::newRow("ascending") << 0 << Rojo << LamparaVerde;
    }

    void loadingALightPaintsItsDirectionAndLeavesTheMiddleLamp()
    {
        QFETCH(int, invertido);
        QFETCH(int, arriba);
        QFETCH(int, abajo);
        const int clave = insertarIndicador(QStringLiteral("Semáforo guardado"), 3, perspectiva);
        db.exec(QStringLiteral("INSERT INTO ut_bi_Semaforo VALUES (%1, %2, 9, 1, 8, 2, 7.25, 3, 6, 4, %3)")
                    .arg(clave)
                    .arg(metrica[5])
                    .arg(invertido));
        dlg->Edit(clave);
        QWidget* w = dlg.get();
        QVERIFY(marcada(w, "opt3"));
        QCOMPARE(panelesVisibles(w), QStringList{QStringLiteral("picSemaforo")});
        QCOMPARE(texto(w, QStringLiteral("cMetrica2")), nombreMetrica(5));
        QCOMPARE(colorDe(w, QStringLiteral("lblSemColor(0)")), arriba);
        QCOMPARE(colorDe(w, QStringLiteral("lblSemColor(1)")), LamparaNaranja);
        QCOMPARE(colorDe(w, QStringLiteral("lblSemColor(2)")), abajo);
        const QStringList limites{QStringLiteral("9"),    QStringLiteral("1"), QStringLiteral("8"), QStringLiteral("2"),
                                  QStringLiteral("7.25"), QStringLiteral("3"), QStringLiteral("6"), QStringLiteral("4")};
        for (int i = 0; i < 8; ++i)
            QCOMPARE(texto(w, QStringLiteral("cL%1").arg(i + 1)), limites.at(i));

        ModalAnswerer a;
        a.expect([](QWidget* w) { pulsar(w, QStringLiteral("cAceptar")); });
        QCOMPARE(mostrar(a), clave);
        terminado(a);
        QCOMPARE(columna(QStringLiteral("ut_bi_Semaforo"), QStringLiteral("uf_Invertido"), clave).toInt(),
                 invertido ? 1 : 0);
        QCOMPARE(columna(QStringLiteral("ut_bi_Semaforo"), QStringLiteral("uf_Mes_Lim1"), clave).toDouble(), 7.25);
    }

    void changingTheKindReplacesTheConfiguration()
    {
        const int clave = insertarIndicador(QStringLiteral("Antes barra"), 1, perspectiva);
        db.exec(QStringLiteral("INSERT INTO ut_bi_BarraProg (uf_FK_Indicador, uf_FK_Metrica, uf_Dia_Min, uf_Dia_Max) "
                               "VALUES (%1, %2, 1, 2)")
                    .arg(clave)
                    .arg(metrica[1]));
        dlg->Edit(clave);
        ModalAnswerer a;
        a.expect([](QWidget* w) {
            semaforoListo(w);
            pulsar(w, QStringLiteral("cAceptar"));
        });
        QCOMPARE(mostrar(a), clave);
        terminado(a);
        QCOMPARE(fila(QStringLiteral("uf_Tipo"), clave).toInt(), 3);
        QCOMPARE(fila(QStringLiteral("uf_Nombre"), clave).toString(), QStringLiteral("Semáforo de ventas"));
        QCOMPARE(cuenta(QStringLiteral("ut_bi_BarraProg"), clave), 0);
        QCOMPARE(cuenta(QStringLiteral("ut_bi_Semaforo"), clave), 1);
        QCOMPARE(total(QStringLiteral("ut_bi_Indicador")), 1);
    }

    // --- Matrix and chart lists ---------------------------------------

    void chartListTakesAtMostFiveMetrics()
    {
        dlg->Nuevo(perspectiva);
        ModalAnswerer a;
        QStringList lst;
        a.expect([](QWidget* w) {
            pulsar(w, QStringLiteral("opt2"));
            irAPestana(w, "cTabM", 1);
            agregar(w, {1, 2, 3, 4, 5});
            agregar(w, {6});
        });
        a.expect(aceptar());
        a.expect([&](QWidget* w) {
            lst = textos(lista(w, "lstGraf"));
            QCOMPARE(lista(w, "lstSelMatriz")->count(), 0);
            cerrar(w);
        });
        QCOMPARE(mostrar(a), 0);
        terminado(a);
        QCOMPARE(mensajes(a), QStringList{QStringLiteral("Solo se admiten 5 elementos (métricas) en la lista")});
        QCOMPARE(lst, (QStringList{nombreMetrica(1), nombreMetrica(2), nombreMetrica(3), nombreMetrica(4),
                                   nombreMetrica(5)}));
    }

    void matrixListTakesAtMostTenMetrics()
    {
        dlg->Nuevo(perspectiva);
        ModalAnswerer a;
        QList<int> claves;
        a.expect([](QWidget* w) {
            pulsar(w, QStringLiteral("opt2"));
            agregar(w, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
            agregar(w, {11});
        });
        a.expect(aceptar());
        a.expect([&](QWidget* w) {
            claves = datos(lista(w, "lstSelMatriz"));
            cerrar(w);
        });
        QCOMPARE(mostrar(a), 0);
        terminado(a);
        QCOMPARE(mensajes(a), QStringList{QStringLiteral("Solo se admiten 10 elementos (métricas) en la lista")});
        QCOMPARE(claves.size(), 10);
        QCOMPARE(claves.first(), metrica[1]);
        QCOMPARE(claves.last(), metrica[10]);
    }

    void duplicateInAFullListIsReportedAsDuplicate()
    {
        dlg->Nuevo(perspectiva);
        ModalAnswerer a;
        a.expect([](QWidget* w) {
            pulsar(w, QStringLiteral("opt2"));
            irAPestana(w, "cTabM", 1);
            agregar(w, {1, 2, 3, 4, 5});
            agregar(w, {3});
        });
        a.expect(aceptar());
        a.expect([](QWidget* w) {
            irAPestana(w, "cTabM", 0);
            agregar(w, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
            agregar(w, {10});
        });
        a.expect(aceptar());
        a.expect([](QWidget* w) {
            // Not full: a duplicate is still a duplicate.
            pulsar(w, QStringLiteral("Command5"));
            agregar(w, {4, 4});
        });
        a.expect(aceptar());
        a.expect(cerrar);
        QCOMPARE(mostrar(a), 0);
        terminado(a);
        QCOMPARE(mensajes(a), (QStringList{QStringLiteral("La métrica seleccionada ya está en la lista"),
                                           QStringLiteral("La métrica seleccionada ya está en la lista"),
                                           QStringLiteral("La métrica seleccionada ya está en la lista")}));
    }

    void addWithNothingSelectedAsksForAMetric()
    {
        dlg->Nuevo(perspectiva);
        ModalAnswerer a;
        int entradas = -1;
        a.expect([](QWidget* w) {
            pulsar(w, QStringLiteral("opt2"));
            pulsar(w, QStringLiteral("cAdd"));
        });
        a.expect(aceptar());
        a.expect([&](QWidget* w) {
            entradas = lista(w, "lstSelMatriz")->count();
            cerrar(w);
        });
        QCOMPARE(mostrar(a), 0);
        terminado(a);
        QCOMPARE(mensajes(a), QStringList{QStringLiteral("Debe seleccionar una métrica de la lista de la izquierda")});
        QCOMPARE(entradas, 0);
    }

    void removeNeedsASelectedEntry()
    {
        dlg->Nuevo(perspectiva);
        ModalAnswerer a;
        QStringList restantes;
        a.expect([](QWidget* w) {
            pulsar(w, QStringLiteral("opt2"));
            irAPestana(w, "cTabM", 1);
            agregar(w, {1, 2, 3});
            pulsar(w, QStringLiteral("Command3"));
        });
        a.expect(aceptar());
        a.expect([](QWidget* w) {
            elegir(lista(w, "lstGraf"), nombreMetrica(2));
            pulsar(w, QStringLiteral("Command3"));
            // The removed entry leaves nothing selected behind it.
            pulsar(w, QStringLiteral("Command3"));
        });
        a.expect(aceptar());
        a.expect([&](QWidget* w) {
            restantes = textos(lista(w, "lstGraf"));
            cerrar(w);
        });
        QCOMPARE(mostrar(a), 0);
        terminado(a);
        QCOMPARE(mensajes(a),
                 (QStringList{QStringLiteral("Seleccione un elemento"), QStringLiteral("Seleccione un elemento")}));
        QCOMPARE(restantes, (QStringList{nombreMetrica(1), nombreMetrica(3)}));
    }

    void clearEmptiesOnlyTheCurrentList()
    {
        dlg->Nuevo(perspectiva);
        ModalAnswerer a;
        int matriz = -1, grafico = -1;
        a.expect([&](QWidget* w) {
            pulsar(w, QStringLiteral("opt2"));
            agregar(w, {1, 2});
            irAPestana(w, "cTabM", 1);
            agregar(w, {3, 4});
            pulsar(w, QStringLiteral("Command5"));
            // The button without an action of its own changes nothing.
            pulsar(w, QStringLiteral("Command4"));
            matriz = lista(w, "lstSelMatriz")->count();
            grafico = lista(w, "lstGraf")->count();
            cerrar(w);
        });
        QCOMPARE(mostrar(a), 0);
        terminado(a);
        QCOMPARE(matriz, 2);
        QCOMPARE(grafico, 0);
    }

    void sameMetricMayBeInBothLists()
    {
        dlg->Nuevo(perspectiva);
        ModalAnswerer a;
        a.expect([](QWidget* w) {
            escribir(w, QStringLiteral("cNombre"), QStringLiteral("Matriz"));
            pulsar(w, QStringLiteral("opt2"));
            agregar(w, {6});
            irAPestana(w, "cTabM", 1);
            agregar(w, {6});
            escribir(w, QStringLiteral("cTitGraf"), QStringLiteral("Ventas"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        const int clave = mostrar(a);
        terminado(a);
        QVERIFY(clave > 0);
        QCOMPARE(a.seen.size(), 1);
        const QString t = QStringLiteral("ut_bi_MatrizGraf");
        QCOMPARE(columna(t, QStringLiteral("uf_FK_M_Metrica1"), clave).toInt(), metrica[6]);
        QCOMPARE(columna(t, QStringLiteral("uf_FK_G_Metrica1"), clave).toInt(), metrica[6]);
    }

    void subirOnTheFirstAndBajarOnTheLastDoNothing()
    {
        dlg->Nuevo(perspectiva);
        ModalAnswerer a;
        QStringList pasos;
        a.expect([&](QWidget* w) {
            pulsar(w, QStringLiteral("opt2"));
            irAPestana(w, "cTabM", 1);
            agregar(w, {1, 2, 3});
            QListWidget* l = lista(w, "lstGraf");
            auto foto = [&] {
                QStringList partes = textos(l);
                for (int d : datos(l))
                    partes.append(QString::number(d));
                partes.append(QString::number(l->currentRow()));
                pasos.append(partes.join(QLatin1Char(',')));
            };
            l->setCurrentRow(0);
            pulsar(w, QStringLiteral("Command6"));
            foto();
            l->setCurrentRow(2);
            pulsar(w, QStringLiteral("Command7"));
            foto();
            l->setCurrentRow(1);
            pulsar(w, QStringLiteral("Command6"));
            foto();
            pulsar(w, QStringLiteral("Command7"));
            pulsar(w, QStringLiteral("Command7"));
            foto();
            l->clearSelection();
            l->setCurrentItem(nullptr);
            pulsar(w, QStringLiteral("Command6"));
            foto();
            cerrar(w);
        });
        QCOMPARE(mostrar(a), 0);
        terminado(a);
        const QString m1 = nombreMetrica(1), m2 = nombreMetrica(2), m3 = nombreMetrica(3);
        const QString k1 = QString::number(metrica[1]), k2 = QString::number(metrica[2]),
                      k3 = QString::number(metrica[3]);
        QCOMPARE(pasos, (QStringList{QStringList{m1, m2, m3, k1, k2, k3, QStringLiteral("0")}.join(QLatin1Char(',')),
                                     QStringList{m1, m2, m3, k1, k2, k3, QStringLiteral("2")}.join(QLatin1Char(',')),
                                     QStringList{m2, m1, m3, k2, k1, k3, QStringLiteral("0")}.join(QLatin1Char(',')),
                                     QStringList{m1, m3, m2, k1, k3, k2, QStringLiteral("2")}.join(QLatin1Char(',')),
                                     QStringList{m1, m3, m2, k1, k3, k2, QStringLiteral("-1")}.join(QLatin1Char(','))}));
        QCOMPARE(a.seen.size(), 1);
    }

    void bajarWithNothingSelectedBlanksTheFirstEntry()
    {
        dlg->Nuevo(perspectiva);
        ModalAnswerer a;
        QStringList textosTras;
        QList<int> datosTras;
        int seleccion = -2;
        int vaciaTras = -2;
        a.expect([&](QWidget* w) {
            escribir(w, QStringLiteral("cNombre"), QStringLiteral("Con hueco"));
            escribir(w, QStringLiteral("cTitGraf"), QStringLiteral("Gráfica"));
            pulsar(w, QStringLiteral("opt2"));
            QListWidget* l = lista(w, "lstSelMatriz");
            // An empty list: nothing to exchange.
            pulsar(w, QStringLiteral("Command7"));
            vaciaTras = l->count();
            agregar(w, {1, 2});
            l->clearSelection();
            l->setCurrentItem(nullptr);
            pulsar(w, QStringLiteral("Command7"));
            textosTras = textos(l);
            datosTras = datos(l);
            seleccion = l->currentRow() * 10 + int(l->item(0)->isSelected());
            irAPestana(w, "cTabM", 1);
            agregar(w, {3});
            pulsar(w, QStringLiteral("cAceptar"));
        });
        const int clave = mostrar(a);
        terminado(a);
        QCOMPARE(vaciaTras, 0);
        QCOMPARE(textosTras, (QStringList{QString(), nombreMetrica(2)}));
        QCOMPARE(datosTras, (QList<int>{0, metrica[2]}));
        QCOMPARE(seleccion, 1);
        QVERIFY(clave > 0);
        const QString t = QStringLiteral("ut_bi_MatrizGraf");
        QCOMPARE(columna(t, QStringLiteral("uf_FK_M_Metrica1"), clave).toInt(), 0);
        QCOMPARE(columna(t, QStringLiteral("uf_FK_M_Metrica2"), clave).toInt(), metrica[2]);
    }

    void preferencesTabDisablesTheListControls()
    {
        dlg->Nuevo(perspectiva);
        ModalAnswerer a;
        QStringList estados;
        const QStringList siete{QStringLiteral("lstMetricas"), QStringLiteral("cAdd"),     QStringLiteral("Command3"),
                                QStringLiteral("Command4"),    QStringLiteral("Command5"), QStringLiteral("Command6"),
                                QStringLiteral("Command7")};
        a.expect([&](QWidget* w) {
            pulsar(w, QStringLiteral("opt2"));
            auto foto = [&] {
                QString e;
                for (const QString& n : siete)
                    e.append(control<QWidget>(w, n)->isEnabled() ? QLatin1Char('1') : QLatin1Char('0'));
                estados.append(e);
            };
            foto();
            QTest::mouseClick(control<QTabWidget>(w, QStringLiteral("cTabM"))->tabBar(), Qt::LeftButton, {},
                              control<QTabWidget>(w, QStringLiteral("cTabM"))->tabBar()->tabRect(2).center());
            foto();
            irAPestana(w, "cTabM", 1);
            foto();
            irAPestana(w, "cTabM", 2);
            irAPestana(w, "cTabM", 0);
            foto();
            cerrar(w);
        });
        QCOMPARE(mostrar(a), 0);
        terminado(a);
        QCOMPARE(estados, (QStringList{QStringLiteral("1111111"), QStringLiteral("0000000"),
                                       QStringLiteral("1111111"), QStringLiteral("1111111")}));
    }

    void matrixChecksComeInOrderAndMoveTheTabAndFocus()
    {
        dlg->Nuevo(perspectiva);
        ModalAnswerer a;
        QStringList pasos;
        auto nota = [&](QWidget* w) {
            pasos.append(QStringLiteral("%1:%2").arg(pestana(w, "cTabM")).arg(foco(w)));
        };
        a.expect([](QWidget* w) {
            escribir(w, QStringLiteral("cNombre"), QStringLiteral("Matriz"));
            pulsar(w, QStringLiteral("opt2"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        a.expect(aceptar());
        a.expect([&](QWidget* w) {
            nota(w);
            escribir(w, QStringLiteral("cTitGraf"), QStringLiteral("   "));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        a.expect(aceptar());
        a.expect([&](QWidget* w) {
            nota(w);
            escribir(w, QStringLiteral("cTitGraf"), QStringLiteral("  Ventas por mes "));
            control<QComboBox>(w, QStringLiteral("cTipoGraf"))->setCurrentIndex(-1);
            control<QWidget>(w, QStringLiteral("cTitGraf"))->setFocus();
            pulsar(w, QStringLiteral("cAceptar"));
        });
        a.expect(aceptar());
        a.expect([&](QWidget* w) {
            nota(w);
            elegirEn(w, QStringLiteral("cTipoGraf"), QStringLiteral("Pastel"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        a.expect(aceptar());
        a.expect([&](QWidget* w) {
            pasos.append(QString::number(pestana(w, "cTabM")));
            agregar(w, {8, 2});
            irAPestana(w, "cTabM", 2);
            pulsar(w, QStringLiteral("cAceptar"));
        });
        a.expect(aceptar());
        a.expect([&](QWidget* w) {
            pasos.append(QString::number(pestana(w, "cTabM")));
            agregar(w, {9});
            pulsar(w, QStringLiteral("cAceptar"));
        });
        const int clave = mostrar(a);
        terminado(a);
        QCOMPARE(mensajes(a), (QStringList{QStringLiteral("Debe asignar un título a la gráfica"),
                                           QStringLiteral("Debe asignar un título a la gráfica"),
                                           QStringLiteral("Debe asignar un tipo de gráfico"),
                                           QStringLiteral("Debe seleccionar al menos una métrica"),
                                           QStringLiteral("Debe seleccionar al menos una métrica")}));
        QCOMPARE(pasos, (QStringList{QStringLiteral("2:cTitGraf"), QStringLiteral("2:cTitGraf"),
                                     QStringLiteral("2:cTipoGraf"), QStringLiteral("0"), QStringLiteral("1")}));
        QVERIFY(clave > 0);
        const QString t = QStringLiteral("ut_bi_MatrizGraf");
        QCOMPARE(cuenta(t, clave), 1);
        QCOMPARE(columna(t, QStringLiteral("uf_G_Titulo"), clave).toString(), QStringLiteral("  Ventas por mes "));
        QCOMPARE(columna(t, QStringLiteral("uf_G_Tipo"), clave).toInt(), 14);
        QCOMPARE(columna(t, QStringLiteral("uf_FK_M_Metrica1"), clave).toInt(), metrica[8]);
        QCOMPARE(columna(t, QStringLiteral("uf_FK_M_Metrica2"), clave).toInt(), metrica[2]);
        for (int i = 3; i <= 10; ++i)
            QCOMPARE(columna(t, QStringLiteral("uf_FK_M_Metrica%1").arg(i), clave).toInt(), 0);
        QCOMPARE(columna(t, QStringLiteral("uf_FK_G_Metrica1"), clave).toInt(), metrica[9]);
        for (int i = 2; i <= 5; ++i)
            QCOMPARE(columna(t, QStringLiteral("uf_FK_G_Metrica%1").arg(i), clave).toInt(), 0);
        QCOMPARE(fila(QStringLiteral("uf_Tipo"), clave).toInt(), 2);
    }

    void chartTypeIsStoredByItsCodeAndReopensSelected_data()
    {
        QTest::addColumn<QString>("entrada");
        QTest::addColumn<int>("codigo");
        QTest::newRow("lines") << QStringLiteral("Líneas 2D") << 1;
        QTest::newRow("bars") << QStringLiteral("Barras 2D") << 3;
        QTest::newRow("3d bars") << QStringLiteral("Barras 3D") << 0;
        QTest::newRow("pie") << QStringLiteral("Pastel") << 14;
    }

    void chartTypeIsStoredByItsCodeAndReopensSelected()
    {
        QFETCH(QString, entrada);
        QFETCH(int, codigo);
        dlg->Nuevo(perspectiva);
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            escribir(w, QStringLiteral("cNombre"), QStringLiteral("Gráfica"));
            pulsar(w, QStringLiteral("opt2"));
            agregar(w, {1});
            irAPestana(w, "cTabM", 1);
            agregar(w, {2});
            escribir(w, QStringLiteral("cTitGraf"), QStringLiteral("Ventas de l'año"));
            elegirEn(w, QStringLiteral("cTipoGraf"), entrada);
            pulsar(w, QStringLiteral("cAceptar"));
        });
        const int clave = mostrar(a);
        terminado(a);
        QVERIFY(clave > 0);
        QCOMPARE(columna(QStringLiteral("ut_bi_MatrizGraf"), QStringLiteral("uf_G_Tipo"), clave).toInt(), codigo);

        nuevoDialogo();
        dlg->Edit(clave);
        QWidget* w = dlg.get();
        QVERIFY(marcada(w, "opt2"));
        QCOMPARE(panelesVisibles(w), QStringList{QStringLiteral("picMatriz")});
        QCOMPARE(texto(w, QStringLiteral("cTipoGraf")), entrada);
        // The title loses its apostrophes on the way into the table.
        QCOMPARE(texto(w, QStringLiteral("cTitGraf")), QStringLiteral("Ventas de laño"));
        QCOMPARE(pestana(w, "cTabM"), 0);
    }

    void editRebuildsTheListsDroppingForeignAndRepeatedMetrics()
    {
        const int clave = insertarIndicador(QStringLiteral("Matriz guardada"), 2, perspectiva);
        db.exec(QStringLiteral("INSERT INTO ut_bi_MatrizGraf VALUES (%1, %2, %3, 0, %4, -5, 0, 0, 0, 0, 0, "
                               "%5, %5, %6, 0, 0, 'Título guardado', 3)")
                    .arg(clave)
                    .arg(metricaAjena)
                    .arg(metrica[3])
                    .arg(metrica[5])
                    .arg(metrica[1])
                    .arg(metrica[2]));
        ModalAnswerer a;
        a.expect(aceptar());
        a.expect(aceptar());
        dlg->Edit(clave);
        QWidget* w = dlg.get();
        QCOMPARE(mensajes(a), (QStringList{QStringLiteral("Debe seleccionar una métrica de la lista de la izquierda"),
                                           QStringLiteral("La métrica seleccionada ya está en la lista")}));
        QVERIFY(marcada(w, "opt2"));
        QCOMPARE(textos(lista(w, "lstSelMatriz")), (QStringList{nombreMetrica(3), nombreMetrica(5)}));
        QCOMPARE(textos(lista(w, "lstGraf")), (QStringList{nombreMetrica(1), nombreMetrica(2)}));
        QCOMPARE(texto(w, QStringLiteral("cTitGraf")), QStringLiteral("Título guardado"));
        QCOMPARE(texto(w, QStringLiteral("cTipoGraf")), QStringLiteral("Barras 2D"));
        QCOMPARE(pestana(w, "cTabM"), 0);

        a.expect([](QWidget* w) { pulsar(w, QStringLiteral("cAceptar")); });
        QCOMPARE(mostrar(a), clave);
        terminado(a);
        const QString t = QStringLiteral("ut_bi_MatrizGraf");
        QCOMPARE(cuenta(t, clave), 1);
        QCOMPARE(columna(t, QStringLiteral("uf_FK_M_Metrica1"), clave).toInt(), metrica[3]);
        QCOMPARE(columna(t, QStringLiteral("uf_FK_M_Metrica2"), clave).toInt(), metrica[5]);
        QCOMPARE(columna(t, QStringLiteral("uf_FK_M_Metrica3"), clave).toInt(), 0);
        QCOMPARE(columna(t, QStringLiteral("uf_FK_G_Metrica1"), clave).toInt(), metrica[1]);
        QCOMPARE(columna(t, QStringLiteral("uf_FK_G_Metrica2"), clave).toInt(), metrica[2]);
        QCOMPARE(columna(t, QStringLiteral("uf_FK_G_Metrica3"), clave).toInt(), 0);
        QCOMPARE(columna(t, QStringLiteral("uf_G_Tipo"), clave).toInt(), 3);
    }

    // --- Closing ------------------------------------------------------

    void cancelAfterAFailedAcceptStoresNothing()
    {
        dlg->Nuevo(perspectiva);
        ModalAnswerer a;
        a.expect([](QWidget* w) {
            barraLista(w);
            escribir(w, QStringLiteral("cMin(1)"), QStringLiteral("7"));
            escribir(w, QStringLiteral("cMax(1)"), QStringLiteral("7"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        a.expect(aceptar());
        a.expect(cerrar);
        QCOMPARE(mostrar(a), 0);
        terminado(a);
        QCOMPARE(mensajes(a), QStringList{QStringLiteral("El máximo debe ser mayor al mínimo")});
        for (const char* t : {"ut_bi_Indicador", "ut_bi_BarraProg", "ut_bi_Semaforo", "ut_bi_MatrizGraf"})
            QCOMPARE(total(QLatin1String(t)), 0);
    }

    void cancelOfAnEditLeavesTheStoredIndicator()
    {
        const int clave = insertarIndicador(QStringLiteral("Intacto"), 1, perspectiva);
        dlg->Edit(clave);
        ModalAnswerer a;
        a.expect([](QWidget* w) {
            escribir(w, QStringLiteral("cNombre"), QStringLiteral("Cambiado"));
            pulsar(w, QStringLiteral("opt3"));
            cerrar(w);
        });
        QCOMPARE(mostrar(a), 0);
        terminado(a);
        QCOMPARE(fila(QStringLiteral("uf_Nombre"), clave).toString(), QStringLiteral("Intacto"));
        QCOMPARE(fila(QStringLiteral("uf_Tipo"), clave).toInt(), 1);
    }

    void closeBoxAndEscapeCancel_data()
    {
        QTest::addColumn<bool>("escape");
        QTest::newRow("close box") << false;
        QTest::newRow("escape") << true;
    }

    void closeBoxAndEscapeCancel()
    {
        QFETCH(bool, escape);
        dlg->Nuevo(perspectiva);
        dlg->setResultado(77);
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            barraLista(w);
            if (escape)
                QTest::keyClick(w, Qt::Key_Escape);
            else
                w->close();
        });
        QCOMPARE(mostrar(a), 0);
        terminado(a);
        QCOMPARE(total(QStringLiteral("ut_bi_Indicador")), 0);
    }

    void failedStoreShowsAnErrorAndStaysOpenForAnotherTry()
    {
        auto otra = db.openAnother();
        engine->SetConnection(otra.get(), 1);
        dlg->Nuevo(perspectiva);
        ModalAnswerer a;
        bool abierto = false;
        a.expect([&](QWidget* w) {
            barraLista(w);
            otra->Close();
            pulsar(w, QStringLiteral("cAceptar"));
        });
        a.expect(aceptar());
        a.expect([&](QWidget* w) {
            abierto = w->isVisible();
            otra->Open(db.url());
            pulsar(w, QStringLiteral("cAceptar"));
        });
        const int clave = mostrar(a);
        terminado(a);
        QCOMPARE(mensajes(a), QStringList{QStringLiteral("Error al guardar datos")});
        QVERIFY(abierto);
        QVERIFY(clave > 0);
        QCOMPARE(fila(QStringLiteral("uf_Nombre"), clave).toString(), QStringLiteral("Ventas del día"));
        QCOMPARE(total(QStringLiteral("ut_bi_Indicador")), 1);
        QCOMPARE(cuenta(QStringLiteral("ut_bi_BarraProg"), clave), 1);
    }

    // --- Edit of what cannot be edited --------------------------------

    void editOfAMissingKeyShowsNothing()
    {
        ModalAnswerer a;
        dlg->Edit(987654);
        QWidget* w = dlg.get();
        QVERIFY(a.seen.isEmpty());
        QCOMPARE(texto(w, QStringLiteral("cNombre")), QString());
        QVERIFY(!marcada(w, "opt1") && !marcada(w, "opt2") && !marcada(w, "opt3"));
        QCOMPARE(panelesVisibles(w), QStringList());
        QCOMPARE(control<QComboBox>(w, QStringLiteral("cMetrica"))->count(), 0);
        QCOMPARE(lista(w, "lstMetricas")->count(), 0);
        QCOMPARE(control<QComboBox>(w, QStringLiteral("cTipoGraf"))->count(), 4);

        // With nothing loaded there is nothing to store.
        a.expect([](QWidget* w) {
            escribir(w, QStringLiteral("cNombre"), QStringLiteral("Huérfano"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        a.expect(aceptar());
        a.expect(cerrar);
        QCOMPARE(mostrar(a), 0);
        terminado(a);
        QCOMPARE(mensajes(a), QStringList{QStringLiteral("Error al guardar datos")});
        QCOMPARE(total(QStringLiteral("ut_bi_Indicador")), 0);
    }

    void editOfAnUnknownKindSelectsNoOptionAndStoresTheName()
    {
        const int clave = insertarIndicador(QStringLiteral("Raro"), 7, perspectiva);
        dlg->Edit(clave);
        QWidget* w = dlg.get();
        QVERIFY(!marcada(w, "opt1") && !marcada(w, "opt2") && !marcada(w, "opt3"));
        QCOMPARE(panelesVisibles(w), QStringList());
        QCOMPARE(texto(w, QStringLiteral("cNombre")), QStringLiteral("Raro"));
        ModalAnswerer a;
        a.expect([](QWidget* w) {
            escribir(w, QStringLiteral("cNombre"), QStringLiteral("Raro renombrado"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        QCOMPARE(mostrar(a), clave);
        terminado(a);
        QCOMPARE(fila(QStringLiteral("uf_Nombre"), clave).toString(), QStringLiteral("Raro renombrado"));
        QCOMPARE(fila(QStringLiteral("uf_Tipo"), clave).toInt(), 7);
    }

    // --- Looks --------------------------------------------------------

    void everyPanelShowsItsTextsWhole()
    {
        dlg->Nuevo(perspectiva);
        CarpetaPrueba carpeta;
        ModalAnswerer a;
        QStringList cortados;
        QStringList guardadas;
        a.expect([&](QWidget* w) {
            escribir(w, QStringLiteral("cNombre"), QStringLiteral("Ventas diarias por sucursal"));
            auto captura = [&](const QString& nombre) {
                QApplication::processEvents();
                for (const QString& c : textosCortados(w))
                    cortados.append(nombre + QLatin1Char(':') + c);
                const QString archivo = carpeta.archivo(QStringLiteral("dlgpropindicador-%1.png").arg(nombre));
                if (w->grab().save(archivo))
                    guardadas.append(archivo);
            };
            elegirEn(w, QStringLiteral("cMetrica"), nombreMetrica(1));
            captura(QStringLiteral("barra"));
            pulsar(w, QStringLiteral("opt2"));
            agregar(w, {1, 2, 3});
            lista(w, "lstMetricas")->setCurrentRow(3);
            captura(QStringLiteral("matriz"));
            irAPestana(w, "cTabM", 2);
            escribir(w, QStringLiteral("cTitGraf"), QStringLiteral("Ventas por mes"));
            captura(QStringLiteral("matriz-preferencias"));
            pulsar(w, QStringLiteral("opt3"));
            elegirEn(w, QStringLiteral("cMetrica2"), nombreMetrica(2));
            captura(QStringLiteral("semaforo"));
            cerrar(w);
        });
        QCOMPARE(mostrar(a), 0);
        terminado(a);
        QVERIFY2(cortados.isEmpty(), qPrintable(cortados.join(QStringLiteral(" / "))));
        QCOMPARE(guardadas.size(), 4);
    }
};

QTEST_MAIN(TstDlgPropIndicador)
#include "tst_dlgpropindicador.moc"
