#include "exportadorpaquete.h"

#include "llamadasmotor.h"
#include "model/vendimarbi.h"
#include "propiedadesjson.h"

#include <QJsonArray>
#include <algorithm>

const QString ExportadorPaquete::Formato = QStringLiteral("vendimarbi-paquete");

namespace {

QList<int> ordenadas(const QSet<int>& claves)
{
    QList<int> lista(claves.cbegin(), claves.cend());
    std::sort(lista.begin(), lista.end());
    return lista;
}

QSet<int> claves(const QList<FotoBiblioteca::Fila>& filas)
{
    QSet<int> resultado;
    for (const FotoBiblioteca::Fila& fila : filas)
        resultado.insert(entero(fila, QStringLiteral("sys_pk")));
    return resultado;
}

} // namespace

ExportadorPaquete::ExportadorPaquete(QObject* engine, ado::Connection& conexion)
    : m_engine(engine)
    , m_foto(FotoBiblioteca::leer(conexion))
{
}

QJsonObject ExportadorPaquete::todo()
{
    m_perspectivas = claves(m_foto.perspectivas);
    m_metricas = claves(m_foto.metricas);
    m_indicadores = claves(m_foto.indicadores);
    m_tableros = claves(m_foto.tableros);
    completar();
    return escribir();
}

QJsonObject ExportadorPaquete::perspectiva(int clave)
{
    if (!claves(m_foto.perspectivas).contains(clave))
        return {};
    agregarSubarbol(clave);
    for (const FotoBiblioteca::Fila& fila : m_foto.metricas)
        if (m_perspectivas.contains(entero(fila, QStringLiteral("uf_fk_perspectiva"))))
            m_metricas.insert(entero(fila, QStringLiteral("sys_pk")));
    for (const FotoBiblioteca::Fila& fila : m_foto.indicadores)
        if (m_perspectivas.contains(entero(fila, QStringLiteral("uf_fk_perspectiva"))))
            m_indicadores.insert(entero(fila, QStringLiteral("sys_pk")));
    completar();
    return escribir();
}

QJsonObject ExportadorPaquete::tablero(int clave)
{
    if (!claves(m_foto.tableros).contains(clave))
        return {};
    m_tableros.insert(clave);
    const QSet<int> existentes = claves(m_foto.indicadores);
    for (const FotoBiblioteca::Fila& fila : m_foto.colocaciones) {
        const int indicador = entero(fila, QStringLiteral("uf_fk_indicador"));
        if (entero(fila, QStringLiteral("uf_fk_tablero")) == clave && existentes.contains(indicador))
            m_indicadores.insert(indicador);
    }
    completar();
    return escribir();
}

void ExportadorPaquete::agregarSubarbol(int clave)
{
    QList<int> pendientes{clave};
    m_perspectivas.insert(clave);
    while (!pendientes.isEmpty()) {
        const int padre = pendientes.takeFirst();
        for (const FotoBiblioteca::Fila& fila : m_foto.perspectivas) {
            const int hija = entero(fila, QStringLiteral("sys_pk"));
            if (!fila.value(QStringLiteral("uf_padre")).isNull() && entero(fila, QStringLiteral("uf_padre")) == padre
                && !m_perspectivas.contains(hija)) {
                m_perspectivas.insert(hija);
                pendientes.append(hija);
            }
        }
    }
}

// What the chosen rows need: the metrics their configurations name, the
// perspectives of every metric and indicator, and every perspective's chain
// of parents up to the top (or to where it breaks off).
void ExportadorPaquete::completar()
{
    const auto metricas = FotoBiblioteca::porClave(m_foto.metricas);
    for (const QList<FotoBiblioteca::Fila>* tabla : {&m_foto.barras, &m_foto.semaforos, &m_foto.matrices})
        for (const FotoBiblioteca::Fila& fila : *tabla)
            if (m_indicadores.contains(entero(fila, QStringLiteral("uf_fk_indicador"))))
                for (auto it = fila.cbegin(); it != fila.cend(); ++it)
                    if (it.key().contains(QLatin1String("metrica")) && metricas.contains(it.value().toInt()))
                        m_metricas.insert(it.value().toInt());
    const auto perspectivaDe = [&](const QList<FotoBiblioteca::Fila>& filas, const QSet<int>& elegidas) {
        for (const FotoBiblioteca::Fila& fila : filas)
            if (elegidas.contains(entero(fila, QStringLiteral("sys_pk"))))
                m_perspectivas.insert(entero(fila, QStringLiteral("uf_fk_perspectiva")));
    };
    perspectivaDe(m_foto.metricas, m_metricas);
    perspectivaDe(m_foto.indicadores, m_indicadores);
    const auto perspectivas = FotoBiblioteca::porClave(m_foto.perspectivas);
    for (int clave : ordenadas(m_perspectivas)) {
        for (const FotoBiblioteca::Fila* fila = perspectivas.value(clave); fila;) {
            const int padre = entero(*fila, QStringLiteral("uf_padre"));
            fila = m_perspectivas.contains(padre) ? nullptr : perspectivas.value(padre);
            if (fila)
                m_perspectivas.insert(padre);
        }
    }
    // Only rows that exist travel: a missing perspective key stays a key.
    m_perspectivas.intersect(claves(m_foto.perspectivas));
}

QJsonObject ExportadorPaquete::entidad(int tipo, int clave)
{
    const auto cargada = llamadasmotor::cargar(m_engine, tipo, clave);
    QJsonObject objeto{{QStringLiteral("clave"), clave}};
    if (!cargada)
        return objeto;
    objeto.insert(QStringLiteral("propiedades"), propiedadesjson::leer(cargada.get()));
    if (QObject* configuracion = cargada->property("Configuracion").value<QObject*>())
        objeto.insert(QStringLiteral("configuracion"), propiedadesjson::leer(configuracion));
    return objeto;
}

// Each dashboard with its texts and the placements of indicators that travel
// with it. A placement's host entity key stays as it is, beside the kind of
// entity it names (the placed indicator's perspective's kind), so that the
// receiving shop can tell what it points at.
QJsonObject ExportadorPaquete::escribir()
{
    const auto lista = [&](int tipo, const QSet<int>& elegidas) {
        QJsonArray resultado;
        for (int clave : ordenadas(elegidas))
            resultado.append(entidad(tipo, clave));
        return resultado;
    };
    const auto indicadores = FotoBiblioteca::porClave(m_foto.indicadores);
    const auto perspectivas = FotoBiblioteca::porClave(m_foto.perspectivas);
    QJsonArray tableros;
    for (int clave : ordenadas(m_tableros)) {
        QJsonObject tablero = entidad(VendimarBI::cTablero, clave);
        QJsonArray colocaciones;
        QJsonArray figuras;
        for (const FotoBiblioteca::Fila& fila : m_foto.colocaciones) {
            const FotoBiblioteca::Fila* indicador = indicadores.value(entero(fila, QStringLiteral("uf_fk_indicador")));
            if (entero(fila, QStringLiteral("uf_fk_tablero")) != clave || !indicador)
                continue;
            const FotoBiblioteca::Fila* perspectiva = perspectivas.value(entero(*indicador, QStringLiteral("uf_fk_perspectiva")));
            QJsonObject colocacion = entidad(VendimarBI::ctabindicador, entero(fila, QStringLiteral("sys_pk")));
            colocacion.insert(QStringLiteral("tipoEntidad"),
                              perspectiva ? perspectiva->value(QStringLiteral("uf_entidad")).toString() : QString());
            colocaciones.append(colocacion);
        }
        for (const FotoBiblioteca::Fila& fila : m_foto.figuras)
            if (entero(fila, QStringLiteral("uf_fk_tablero")) == clave)
                figuras.append(entidad(VendimarBI::cFigura, entero(fila, QStringLiteral("sys_pk"))));
        tablero.insert(QStringLiteral("colocaciones"), colocaciones);
        tablero.insert(QStringLiteral("figuras"), figuras);
        tableros.append(tablero);
    }
    return QJsonObject{{QStringLiteral("formato"), Formato},
                       {QStringLiteral("version"), Version},
                       {QStringLiteral("perspectivas"), lista(VendimarBI::cPerspectiva, m_perspectivas)},
                       {QStringLiteral("metricas"), lista(VendimarBI::cMetrica, m_metricas)},
                       {QStringLiteral("indicadores"), lista(VendimarBI::cIndicador, m_indicadores)},
                       {QStringLiteral("tableros"), tableros}};
}
