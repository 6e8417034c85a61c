#pragma once

#include <QList>

class EMatrizGrafico;
class QObject;

// The metric keys an indicator's configuration names, in the order its
// editor lists them; empty slots (key 0) are left out.
class MetricasConfiguracion {
public:
    static QList<int> matriz(const EMatrizGrafico* configuracion);
    static QList<int> grafico(const EMatrizGrafico* configuracion);
    // Every metric of a configuration of any kind, each once.
    static QList<int> todas(const QObject* configuracion);
};
