#include "efigura.h"

#include "pasos.h"
#include "registrotabla.h"

namespace {

constexpr int BitNegrita = 1;
constexpr int BitCursiva = 2;
constexpr int BitSubrayado = 4;

} // namespace

EFigura::EFigura(QObject* parent)
    : QObject(parent)
{
}

bool EFigura::Load(QObject* cnx, int PK)
{
    bool found = false;
    model::paso([&] {
        RegistroTabla reg;
        reg.setConexion(cnx);
        reg.setTabla(QStringLiteral("ut_bi_Fig"));
        if (!reg.Buscar(PK, QString(), cnx, 1))
            return;
        found = true;
        m_sysPK = reg.PK();
        model::leer(reg, QStringLiteral("uf_FK_Tablero"), m_fkTablero);
        model::leer(reg, QStringLiteral("uf_X"), m_x);
        model::leer(reg, QStringLiteral("uf_Y"), m_y);
        model::leer(reg, QStringLiteral("uf_W"), m_w);
        model::leer(reg, QStringLiteral("uf_H"), m_h);
        model::leer(reg, QStringLiteral("uf_color"), m_color);
        model::leer(reg, QStringLiteral("uf_fondo"), m_colorFondo);
        model::leer(reg, QStringLiteral("uf_Tamfuente"), m_tamFuente);
        model::leer(reg, QStringLiteral("uf_alin"), m_alineacion);
        model::leer(reg, QStringLiteral("uf_Fuente"), m_fuente);
        model::leer(reg, QStringLiteral("uf_tipo"), m_tipo);
        model::leer(reg, QStringLiteral("uf_texto"), m_texto);

        // The style flags are decoded from a plain start: anything but 1..7
        // reads back as plain text.
        m_negrita = false;
        m_cursiva = false;
        m_subrayado = false;
        int atributos = 0;
        model::leer(reg, QStringLiteral("uf_atrib_fuente"), atributos);
        if (atributos >= 1 && atributos <= 7) {
            m_negrita = (atributos & BitNegrita) != 0;
            m_cursiva = (atributos & BitCursiva) != 0;
            m_subrayado = (atributos & BitSubrayado) != 0;
        }
    });
    return found;
}

bool EFigura::Save(QObject* cnx)
{
    bool saved = false;
    model::paso([&] {
        RegistroTabla reg;
        reg.setConexion(cnx);
        reg.setTabla(QStringLiteral("ut_bi_Fig"));
        reg.DefinirCampo(QStringLiteral("uf_FK_Tablero"), RegistroTabla::cEntero, 0, 0);
        reg.DefinirCampo(QStringLiteral("uf_X"), RegistroTabla::cEntero, 0, 0);
        reg.DefinirCampo(QStringLiteral("uf_Y"), RegistroTabla::cEntero, 0, 0);
        reg.DefinirCampo(QStringLiteral("uf_W"), RegistroTabla::cEntero, 0, 0);
        reg.DefinirCampo(QStringLiteral("uf_H"), RegistroTabla::cEntero, 0, 0);
        reg.DefinirCampo(QStringLiteral("uf_Tipo"), RegistroTabla::cEntero, 0, 0);
        reg.DefinirCampo(QStringLiteral("uf_Fuente"), RegistroTabla::cTexto, QStringLiteral("Arial"), 50);
        // The text column repeats the font's default on purpose, so rows match
        // those already written by the hosts; Save assigns every column, so
        // the default never reaches a row written here.
        reg.DefinirCampo(QStringLiteral("uf_Texto"), RegistroTabla::cTexto, QStringLiteral("Arial"), 255);
        reg.DefinirCampo(QStringLiteral("uf_TamFuente"), RegistroTabla::cEntero, 0, 0);
        reg.DefinirCampo(QStringLiteral("uf_atrib_fuente"), RegistroTabla::cEntero, 0, 0);
        reg.DefinirCampo(QStringLiteral("uf_color"), RegistroTabla::cEntero, 0, 0);
        reg.DefinirCampo(QStringLiteral("uf_fondo"), RegistroTabla::cEntero, 0, 0);
        reg.DefinirCampo(QStringLiteral("uf_alin"), RegistroTabla::cEntero, 0, 0);

        const int atributos = (m_negrita ? BitNegrita : 0) + (m_cursiva ? BitCursiva : 0)
            + (m_subrayado ? BitSubrayado : 0);

        if (!model::localizar(reg, m_sysPK, cnx))
            return;
        model::asignar(reg, QStringLiteral("uf_FK_Tablero"), m_fkTablero);
        model::asignar(reg, QStringLiteral("uf_x"), m_x);
        model::asignar(reg, QStringLiteral("uf_y"), m_y);
        model::asignar(reg, QStringLiteral("uf_w"), m_w);
        model::asignar(reg, QStringLiteral("uf_h"), m_h);
        model::asignar(reg, QStringLiteral("uf_color"), m_color);
        model::asignar(reg, QStringLiteral("uf_fondo"), m_colorFondo);
        model::asignar(reg, QStringLiteral("uf_atrib_fuente"), atributos);
        model::asignar(reg, QStringLiteral("uf_Fuente"), m_fuente);
        model::asignar(reg, QStringLiteral("uf_Tamfuente"), m_tamFuente);
        model::asignar(reg, QStringLiteral("uf_alin"), m_alineacion);
        model::asignar(reg, QStringLiteral("uf_Texto"), m_texto);
        model::asignar(reg, QStringLiteral("uf_tipo"), m_tipo);
        saved = model::escribir(reg, m_sysPK);
    });
    return saved;
}
