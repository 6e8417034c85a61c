#include "revisionbiblioteca.h"

#include "model/vendimarbi.h"

namespace {

const QString ClavePrimaria = QStringLiteral("sys_pk");
const QString ColumnaPerspectiva = QStringLiteral("uf_fk_perspectiva");

QString nombreDe(const FotoBiblioteca::Fila& fila)
{
    return fila.value(QStringLiteral("uf_nombre")).toString();
}

} // namespace

QString Problema::textoArreglo() const
{
    switch (arreglo) {
    case Arreglo::ReubicarPerspectiva:
        return QStringLiteral("Colocar la perspectiva en el nivel superior");
    case Arreglo::EliminarFilas:
        return QStringLiteral("Eliminar las filas sueltas");
    case Arreglo::RehacerConfiguracion:
        return QStringLiteral("Guardar de nuevo el indicador con una sola fila de configuración");
    case Arreglo::QuitarMetricas:
        return QStringLiteral("Quitar las referencias a métricas que no existen");
    case Arreglo::Ninguno:
        break;
    }
    return QString();
}

RevisionBiblioteca::RevisionBiblioteca(FotoBiblioteca foto)
    : m_foto(std::move(foto))
    , m_perspectivas(FotoBiblioteca::porClave(m_foto.perspectivas))
    , m_metricas(FotoBiblioteca::porClave(m_foto.metricas))
    , m_indicadores(FotoBiblioteca::porClave(m_foto.indicadores))
{
    revisarPerspectivas();
    revisarConfiguraciones();
    revisarTableros();
}

// Names from the top down to the perspective. A chain that breaks off (a
// missing parent) starts with "?"; one that turns in a circle stops where it
// would repeat.
QString RevisionBiblioteca::ruta(int perspectiva) const
{
    QStringList nombres;
    QSet<int> vistas;
    int clave = perspectiva;
    while (clave != 0 && !vistas.contains(clave)) {
        vistas.insert(clave);
        const FotoBiblioteca::Fila* fila = m_perspectivas.value(clave);
        if (!fila) {
            nombres.prepend(QStringLiteral("?"));
            break;
        }
        nombres.prepend(nombreDe(*fila));
        if (fila->value(QStringLiteral("uf_padre")).isNull()) {
            nombres.prepend(QStringLiteral("?"));
            break;
        }
        clave = entero(*fila, QStringLiteral("uf_padre"));
    }
    return nombres.join(QStringLiteral(" / "));
}

FilaProblema RevisionBiblioteca::filaPerspectiva(int clave) const
{
    const FotoBiblioteca::Fila* fila = m_perspectivas.value(clave);
    return {QStringLiteral("ut_bi_Perspectiva"), clave, fila ? nombreDe(*fila) : QString(), ruta(clave)};
}

// A metric or an indicator whose perspective is gone appears in no tree and
// no list. One under a hidden perspective is reported with that perspective.
void RevisionBiblioteca::revisarHojas(const QSet<int>& ocultas)
{
    struct Hoja {
        const QList<FotoBiblioteca::Fila>* filas;
        const char* tabla;
        const char* tipo;
        const char* descripcion;
        const char* porque;
    };
    const Hoja hojas[] = {
        {&m_foto.metricas, "ut_bi_Metrica", "metrica-sin-perspectiva",
         "La métrica «%1» pertenece a la perspectiva %2, que no existe.",
         "No aparece en la biblioteca de métricas ni en el diseñador de indicadores: nadie puede verla, usarla ni "
         "borrarla."},
        {&m_foto.indicadores, "ut_bi_Indicador", "indicador-sin-perspectiva",
         "El indicador «%1» pertenece a la perspectiva %2, que no existe.",
         "No aparece en la biblioteca de indicadores ni se puede colocar en un tablero: nadie puede verlo, editarlo "
         "ni borrarlo."}};
    for (const Hoja& hoja : hojas) {
        for (const FotoBiblioteca::Fila& fila : *hoja.filas) {
            const int perspectiva = entero(fila, ColumnaPerspectiva);
            if (ocultas.contains(perspectiva) || m_perspectivas.contains(perspectiva))
                continue;
            Problema p;
            p.tipo = QLatin1String(hoja.tipo);
            p.descripcion = QString::fromUtf8(hoja.descripcion).arg(nombreDe(fila)).arg(perspectiva);
            p.porque = QString::fromUtf8(hoja.porque);
            p.filas.append({QLatin1String(hoja.tabla), entero(fila, ClavePrimaria), nombreDe(fila),
                            QStringLiteral("perspectiva %1").arg(perspectiva)});
            m_problemas.append(p);
        }
    }
}

// Items of a dashboard that is gone are never shown again; a placed
// indicator that is gone shows as an empty frame.
void RevisionBiblioteca::revisarTableros()
{
    const auto tableros = FotoBiblioteca::porClave(m_foto.tableros);
    const auto reportar = [&](const char* tipo, const QString& tabla, int entidad, const FotoBiblioteca::Fila& fila,
                              const QString& descripcion, const QString& porque) {
        Problema p;
        p.tipo = QLatin1String(tipo);
        p.descripcion = descripcion;
        p.porque = porque;
        p.filas.append({tabla, entero(fila, ClavePrimaria), QString(),
                        QStringLiteral("tablero %1").arg(entero(fila, QStringLiteral("uf_fk_tablero")))});
        p.arreglo = Arreglo::EliminarFilas;
        p.tipoEntidad = entidad;
        p.clave = entero(fila, ClavePrimaria);
        m_problemas.append(p);
    };
    const QString sinTablero = QStringLiteral("Nadie puede verlo ni borrarlo: no hay tablero que lo muestre.");
    for (const FotoBiblioteca::Fila& fila : m_foto.colocaciones) {
        const int tablero = entero(fila, QStringLiteral("uf_fk_tablero"));
        const int indicador = entero(fila, QStringLiteral("uf_fk_indicador"));
        if (!tableros.contains(tablero))
            reportar("colocacion-sin-tablero", QStringLiteral("ut_bi_TabIndicador"), VendimarBI::ctabindicador, fila,
                     QStringLiteral("Un indicador colocado pertenece al tablero %1, que no existe.").arg(tablero),
                     sinTablero);
        else if (!m_indicadores.contains(indicador))
            reportar("colocacion-sin-indicador", QStringLiteral("ut_bi_TabIndicador"), VendimarBI::ctabindicador, fila,
                     QStringLiteral("El tablero %1 coloca el indicador %2, que no existe.").arg(tablero).arg(indicador),
                     QStringLiteral("El tablero muestra un marco vacío en su lugar."));
    }
    for (const FotoBiblioteca::Fila& fila : m_foto.figuras) {
        const int tablero = entero(fila, QStringLiteral("uf_fk_tablero"));
        if (!tableros.contains(tablero))
            reportar("figura-sin-tablero", QStringLiteral("ut_bi_Fig"), VendimarBI::cFigura, fila,
                     QStringLiteral("Un texto pertenece al tablero %1, que no existe.").arg(tablero), sinTablero);
    }
}
