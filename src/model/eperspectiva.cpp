#include "eperspectiva.h"

#include "pasos.h"
#include "registrotabla.h"

EPerspectiva::EPerspectiva(QObject* parent)
    : QObject(parent)
{
}

// The one entity load that reads through a plain query instead of the row component.
bool EPerspectiva::Load(QObject* cnx, int PK)
{
    const QString sql =
        QStringLiteral("Select Sys_PK, uf_Nombre, uf_Entidad, uf_Grupos, uf_padre FROM ut_bi_perspectiva WHERE Sys_PK=")
        + QString::number(PK);
    return model::cargarPrimeraFila(cnx, sql, [&](const FilaConsulta& row) {
        model::leer(row, QStringLiteral("Sys_PK"), m_sysPK);
        model::leer(row, QStringLiteral("uf_Nombre"), m_nombre);
        model::leer(row, QStringLiteral("uf_Entidad"), m_entidadAsociada);
        model::leer(row, QStringLiteral("uf_Grupos"), m_grupos);
        model::leer(row, QStringLiteral("uf_padre"), m_fkPadre);
    });
}

bool EPerspectiva::Save(QObject* cnx)
{
    bool saved = false;
    model::paso([&] {
        RegistroTabla reg;
        reg.setConexion(cnx);
        reg.setTabla(QStringLiteral("ut_bi_Perspectiva"));
        reg.DefinirCampo(QStringLiteral("uf_Nombre"), RegistroTabla::cTexto, QString(), 50);
        reg.DefinirCampo(QStringLiteral("uf_Entidad"), RegistroTabla::cTexto, QString(), 50);
        reg.DefinirCampo(QStringLiteral("uf_Grupos"), RegistroTabla::cTexto, QString(), 1024);
        reg.DefinirCampo(QStringLiteral("uf_padre"), RegistroTabla::cEntero, 0, 0);
        if (!model::localizar(reg, m_sysPK, cnx))
            return;
        model::asignar(reg, QStringLiteral("uf_Nombre"), m_nombre);
        model::asignar(reg, QStringLiteral("uf_Entidad"), m_entidadAsociada);
        model::asignar(reg, QStringLiteral("uf_Grupos"), m_grupos);
        model::asignar(reg, QStringLiteral("uf_padre"), m_fkPadre);
        saved = model::escribir(reg, m_sysPK);
    });
    return saved;
}
