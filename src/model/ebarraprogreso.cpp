#include "ebarraprogreso.h"

#include "pasos.h"

#include <QLocale>
#include <QStringList>

namespace {

// Column-name stems of the four periods, in cPeriodosTemporales order.
const char* const NombresPeriodo[] = {"Dia", "Semana", "Mes", "Ano"};

} // namespace

EBarraProgreso::EBarraProgreso(QObject* parent)
    : QObject(parent)
{
}

bool EBarraProgreso::Load(QObject* cnx, int FK)
{
    const QString sql = QStringLiteral("Select * From ut_bi_barraprog Where uf_FK_Indicador=") + QString::number(FK);
    return model::cargarPrimeraFila(cnx, sql, [&](const FilaConsulta& row) {
        model::leer(row, QStringLiteral("uf_FK_Metrica"), m_fkMetrica);
        for (int i = 0; i < Periodos; ++i) {
            const QString stem = QStringLiteral("uf_") + QLatin1String(NombresPeriodo[i]);
            Barra& barra = m_periodos[i];
            model::leer(row, stem + QStringLiteral("_Min"), barra.min);
            model::leer(row, stem + QStringLiteral("_Max"), barra.max);
            model::leer(row, stem + QStringLiteral("_Color"), barra.color);
            model::leer(row, stem + QStringLiteral("_ColorDebajo"), barra.colorDebajo);
            model::leer(row, stem + QStringLiteral("_ColorArriba"), barra.colorArriba);
        }
    });
}

// The statement is literal text with the doubles in the user's locale form.
// Under a decimal-comma locale a fractional bound splits into two values and
// the INSERT fails; the host's existing data was written this way, so it stays.
bool EBarraProgreso::Save(QObject* cnx, int FK)
{
    const QLocale locale;
    QStringList values{QString::number(FK), QString::number(m_fkMetrica)};
    for (const Barra& barra : m_periodos) {
        values << vb::CStr(barra.min, locale) << vb::CStr(barra.max, locale) << QString::number(barra.color)
               << QString::number(barra.colorDebajo) << QString::number(barra.colorArriba);
    }
    const QString sql = QStringLiteral(
        "INSERT INTO ut_bi_barraprog (uf_FK_Indicador, uf_FK_Metrica,uf_Dia_Min,uf_Dia_Max,uf_Dia_Color,"
        "uf_Dia_ColorDebajo,uf_Dia_ColorArriba,uf_Semana_Min,uf_Semana_Max,uf_Semana_Color,"
        "uf_Semana_ColorDebajo,uf_Semana_ColorArriba,uf_Mes_Min,uf_Mes_Max,uf_Mes_Color,uf_Mes_ColorDebajo,"
        "uf_Mes_ColorArriba,uf_Ano_Min,uf_Ano_Max,uf_Ano_Color,uf_Ano_ColorDebajo,uf_Ano_ColorArriba) "
        "VALUES (") + values.join(QLatin1Char(',')) + QLatin1Char(')');
    return model::ejecutar(cnx, sql);
}
