#include "etabindicador.h"

#include "pasos.h"
#include "registrotabla.h"

namespace {

constexpr int BitDia = 1;
constexpr int BitSemana = 2;
constexpr int BitMes = 4;
constexpr int BitAno = 8;

} // namespace

ETabIndicador::ETabIndicador(QObject* parent)
    : QObject(parent)
{
}

bool ETabIndicador::Load(QObject* cnx, int PK)
{
    bool found = false;
    model::paso([&] {
        RegistroTabla reg;
        reg.setConexion(cnx);
        reg.setTabla(QStringLiteral("ut_bi_TabIndicador"));
        if (!reg.Buscar(PK, QString(), cnx, 1))
            return;
        found = true;
        m_sysPK = reg.PK();
        model::leer(reg, QStringLiteral("uf_FK_Tablero"), m_fkTablero);
        model::leer(reg, QStringLiteral("uf_FK_Indicador"), m_fkIndicador);
        model::leer(reg, QStringLiteral("uf_FK_Entidad"), m_fkEntidad);
        model::leer(reg, QStringLiteral("uf_X"), m_x);
        model::leer(reg, QStringLiteral("uf_Y"), m_y);
        model::leer(reg, QStringLiteral("uf_W"), m_w);
        model::leer(reg, QStringLiteral("uf_H"), m_h);
        model::leer(reg, QStringLiteral("uf_L1"), m_limite[0]);
        model::leer(reg, QStringLiteral("uf_L2"), m_limite[1]);
        model::leer(reg, QStringLiteral("uf_L3"), m_limite[2]);
        model::leer(reg, QStringLiteral("uf_L4"), m_limite[3]);
        model::leer(reg, QStringLiteral("uf_L5"), m_limite[4]);
        model::leer(reg, QStringLiteral("uf_L6"), m_limite[5]);
        model::leer(reg, QStringLiteral("uf_L7"), m_limite[6]);
        model::leer(reg, QStringLiteral("uf_L8"), m_limite[7]);
        model::leer(reg, QStringLiteral("uf_pinicial"), m_periodoInicio);

        // An empty selection means every period: anything but 1..15 (0, NULL,
        // negative, 16 or more) leaves all four shown.
        m_muestraDia = true;
        m_muestraSemana = true;
        m_muestraMes = true;
        m_muestraAno = true;
        int periodos = 0;
        model::leer(reg, QStringLiteral("uf_Periodos"), periodos);
        if (periodos >= 1 && periodos <= 15) {
            m_muestraDia = (periodos & BitDia) != 0;
            m_muestraSemana = (periodos & BitSemana) != 0;
            m_muestraMes = (periodos & BitMes) != 0;
            m_muestraAno = (periodos & BitAno) != 0;
        }
    });
    return found;
}

// objIndicador is a working reference of the editors and is never written.
bool ETabIndicador::Save(QObject* cnx)
{
    bool saved = false;
    model::paso([&] {
        RegistroTabla reg;
        reg.setConexion(cnx);
        reg.setTabla(QStringLiteral("ut_bi_TabIndicador"));
        reg.DefinirCampo(QStringLiteral("uf_FK_Tablero"), RegistroTabla::cEntero, 0, 0);
        reg.DefinirCampo(QStringLiteral("uf_FK_Indicador"), RegistroTabla::cEntero, 0, 0);
        reg.DefinirCampo(QStringLiteral("uf_FK_Entidad"), RegistroTabla::cEntero, 0, 0);
        reg.DefinirCampo(QStringLiteral("uf_pinicial"), RegistroTabla::cEntero, 0, 0);
        reg.DefinirCampo(QStringLiteral("uf_Periodos"), RegistroTabla::cEntero, 0, 0);
        reg.DefinirCampo(QStringLiteral("uf_X"), RegistroTabla::cEntero, 0, 0);
        reg.DefinirCampo(QStringLiteral("uf_Y"), RegistroTabla::cEntero, 0, 0);
        reg.DefinirCampo(QStringLiteral("uf_W"), RegistroTabla::cEntero, 0, 0);
        reg.DefinirCampo(QStringLiteral("uf_H"), RegistroTabla::cEntero, 0, 0);
        reg.DefinirCampo(QStringLiteral("uf_l1"), RegistroTabla::cDoble, 0, 0);
        reg.DefinirCampo(QStringLiteral("uf_l2"), RegistroTabla::cDoble, 0, 0);
        reg.DefinirCampo(QStringLiteral("uf_l3"), RegistroTabla::cDoble, 0, 0);
        reg.DefinirCampo(QStringLiteral("uf_l4"), RegistroTabla::cDoble, 0, 0);
        reg.DefinirCampo(QStringLiteral("uf_l5"), RegistroTabla::cDoble, 0, 0);
        reg.DefinirCampo(QStringLiteral("uf_l6"), RegistroTabla::cDoble, 0, 0);
        reg.DefinirCampo(QStringLiteral("uf_l7"), RegistroTabla::cDoble, 0, 0);
        reg.DefinirCampo(QStringLiteral("uf_l8"), RegistroTabla::cDoble, 0, 0);

        const short periodos = short((m_muestraDia ? BitDia : 0) + (m_muestraSemana ? BitSemana : 0)
                                     + (m_muestraMes ? BitMes : 0) + (m_muestraAno ? BitAno : 0));

        if (!model::localizar(reg, m_sysPK, cnx))
            return;
        model::asignar(reg, QStringLiteral("uf_FK_Tablero"), m_fkTablero);
        model::asignar(reg, QStringLiteral("uf_FK_Indicador"), m_fkIndicador);
        model::asignar(reg, QStringLiteral("uf_FK_Entidad"), m_fkEntidad);
        model::asignar(reg, QStringLiteral("uf_pinicial"), m_periodoInicio);
        model::asignar(reg, QStringLiteral("uf_Periodos"), periodos);
        model::asignar(reg, QStringLiteral("uf_l1"), m_limite[0]);
        model::asignar(reg, QStringLiteral("uf_l2"), m_limite[1]);
        model::asignar(reg, QStringLiteral("uf_l3"), m_limite[2]);
        model::asignar(reg, QStringLiteral("uf_l4"), m_limite[3]);
        model::asignar(reg, QStringLiteral("uf_l5"), m_limite[4]);
        model::asignar(reg, QStringLiteral("uf_l6"), m_limite[5]);
        model::asignar(reg, QStringLiteral("uf_l7"), m_limite[6]);
        model::asignar(reg, QStringLiteral("uf_l8"), m_limite[7]);
        model::asignar(reg, QStringLiteral("uf_x"), m_x);
        model::asignar(reg, QStringLiteral("uf_y"), m_y);
        model::asignar(reg, QStringLiteral("uf_w"), m_w);
        model::asignar(reg, QStringLiteral("uf_h"), m_h);
        saved = model::escribir(reg, m_sysPK);
    });
    return saved;
}
