#include "ematrizgrafico.h"

#include "pasos.h"
#include "vb/texto.h"

#include <QStringList>

EMatrizGrafico::EMatrizGrafico(QObject* parent)
    : QObject(parent)
{
}

bool EMatrizGrafico::Load(QObject* cnx, int FK)
{
    const QString sql = QStringLiteral("Select * From ut_bi_matrizgraf Where uf_FK_Indicador=") + QString::number(FK);
    return model::cargarPrimeraFila(cnx, sql, [&](const FilaConsulta& row) {
        for (int i = 0; i < MetricasMatriz; ++i)
            model::leer(row, QStringLiteral("uf_FK_M_Metrica") + QString::number(i + 1), m_matriz[i]);
        for (int i = 0; i < MetricasGrafico; ++i)
            model::leer(row, QStringLiteral("uf_FK_G_Metrica") + QString::number(i + 1), m_grafico[i]);
        model::leer(row, QStringLiteral("uf_G_Titulo"), m_titulo);
        model::leer(row, QStringLiteral("uf_G_Tipo"), m_tipo);
    });
}

// The title is the one text spliced into generated SQL. Apostrophes are
// dropped rather than doubled, so the stored title can differ from the typed
// one; every other character goes through as typed.
bool EMatrizGrafico::Save(QObject* cnx, int FK)
{
    // A title the database would give back altered is not stored at all.
    if (!vb::almacenable(m_titulo))
        return false;
    QStringList values{QString::number(FK)};
    for (int metrica : m_matriz)
        values << QString::number(metrica);
    for (int metrica : m_grafico)
        values << QString::number(metrica);
    QString titulo = m_titulo;
    titulo.remove(QLatin1Char('\''));
    const QString sql = QStringLiteral(
        "INSERT INTO ut_bi_matrizgraf (uf_FK_Indicador, uf_FK_M_Metrica1,uf_FK_M_Metrica2,uf_FK_M_Metrica3,"
        "uf_FK_M_Metrica4,uf_FK_M_Metrica5,uf_FK_M_Metrica6,uf_FK_M_Metrica7,uf_FK_M_Metrica8,"
        "uf_FK_M_Metrica9,uf_FK_M_Metrica10,uf_FK_G_Metrica1,uf_FK_G_Metrica2,uf_FK_G_Metrica3,"
        "uf_FK_G_Metrica4,uf_FK_G_Metrica5,uf_G_Titulo,uf_G_Tipo) VALUES (")
        + values.join(QLatin1Char(',')) + QStringLiteral(",'") + titulo + QStringLiteral("',")
        + QString::number(m_tipo) + QLatin1Char(')');
    return model::ejecutar(cnx, sql);
}
