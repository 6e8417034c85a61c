// Entity factory, save and cascade delete of EEngine. Deletes are plain
// statements on the host's connection, run without a transaction: a failure
// between them leaves the earlier deletions done.
#include "eengine.h"

#include "ado/connection.h"
#include "model/efigura.h"
#include "model/eindicador.h"
#include "model/emetrica.h"
#include "model/eperspectiva.h"
#include "model/etabindicador.h"
#include "model/etablero.h"
#include "model/vendimarbi.h"
#include "msgbox.h"
#include "ravlo.h"
#include "vb/vb.h"

#include <QMetaMethod>
#include <memory>

namespace {

struct Borrado {
    const char* derecho;
    QStringList sentencias;
};

// The right and the statements of each kind, each statement followed by the key.
Borrado borradoDe(int tipo)
{
    using namespace VendimarBI;
    switch (tipo) {
    case cPerspectiva:
        return {"KZ4-TBL-05-003", {QStringLiteral("DELETE FROM ut_bi_Perspectiva WHERE Sys_PK=")}};
    case cMetrica:
        return {"KZ4-TBL-05-006", {QStringLiteral("DELETE FROM ut_bi_Metrica WHERE Sys_PK=")}};
    case cIndicador:
        return {"KZ4-TBL-06-003",
                {QStringLiteral("DELETE FROM ut_bi_Semaforo WHERE uf_FK_Indicador="),
                 QStringLiteral("DELETE FROM ut_bi_MatrizGraf WHERE uf_FK_Indicador="),
                 QStringLiteral("DELETE FROM ut_bi_BarraProg WHERE uf_FK_Indicador="),
                 QStringLiteral("DELETE FROM ut_bi_Indicador WHERE Sys_PK=")}};
    case cTablero:
        return {"KZ4-TBL-04-000",
                {QStringLiteral("DELETE FROM ut_bi_TabIndicador WHERE uf_FK_Tablero="),
                 QStringLiteral("DELETE FROM ut_bi_Fig WHERE uf_FK_Tablero="),
                 QStringLiteral("DELETE FROM ut_bi_Tablero WHERE Sys_PK=")}};
    case ctabindicador:
        return {"KZ4-TBL-03-000", {QStringLiteral("DELETE FROM ut_bi_TabIndicador WHERE Sys_PK=")}};
    default:
        return {"KZ4-TBL-03-000", {QStringLiteral("DELETE FROM ut_bi_Fig WHERE Sys_PK=")}};
    }
}

} // namespace

QObject* EEngine::CrearEntidad(int Tipo)
{
    using namespace VendimarBI;
    switch (Tipo) {
    case cPerspectiva:
        return new EPerspectiva;
    case cMetrica:
        return new EMetrica;
    case cIndicador:
        return new EIndicador;
    case cTablero:
        return new ETablero;
    case ctabindicador:
        return new ETabIndicador;
    case cFigura:
        return new EFigura;
    default:
        return nullptr;
    }
}

QObject* EEngine::CargarEntidad(int Tipo, int PK)
{
    std::unique_ptr<QObject> entidad(CrearEntidad(Tipo));
    if (!entidad)
        vb::raise(vb::ErrObjectNotSet);
    bool loaded = false;
    QMetaObject::invokeMethod(entidad.get(), "Load", Q_RETURN_ARG(bool, loaded), Q_ARG(QObject*, ADOCnn()),
                              Q_ARG(int, PK));
    return loaded ? entidad.release() : nullptr;
}

// Any object with a Save(cnx) member will do: the engine calls it by name.
bool EEngine::GuardarEntidad(QObject* entidad)
{
    if (!entidad)
        vb::raise(vb::ErrObjectNotSet);
    const int index = entidad->metaObject()->indexOfMethod("Save(QObject*)");
    if (index < 0)
        vb::raise(vb::ErrNoSuchMember);
    bool saved = false;
    if (!entidad->metaObject()->method(index).invoke(entidad, Qt::DirectConnection, Q_RETURN_ARG(bool, saved),
                                                     Q_ARG(QObject*, ADOCnn())))
        vb::raise(vb::ErrNoSuchMember);
    return saved;
}

void EEngine::EliminarObjetosTablero(int PK)
{
    for (const QString& sql : {QStringLiteral("DELETE FROM ut_bi_TabIndicador WHERE uf_FK_Tablero="),
                               QStringLiteral("DELETE FROM ut_bi_Fig WHERE uf_FK_Tablero=")}) {
        try {
            ejecutar(sql + QString::number(PK));
        } catch (const vb::AutomationError&) {
        }
    }
}

bool EEngine::EliminarTablero(int PK)
{
    try {
        const int answer = vbui::MsgBox(QStringLiteral("¿Está seguro que desea eliminar el tablero seleccionado?"),
                                        vbui::vbYesNo | vbui::vbQuestion | vbui::vbDefaultButton2);
        if (answer == vbui::vbNo)
            return false;
        return EliminarEntidad(VendimarBI::cTablero, PK);
    } catch (const vb::AutomationError&) {
        return false;
    }
}

// True for a kind outside 1 to 6 but false for a refused right: hosts rely on
// that asymmetry.
bool EEngine::EliminarEntidad(int Tipo, int PK)
{
    if (Tipo < VendimarBI::cPerspectiva || Tipo > VendimarBI::cFigura)
        return true;
    try {
        const Borrado borrado = borradoDe(Tipo);
        if (!verificarDerecho(QString::fromLatin1(borrado.derecho)))
            return false;
        for (const QString& sql : borrado.sentencias)
            ejecutar(sql + QString::number(PK));
        return true;
    } catch (const vb::AutomationError&) {
        return false;
    }
}

bool EEngine::verificarDerecho(const QString& codigo)
{
    auto* um = qobject_cast<Ravlo*>(m_um.data());
    if (!um)
        vb::raise(vb::ErrObjectNotSet);
    return um->VerificarDerecho(codigo, true, true, QString());
}

void EEngine::ejecutar(const QString& sql)
{
    auto* connection = qobject_cast<ado::Connection*>(m_adoCnn.data());
    if (!connection)
        vb::raise(vb::ErrObjectNotSet);
    connection->Execute(sql);
}
