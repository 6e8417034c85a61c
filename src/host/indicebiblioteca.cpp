#include "indicebiblioteca.h"

#include "model/vendimarbi.h"

#include <QSet>

using namespace VendimarBI;

namespace {

const QString Nombre = QStringLiteral("uf_nombre");

// What is compared: lower case without accents, so "metrica" finds "Métrica".
QString plano(const QString& texto)
{
    QString result;
    for (const QChar c : texto.normalized(QString::NormalizationForm_D))
        if (c.category() != QChar::Mark_NonSpacing)
            result.append(c.toCaseFolded());
    return result;
}

} // namespace

IndiceBiblioteca::IndiceBiblioteca(const FotoBiblioteca& foto)
    : m_perspectivas(FotoBiblioteca::porClave(foto.perspectivas))
{
    anotarUsos(foto);
    agregar(cPerspectiva, foto.perspectivas, QStringLiteral("uf_padre"));
    agregar(cMetrica, foto.metricas, QStringLiteral("uf_fk_perspectiva"));
    agregar(cIndicador, foto.indicadores, QStringLiteral("uf_fk_perspectiva"));
}

void IndiceBiblioteca::anotarUsos(const FotoBiblioteca& foto)
{
    const QHash<int, const FotoBiblioteca::Fila*> indicadores = FotoBiblioteca::porClave(foto.indicadores);
    for (const QList<FotoBiblioteca::Fila>* configuraciones : {&foto.barras, &foto.semaforos, &foto.matrices}) {
        for (const FotoBiblioteca::Fila& fila : *configuraciones) {
            const FotoBiblioteca::Fila* indicador = indicadores.value(entero(fila, QStringLiteral("uf_fk_indicador")));
            if (!indicador)
                continue;
            QSet<int> metricas;
            for (auto it = fila.cbegin(); it != fila.cend(); ++it)
                if (esColumnaMetrica(it.key()) && entero(fila, it.key()) != 0)
                    metricas.insert(entero(fila, it.key()));
            for (int metrica : metricas)
                m_usosMetrica[metrica].append(indicador->value(Nombre).toString());
        }
    }
    const QHash<int, const FotoBiblioteca::Fila*> tableros = FotoBiblioteca::porClave(foto.tableros);
    for (const FotoBiblioteca::Fila& colocacion : foto.colocaciones) {
        const FotoBiblioteca::Fila* tablero = tableros.value(entero(colocacion, QStringLiteral("uf_fk_tablero")));
        QStringList& usos = m_usosIndicador[entero(colocacion, QStringLiteral("uf_fk_indicador"))];
        // A dashboard placing the indicator twice is named once.
        if (tablero && !usos.contains(tablero->value(Nombre).toString()))
            usos.append(tablero->value(Nombre).toString());
    }
}

void IndiceBiblioteca::agregar(int tipo, const QList<FotoBiblioteca::Fila>& filas, const QString& columnaPerspectiva)
{
    for (const FotoBiblioteca::Fila& fila : filas) {
        Resultado r;
        r.tipo = tipo;
        r.clave = entero(fila, QStringLiteral("sys_pk"));
        r.nombre = fila.value(Nombre).toString();
        r.ruta = rutaDe(entero(fila, columnaPerspectiva));
        if (tipo == cMetrica)
            r.usos = m_usosMetrica.value(r.clave);
        else if (tipo == cIndicador)
            r.usos = m_usosIndicador.value(r.clave);
        m_todos.append(r);
    }
}

// The names from the root down to the perspective, joined by " / ". A
// parent that loops back on the path ends it: the library may hold cycles.
QString IndiceBiblioteca::rutaDe(int perspectiva) const
{
    QStringList nombres;
    QSet<int> vistas;
    for (const FotoBiblioteca::Fila* fila = m_perspectivas.value(perspectiva); fila && !vistas.contains(perspectiva);
         fila = m_perspectivas.value(perspectiva)) {
        vistas.insert(perspectiva);
        nombres.prepend(fila->value(Nombre).toString());
        perspectiva = entero(*fila, QStringLiteral("uf_padre"));
    }
    return nombres.join(QStringLiteral(" / "));
}

QList<IndiceBiblioteca::Resultado> IndiceBiblioteca::buscar(const QString& texto) const
{
    const QString buscado = plano(texto.trimmed());
    QList<Resultado> result;
    if (buscado.isEmpty())
        return result;
    for (const Resultado& r : m_todos)
        if (plano(r.nombre).contains(buscado))
            result.append(r);
    return result;
}
