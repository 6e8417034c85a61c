#include "valoresvivos.h"

#include "calculadorvalores.h"
#include "runtime/periodometrica.h"

ValoresVivos::ValoresVivos(const QString& url, int limite, QObject* parent)
    : QObject(parent)
    , m_calculador(new CalculadorValores(url, limite))
    , m_generacion(std::make_shared<std::atomic<quint64>>(0))
    , m_fecha(QDate::currentDate())
{
    m_hilo.setObjectName(QStringLiteral("ValoresVivos"));
    m_calculador->moveToThread(&m_hilo);
    m_hilo.start();
}

// The worker is deleted in its own thread, where its connection lives, once
// the metric it may be running ends; the work queued behind it is skipped.
ValoresVivos::~ValoresVivos()
{
    nuevaGeneracion();
    CalculadorValores* calculador = m_calculador;
    QMetaObject::invokeMethod(calculador, [calculador] { delete calculador; }, Qt::BlockingQueuedConnection);
    m_hilo.quit();
    m_hilo.wait();
}

void ValoresVivos::nuevaGeneracion()
{
    ++*m_generacion;
    m_pendientes.clear();
}

void ValoresVivos::setFecha(const QDate& fecha)
{
    if (fecha == m_fecha || !fecha.isValid())
        return;
    m_fecha = fecha;
    nuevaGeneracion();
}

void ValoresVivos::setFuentes(const QHash<int, QString>& fuentes)
{
    bool cambiada = false;
    for (auto it = fuentes.cbegin(); it != fuentes.cend(); ++it) {
        const auto anterior = m_fuentes.constFind(it.key());
        if (anterior == m_fuentes.cend() || *anterior == it.value())
            continue;
        cambiada = true;
        m_hechos.removeIf([clave = it.key()](const auto& hecho) { return hecho.key().metrica == clave; });
    }
    m_fuentes.insert(fuentes);
    if (cambiada)
        nuevaGeneracion();
}

void ValoresVivos::setLimite(int milisegundos)
{
    QMetaObject::invokeMethod(m_calculador, [calculador = m_calculador, milisegundos] { calculador->setLimite(milisegundos); });
}

void ValoresVivos::olvidar()
{
    m_hechos.clear();
    nuevaGeneracion();
    QMetaObject::invokeMethod(m_calculador, [calculador = m_calculador] { calculador->reiniciar(); });
}

IntervaloPeriodo ValoresVivos::diasDe(const PeticionValor& peticion) const
{
    return PeriodoMetrica::anterior(peticion.periodo, m_fecha, peticion.atras);
}

ClaveValor ValoresVivos::claveDe(const PeticionValor& peticion, const IntervaloPeriodo& dias)
{
    return {peticion.metrica, peticion.entidad, peticion.periodo, dias.inicio};
}

ClaveValor ValoresVivos::claveDe(const PeticionValor& peticion) const
{
    return claveDe(peticion, diasDe(peticion));
}

void ValoresVivos::pedir(const QList<PeticionValor>& peticiones)
{
    QList<ClaveValor> claves;
    QList<PedidoMetrica> pedidos;
    for (const PeticionValor& peticion : peticiones) {
        const IntervaloPeriodo dias = diasDe(peticion);
        const ClaveValor clave = claveDe(peticion, dias);
        if (m_hechos.contains(clave) || m_pendientes.contains(clave) || claves.contains(clave))
            continue;
        claves.append(clave);
        pedidos.append({m_fuentes.value(peticion.metrica), peticion.entidad, dias});
    }
    if (claves.isEmpty())
        return;
    m_pendientes.unite(QSet<ClaveValor>(claves.cbegin(), claves.cend()));
    const quint64 generacion = *m_generacion;
    // Each call runs in the thread of the object it is given, and is dropped
    // with that object: the answer never reaches a source already gone. Work
    // of an earlier generation stops between two metrics.
    QMetaObject::invokeMethod(m_calculador, [calculador = m_calculador, actual = m_generacion, generacion, claves,
                                             pedidos, receptor = this] {
        const auto vigente = [&actual, generacion] { return *actual == generacion; };
        if (!vigente())
            return;
        const QList<ResultadoMetrica> resultados = calculador->calcular(pedidos, vigente);
        QMetaObject::invokeMethod(receptor, [receptor, generacion, claves, resultados] {
            receptor->recibir(generacion, claves, resultados);
        });
    });
}

void ValoresVivos::recibir(quint64 generacion, const QList<ClaveValor>& claves, const QList<ResultadoMetrica>& resultados)
{
    if (generacion != *m_generacion)
        return;
    for (qsizetype i = 0; i < claves.size(); ++i) {
        m_hechos.insert(claves[i], resultados[i]);
        m_pendientes.remove(claves[i]);
    }
    emit calculados();
}

double ValoresVivos::valor(const PeticionValor& peticion) const
{
    return m_hechos.value(claveDe(peticion)).valor;
}

// A figure not worked out yet is pending even when nobody asked for it: a
// tile shows itself busy rather than a value nobody computed.
bool ValoresVivos::pendiente(const PeticionValor& peticion) const
{
    return !m_hechos.contains(claveDe(peticion));
}

QString ValoresVivos::fallo(const PeticionValor& peticion) const
{
    const auto hecho = m_hechos.constFind(claveDe(peticion));
    return hecho == m_hechos.cend() || hecho->correcto ? QString() : hecho->mensaje();
}
