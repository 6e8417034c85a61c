#include "emetrica.h"

#include "pasos.h"
#include "registrotabla.h"

namespace {
const QString Tabla = QStringLiteral("ut_bi_Metrica");
// A metric's format is never stored empty.
const QString FormatoPorOmision = QStringLiteral("#");
} // namespace

EMetrica::EMetrica(QObject* parent)
    : QObject(parent)
{
}

bool EMetrica::Load(QObject* cnx, int PK)
{
    bool loaded = false;
    model::paso([&] {
        RegistroTabla reg;
        reg.setConexion(cnx);
        reg.setTabla(Tabla);
        if (!reg.Buscar(PK, QString(), cnx, 1))
            return;
        model::paso([&] { m_sysPK = reg.PK(); });
        model::paso([&] { m_sysGUID = reg.GUID(); });
        model::leer(reg, QStringLiteral("uf_Nombre"), m_nombre);
        model::leer(reg, QStringLiteral("uf_Descripcion"), m_descripcion);
        model::leer(reg, QStringLiteral("uf_Titulo"), m_titulo);
        model::leer(reg, QStringLiteral("uf_Decimales"), m_decimales);
        model::leer(reg, QStringLiteral("uf_Formato"), m_formato);
        model::leer(reg, QStringLiteral("uf_codigo"), m_codigoFuente);
        model::leer(reg, QStringLiteral("uf_fk_perspectiva"), m_fkPerspectiva);
        loaded = true;
    });
    return loaded;
}

bool EMetrica::Save(QObject* cnx)
{
    bool saved = false;
    model::paso([&] {
        RegistroTabla reg;
        reg.setConexion(cnx);
        reg.setTabla(Tabla);
        reg.DefinirCampo(QStringLiteral("uf_Nombre"), RegistroTabla::cTexto, QString(), 50);
        reg.DefinirCampo(QStringLiteral("uf_Descripcion"), RegistroTabla::cTexto, QString(), 255);
        reg.DefinirCampo(QStringLiteral("uf_Titulo"), RegistroTabla::cTexto, QString(), 100);
        reg.DefinirCampo(QStringLiteral("uf_Decimales"), RegistroTabla::cEntero, 0, 0);
        reg.DefinirCampo(QStringLiteral("uf_Formato"), RegistroTabla::cTexto, QString(), 50);
        reg.DefinirCampo(QStringLiteral("uf_Codigo"), RegistroTabla::cTexto, QString(), 16000);
        reg.DefinirCampo(QStringLiteral("uf_FK_Perspectiva"), RegistroTabla::cEntero, 0, 0);
        if (!model::localizar(reg, m_sysPK, cnx))
            return;
        if (m_formato.isEmpty())
            m_formato = FormatoPorOmision;
        model::asignar(reg, QStringLiteral("uf_Nombre"), m_nombre);
        model::asignar(reg, QStringLiteral("uf_Descripcion"), m_descripcion);
        model::asignar(reg, QStringLiteral("uf_Titulo"), m_titulo);
        model::asignar(reg, QStringLiteral("uf_Decimales"), m_decimales);
        model::asignar(reg, QStringLiteral("uf_Formato"), m_formato);
        model::asignar(reg, QStringLiteral("uf_codigo"), m_codigoFuente);
        model::asignar(reg, QStringLiteral("uf_FK_Perspectiva"), m_fkPerspectiva);
        saved = model::escribir(reg, m_sysPK);
    });
    return saved;
}
