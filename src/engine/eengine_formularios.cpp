// The entity-editor entry points of EEngine, and the two questions it passes
// on to the host's entity search.
#include "eengine.h"

#include "designer/dlgpropindicador.h"
#include "library/dlgdato.h"
#include "library/dlgproppers.h"
#include "library/dlgtablero.h"
#include "quelta.h"
#include "vb/variantconv.h"
#include "vb/vb.h"

#include <QApplication>
#include <QLineEdit>
#include <memory>

int EEngine::abrirEditor(const char* derecho, const std::function<Dialogo*()>& crearDialogo,
                         const std::function<void(Dialogo&)>& preparar)
{
    try {
        if (!verificarDerecho(QString::fromLatin1(derecho)))
            return 0;
    } catch (const vb::AutomationError&) {
        return 0;
    }
    std::unique_ptr<Dialogo> dialogo(crearDialogo());
    try {
        dialogo->setEngine(this);
        preparar(*dialogo);
        dialogo->exec();
    } catch (const vb::AutomationError&) {
    }
    return dialogo->Resultado();
}

int EEngine::Form_Agregar_Perspectiva(int Padre)
{
    return abrirEditor("KZ4-TBL-05-001", nuevoDialogo<dlgPropPers>,
                       [Padre](Dialogo& d) { static_cast<dlgPropPers&>(d).Nuevo(Padre); });
}

bool EEngine::Form_Editar_Perspectiva(int PK)
{
    return abrirEditor("KZ4-TBL-05-002", nuevoDialogo<dlgPropPers>,
                       [PK](Dialogo& d) { static_cast<dlgPropPers&>(d).Edit(PK); }) > 0;
}

int EEngine::Form_Agregar_Metrica(int Padre)
{
    return abrirEditor("KZ4-TBL-05-004", nuevoDialogo<dlgDato>, [Padre](Dialogo& d) { static_cast<dlgDato&>(d).Nuevo(Padre); });
}

bool EEngine::Form_Editar_Metrica(int PK)
{
    return abrirEditor("KZ4-TBL-05-005", nuevoDialogo<dlgDato>, [PK](Dialogo& d) { static_cast<dlgDato&>(d).Edit(PK); }) > 0;
}

int EEngine::Form_Agregar_Indicador(int Padre)
{
    return abrirEditor("KZ4-TBL-06-001", nuevoDialogo<dlgPropIndicador>,
                       [Padre](Dialogo& d) { static_cast<dlgPropIndicador&>(d).Nuevo(Padre); });
}

bool EEngine::Form_Editar_Indicador(int PK)
{
    return abrirEditor("KZ4-TBL-06-002", nuevoDialogo<dlgPropIndicador>,
                       [PK](Dialogo& d) { static_cast<dlgPropIndicador&>(d).Edit(PK); }) > 0;
}

// The name goes into the box before Nuevo, which empties the box again: the
// dialog always opens with an empty name, as hosts have always seen it.
int EEngine::Form_Agregar_Tablero(int PKUsuario, const QString& Nombre)
{
    return abrirEditor("KZ4-TBL-01-000", nuevoDialogo<dlgTablero>, [PKUsuario, Nombre](Dialogo& d) {
        auto& tablero = static_cast<dlgTablero&>(d);
        tablero.nombre()->setText(Nombre);
        tablero.Nuevo(PKUsuario);
    });
}

// Renaming a dashboard asks the right of placing items on one, not of adding one.
bool EEngine::Form_Editar_Tablero(int PK)
{
    return abrirEditor("KZ4-TBL-03-000", nuevoDialogo<dlgTablero>,
                       [PK](Dialogo& d) { static_cast<dlgTablero&>(d).Edit(PK); }) > 0;
}

int EEngine::BuscarEntidad(const QString& sTipoEntidad)
{
    try {
        auto* search = qobject_cast<Quelta*>(m_search.data());
        if (!search)
            return 0;
        return vb::toLong(search->Buscar(sTipoEntidad, true));
    } catch (const vb::AutomationError&) {
        return 0;
    } catch (const std::exception&) {
        return 0;
    }
}

// Errors of the search object reach the host.
QString EEngine::InfoEntidad(const QString& sTipoEntidad, int PK)
{
    auto* search = qobject_cast<Quelta*>(m_search.data());
    if (!search)
        vb::raise(vb::ErrObjectNotSet);
    const QString texto = search->Describir(sTipoEntidad, QString::number(PK), QStringLiteral(" "));
    if (texto.isEmpty())
        return sTipoEntidad + QStringLiteral(" con Sys_PK=") + QString::number(PK);
    return texto;
}
