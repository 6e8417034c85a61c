#include "eengine.h"

#include "buscadorentidades.h"
#include "quelta.h"
#include "ravlo.h"
#include "vb/vb.h"

EEngine::EEngine(QObject* parent)
    : QObject(parent)
    , m_search(new BuscadorEntidades(this))
{
}

// The connection belongs to the host: the engine lets go of it and never closes it.
EEngine::~EEngine() = default;

void EEngine::SetUM(QObject* oUserManagment)
{
    if (oUserManagment && !qobject_cast<Ravlo*>(oUserManagment))
        vb::raise(vb::ErrTypeMismatch);
    m_um = oUserManagment;
}

void EEngine::SetConnection(QObject* o, int PKU)
{
    m_adoCnn = o;
    m_pkUser = PKU;
    // A search object that refuses the connection leaves the engine connected all the same.
    try {
        if (auto* search = qobject_cast<Quelta*>(m_search.data()))
            search->Conectar(o);
    } catch (...) {
    }
}

QString EEngine::get_info(const QString& /*ename*/, int /*PK*/)
{
    return QString();
}

QVariant EEngine::get_MainArray(const QString& /*ename*/, int /*PK*/, short /*interval*/, int /*value*/)
{
    return vb::Empty();
}

QVariant EEngine::get_ChartArray(const QString& /*ename*/, int /*PK*/, short /*interval*/, int /*value*/,
                                 short /*wide*/)
{
    return vb::Empty();
}
