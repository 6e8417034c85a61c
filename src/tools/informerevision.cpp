#include "informerevision.h"

#include <QJsonArray>

namespace InformeRevision {

QString fila(const FilaProblema& f)
{
    QString texto = QStringLiteral("%1 %2").arg(f.tabla).arg(f.clave);
    if (!f.nombre.isEmpty())
        texto += QStringLiteral(" «%1»").arg(f.nombre);
    if (!f.detalle.isEmpty())
        texto += QStringLiteral(" — ") + f.detalle;
    return texto;
}

QString texto(const QList<Problema>& problemas)
{
    if (problemas.isEmpty())
        return QStringLiteral("La biblioteca está sana: no se encontró ningún problema.\n");
    QString informe = problemas.size() == 1 ? QStringLiteral("Se encontró 1 problema.\n")
                                            : QStringLiteral("Se encontraron %1 problemas.\n").arg(problemas.size());
    for (qsizetype i = 0; i < problemas.size(); ++i) {
        const Problema& p = problemas.at(i);
        informe += QStringLiteral("\n%1. [%2] %3\n").arg(i + 1).arg(p.tipo, p.descripcion);
        informe += QStringLiteral("   Por qué importa: %1\n").arg(p.porque);
        for (const FilaProblema& f : p.filas)
            informe += QStringLiteral("   - ") + fila(f) + QLatin1Char('\n');
        if (p.arreglo != Arreglo::Ninguno)
            informe += QStringLiteral("   Arreglo posible: %1\n").arg(p.textoArreglo());
    }
    return informe;
}

QJsonObject json(const QList<Problema>& problemas)
{
    QJsonArray lista;
    for (const Problema& p : problemas) {
        QJsonArray filas;
        for (const FilaProblema& f : p.filas)
            filas.append(QJsonObject{{QStringLiteral("tabla"), f.tabla},
                                     {QStringLiteral("clave"), f.clave},
                                     {QStringLiteral("nombre"), f.nombre},
                                     {QStringLiteral("detalle"), f.detalle}});
        lista.append(QJsonObject{{QStringLiteral("tipo"), p.tipo},
                                 {QStringLiteral("descripcion"), p.descripcion},
                                 {QStringLiteral("porque"), p.porque},
                                 {QStringLiteral("filas"), filas},
                                 {QStringLiteral("arreglo"), p.textoArreglo()}});
    }
    return QJsonObject{{QStringLiteral("sana"), problemas.isEmpty()}, {QStringLiteral("problemas"), lista}};
}

} // namespace InformeRevision
