#include "etablero.h"

#include "efigura.h"
#include "etabindicador.h"
#include "mdl_consulta.h"
#include "pasos.h"
#include "registrotabla.h"

#include <memory>

namespace {

// Replaces the collection with a new, empty one and fills it with one child
// per key the query returns. A child whose own Load fails is left out; an
// error stops filling this collection only, and the dashboard's Load goes on.
template <typename Child>
void cargarHijos(ETablero& owner, QPointer<Coleccion>& coleccion, QObject* cnx, const QString& sql)
{
    // The earlier collection is not deleted: callers may still hold it, and
    // it keeps its members until the dashboard itself goes.
    coleccion = new Coleccion(&owner);
    Coleccion* target = coleccion.data();
    model::paso([&] {
        const auto rs = mdl_functions::AbrirConsulta(cnx, sql);
        if (!rs)
            return;
        while (!rs->atEnd()) {
            const int pk = vb::toLong(rs->Fields(QStringLiteral("Sys_PK")));
            auto child = std::make_unique<Child>();
            if (child->Load(cnx, pk))
                target->Add(child.release());
            rs->MoveNext();
        }
    });
}

} // namespace

ETablero::ETablero(QObject* parent)
    : QObject(parent)
{
}

bool ETablero::Load(QObject* cnx, int PK)
{
    bool found = false;
    model::paso([&] {
        RegistroTabla reg;
        reg.setConexion(cnx);
        reg.setTabla(QStringLiteral("ut_bi_Tablero"));
        if (!reg.Buscar(PK, QString(), cnx, 1))
            return;
        found = true;
        m_sysPK = reg.PK();
        model::leer(reg, QStringLiteral("uf_Nombre"), m_nombre);
        model::leer(reg, QStringLiteral("uf_FK_Usuario"), m_fkUsuario);
    });
    if (!found)
        return false;
    CargarFiguras(cnx);
    CargarIndicadores(cnx);
    return true;
}

void ETablero::CargarFiguras(QObject* cnx)
{
    cargarHijos<EFigura>(*this, m_figuras, cnx,
                         QStringLiteral("Select Sys_PK From ut_bi_fig WHERE uf_FK_Tablero=") + QString::number(m_sysPK));
}

void ETablero::CargarIndicadores(QObject* cnx)
{
    cargarHijos<ETabIndicador>(
        *this, m_indicadores, cnx,
        QStringLiteral("Select Sys_PK From ut_bi_tabindicador WHERE uf_FK_Tablero=") + QString::number(m_sysPK));
}

// Only the dashboard's own row: the collections are neither saved nor touched.
bool ETablero::Save(QObject* cnx)
{
    bool saved = false;
    model::paso([&] {
        RegistroTabla reg;
        reg.setConexion(cnx);
        reg.setTabla(QStringLiteral("ut_bi_Tablero"));
        reg.DefinirCampo(QStringLiteral("uf_Nombre"), RegistroTabla::cTexto, QString(), 50);
        reg.DefinirCampo(QStringLiteral("uf_FK_Usuario"), RegistroTabla::cEntero, 0, 0);
        if (!model::localizar(reg, m_sysPK, cnx))
            return;
        model::asignar(reg, QStringLiteral("uf_Nombre"), m_nombre);
        model::asignar(reg, QStringLiteral("uf_FK_Usuario"), m_fkUsuario);
        saved = model::escribir(reg, m_sysPK);
    });
    return saved;
}
