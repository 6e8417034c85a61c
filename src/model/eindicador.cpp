#include "eindicador.h"

#include "ado/connection.h"
#include "ebarraprogreso.h"
#include "ematrizgrafico.h"
#include "esemaforo.h"
#include "pasos.h"
#include "registrotabla.h"
#include "vendimarbi.h"
#include "vb/texto.h"

#include <QMetaObject>
#include <QMetaProperty>

namespace {

// A fresh, empty configuration for a kind, owned by the indicator; none for
// a kind without settings.
QObject* nuevaConfiguracion(int tipo, QObject* indicador)
{
    switch (tipo) {
    case VendimarBI::cBarraProgreso:
        return new EBarraProgreso(indicador);
    case VendimarBI::cMatrizGrafico:
        return new EMatrizGrafico(indicador);
    case VendimarBI::cSemaforo:
        return new ESemaforo(indicador);
    default:
        return nullptr;
    }
}

// Calls Load or Save on the configuration by name, as a late-bound call: any
// object that offers the method will do, and one that does not is skipped
// like a trapped "method not supported". The result is not needed.
void llamarConfiguracion(QObject* configuracion, const char* metodo, QObject* cnx, int clave)
{
    if (!configuracion)
        return;
    const QByteArray firma = QByteArray(metodo) + "(QObject*,int)";
    if (configuracion->metaObject()->indexOfMethod(firma.constData()) < 0)
        return;
    model::paso([&] {
        QMetaObject::invokeMethod(configuracion, metodo, Qt::DirectConnection, Q_ARG(QObject*, cnx),
                                  Q_ARG(int, clave));
    });
}

// Whether every text of the configuration can be stored as it is. One that
// cannot would make the new configuration row fail after the old one is
// deleted, so the indicator refuses it before writing anything.
bool textosEnteros(const QObject* configuracion)
{
    if (!configuracion)
        return true;
    const QMetaObject* meta = configuracion->metaObject();
    for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        if (property.metaType().id() == QMetaType::QString
            && !vb::almacenable(property.read(configuracion).toString()))
            return false;
    }
    return true;
}

} // namespace

EIndicador::EIndicador(QObject* parent)
    : QObject(parent)
    , m_configuracion(new EBarraProgreso(this))
    , m_tipo(VendimarBI::cBarraProgreso)
{
}

// Only a configuration the indicator made itself is destroyed, and only
// later: the caller that fetched it a moment ago may still be using it
// within the same call (the property dialog reads Configuracion right after
// writing Tipo). One put from outside belongs to whoever made it.
void EIndicador::soltarConfiguracion()
{
    QObject* actual = m_configuracion.data();
    m_configuracion.clear();
    if (actual && actual->parent() == this)
        actual->deleteLater();
}

void EIndicador::setConfiguracion(QObject* value)
{
    if (value == m_configuracion.data())
        return;
    soltarConfiguracion();
    m_configuracion = value;
}

void EIndicador::setTipo(int value)
{
    if (value == m_tipo)
        return;
    soltarConfiguracion();
    m_configuracion = nuevaConfiguracion(value, this);
    m_tipo = value;
}

bool EIndicador::Load(QObject* cnx, int PK)
{
    bool loaded = false;
    model::paso([&] {
        RegistroTabla reg;
        reg.setConexion(cnx);
        reg.setTabla(QStringLiteral("ut_bi_Indicador"));
        if (!reg.Buscar(PK, QString(), cnx, 1))
            return;
        m_sysPK = reg.PK();
        model::leer(reg, QStringLiteral("uf_Nombre"), m_nombre);
        // Through the put, so a row of the kind already held keeps the
        // configuration object and a different kind brings an empty one.
        int tipo = m_tipo;
        model::leer(reg, QStringLiteral("uf_Tipo"), tipo);
        model::paso([&] { setTipo(tipo); });
        model::leer(reg, QStringLiteral("uf_fk_perspectiva"), m_fkPerspectiva);
        // An indicator without a configuration row still loads.
        llamarConfiguracion(m_configuracion.data(), "Load", cnx, PK);
        loaded = true;
    });
    return loaded;
}

bool EIndicador::Save(QObject* cnx)
{
    if (!textosEnteros(m_configuracion.data()))
        return false;
    bool saved = false;
    model::paso([&] {
        RegistroTabla reg;
        reg.setConexion(cnx);
        reg.setTabla(QStringLiteral("ut_bi_Indicador"));
        reg.DefinirCampo(QStringLiteral("uf_Nombre"), RegistroTabla::cTexto, QString(), 50);
        reg.DefinirCampo(QStringLiteral("uf_Tipo"), RegistroTabla::cEntero, 0, 0);
        reg.DefinirCampo(QStringLiteral("uf_FK_Perspectiva"), RegistroTabla::cEntero, 0, 0);
        if (!model::localizar(reg, m_sysPK, cnx))
            return;
        model::asignar(reg, QStringLiteral("uf_Nombre"), m_nombre);
        model::asignar(reg, QStringLiteral("uf_Tipo"), m_tipo);
        model::asignar(reg, QStringLiteral("uf_FK_Perspectiva"), m_fkPerspectiva);
        saved = model::escribir(reg, m_sysPK);
    });
    if (!saved)
        return false;

    // All three tables are cleared whatever the kind, so a change of kind
    // leaves no stale row behind. Each delete stands alone: one that fails
    // does not keep the others, or the new row, from being written.
    const QString clave = QString::number(m_sysPK);
    for (const QString& borrar : {QStringLiteral("DELETE FROM ut_bi_Semaforo WHERE uf_FK_Indicador="),
                                  QStringLiteral("DELETE FROM ut_bi_MatrizGraf WHERE uf_FK_Indicador="),
                                  QStringLiteral("DELETE FROM ut_bi_BarraProg WHERE uf_FK_Indicador=")}) {
        model::paso([&] {
            ado::Connection* connection = ado::openConnection(cnx);
            if (connection)
                connection->Execute(borrar + clave);
        });
    }
    // The indicator row is already written; a configuration that cannot be
    // stored (a decimal comma in a bound, say) does not undo it.
    llamarConfiguracion(m_configuracion.data(), "Save", cnx, m_sysPK);
    return true;
}
