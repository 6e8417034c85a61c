#include "periodos.h"

#include <QObject>
#include <QVariant>

namespace {
const char* const Prefijos[Periodos::Cantidad] = {"Dia", "Semana", "Mes", "Ano"};
}

QString Periodos::nombre(int periodo)
{
    static const QString Nombres[Cantidad] = {QStringLiteral("Día"), QStringLiteral("Semana"), QStringLiteral("Mes"),
                                              QStringLiteral("Año")};
    return valido(periodo) ? Nombres[periodo] : QString();
}

QString Periodos::inicial(int periodo)
{
    return nombre(periodo).left(1);
}

QByteArray Periodos::propiedad(int periodo, const char* sufijo)
{
    return QByteArray(Prefijos[valido(periodo) ? periodo : 0]) + sufijo;
}

double Periodos::numero(const QObject* objeto, const QByteArray& propiedad)
{
    return objeto ? objeto->property(propiedad.constData()).toDouble() : 0.0;
}

double Periodos::limiteSuperior(const QObject* colocado, int periodo)
{
    return numero(colocado, "Limite" + QByteArray::number(2 * periodo + 1));
}

double Periodos::limiteInferior(const QObject* colocado, int periodo)
{
    return numero(colocado, "Limite" + QByteArray::number(2 * periodo + 2));
}
