#pragma once

#include "runtime/pedidometrica.h"
#include "runtime/resultadometrica.h"

#include <QList>
#include <QObject>
#include <functional>
#include <memory>

class Evaluador;

// The view mode's worker: lives in a thread of its own and runs metric
// sources there, so a slow or endless metric never stops the window. It
// opens its read-only connection when first asked, and again after a
// failure to open it, so a database that comes back is used again.
class CalculadorValores : public QObject {
public:
    CalculadorValores(const QString& url, int limite);
    ~CalculadorValores() override;

    // The results in the order asked, read in one snapshot of the database;
    // once seguir says no, the metrics left are not run.
    QList<ResultadoMetrica> calcular(const QList<PedidoMetrica>& pedidos, const std::function<bool()>& seguir);
    // Closes the connection; the next work opens a new one, so a server that
    // was restarted, or dropped the connection, is reached again.
    void reiniciar();
    // How long a metric may run, in milliseconds, from the next one on.
    void setLimite(int milisegundos);

private:
    QString m_url;
    int m_limite;
    std::unique_ptr<Evaluador> m_evaluador;
};
