// The placed-indicator editor driven through the engine's Editar_Indicador_Tab
// as a user would: what it shows for each kind of indicator and perspective,
// the entity search, and what it writes back into the host's object.
#include "carpetaprueba.h"
#include "dialogdriver.h"
#include "dashboard/dlgconfigindi.h"
#include "engine/eengine.h"
#include "engine/quelta.h"
#include "fakeusermanagement.h"
#include "modalanswerer.h"
#include "model/ebarraprogreso.h"
#include "model/eindicador.h"
#include "model/ematrizgrafico.h"
#include "model/eperspectiva.h"
#include "model/esemaforo.h"
#include "model/etabindicador.h"
#include "model/vendimarbi.h"
#include "testdatabase.h"
#include "vb/automationerror.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMetaProperty>
#include <QTest>

using namespace driver;

namespace {

// A search object whose answers the test sets: queued answers first, then the
// standing one.
class FakeSearch : public QObject, public Quelta {
    Q_OBJECT
    Q_INTERFACES(Quelta)

public:
    QVariant Conectar(QObject*) override { return QVariant(); }
    QVariant Buscar(const QString& kind, bool flag) override
    {
        asked << kind + (flag ? QStringLiteral("|true") : QStringLiteral("|false"));
        if (raiseOnSearch)
            throw vb::AutomationError(5, QStringLiteral("search failed"));
        return answers.isEmpty() ? answer : answers.takeFirst();
    }
    QString Describir(const QString& kind, const QString& key, const QString& separator) override
    {
        asked << kind + QLatin1Char('|') + key + QLatin1Char('|') + separator;
        if (raiseOnDescribe)
            throw vb::AutomationError(5, QStringLiteral("describe failed"));
        return description;
    }

    QList<QVariant> answers;
    QVariant answer = 0;
    QString description;
    bool raiseOnSearch = false;
    bool raiseOnDescribe = false;
    QStringList asked;
};

// What the dialog shows, read the way a user reads it.
struct Vista {
    QString indicador;
    QString info;
    bool buscar = false;
    QList<bool> checks;
    QStringList checkTexts;
    QStringList inicioItems;
    int inicio = -2;
    QStringList valores;
    QList<bool> valoresHabilitados;
};

Vista leer(QWidget* w)
{
    Vista v;
    v.indicador = control<QLabel>(w, QStringLiteral("lblIndicador"))->text();
    v.info = control<QLabel>(w, QStringLiteral("lblInfo"))->text();
    v.buscar = control<QPushButton>(w, QStringLiteral("cmdBuscar"))->isEnabled();
    for (int k = 0; k < 4; ++k) {
        auto* chk = control<QCheckBox>(w, QStringLiteral("chkInter(%1)").arg(k));
        v.checks << chk->isChecked();
        v.checkTexts << chk->text();
    }
    auto* inicio = control<QComboBox>(w, QStringLiteral("cInicio"));
    for (int i = 0; i < inicio->count(); ++i)
        v.inicioItems << inicio->itemText(i);
    v.inicio = inicio->currentIndex();
    for (int i = 0; i < 8; ++i) {
        auto* txt = control<QLineEdit>(w, QStringLiteral("txtVal(%1)").arg(i));
        v.valores << txt->text();
        v.valoresHabilitados << txt->isEnabled();
    }
    return v;
}

// Every property of the placed indicator, to see that nothing changed.
QVariantMap propiedades(const QObject& o)
{
    QVariantMap map;
    const QMetaObject* meta = o.metaObject();
    for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i)
        map.insert(QString::fromLatin1(meta->property(i).name()), meta->property(i).read(&o));
    return map;
}

// A message box answered with its button, recording its text, title, icon and buttons.
ModalAnswerer::Handler mensaje(QString* visto)
{
    return [visto](QWidget* w) {
        auto* box = qobject_cast<QMessageBox*>(w);
        if (!box) {
            *visto = QStringLiteral("<no message box: %1>").arg(w->objectName());
            QMetaObject::invokeMethod(w, "reject", Qt::QueuedConnection);
            return;
        }
        *visto = box->windowTitle() + QLatin1Char('|') + box->text() + QLatin1Char('|')
                 + QString::number(box->buttons().size())
                 + (box->icon() == QMessageBox::NoIcon ? QString() : QStringLiteral("|icono"));
        ModalAnswerer::press(w, QStringLiteral("Aceptar"));
    };
}

// The texts of the window that its controls do not show whole.
QStringList textosCortados(QWidget* w)
{
    QCoreApplication::processEvents();
    QStringList cortados;
    for (QLabel* label : w->findChildren<QLabel*>()) {
        if (!label->wordWrap() && label->width() < label->sizeHint().width())
            cortados << label->text();
        if (label->wordWrap() && label->height() < label->heightForWidth(label->width()))
            cortados << label->text();
        if (!w->rect().contains(QRect(label->mapTo(w, QPoint(0, 0)), label->size())))
            cortados << label->text();
    }
    for (QAbstractButton* button : w->findChildren<QAbstractButton*>()) {
        if (button->width() < button->sizeHint().width())
            cortados << button->text();
    }
    for (QLineEdit* txt : w->findChildren<QLineEdit*>()) {
        if (txt->height() < txt->sizeHint().height())
            cortados << txt->objectName();
    }
    auto* combo = control<QComboBox>(w, QStringLiteral("cInicio"));
    if (combo->width() < combo->sizeHint().width())
        cortados << QStringLiteral("cInicio");
    return cortados;
}

const QStringList periodos{QStringLiteral("Día"), QStringLiteral("Semana"), QStringLiteral("Mes"),
                           QStringLiteral("Ano")};
const QStringList checkTexts{QStringLiteral("Día"), QStringLiteral("Semana"), QStringLiteral("Mes"),
                             QStringLiteral("Año")};
const QList<bool> todos{true, true, true, true};
const QList<bool> ninguno{false, false, false, false};

} // namespace

class TstDlgConfigIndi : public QObject {
    Q_OBJECT

    TestDatabase db;
    std::unique_ptr<EEngine> engine;
    std::unique_ptr<FakeUserManagement> um;
    std::unique_ptr<FakeSearch> search;

    const QStringList tablas{QStringLiteral("ut_bi_Perspectiva"), QStringLiteral("ut_bi_Metrica"),
                             QStringLiteral("ut_bi_Indicador"),   QStringLiteral("ut_bi_BarraProg"),
                             QStringLiteral("ut_bi_Semaforo"),    QStringLiteral("ut_bi_MatrizGraf"),
                             QStringLiteral("ut_bi_Tablero"),     QStringLiteral("ut_bi_TabIndicador"),
                             QStringLiteral("ut_bi_Fig")};

    QList<int> filas()
    {
        QList<int> counts;
        for (const QString& tabla : tablas)
            counts << db.scalar(QStringLiteral("SELECT COUNT(*) FROM ") + tabla).toInt();
        return counts;
    }

    int perspectiva(const QString& entidad)
    {
        EPerspectiva p;
        p.setNombre(QStringLiteral("Ventas por cliente"));
        p.setEntidadAsociada(entidad);
        p.setGrupos(QStringLiteral("*"));
        return p.Save(&db.connection()) ? p.Sys_PK() : 0;
    }

    // A traffic light whose limits are 1.5, 2.5 (day), 11, 12 (week), 21, 22 (month), 31, 32 (year).
    int semaforo(int fkPerspectiva, const QString& nombre = QStringLiteral("Ventas"))
    {
        EIndicador i;
        i.setTipo(VendimarBI::cSemaforo);
        i.setNombre(nombre);
        i.setFK_Perspectiva(fkPerspectiva);
        auto* s = qobject_cast<ESemaforo*>(i.Configuracion());
        s->setDia_Limite1(1.5);
        s->setDia_Limite2(2.5);
        s->setSemana_Limite1(11);
        s->setSemana_Limite2(12);
        s->setMes_Limite1(21);
        s->setMes_Limite2(22);
        s->setAno_Limite1(31);
        s->setAno_Limite2(32);
        return i.Save(&db.connection()) ? i.Sys_PK() : 0;
    }

    // A progress bar whose bounds are Min 1, Max 100 (day), 2, 200 (week), 3, 300 (month), 4, 400 (year).
    int barra(int fkPerspectiva, const QString& nombre = QStringLiteral("Cobranza"))
    {
        EIndicador i;
        i.setTipo(VendimarBI::cBarraProgreso);
        i.setNombre(nombre);
        i.setFK_Perspectiva(fkPerspectiva);
        auto* b = qobject_cast<EBarraProgreso*>(i.Configuracion());
        b->setDia_Min(1);
        b->setDia_Max(100);
        b->setSemana_Min(2);
        b->setSemana_Max(200);
        b->setMes_Min(3);
        b->setMes_Max(300);
        b->setAno_Min(4);
        b->setAno_Max(400);
        return i.Save(&db.connection()) ? i.Sys_PK() : 0;
    }

    int matriz(int fkPerspectiva, const QString& nombre = QStringLiteral("Resumen"))
    {
        EIndicador i;
        i.setTipo(VendimarBI::cMatrizGrafico);
        i.setNombre(nombre);
        i.setFK_Perspectiva(fkPerspectiva);
        auto* m = qobject_cast<EMatrizGrafico*>(i.Configuracion());
        m->setMatriz_Metrica1(7);
        m->setGrafico_Titulo(QStringLiteral("Título"));
        return i.Save(&db.connection()) ? i.Sys_PK() : 0;
    }

    int indicador(int tipo, int fkPerspectiva, const QString& nombre)
    {
        switch (tipo) {
        case VendimarBI::cSemaforo:
            return semaforo(fkPerspectiva, nombre);
        case VendimarBI::cBarraProgreso:
            return barra(fkPerspectiva, nombre);
        default:
            return matriz(fkPerspectiva, nombre);
        }
    }

    // A saved placement with limits 10..80, day and month shown, opening on the week.
    bool colocar(ETabIndicador& o, int fkIndicador, int fkEntidad = 0)
    {
        o.setFK_Tablero(3);
        o.setFK_Indicador(fkIndicador);
        o.setFK_Entidad(fkEntidad);
        o.setx(10);
        o.setY(20);
        o.setW(300);
        o.setH(200);
        o.setMuestra_Dia(true);
        o.setMuestra_Semana(false);
        o.setMuestra_Mes(true);
        o.setMuestra_Ano(false);
        o.setPeriodoInicio(VendimarBI::cSemana);
        o.setLimite1(10);
        o.setLimite2(20);
        o.setLimite3(30);
        o.setLimite4(40);
        o.setLimite5(50);
        o.setLimite6(60);
        o.setLimite7(70);
        o.setLimite8(80);
        return o.Save(&db.connection()) && o.Sys_PK() > 0;
    }

    // Opens the dialog on o, reads what it shows and closes it with the given button.
    Vista mirar(ETabIndicador& o, bool* resultado = nullptr, const QString& boton = QStringLiteral("cmdCancel"))
    {
        ModalAnswerer answerer;
        Vista vista;
        answerer.expect([&](QWidget* w) {
            vista = leer(w);
            pulsar(w, boton);
        });
        const bool r = engine->Editar_Indicador_Tab(&o);
        if (resultado)
            *resultado = r;
        if (!answerer.unexpected.isEmpty() || !answerer.allAnswered())
            vista.indicador = QStringLiteral("<unexpected: %1>").arg(answerer.seen.join(QLatin1Char(';')));
        return vista;
    }

    // Opens the dialog on o, lets the handler act on it and accepts; answers the result.
    bool aceptarCon(ETabIndicador& o, const std::function<void(QWidget*)>& actuar)
    {
        ModalAnswerer answerer;
        answerer.expect([&](QWidget* w) {
            actuar(w);
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        const bool r = engine->Editar_Indicador_Tab(&o);
        if (!answerer.unexpected.isEmpty() || !answerer.allAnswered())
            qWarning("unexpected windows: %s", qPrintable(answerer.seen.join(QLatin1Char(';'))));
        return r && answerer.unexpected.isEmpty() && answerer.allAnswered();
    }

private slots:
    void initTestCase() { VBI_CREATE_TEST_DATABASE(db); }

    void init()
    {
        // Doubles go into the configuration INSERT in the user's locale: arrange under a point.
        QLocale::setDefault(QLocale::c());
        db.clear();
        engine = std::make_unique<EEngine>();
        um = std::make_unique<FakeUserManagement>();
        search = std::make_unique<FakeSearch>();
        engine->SetConnection(&db.connection(), 1);
        engine->SetUM(um.get());
        engine->setSearch(search.get());
    }

    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void captionControlsAndDesignTexts()
    {
        dlgConfigIndi dlg;
        QCOMPARE(dlg.objectName(), QStringLiteral("dlgConfigIndi"));
        QCOMPARE(dlg.windowTitle(), QStringLiteral("Configuración de indicador"));
        QCOMPARE(dlg.Aceptado(), false);
        QCOMPARE(control<QLabel>(&dlg, QStringLiteral("lblIndicador"))->text(),
                 QStringLiteral("<Tipo de indicador y entidad asociada >"));
        QCOMPARE(control<QLabel>(&dlg, QStringLiteral("lblInfo"))->text(),
                 QStringLiteral("<No hay ninguna entidad de datos asociada>"));
        QCOMPARE(control<QPushButton>(&dlg, QStringLiteral("cmdBuscar"))->text(), QStringLiteral("Buscar"));
        for (int k = 0; k < 4; ++k)
            QCOMPARE(control<QCheckBox>(&dlg, QStringLiteral("chkInter(%1)").arg(k))->text(), checkTexts.at(k));
        QVERIFY(!control<QComboBox>(&dlg, QStringLiteral("cInicio"))->isEditable());
        for (int i = 0; i < 8; ++i)
            QVERIFY(control<QLineEdit>(&dlg, QStringLiteral("txtVal(%1)").arg(i)));
        auto* aceptar = control<QPushButton>(&dlg, QStringLiteral("cmdAceptar"));
        QCOMPARE(aceptar->text(), QStringLiteral("&Aceptar"));
        QVERIFY(aceptar->isDefault());
        QCOMPARE(control<QPushButton>(&dlg, QStringLiteral("cmdCancel"))->text(), QStringLiteral("&Cancelar"));
        QCOMPARE(dlg.findChildren<QGroupBox*>().size(), 1);
        QCOMPARE(dlg.findChildren<QGroupBox*>().first()->title(), QStringLiteral("Valores de frontera"));
        QStringList labels;
        for (QLabel* label : dlg.findChildren<QLabel*>())
            labels << label->text();
        for (const char* text : {"Entidad de datos:", "Mostrar información de:",
                                 "Al iniciar el indicador presentar información del:", "Diario", "Semanal", "Mensual",
                                 "Anual", "Límite superior:", "Límite inferior:"})
            QVERIFY2(labels.contains(QString::fromUtf8(text)), text);
    }

    void limitColumnsPairUpperAndLowerBoxesOfOnePeriod()
    {
        dlgConfigIndi dlg;
        dlg.adjustSize();
        auto* frame = dlg.findChild<QGroupBox*>();
        auto* grid = qobject_cast<QGridLayout*>(frame->layout());
        QVERIFY(grid);
        const QStringList heads{QStringLiteral("Diario"), QStringLiteral("Semanal"), QStringLiteral("Mensual"),
                                QStringLiteral("Anual")};
        for (int k = 0; k < 4; ++k) {
            int row, column, rs, cs;
            grid->getItemPosition(grid->indexOf(control<QLineEdit>(&dlg, QStringLiteral("txtVal(%1)").arg(k))), &row,
                                  &column, &rs, &cs);
            QCOMPARE(row, 1);
            const int upperColumn = column;
            grid->getItemPosition(grid->indexOf(control<QLineEdit>(&dlg, QStringLiteral("txtVal(%1)").arg(k + 4))),
                                  &row, &column, &rs, &cs);
            QCOMPARE(row, 2);
            QCOMPARE(column, upperColumn);
            auto* head = qobject_cast<QLabel*>(grid->itemAtPosition(0, column)->widget());
            QVERIFY(head);
            QCOMPARE(head->text(), heads.at(k));
        }
        QCOMPARE(qobject_cast<QLabel*>(grid->itemAtPosition(1, 0)->widget())->text(), QStringLiteral("Límite superior:"));
        QCOMPARE(qobject_cast<QLabel*>(grid->itemAtPosition(2, 0)->widget())->text(), QStringLiteral("Límite inferior:"));
    }

    void asksNoRight()
    {
        ETabIndicador o;
        o.setFK_Indicador(semaforo(perspectiva(QStringLiteral("@"))));
        QVERIFY(o.FK_Indicador() > 0);
        bool r = true;
        const Vista v = mirar(o, &r);
        QCOMPARE(v.indicador, QStringLiteral("Semáforo Ventas"));
        QVERIFY(!r);
        QVERIFY(um->asked.isEmpty());
    }

    void opensWithoutUserManagement()
    {
        EEngine bare;
        bare.SetConnection(&db.connection(), 1);
        ETabIndicador o;
        o.setFK_Indicador(barra(perspectiva(QStringLiteral("@"))));
        ModalAnswerer answerer;
        QString engineSet;
        answerer.expect([&](QWidget* w) {
            engineSet = w->property("Engine").value<QObject*>() == &bare ? QStringLiteral("yes") : QStringLiteral("no");
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        QVERIFY(bare.Editar_Indicador_Tab(&o));
        QCOMPARE(answerer.seen.size(), 1);
        QCOMPARE(answerer.seen.first(), QStringLiteral("dlgConfigIndi|Configuración de indicador|"));
        QCOMPARE(engineSet, QStringLiteral("yes"));
    }

    void cancelReturnsFalseAndLeavesThePlacementUntouched()
    {
        ETabIndicador o;
        QVERIFY(colocar(o, semaforo(perspectiva(QStringLiteral("Cliente"))), 15));
        EIndicador working;
        o.setobjIndicador(&working);
        search->answer = 99;
        const QVariantMap antes = propiedades(o);
        const QList<int> filasAntes = filas();
        ModalAnswerer answerer;
        answerer.expect([](QWidget* w) {
            for (int k = 0; k < 4; ++k)
                control<QCheckBox>(w, QStringLiteral("chkInter(%1)").arg(k))->toggle();
            control<QComboBox>(w, QStringLiteral("cInicio"))->setCurrentIndex(3);
            for (int i = 0; i < 8; ++i)
                escribir(w, QStringLiteral("txtVal(%1)").arg(i), QStringLiteral("999"));
            pulsar(w, QStringLiteral("cmdBuscar"));
            pulsar(w, QStringLiteral("cmdCancel"));
        });
        QVERIFY(!engine->Editar_Indicador_Tab(&o));
        QVERIFY(answerer.unexpected.isEmpty());
        QVERIFY(answerer.allAnswered());
        QCOMPARE(propiedades(o), antes);
        QCOMPARE(filas(), filasAntes);
        QCOMPARE(search->asked, QStringList({QStringLiteral("Cliente|15| "), QStringLiteral("Cliente|true"),
                                             QStringLiteral("Cliente|99| ")}));
    }

    void closeBoxActsAsCancel()
    {
        ETabIndicador o;
        QVERIFY(colocar(o, barra(perspectiva(QStringLiteral("@")))));
        const QVariantMap antes = propiedades(o);
        ModalAnswerer answerer;
        answerer.expect([](QWidget* w) {
            escribir(w, QStringLiteral("txtVal(0)"), QStringLiteral("5"));
            w->close();
        });
        QVERIFY(!engine->Editar_Indicador_Tab(&o));
        QVERIFY(answerer.unexpected.isEmpty());
        QCOMPARE(propiedades(o), antes);
    }

    void escapeActsAsCancel()
    {
        ETabIndicador o;
        QVERIFY(colocar(o, barra(perspectiva(QStringLiteral("@")))));
        const QVariantMap antes = propiedades(o);
        ModalAnswerer answerer;
        answerer.expect([](QWidget* w) { QTest::keyClick(w, Qt::Key_Escape); });
        QVERIFY(!engine->Editar_Indicador_Tab(&o));
        QVERIFY(answerer.unexpected.isEmpty());
        QCOMPARE(propiedades(o), antes);
    }

    void newTrafficLightShowsLimit1UpperAndLimit2Lower()
    {
        ETabIndicador o;
        o.setFK_Indicador(semaforo(perspectiva(QStringLiteral("@"))));
        const Vista v = mirar(o);
        QCOMPARE(v.indicador, QStringLiteral("Semáforo Ventas"));
        // Upper row day..year, then lower row day..year.
        QCOMPARE(v.valores, QStringList({QStringLiteral("1.5"), QStringLiteral("11"), QStringLiteral("21"),
                                         QStringLiteral("31"), QStringLiteral("2.5"), QStringLiteral("12"),
                                         QStringLiteral("22"), QStringLiteral("32")}));
        QCOMPARE(v.valoresHabilitados, QList<bool>(8, true));
        QCOMPARE(v.checks, todos);
        QCOMPARE(v.inicio, 0);
    }

    void newProgressBarShowsMaxUpperAndMinLower()
    {
        ETabIndicador o;
        o.setFK_Indicador(barra(perspectiva(QStringLiteral("@"))));
        const Vista v = mirar(o);
        QCOMPARE(v.indicador, QStringLiteral("Barra de progreso Cobranza"));
        QCOMPARE(v.valores, QStringList({QStringLiteral("100"), QStringLiteral("200"), QStringLiteral("300"),
                                         QStringLiteral("400"), QStringLiteral("1"), QStringLiteral("2"),
                                         QStringLiteral("3"), QStringLiteral("4")}));
        QCOMPARE(v.valoresHabilitados, QList<bool>(8, true));
        QCOMPARE(v.checks, todos);
        QCOMPARE(v.inicio, 0);
    }

    void newPlacementWithNegativeKeyCountsAsNew()
    {
        ETabIndicador o;
        o.setSys_PK(-1);
        o.setMuestra_Semana(false);
        o.setPeriodoInicio(VendimarBI::cAno);
        o.setLimite1(77);
        o.setFK_Indicador(semaforo(perspectiva(QStringLiteral("@"))));
        const Vista v = mirar(o);
        QCOMPARE(v.valores.first(), QStringLiteral("1.5"));
        QCOMPARE(v.checks, todos);
        QCOMPARE(v.inicio, 0);
    }

    void newMatrixHasNoDefaultsAndDisabledBoxes()
    {
        ETabIndicador o;
        o.setFK_Indicador(matriz(perspectiva(QStringLiteral("@"))));
        o.setLimite1(5);
        const Vista v = mirar(o);
        QCOMPARE(v.indicador, QStringLiteral("Matriz y gráfico Resumen"));
        QCOMPARE(v.valores, QStringList(8, QString()));
        QCOMPARE(v.valoresHabilitados, QList<bool>(8, false));
        QCOMPARE(v.checks, todos);
        QCOMPARE(v.inicio, 0);
    }

    void newMatrixAcceptedWritesZeroLimits()
    {
        ETabIndicador o;
        o.setFK_Indicador(matriz(perspectiva(QStringLiteral("@"))));
        o.setLimite1(5);
        o.setLimite8(6);
        QVERIFY(aceptarCon(o, [](QWidget*) {}));
        for (const char* name : {"Limite1", "Limite2", "Limite3", "Limite4", "Limite5", "Limite6", "Limite7", "Limite8"})
            QCOMPARE(o.property(name).toDouble(), 0.0);
        QVERIFY(o.Muestra_Dia() && o.Muestra_Semana() && o.Muestra_Mes() && o.Muestra_Ano());
        QCOMPARE(o.PeriodoInicio(), 0);
    }

    void savedMatrixShowsStoredLimitsDisabledAndWritesThemBackUnchanged()
    {
        ETabIndicador o;
        QVERIFY(colocar(o, matriz(perspectiva(QStringLiteral("@")))));
        o.setLimite1(1.25);
        o.setLimite8(-3);
        const QVariantMap antes = propiedades(o);
        ModalAnswerer answerer;
        Vista v;
        answerer.expect([&](QWidget* w) {
            v = leer(w);
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        QVERIFY(engine->Editar_Indicador_Tab(&o));
        QVERIFY(answerer.unexpected.isEmpty());
        QCOMPARE(v.valores, QStringList({QStringLiteral("1.25"), QStringLiteral("30"), QStringLiteral("50"),
                                         QStringLiteral("70"), QStringLiteral("20"), QStringLiteral("40"),
                                         QStringLiteral("60"), QStringLiteral("-3")}));
        QCOMPARE(v.valoresHabilitados, QList<bool>(8, false));
        QCOMPARE(propiedades(o), antes);
    }

    void savedPlacementShowsItsOwnLimitsWhateverTheKind_data()
    {
        QTest::addColumn<int>("tipo");
        QTest::addColumn<bool>("habilitados");
        QTest::newRow("barra") << int(VendimarBI::cBarraProgreso) << true;
        QTest::newRow("matriz") << int(VendimarBI::cMatrizGrafico) << false;
        QTest::newRow("semaforo") << int(VendimarBI::cSemaforo) << true;
    }
    void savedPlacementShowsItsOwnLimitsWhateverTheKind()
    {
        QFETCH(int, tipo);
        QFETCH(bool, habilitados);
        ETabIndicador o;
        QVERIFY(colocar(o, indicador(tipo, perspectiva(QStringLiteral("@")), QStringLiteral("X"))));
        const Vista v = mirar(o);
        QCOMPARE(v.valores, QStringList({QStringLiteral("10"), QStringLiteral("30"), QStringLiteral("50"),
                                         QStringLiteral("70"), QStringLiteral("20"), QStringLiteral("40"),
                                         QStringLiteral("60"), QStringLiteral("80")}));
        QCOMPARE(v.valoresHabilitados, QList<bool>(8, habilitados));
        QCOMPARE(v.checks, QList<bool>({true, false, true, false}));
        QCOMPARE(v.inicio, int(VendimarBI::cSemana));
    }

    void savedPlacementAcceptedUnchangedKeepsEveryValue()
    {
        ETabIndicador o;
        QVERIFY(colocar(o, semaforo(perspectiva(QStringLiteral("Cliente"))), 15));
        search->description = QStringLiteral("Ana López");
        const QVariantMap antes = propiedades(o);
        QVERIFY(aceptarCon(o, [](QWidget*) {}));
        QCOMPARE(propiedades(o), antes);
    }

    void headerNamesKindAndIndicator_data()
    {
        QTest::addColumn<int>("tipo");
        QTest::addColumn<QString>("entidad");
        QTest::addColumn<QString>("esperado");
        QTest::newRow("barra sin entidad") << int(VendimarBI::cBarraProgreso) << QStringLiteral("@")
                                           << QStringLiteral("Barra de progreso Meta mensual");
        QTest::newRow("matriz sin entidad") << int(VendimarBI::cMatrizGrafico) << QStringLiteral("@")
                                            << QStringLiteral("Matriz y gráfico Meta mensual");
        QTest::newRow("semaforo sin entidad") << int(VendimarBI::cSemaforo) << QStringLiteral("@")
                                              << QStringLiteral("Semáforo Meta mensual");
        QTest::newRow("barra de cliente") << int(VendimarBI::cBarraProgreso) << QStringLiteral("Cliente")
                                          << QStringLiteral("Barra de progreso Meta mensual de Cliente");
        QTest::newRow("matriz de sucursal") << int(VendimarBI::cMatrizGrafico) << QStringLiteral("Sucursal")
                                            << QStringLiteral("Matriz y gráfico Meta mensual de Sucursal");
        QTest::newRow("semaforo de producto") << int(VendimarBI::cSemaforo) << QStringLiteral("Producto")
                                              << QStringLiteral("Semáforo Meta mensual de Producto");
        // The entity kind is shown as stored, its blanks included.
        QTest::newRow("entidad con blancos") << int(VendimarBI::cSemaforo) << QStringLiteral(" Cliente ")
                                             << QStringLiteral("Semáforo Meta mensual de  Cliente ");
    }
    void headerNamesKindAndIndicator()
    {
        QFETCH(int, tipo);
        QFETCH(QString, entidad);
        QFETCH(QString, esperado);
        ETabIndicador o;
        o.setFK_Indicador(indicador(tipo, perspectiva(entidad), QStringLiteral("Meta mensual")));
        QCOMPARE(mirar(o).indicador, esperado);
    }

    void unknownKindKeepsDesignHeaderAndDefaults()
    {
        EIndicador i;
        i.setTipo(4);
        i.setNombre(QStringLiteral("Raro"));
        i.setFK_Perspectiva(perspectiva(QStringLiteral("Cliente")));
        QVERIFY(i.Save(&db.connection()));
        ETabIndicador o;
        o.setFK_Indicador(i.Sys_PK());
        const Vista v = mirar(o);
        QCOMPARE(v.indicador, QStringLiteral("<Tipo de indicador y entidad asociada > de Cliente"));
        QCOMPARE(v.info, QStringLiteral("< Seleccione una entidad de datos >"));
        QCOMPARE(v.valores, QStringList(8, QString()));
        QCOMPARE(v.valoresHabilitados, QList<bool>(8, true));
        QCOMPARE(v.checks, todos);
        QCOMPARE(v.inicio, 0);
    }

    void noEntityNeededDisablesSearchAndAcceptsAtOnce_data()
    {
        QTest::addColumn<QString>("entidad");
        QTest::newRow("arroba") << QStringLiteral("@");
        QTest::newRow("arroba con blancos") << QStringLiteral("  @ ");
        QTest::newRow("vacia") << QString();
        QTest::newRow("blancos") << QStringLiteral("   ");
    }
    void noEntityNeededDisablesSearchAndAcceptsAtOnce()
    {
        QFETCH(QString, entidad);
        ETabIndicador o;
        o.setFK_Indicador(semaforo(perspectiva(entidad)));
        o.setFK_Entidad(15);
        ModalAnswerer answerer;
        Vista v;
        answerer.expect([&](QWidget* w) {
            v = leer(w);
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        QVERIFY(engine->Editar_Indicador_Tab(&o));
        QCOMPARE(answerer.seen.size(), 1);
        QVERIFY(answerer.unexpected.isEmpty());
        QCOMPARE(v.indicador, QStringLiteral("Semáforo Ventas"));
        QCOMPARE(v.info, QStringLiteral("< No se requiere identificar una entidad de datos >"));
        QVERIFY(!v.buscar);
        QVERIFY(search->asked.isEmpty());
        // The entity of a perspective that needs none is never read, so it is written back as none.
        QCOMPARE(o.FK_Entidad(), 0);
    }

    void entityNeededWithoutKeyAsksUntilTheSearchChoosesOne()
    {
        ETabIndicador o;
        o.setFK_Indicador(semaforo(perspectiva(QStringLiteral("Cliente"))));
        search->answers = {0, 15};
        search->description = QStringLiteral("Ana López");
        ModalAnswerer answerer;
        Vista inicial;
        QString primero, segundo, tras0, tras15;
        bool abierto0 = false;
        answerer.expect([&](QWidget* w) {
            inicial = leer(w);
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        answerer.expect(mensaje(&primero));
        answerer.expect([&](QWidget* w) {
            abierto0 = w->isVisible();
            tras0 = leer(w).info;
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        answerer.expect(mensaje(&segundo));
        answerer.expect([&](QWidget* w) {
            tras15 = leer(w).info;
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        QVERIFY(engine->Editar_Indicador_Tab(&o));
        QVERIFY(answerer.unexpected.isEmpty());
        QVERIFY(answerer.allAnswered());
        QCOMPARE(inicial.info, QStringLiteral("< Seleccione una entidad de datos >"));
        QVERIFY(inicial.buscar);
        QCOMPARE(primero, QStringLiteral("VendimarBI|Debe seleccionar una entidad|1"));
        QVERIFY(abierto0);
        QCOMPARE(tras0, QStringLiteral("< Seleccione una entidad de datos >"));
        QCOMPARE(segundo, QStringLiteral("VendimarBI|Debe seleccionar una entidad|1"));
        QCOMPARE(tras15, QStringLiteral("Ana López"));
        QCOMPARE(o.FK_Entidad(), 15);
        QCOMPARE(search->asked, QStringList({QStringLiteral("Cliente|true"), QStringLiteral("Cliente|true"),
                                             QStringLiteral("Cliente|15| ")}));
    }

    void searchButtonChoosesTheEntity()
    {
        ETabIndicador o;
        o.setFK_Indicador(barra(perspectiva(QStringLiteral("Cliente"))));
        search->answer = 15;
        QString info;
        QVERIFY(aceptarCon(o, [&](QWidget* w) {
            pulsar(w, QStringLiteral("cmdBuscar"));
            info = leer(w).info;
        }));
        QCOMPARE(info, QStringLiteral("Cliente con Sys_PK=15"));
        QCOMPARE(o.FK_Entidad(), 15);
    }

    void searchAnsweringNothingKeepsTheEarlierChoice_data()
    {
        QTest::addColumn<QVariant>("respuesta");
        QTest::addColumn<bool>("falla");
        QTest::newRow("cero") << QVariant(0) << false;
        QTest::newRow("negativa") << QVariant(-4) << false;
        QTest::newRow("texto") << QVariant(QStringLiteral("abc")) << false;
        QTest::newRow("error") << QVariant(15) << true;
    }
    void searchAnsweringNothingKeepsTheEarlierChoice()
    {
        QFETCH(QVariant, respuesta);
        QFETCH(bool, falla);
        ETabIndicador o;
        QVERIFY(colocar(o, semaforo(perspectiva(QStringLiteral("Cliente"))), 8));
        search->description = QStringLiteral("Tienda Centro");
        QString info;
        QVERIFY(aceptarCon(o, [&](QWidget* w) {
            search->answer = respuesta;
            search->raiseOnSearch = falla;
            search->description = QStringLiteral("otra");
            pulsar(w, QStringLiteral("cmdBuscar"));
            info = leer(w).info;
        }));
        QCOMPARE(info, QStringLiteral("Tienda Centro"));
        QCOMPARE(o.FK_Entidad(), 8);
    }

    void searchChoiceThatCannotBeDescribedIsStillChosen()
    {
        ETabIndicador o;
        o.setFK_Indicador(semaforo(perspectiva(QStringLiteral("Cliente"))));
        search->answer = 15;
        search->raiseOnDescribe = true;
        QString info;
        QVERIFY(aceptarCon(o, [&](QWidget* w) {
            pulsar(w, QStringLiteral("cmdBuscar"));
            info = leer(w).info;
        }));
        QCOMPARE(info, QStringLiteral("< Seleccione una entidad de datos >"));
        QCOMPARE(o.FK_Entidad(), 15);
    }

    void searchAsksForTheKindAsStored()
    {
        ETabIndicador o;
        o.setFK_Indicador(semaforo(perspectiva(QStringLiteral(" Cliente "))));
        search->answer = 4;
        QVERIFY(aceptarCon(o, [](QWidget* w) { pulsar(w, QStringLiteral("cmdBuscar")); }));
        QCOMPARE(search->asked, QStringList({QStringLiteral(" Cliente |true"), QStringLiteral(" Cliente |4| ")}));
        QCOMPARE(o.FK_Entidad(), 4);
    }

    void savedEntityShowsItsDescription_data()
    {
        QTest::addColumn<QString>("descripcion");
        QTest::addColumn<QString>("esperado");
        QTest::newRow("descrita") << QStringLiteral("Ana López") << QStringLiteral("Ana López");
        QTest::newRow("sin descripcion") << QString() << QStringLiteral("Cliente con Sys_PK=15");
    }
    void savedEntityShowsItsDescription()
    {
        QFETCH(QString, descripcion);
        QFETCH(QString, esperado);
        ETabIndicador o;
        QVERIFY(colocar(o, barra(perspectiva(QStringLiteral("Cliente"))), 15));
        search->description = descripcion;
        ModalAnswerer answerer;
        Vista v;
        answerer.expect([&](QWidget* w) {
            v = leer(w);
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        QVERIFY(engine->Editar_Indicador_Tab(&o));
        QCOMPARE(answerer.seen.size(), 1);
        QCOMPARE(v.info, esperado);
        QCOMPARE(v.indicador, QStringLiteral("Barra de progreso Cobranza de Cliente"));
        QVERIFY(v.buscar);
        QCOMPARE(search->asked, QStringList{QStringLiteral("Cliente|15| ")});
        QCOMPARE(o.FK_Entidad(), 15);
    }

    void newPlacementWithAnEntityShowsItToo()
    {
        ETabIndicador o;
        o.setFK_Indicador(semaforo(perspectiva(QStringLiteral("Cliente"))));
        o.setFK_Entidad(15);
        search->description = QStringLiteral("Ana López");
        QCOMPARE(mirar(o).info, QStringLiteral("Ana López"));
    }

    void undescribableSavedEntityKeepsThePromptAndTheKey()
    {
        ETabIndicador o;
        QVERIFY(colocar(o, semaforo(perspectiva(QStringLiteral("Cliente"))), 15));
        search->raiseOnDescribe = true;
        ModalAnswerer answerer;
        QString info;
        answerer.expect([&](QWidget* w) {
            info = leer(w).info;
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        QVERIFY(engine->Editar_Indicador_Tab(&o));
        QCOMPARE(answerer.seen.size(), 1);
        QCOMPARE(info, QStringLiteral("< Seleccione una entidad de datos >"));
        QCOMPARE(o.FK_Entidad(), 15);
    }

    void entityKeyIsNeverClearedByPutData()
    {
        ETabIndicador o;
        QVERIFY(colocar(o, semaforo(perspectiva(QStringLiteral("Cliente"))), 15));
        dlgConfigIndi dlg;
        dlg.setEngine(engine.get());
        dlg.setTabIndicador(&o);
        dlg.putData();
        o.setFK_Entidad(0);
        dlg.putData();
        QCOMPARE(control<QLabel>(&dlg, QStringLiteral("lblInfo"))->text(),
                 QStringLiteral("< Seleccione una entidad de datos >"));
        dlg.getData();
        QCOMPARE(o.FK_Entidad(), 15);
    }

    void periodListSpellsAnoWhileTheCheckBoxSaysAno()
    {
        ETabIndicador o;
        o.setFK_Indicador(semaforo(perspectiva(QStringLiteral("@"))));
        const Vista v = mirar(o);
        QCOMPARE(v.inicioItems, periodos);
        QCOMPARE(v.checkTexts, checkTexts);
        QCOMPARE(v.inicioItems.last(), QStringLiteral("Ano"));
        QCOMPARE(v.checkTexts.last(), QStringLiteral("Año"));
    }

    void uncheckingWeekClearsOnlyMuestraSemana()
    {
        ETabIndicador o;
        o.setFK_Indicador(semaforo(perspectiva(QStringLiteral("@"))));
        QVERIFY(aceptarCon(o, [](QWidget* w) { control<QCheckBox>(w, QStringLiteral("chkInter(1)"))->click(); }));
        QVERIFY(o.Muestra_Dia());
        QVERIFY(!o.Muestra_Semana());
        QVERIFY(o.Muestra_Mes());
        QVERIFY(o.Muestra_Ano());
    }

    void checksFollowTheStoredFlags()
    {
        ETabIndicador o;
        QVERIFY(colocar(o, barra(perspectiva(QStringLiteral("@")))));
        o.setMuestra_Dia(false);
        o.setMuestra_Semana(true);
        o.setMuestra_Mes(false);
        o.setMuestra_Ano(true);
        QList<bool> vistos;
        QVERIFY(aceptarCon(o, [&](QWidget* w) {
            vistos = leer(w).checks;
            control<QCheckBox>(w, QStringLiteral("chkInter(0)"))->click();
            control<QCheckBox>(w, QStringLiteral("chkInter(3)"))->click();
        }));
        QCOMPARE(vistos, QList<bool>({false, true, false, true}));
        QVERIFY(o.Muestra_Dia());
        QVERIFY(o.Muestra_Semana());
        QVERIFY(!o.Muestra_Mes());
        QVERIFY(!o.Muestra_Ano());
    }

    void openingPeriodIsTheChosenPosition_data()
    {
        QTest::addColumn<int>("posicion");
        for (int k = 0; k < 4; ++k)
            QTest::newRow(qPrintable(periodos.at(k))) << k;
    }
    void openingPeriodIsTheChosenPosition()
    {
        QFETCH(int, posicion);
        ETabIndicador o;
        QVERIFY(colocar(o, semaforo(perspectiva(QStringLiteral("@")))));
        o.setPeriodoInicio(posicion == 0 ? 3 : 0);
        QVERIFY(aceptarCon(o, [&](QWidget* w) {
            auto* combo = control<QComboBox>(w, QStringLiteral("cInicio"));
            QTest::keyClick(combo, Qt::Key_Home);
            for (int k = 0; k < posicion; ++k)
                QTest::keyClick(combo, Qt::Key_Down);
        }));
        QCOMPARE(o.PeriodoInicio(), posicion);
    }

    void savedOpeningPeriodIsShown_data()
    {
        QTest::addColumn<int>("periodo");
        QTest::addColumn<int>("posicion");
        QTest::newRow("dia") << 0 << 0;
        QTest::newRow("ano") << 3 << 3;
        // A period outside the list chooses no entry, and that is what accepting writes back.
        QTest::newRow("fuera") << 7 << -1;
        QTest::newRow("negativo") << -2 << -1;
    }
    void savedOpeningPeriodIsShown()
    {
        QFETCH(int, periodo);
        QFETCH(int, posicion);
        ETabIndicador o;
        QVERIFY(colocar(o, semaforo(perspectiva(QStringLiteral("@")))));
        o.setPeriodoInicio(periodo);
        int visto = -9;
        QVERIFY(aceptarCon(o, [&](QWidget* w) { visto = leer(w).inicio; }));
        QCOMPARE(visto, posicion);
        QCOMPARE(o.PeriodoInicio(), posicion);
    }

    void limitTextsReadTheirLeadingNumber_data()
    {
        QTest::addColumn<QString>("texto");
        QTest::addColumn<double>("valor");
        QTest::newRow("letras") << QStringLiteral("abc") << 0.0;
        QTest::newRow("vacio") << QString() << 0.0;
        QTest::newRow("coma decimal") << QStringLiteral("12,5") << 12.0;
        QTest::newRow("exponente") << QStringLiteral("1.5e2") << 150.0;
        QTest::newRow("negativo") << QStringLiteral("-7.25") << -7.25;
        QTest::newRow("blancos delante") << QStringLiteral("  42") << 42.0;
        QTest::newRow("numero y texto") << QStringLiteral("30 pesos") << 30.0;
    }
    void limitTextsReadTheirLeadingNumber()
    {
        QFETCH(QString, texto);
        QFETCH(double, valor);
        ETabIndicador o;
        QVERIFY(colocar(o, semaforo(perspectiva(QStringLiteral("@")))));
        ModalAnswerer answerer;
        answerer.expect([&](QWidget* w) {
            for (int i = 0; i < 8; ++i)
                escribir(w, QStringLiteral("txtVal(%1)").arg(i), texto);
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        QVERIFY(engine->Editar_Indicador_Tab(&o));
        QCOMPARE(answerer.seen.size(), 1);
        for (const char* name : {"Limite1", "Limite2", "Limite3", "Limite4", "Limite5", "Limite6", "Limite7", "Limite8"})
            QCOMPARE(o.property(name).toDouble(), valor);
    }

    void limitBoxesMapToTheirLimits()
    {
        ETabIndicador o;
        o.setFK_Indicador(barra(perspectiva(QStringLiteral("@"))));
        QVERIFY(aceptarCon(o, [](QWidget* w) {
            for (int i = 0; i < 8; ++i)
                escribir(w, QStringLiteral("txtVal(%1)").arg(i), QString::number(i + 1));
        }));
        // Upper row 1..4 are the odd limits of day..year, lower row 5..8 the even ones.
        QCOMPARE(o.Limite1(), 1.0);
        QCOMPARE(o.Limite2(), 5.0);
        QCOMPARE(o.Limite3(), 2.0);
        QCOMPARE(o.Limite4(), 6.0);
        QCOMPARE(o.Limite5(), 3.0);
        QCOMPARE(o.Limite6(), 7.0);
        QCOMPARE(o.Limite7(), 4.0);
        QCOMPARE(o.Limite8(), 8.0);
    }

    void lowerLimitMayExceedTheUpperOne()
    {
        ETabIndicador o;
        o.setFK_Indicador(semaforo(perspectiva(QStringLiteral("@"))));
        ModalAnswerer answerer;
        answerer.expect([](QWidget* w) {
            escribir(w, QStringLiteral("txtVal(0)"), QStringLiteral("5"));
            escribir(w, QStringLiteral("txtVal(4)"), QStringLiteral("10"));
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        QVERIFY(engine->Editar_Indicador_Tab(&o));
        QCOMPARE(answerer.seen.size(), 1);
        QCOMPARE(o.Limite1(), 5.0);
        QCOMPARE(o.Limite2(), 10.0);
    }

    void limitsShowInTheUsersLocale()
    {
        ETabIndicador o;
        QVERIFY(colocar(o, semaforo(perspectiva(QStringLiteral("@")))));
        o.setLimite1(2.5);
        o.setLimite2(1234567.75);
        QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
        ModalAnswerer answerer;
        QStringList vistos;
        answerer.expect([&](QWidget* w) {
            vistos = leer(w).valores;
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        QVERIFY(engine->Editar_Indicador_Tab(&o));
        QCOMPARE(vistos.at(0), QStringLiteral("2,5"));
        QCOMPARE(vistos.at(4), QStringLiteral("1234567,75"));
        // The number reader knows only the decimal point: a decimal comma cuts the fraction.
        QCOMPARE(o.Limite1(), 2.0);
        QCOMPARE(o.Limite2(), 1234567.0);
    }

    void missingIndicatorKeepsTheDesignTexts()
    {
        ETabIndicador o;
        QVERIFY(colocar(o, 999, 15));
        const Vista v = mirar(o);
        QCOMPARE(v.indicador, QStringLiteral("<Tipo de indicador y entidad asociada >"));
        QCOMPARE(v.info, QStringLiteral("<No hay ninguna entidad de datos asociada>"));
        QCOMPARE(v.inicioItems, periodos);
        QCOMPARE(v.inicio, -1);
        QCOMPARE(v.valores, QStringList(8, QString()));
        QCOMPARE(v.checks, ninguno);
        QVERIFY(search->asked.isEmpty());
    }

    void missingPerspectiveKeepsTheDesignTexts()
    {
        ETabIndicador o;
        QVERIFY(colocar(o, semaforo(999), 15));
        const Vista v = mirar(o);
        QCOMPARE(v.indicador, QStringLiteral("<Tipo de indicador y entidad asociada >"));
        QCOMPARE(v.info, QStringLiteral("<No hay ninguna entidad de datos asociada>"));
        QCOMPARE(v.inicioItems, periodos);
        QCOMPARE(v.valores, QStringList(8, QString()));
        QVERIFY(search->asked.isEmpty());
    }

    void missingPerspectiveAcceptsAsWhenNoEntityIsNeeded()
    {
        ETabIndicador o;
        QVERIFY(colocar(o, semaforo(999), 15));
        search->answer = 15;
        ModalAnswerer answerer;
        answerer.expect([](QWidget* w) {
            // With no entity kind to search, the search finds nothing.
            pulsar(w, QStringLiteral("cmdBuscar"));
            control<QCheckBox>(w, QStringLiteral("chkInter(2)"))->click();
            control<QComboBox>(w, QStringLiteral("cInicio"))->setCurrentIndex(2);
            escribir(w, QStringLiteral("txtVal(7)"), QStringLiteral("9"));
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        QVERIFY(engine->Editar_Indicador_Tab(&o));
        QCOMPARE(answerer.seen.size(), 1);
        QVERIFY(search->asked.isEmpty());
        QCOMPARE(o.FK_Entidad(), 0);
        QVERIFY(!o.Muestra_Dia());
        QVERIFY(o.Muestra_Mes());
        QCOMPARE(o.PeriodoInicio(), 2);
        QCOMPARE(o.Limite8(), 9.0);
        QCOMPARE(o.Limite1(), 0.0);
    }

    void nothingIsWrittenToTheDatabase()
    {
        ETabIndicador o;
        QVERIFY(colocar(o, semaforo(perspectiva(QStringLiteral("Cliente")))));
        search->answer = 15;
        const QList<int> antes = filas();
        const QVariant periodos = db.scalar(QStringLiteral("SELECT uf_Periodos FROM ut_bi_TabIndicador"));
        const QVariant l1 = db.scalar(QStringLiteral("SELECT uf_l1 FROM ut_bi_TabIndicador"));
        QVERIFY(aceptarCon(o, [](QWidget* w) {
            pulsar(w, QStringLiteral("cmdBuscar"));
            control<QCheckBox>(w, QStringLiteral("chkInter(0)"))->click();
            escribir(w, QStringLiteral("txtVal(0)"), QStringLiteral("123"));
        }));
        QCOMPARE(o.FK_Entidad(), 15);
        QCOMPARE(o.Limite1(), 123.0);
        QCOMPARE(filas(), antes);
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_Periodos FROM ut_bi_TabIndicador")).toInt(), periodos.toInt());
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_FK_Entidad FROM ut_bi_TabIndicador")).toInt(), 0);
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_l1 FROM ut_bi_TabIndicador")).toDouble(), l1.toDouble());
    }

    void tabOrderRunsTopToBottom()
    {
        ETabIndicador o;
        o.setFK_Indicador(semaforo(perspectiva(QStringLiteral("Cliente"))));
        ModalAnswerer answerer;
        QStringList orden;
        answerer.expect([&](QWidget* w) {
            QWidget* actual = control<QWidget>(w, QStringLiteral("cmdBuscar"));
            for (int i = 0; i < 16 && actual; ++i) {
                orden << actual->objectName();
                do
                    actual = actual->nextInFocusChain();
                while (actual && actual != w && !(actual->focusPolicy() & Qt::TabFocus));
            }
            pulsar(w, QStringLiteral("cmdCancel"));
        });
        engine->Editar_Indicador_Tab(&o);
        QCOMPARE(orden, QStringList({QStringLiteral("cmdBuscar"), QStringLiteral("chkInter(0)"),
                                     QStringLiteral("chkInter(1)"), QStringLiteral("chkInter(2)"),
                                     QStringLiteral("chkInter(3)"), QStringLiteral("cInicio"),
                                     QStringLiteral("txtVal(0)"), QStringLiteral("txtVal(1)"),
                                     QStringLiteral("txtVal(2)"), QStringLiteral("txtVal(3)"),
                                     QStringLiteral("txtVal(4)"), QStringLiteral("txtVal(5)"),
                                     QStringLiteral("txtVal(6)"), QStringLiteral("txtVal(7)"),
                                     QStringLiteral("cmdAceptar"), QStringLiteral("cmdCancel")}));
    }

    void everyTextFitsItsControl_data()
    {
        QTest::addColumn<QString>("nombre");
        QTest::addColumn<QString>("entidad");
        QTest::addColumn<QString>("descripcion");
        QTest::addColumn<QString>("captura");
        QTest::newRow("comun") << QStringLiteral("Cumplimiento de la meta") << QStringLiteral("Cliente")
                               << QStringLiteral("Comercializadora del Noroeste S.A. de C.V.")
                               << QStringLiteral("dlgconfigindi.png");
        // The longest name and entity kind the tables hold, and a long description.
        QTest::newRow("largo") << QStringLiteral("Cumplimiento mensual de la meta de ventas netas xx")
                               << QStringLiteral("Sucursal de la cadena de tiendas de la región nte")
                               << QStringLiteral("Sucursal 12 Comercializadora del Noroeste S.A. de C.V. Avenida "
                                                 "Insurgentes Sur 1234 Colonia Del Valle")
                               << QStringLiteral("dlgconfigindi-largo.png");
        QTest::newRow("sin entidad") << QStringLiteral("Ventas") << QStringLiteral("@") << QString()
                                     << QStringLiteral("dlgconfigindi-sinentidad.png");
    }
    void everyTextFitsItsControl()
    {
        QFETCH(QString, nombre);
        QFETCH(QString, entidad);
        QFETCH(QString, descripcion);
        QFETCH(QString, captura);
        ETabIndicador o;
        QVERIFY(colocar(o, semaforo(perspectiva(entidad), nombre), 15));
        search->description = descripcion;
        CarpetaPrueba carpeta;
        ModalAnswerer answerer;
        QStringList cortados;
        bool porDefecto = false;
        answerer.expect([&](QWidget* w) {
            cortados = textosCortados(w);
            porDefecto = control<QPushButton>(w, QStringLiteral("cmdAceptar"))->isDefault();
            w->grab().save(carpeta.archivo(captura));
            pulsar(w, QStringLiteral("cmdCancel"));
        });
        engine->Editar_Indicador_Tab(&o);
        QVERIFY(answerer.unexpected.isEmpty());
        QVERIFY2(cortados.isEmpty(), qPrintable(cortados.join(QLatin1Char('|'))));
        QVERIFY(porDefecto);
    }

    void dialogGrowsToShowALongDescriptionFromTheSearch()
    {
        ETabIndicador o;
        o.setFK_Indicador(semaforo(perspectiva(QStringLiteral("Cliente"))));
        search->answer = 16;
        search->description = QStringLiteral("Comercializadora del Noroeste S.A. de C.V. Avenida Insurgentes Sur 1234 "
                                             "Colonia Del Valle, Benito Juárez, Ciudad de México");
        QStringList cortados;
        int antes = 0, despues = 0;
        QVERIFY(aceptarCon(o, [&](QWidget* w) {
            antes = w->height();
            pulsar(w, QStringLiteral("cmdBuscar"));
            cortados = textosCortados(w);
            despues = w->height();
        }));
        QVERIFY2(cortados.isEmpty(), qPrintable(cortados.join(QLatin1Char('|'))));
        QVERIFY(despues > antes);
        QCOMPARE(o.FK_Entidad(), 16);
    }
};

QTEST_MAIN(TstDlgConfigIndi)
#include "tst_dlgconfigindi.moc"
