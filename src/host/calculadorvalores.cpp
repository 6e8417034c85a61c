#include "calculadorvalores.h"

#include "runtime/evaluador.h"
#include "vb/automationerror.h"

CalculadorValores::CalculadorValores(const QString& url, int limite)
    : m_url(url)
    , m_limite(limite)
{
}

CalculadorValores::~CalculadorValores() = default;

QList<ResultadoMetrica> CalculadorValores::calcular(const QList<PedidoMetrica>& pedidos, const std::function<bool()>& seguir)
{
    if (!m_evaluador) {
        try {
            m_evaluador = std::make_unique<Evaluador>(m_url);
            m_evaluador->setLimite(m_limite);
        } catch (const vb::AutomationError& e) {
            const auto fallo = ResultadoMetrica::fallo(QStringLiteral("No se pudo abrir la base de datos: %1").arg(e.description()));
            return QList<ResultadoMetrica>(pedidos.size(), fallo);
        }
    }
    return m_evaluador->evaluarLote(pedidos, seguir);
}

void CalculadorValores::reiniciar()
{
    m_evaluador.reset();
}

void CalculadorValores::setLimite(int milisegundos)
{
    m_limite = milisegundos;
    if (m_evaluador)
        m_evaluador->setLimite(milisegundos);
}
