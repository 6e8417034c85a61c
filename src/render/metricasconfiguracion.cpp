#include "metricasconfiguracion.h"

#include "model/ematrizgrafico.h"

#include <QVariant>

namespace {

QList<int> claves(const QObject* configuracion, const char* prefijo, int cantidad)
{
    QList<int> result;
    for (int i = 1; configuracion && i <= cantidad; ++i) {
        const int clave = configuracion->property((QByteArray(prefijo) + QByteArray::number(i)).constData()).toInt();
        if (clave != 0)
            result.append(clave);
    }
    return result;
}

} // namespace

QList<int> MetricasConfiguracion::matriz(const EMatrizGrafico* configuracion)
{
    return claves(configuracion, "Matriz_Metrica", EMatrizGrafico::MetricasMatriz);
}

QList<int> MetricasConfiguracion::grafico(const EMatrizGrafico* configuracion)
{
    return claves(configuracion, "Grafico_Metrica", EMatrizGrafico::MetricasGrafico);
}

QList<int> MetricasConfiguracion::todas(const QObject* configuracion)
{
    QList<int> result;
    if (const auto* matrizGrafico = qobject_cast<const EMatrizGrafico*>(configuracion))
        result = matriz(matrizGrafico) + grafico(matrizGrafico);
    else if (configuracion && configuracion->property("FK_Metrica").toInt() != 0)
        result.append(configuracion->property("FK_Metrica").toInt());
    QList<int> unicas;
    for (int clave : result)
        if (!unicas.contains(clave))
            unicas.append(clave);
    return unicas;
}
