#include "esemaforo.h"

#include "pasos.h"

#include <QLocale>
#include <QStringList>

namespace {

// Column-name stems of the four periods, in cPeriodosTemporales order.
const char* const NombresPeriodo[] = {"Dia", "Semana", "Mes", "Ano"};

} // namespace

ESemaforo::ESemaforo(QObject* parent)
    : QObject(parent)
{
}

bool ESemaforo::Load(QObject* cnx, int FK)
{
    const QString sql = QStringLiteral("Select * From ut_bi_semaforo Where uf_FK_Indicador=") + QString::number(FK);
    return model::cargarPrimeraFila(cnx, sql, [&](const FilaConsulta& row) {
        model::leer(row, QStringLiteral("uf_FK_Metrica"), m_fkMetrica);
        for (int i = 0; i < Periodos; ++i) {
            const QString stem = QStringLiteral("uf_") + QLatin1String(NombresPeriodo[i]);
            model::leer(row, stem + QStringLiteral("_Lim1"), m_limites[i][0]);
            model::leer(row, stem + QStringLiteral("_Lim2"), m_limites[i][1]);
        }
        // Unlike the other columns, the direction does not survive a NULL:
        // rows written by hand or by older hosts may carry any non-zero value
        // (-1 is an automation True) or none at all, and none means ascending.
        m_descendente = false;
        model::paso([&] {
            const QVariant invertido = row.Campo(QStringLiteral("uf_Invertido"));
            if (!vb::isNull(invertido) && vb::toBoolean(invertido))
                m_descendente = true;
        });
    });
}

// The statement is literal text with the doubles in the user's locale form;
// under a decimal-comma locale a fractional limit makes it fail, as the rows
// the host already holds were written the same way.
bool ESemaforo::Save(QObject* cnx, int FK)
{
    const QLocale locale;
    QStringList values{QString::number(FK), QString::number(m_fkMetrica)};
    for (const auto& limites : m_limites)
        values << vb::CStr(limites[0], locale) << vb::CStr(limites[1], locale);
    values << (m_descendente ? QStringLiteral("1") : QStringLiteral("0"));
    const QString sql = QStringLiteral(
        "INSERT INTO ut_bi_semaforo (uf_FK_Indicador,uf_FK_Metrica, uf_Dia_Lim1,uf_Dia_Lim2, "
        "uf_Semana_Lim1,uf_Semana_Lim2, uf_Mes_Lim1, uf_Mes_Lim2, uf_Ano_Lim1,uf_Ano_lim2,uf_invertido) "
        "VALUES(") + values.join(QLatin1Char(',')) + QLatin1Char(')');
    return model::ejecutar(cnx, sql);
}
