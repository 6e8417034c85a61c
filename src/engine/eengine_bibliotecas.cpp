// The library and dashboard-item entry points of EEngine.
#include "eengine.h"

#include "dashboard/dlgconfigindi.h"
#include "dashboard/dlgfig.h"
#include "library/dlgbibdatos.h"
#include "library/dlgbibindi.h"
#include "library/dlgselindicador.h"
#include "vb/automationerror.h"

#include <QApplication>
#include <QPointer>
#include <memory>

namespace {

// The two item editors ask no right: placing the item on the dashboard did.
template <typename Dialog, typename Setter>
bool editarElemento(EEngine* engine, Setter setReference)
{
    std::unique_ptr<Dialog> dialogo(new Dialog(QApplication::activeWindow()));
    try {
        dialogo->setEngine(engine);
        setReference(*dialogo);
        dialogo->putData();
        dialogo->exec();
    } catch (const vb::AutomationError&) {
    }
    return dialogo->Aceptado();
}

} // namespace

void EEngine::abrirBiblioteca(const char* derecho, const std::function<Dialogo*()>& crearDialogo)
{
    try {
        if (!verificarDerecho(QString::fromLatin1(derecho)))
            return;
        // A library closes by unloading itself; the engine does not unload it.
        QPointer<Dialogo> dialogo(crearDialogo());
        dialogo->setAttribute(Qt::WA_DeleteOnClose);
        dialogo->setEngine(this);
        dialogo->exec();
        if (dialogo)
            dialogo->close();
    } catch (const vb::AutomationError&) {
    }
}

void EEngine::Biblioteca_Metricas()
{
    abrirBiblioteca("KZ4-TBL-05-000", nuevoDialogo<dlgBibdatos>);
}

void EEngine::Biblioteca_Indicadores()
{
    abrirBiblioteca("KZ4-TBL-06-000", nuevoDialogo<dlgBibIndi>);
}

// Picking an indicator asks the right of placing items on a dashboard.
int EEngine::Seleccionar_Indicador()
{
    return abrirEditor("KZ4-TBL-03-000", nuevoDialogo<dlgSelIndicador>, [](Dialogo& d) { d.setResultado(0); });
}

bool EEngine::Editar_Indicador_Tab(QObject* o)
{
    return editarElemento<dlgConfigIndi>(this, [o](dlgConfigIndi& d) { d.setTabIndicador(o); });
}

bool EEngine::Editar_Figura(QObject* o)
{
    return editarElemento<dlgFig>(this, [o](dlgFig& d) { d.setFigura(o); });
}
