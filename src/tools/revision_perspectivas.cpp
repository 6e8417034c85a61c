// The perspectives the library's tree leaves out. The tree reads them once,
// ordered by parent and name, and adds a perspective only under a parent it
// has already added: a perspective whose parent comes later in that order, is
// missing, or lies on a cycle is left out with everything below it.
#include "revisionbiblioteca.h"

#include "model/vendimarbi.h"

#include <QMultiMap>

#include <algorithm>

namespace {

const QString ColumnaPadre = QStringLiteral("uf_padre");

const QString PorqueOculta = QStringLiteral(
    "El árbol de la biblioteca lee las perspectivas una sola vez, por padre y nombre, y sólo coloca una perspectiva "
    "bajo un padre que ya colocó: ésta no aparece, y con ella desaparece todo lo que contiene.");

QList<int> ordenadas(const QSet<int>& claves)
{
    QList<int> lista(claves.cbegin(), claves.cend());
    std::sort(lista.begin(), lista.end());
    return lista;
}

} // namespace

void RevisionBiblioteca::revisarPerspectivas()
{
    // The tree's own pass, in the database's order.
    QSet<int> visibles;
    for (const FotoBiblioteca::Fila& fila : m_foto.ordenArbol) {
        const QVariant padre = fila.value(ColumnaPadre);
        if (!padre.isNull() && (padre.toInt() == 0 || visibles.contains(padre.toInt())))
            visibles.insert(entero(fila, QStringLiteral("sys_pk")));
    }
    QSet<int> ocultas;
    for (auto it = m_perspectivas.cbegin(); it != m_perspectivas.cend(); ++it)
        if (!visibles.contains(it.key()))
            ocultas.insert(it.key());

    QSet<int> enCiclo;
    for (int clave : ordenadas(ocultas)) {
        const FotoBiblioteca::Fila& fila = *m_perspectivas.value(clave);
        const QVariant padre = fila.value(ColumnaPadre);
        if (padre.isNull() || !ocultas.contains(padre.toInt())) {
            reportarOculta(clave, ocultas, visibles);
            continue;
        }
        if (enCiclo.contains(clave))
            continue;
        // Below a hidden parent: reported with it, unless the chain of
        // parents comes back here.
        QList<int> ciclo{clave};
        int paso = padre.toInt();
        while (paso != clave && ocultas.contains(paso) && ciclo.size() <= ocultas.size()) {
            ciclo.append(paso);
            const QVariant siguiente = m_perspectivas.value(paso)->value(ColumnaPadre);
            if (siguiente.isNull())
                break;
            paso = siguiente.toInt();
        }
        if (paso != clave)
            continue;
        std::sort(ciclo.begin(), ciclo.end());
        for (int miembro : ciclo)
            enCiclo.insert(miembro);
        reportarCiclo(ciclo, ocultas, visibles);
    }
    revisarHojas(ocultas);
}

void RevisionBiblioteca::reportarOculta(int clave, const QSet<int>& ocultas, const QSet<int>& visibles)
{
    const FotoBiblioteca::Fila& fila = *m_perspectivas.value(clave);
    const QVariant padre = fila.value(ColumnaPadre);
    const QString nombre = fila.value(QStringLiteral("uf_nombre")).toString();
    Problema p;
    if (!padre.isNull() && visibles.contains(padre.toInt())) {
        p.tipo = QStringLiteral("perspectiva-padre-posterior");
        const FotoBiblioteca::Fila& deArriba = *m_perspectivas.value(padre.toInt());
        p.descripcion = QStringLiteral("La perspectiva «%1» no aparece en el árbol: su padre «%2» (clave %3) se lee "
                                       "después que ella.")
                            .arg(nombre, deArriba.value(QStringLiteral("uf_nombre")).toString())
                            .arg(padre.toInt());
    } else {
        p.tipo = QStringLiteral("perspectiva-padre-inexistente");
        const QString cual = padre.isNull() ? QStringLiteral("no tiene padre (NULL)")
                                            : QStringLiteral("su padre (clave %1) no existe").arg(padre.toInt());
        p.descripcion = QStringLiteral("La perspectiva «%1» no aparece en el árbol: %2.").arg(nombre, cual);
    }
    p.porque = PorqueOculta;
    p.filas = loQueOcultan({clave}, ocultas);
    p.arreglo = Arreglo::ReubicarPerspectiva;
    p.tipoEntidad = VendimarBI::cPerspectiva;
    p.clave = clave;
    p.padresPosibles = padresPosibles(clave, visibles);
    m_problemas.append(p);
}

// A parent that is read before its own children (its parent key is smaller
// than its key) and before the moved perspective's children (its key is
// smaller than the moved one's): under it the perspective shows at once, and
// so does what hangs below it.
QList<QPair<int, QString>> RevisionBiblioteca::padresPosibles(int clave, const QSet<int>& visibles) const
{
    QList<QPair<int, QString>> posibles;
    for (int padre : ordenadas(visibles)) {
        if (padre < clave && entero(*m_perspectivas.value(padre), ColumnaPadre) < padre)
            posibles.append({padre, ruta(padre)});
    }
    return posibles;
}

void RevisionBiblioteca::reportarCiclo(const QList<int>& ciclo, const QSet<int>& ocultas, const QSet<int>& visibles)
{
    QStringList nombres;
    for (int miembro : ciclo)
        nombres.append(QStringLiteral("«%1» (clave %2)")
                           .arg(m_perspectivas.value(miembro)->value(QStringLiteral("uf_nombre")).toString())
                           .arg(miembro));
    Problema p;
    p.tipo = QStringLiteral("perspectiva-ciclo");
    p.descripcion = QStringLiteral("Las perspectivas %1 forman un ciclo: cada una desciende de sí misma y ninguna "
                                   "llega al nivel superior.")
                        .arg(nombres.join(QStringLiteral(", ")));
    p.porque = PorqueOculta;
    p.filas = loQueOcultan(ciclo, ocultas);
    // Lifting one member to the top level breaks the cycle and shows them all.
    p.arreglo = Arreglo::ReubicarPerspectiva;
    p.tipoEntidad = VendimarBI::cPerspectiva;
    p.clave = ciclo.first();
    p.padresPosibles = padresPosibles(p.clave, visibles);
    m_problemas.append(p);
}

// The hidden perspectives from the given ones downwards, then the metrics
// and indicators they hold.
QList<FilaProblema> RevisionBiblioteca::loQueOcultan(const QList<int>& raices, const QSet<int>& ocultas) const
{
    QMultiMap<int, int> hijas;
    for (int clave : ordenadas(ocultas)) {
        const QVariant padre = m_perspectivas.value(clave)->value(ColumnaPadre);
        if (!padre.isNull())
            hijas.insert(padre.toInt(), clave);
    }
    QList<int> pendientes = raices;
    QSet<int> alcanzadas(raices.cbegin(), raices.cend());
    QList<FilaProblema> filas;
    while (!pendientes.isEmpty()) {
        const int clave = pendientes.takeFirst();
        filas.append(filaPerspectiva(clave));
        // values() of a multi-map lists the latest insert first: sort back.
        QList<int> debajo = hijas.values(clave);
        std::sort(debajo.begin(), debajo.end());
        for (int hija : debajo) {
            if (!alcanzadas.contains(hija)) {
                alcanzadas.insert(hija);
                pendientes.append(hija);
            }
        }
    }
    const auto hojas = [&](const QList<FotoBiblioteca::Fila>& lista, const QString& tabla) {
        for (const FotoBiblioteca::Fila& fila : lista) {
            const int perspectiva = entero(fila, QStringLiteral("uf_fk_perspectiva"));
            if (alcanzadas.contains(perspectiva))
                filas.append({tabla, entero(fila, QStringLiteral("sys_pk")),
                              fila.value(QStringLiteral("uf_nombre")).toString(), ruta(perspectiva)});
        }
    };
    hojas(m_foto.metricas, QStringLiteral("ut_bi_Metrica"));
    hojas(m_foto.indicadores, QStringLiteral("ut_bi_Indicador"));
    return filas;
}
