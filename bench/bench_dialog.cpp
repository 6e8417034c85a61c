// dlgPropIndicador.Edit until the dialog is on screen, against the same
// widgets of the same dialog filled from values already in memory and shown.
// Building the dialog and destroying it are left out on both sides: what is
// compared is what happens between "edit this indicator" and the first frame.
#include "suite.h"

#include "designer/dlgpropindicador.h"
#include "designer/muestra.h"
#include "engine/eengine.h"
#include "seed.h"
#include "vb/vb.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QSqlQuery>
#include <memory>
#include <vector>

namespace {

template <typename T>
T* control(QWidget* dialogo, const QString& nombre)
{
    T* widget = dialogo->findChild<T*>(nombre);
    if (!widget)
        throw std::runtime_error(("dlgPropIndicador has no control " + nombre).toStdString());
    return widget;
}

// The first frame: the dialog shown and every pending layout and paint done.
void mostrar(QWidget* dialogo)
{
    dialogo->show();
    QApplication::processEvents();
}

bool comprobar(QWidget* dialogo)
{
    const auto* metrica = dialogo->findChild<QComboBox*>(QStringLiteral("cMetrica"));
    const auto* lista = dialogo->findChild<QListWidget*>(QStringLiteral("lstMetricas"));
    return dialogo->isVisible() && metrica && lista && metrica->count() == seed::Metricas
        && lista->count() == seed::Metricas && metrica->currentData().toInt() == seed::MetricaDialogo;
}

void editar(benchmark::State& state, BenchDatabase* db)
{
    EEngine engine;
    engine.SetConnection(&db->connection(), 1);
    Reloj reloj;
    for (auto _ : state) {
        auto dialogo = std::make_unique<dlgPropIndicador>();
        dialogo->setEngine(&engine);
        reloj.iniciar();
        dialogo->Edit(seed::IndicadorDialogo);
        mostrar(dialogo.get());
        reloj.parar(state);
        if (!comprobar(dialogo.get())) {
            state.SkipWithError("the dialog does not show the indicator");
            break;
        }
        dialogo->hide();
    }
}

// What the dialog shows for the indicator, held in memory before the clock starts.
struct Contenido {
    QString nombre;
    int metrica = 0;
    double minimo[4] = {};
    double maximo[4] = {};
    int color[4] = {};
    int debajo[4] = {};
    int arriba[4] = {};
    std::vector<std::pair<QString, int>> metricas; // by name, as the lists show them
};

Contenido contenido(BenchDatabase* db)
{
    Contenido c;
    QSqlQuery q(db->connection().database());
    q.exec(QStringLiteral("SELECT uf_Nombre FROM ut_bi_Indicador WHERE Sys_PK=%1").arg(seed::IndicadorDialogo));
    if (q.next())
        c.nombre = q.value(0).toString();
    q.exec(QStringLiteral("SELECT * FROM ut_bi_BarraProg WHERE uf_FK_Indicador=%1").arg(seed::IndicadorDialogo));
    if (q.next()) {
        c.metrica = q.value(1).toInt();
        for (int p = 0; p < 4; ++p) {
            c.minimo[p] = q.value(2 + 5 * p).toDouble();
            c.maximo[p] = q.value(3 + 5 * p).toDouble();
            c.color[p] = q.value(4 + 5 * p).toInt();
            c.debajo[p] = q.value(5 + 5 * p).toInt();
            c.arriba[p] = q.value(6 + 5 * p).toInt();
        }
    }
    q.exec(QStringLiteral("SELECT Sys_PK, uf_Nombre FROM ut_bi_Metrica WHERE uf_FK_Perspectiva=%1 ORDER BY uf_Nombre")
               .arg(seed::Perspectiva));
    while (q.next())
        c.metricas.emplace_back(q.value(1).toString(), q.value(0).toInt());
    return c;
}

void llenarCombo(QComboBox* combo, const Contenido& c)
{
    combo->clear();
    for (const auto& [nombre, clave] : c.metricas)
        combo->addItem(nombre, clave);
    combo->setCurrentIndex(-1);
}

void llenarDesdeMemoria(benchmark::State& state, BenchDatabase* db)
{
    const Contenido c = contenido(db);
    if (int(c.metricas.size()) != seed::Metricas) {
        state.SkipWithError("the library does not hold the perspective's metrics");
        return;
    }
    const QLocale locale;
    Reloj reloj;
    for (auto _ : state) {
        auto dialogo = std::make_unique<dlgPropIndicador>();
        QWidget* d = dialogo.get();
        // Finding the controls by name is the floor's bookkeeping, not work
        // the dialog does: done before the clock starts.
        auto* nombre = control<QLineEdit>(d, QStringLiteral("cNombre"));
        auto* opt1 = control<QRadioButton>(d, QStringLiteral("opt1"));
        QWidget* paneles[3] = {control<QWidget>(d, QStringLiteral("picMatriz")),
                               control<QWidget>(d, QStringLiteral("picSemaforo")),
                               control<QWidget>(d, QStringLiteral("picBarra"))};
        auto* cMetrica = control<QComboBox>(d, QStringLiteral("cMetrica"));
        auto* cMetrica2 = control<QComboBox>(d, QStringLiteral("cMetrica2"));
        auto* lstMetricas = control<QListWidget>(d, QStringLiteral("lstMetricas"));
        auto* cTipoGraf = control<QComboBox>(d, QStringLiteral("cTipoGraf"));
        QLineEdit* cMin[4];
        QLineEdit* cMax[4];
        Muestra* cColor[4];
        Muestra* lblColorMin[4];
        Muestra* lblColorMax[4];
        for (int p = 0; p < 4; ++p) {
            const QString i = QStringLiteral("(%1)").arg(p);
            cMin[p] = control<QLineEdit>(d, QStringLiteral("cMin") + i);
            cMax[p] = control<QLineEdit>(d, QStringLiteral("cMax") + i);
            cColor[p] = control<Muestra>(d, QStringLiteral("cColor") + i);
            lblColorMin[p] = control<Muestra>(d, QStringLiteral("lblColorMin") + i);
            lblColorMax[p] = control<Muestra>(d, QStringLiteral("lblColorMax") + i);
        }

        reloj.iniciar();
        llenarCombo(cMetrica, c);
        llenarCombo(cMetrica2, c);
        lstMetricas->clear();
        for (const auto& [texto, clave] : c.metricas) {
            auto* item = new QListWidgetItem(texto);
            item->setData(Qt::UserRole, clave);
            lstMetricas->addItem(item);
        }
        cTipoGraf->addItems({QStringLiteral("Líneas 2D"), QStringLiteral("Barras 2D"), QStringLiteral("Barras 3D"),
                             QStringLiteral("Pastel")});
        cTipoGraf->setCurrentIndex(0);
        nombre->setText(c.nombre);
        opt1->setChecked(true);
        paneles[0]->hide();
        paneles[1]->hide();
        paneles[2]->show();
        cMetrica->setCurrentIndex(cMetrica->findData(c.metrica));
        for (int p = 0; p < 4; ++p) {
            cMin[p]->setText(vb::CStr(c.minimo[p], locale));
            cMax[p]->setText(vb::CStr(c.maximo[p], locale));
            lblColorMin[p]->setColorOle(c.debajo[p]);
            lblColorMax[p]->setColorOle(c.arriba[p]);
            cColor[p]->setColorOle(c.color[p]);
        }
        mostrar(d);
        reloj.parar(state);
        if (!comprobar(d)) {
            state.SkipWithError("the floor dialog does not show the indicator");
            break;
        }
        dialogo->hide();
    }
}

} // namespace

void registerDialogBenchmarks(Suite& suite)
{
    benchmark::RegisterBenchmark(suite.name("dlgPropIndicador.Edit", "work").c_str(), editar, suite.lectura.get())
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(suite.name("dlgPropIndicador.Edit", "floor").c_str(), llenarDesdeMemoria,
                                 suite.lectura.get())
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
}
