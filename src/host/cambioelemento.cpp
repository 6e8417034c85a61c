#include "cambioelemento.h"

CambioElemento::CambioElemento(AlmacenElementos* almacen, std::shared_ptr<ClaveElemento> clave, QVariantMap antes,
                               QVariantMap despues, AlCambiar alCambiar)
    : OrdenElemento(describir(antes, despues), almacen, std::move(clave), std::move(alCambiar))
    , m_antes(std::move(antes))
    , m_despues(std::move(despues))
{
}

QString CambioElemento::describir(const QVariantMap& antes, const QVariantMap& despues)
{
    QStringList cambiadas;
    for (auto it = despues.cbegin(); it != despues.cend(); ++it)
        if (antes.value(it.key()) != it.value())
            cambiadas.append(it.key());
    const auto solo = [&cambiadas](const QStringList& permitidas) {
        return std::all_of(cambiadas.cbegin(), cambiadas.cend(),
                           [&permitidas](const QString& p) { return permitidas.contains(p); });
    };
    if (solo({QStringLiteral("x"), QStringLiteral("Y")}))
        return QStringLiteral("mover elemento");
    if (solo({QStringLiteral("W"), QStringLiteral("H")}))
        return QStringLiteral("cambiar tamaño");
    return QStringLiteral("editar elemento");
}

bool CambioElemento::aplicar(bool adelante)
{
    return m_almacen->escribir(*m_clave, adelante ? m_despues : m_antes);
}
