#include "screenshots.h"

#include "ado/connection.h"
#include "capturastablero.h"
#include "dashboard/dlgconfigindi.h"
#include "dashboard/dlgfig.h"
#include "designer/dlgpropindicador.h"
#include "engine/eengine.h"
#include "gestorusuarios.h"
#include "library/dlgbibdatos.h"
#include "library/dlgbibindi.h"
#include "library/dlgdato.h"
#include "library/dlgproppers.h"
#include "library/dlgselindicador.h"
#include "library/dlgtablero.h"
#include "model/efigura.h"
#include "model/etabindicador.h"
#include "ado/recordset.h"
#include "schemainstaller.h"
#include "valoresvivos.h"
#include "ventanademo.h"
#include "vb/automationerror.h"

#include <QDir>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>

namespace {

int primeraClave(ado::Connection& cnx, const QString& sql)
{
    ado::Recordset rs;
    rs.setActiveConnection(&cnx);
    rs.setSource(sql);
    rs.Open();
    return rs.atEnd() ? 0 : rs.Fields(0).toInt();
}

bool capturar(QWidget& ventana, const QString& archivo)
{
    ventana.show();
    if (ventana.inherits("QDialog"))
        ventana.adjustSize();
    return ventana.grab().save(archivo);
}

// The view mode pictured once its figures are in, or after half a minute
// with whatever is still on its way drawn busy.
std::unique_ptr<QWidget> vistaConValores(EEngine& engine, const QString& url)
{
    auto ventana = std::make_unique<VentanaDemo>(&engine, 1, url);
    ventana->setModoVista(true);
    ValoresVivos* vivos = ventana->valoresVivos();
    QEventLoop espera;
    QObject::connect(vivos, &ValoresVivos::calculados, &espera, [&] {
        if (vivos->enCurso() == 0)
            espera.quit();
    });
    QTimer::singleShot(30000, &espera, &QEventLoop::quit);
    if (vivos->enCurso() > 0)
        espera.exec();
    return ventana;
}

} // namespace

int escribirCapturas(const QString& carpeta, QString* error)
{
    QTemporaryDir temporal;
    if (!QDir().mkpath(carpeta) || !temporal.isValid()) {
        *error = QStringLiteral("cannot write to %1").arg(carpeta);
        return -1;
    }
    try {
        ado::Connection cnx;
        cnx.Open(QStringLiteral("sqlite://") + temporal.filePath(QStringLiteral("capturas.db")));
        SchemaInstaller::apply(cnx);
        SchemaInstaller::addDemoData(cnx);
        EEngine engine;
        GestorUsuarios usuarios;
        engine.SetConnection(&cnx, 1);
        engine.SetUM(&usuarios);
        const int metrica = primeraClave(cnx, QStringLiteral("SELECT MIN(Sys_PK) FROM ut_bi_Metrica"));
        const int perspectiva = primeraClave(cnx, QStringLiteral("SELECT MIN(Sys_PK) FROM ut_bi_Perspectiva"));
        const int tablero = primeraClave(cnx, QStringLiteral("SELECT MIN(Sys_PK) FROM ut_bi_Tablero"));
        const int placed = primeraClave(cnx, QStringLiteral("SELECT MIN(Sys_PK) FROM ut_bi_TabIndicador"));
        const int figura = primeraClave(cnx, QStringLiteral("SELECT MIN(Sys_PK) FROM ut_bi_Fig"));

        struct Captura {
            QString archivo;
            std::function<std::unique_ptr<QWidget>()> preparar;
        };
        auto conMotor = [&engine](auto* dialogo) {
            dialogo->setEngine(&engine);
            return dialogo;
        };
        const QList<Captura> capturas{
            {QStringLiteral("vbi-demo.png"), [&] { return std::unique_ptr<QWidget>(new VentanaDemo(&engine, 1, cnx.ConnectionString())); }},
            {QStringLiteral("vbi-vista.png"), [&] { return vistaConValores(engine, cnx.ConnectionString()); }},
            {QStringLiteral("dlgDato.png"), [&] { auto* d = conMotor(new dlgDato); d->Edit(metrica); return std::unique_ptr<QWidget>(d); }},
            {QStringLiteral("dlgPropPers.png"), [&] { auto* d = conMotor(new dlgPropPers); d->Edit(perspectiva); return std::unique_ptr<QWidget>(d); }},
            {QStringLiteral("dlgTablero.png"), [&] { auto* d = conMotor(new dlgTablero); d->Edit(tablero); return std::unique_ptr<QWidget>(d); }},
            {QStringLiteral("dlgPropIndicador.png"), [&] {
                 auto* d = conMotor(new dlgPropIndicador);
                 d->Edit(primeraClave(cnx, QStringLiteral("SELECT MIN(Sys_PK) FROM ut_bi_Indicador")));
                 return std::unique_ptr<QWidget>(d);
             }},
            {QStringLiteral("dlgBibdatos.png"), [&] { return std::unique_ptr<QWidget>(conMotor(new dlgBibdatos)); }},
            {QStringLiteral("dlgBibIndi.png"), [&] { return std::unique_ptr<QWidget>(conMotor(new dlgBibIndi)); }},
            {QStringLiteral("dlgSelIndicador.png"), [&] { return std::unique_ptr<QWidget>(conMotor(new dlgSelIndicador)); }},
            {QStringLiteral("dlgConfigIndi.png"), [&] {
                 auto* d = conMotor(new dlgConfigIndi);
                 auto* tab = new ETabIndicador(d);
                 tab->Load(&cnx, placed);
                 d->setTabIndicador(tab);
                 d->putData();
                 return std::unique_ptr<QWidget>(d);
             }},
            {QStringLiteral("dlgFig.png"), [&] {
                 auto* d = conMotor(new dlgFig);
                 auto* fig = new EFigura(d);
                 fig->Load(&cnx, figura);
                 d->setFigura(fig);
                 d->putData();
                 return std::unique_ptr<QWidget>(d);
             }},
        };
        int escritas = 0;
        for (const Captura& captura : capturas) {
            std::unique_ptr<QWidget> ventana = captura.preparar();
            if (capturar(*ventana, QDir(carpeta).filePath(captura.archivo)))
                ++escritas;
        }
        return escritas + CapturasTablero::escribir(engine, 1, tablero, carpeta);
    } catch (const vb::AutomationError& e) {
        *error = e.description();
        return -1;
    }
}
