#include "propiedadesjson.h"

#include <QJsonValue>
#include <QMetaProperty>
#include <QObject>

#include <cmath>
#include <limits>

namespace propiedadesjson {

namespace {

bool seCopia(const QMetaProperty& propiedad)
{
    const QMetaType tipo = propiedad.metaType();
    return propiedad.isWritable() && qstrcmp(propiedad.name(), "Sys_PK") != 0
        && !(tipo.flags() & QMetaType::PointerToQObject);
}

// A value of the kind the property holds: text for a text, true or false for
// a flag, a whole number that fits for an integer. Anything else means a
// damaged bundle, not something to store as 0.
bool encaja(const QMetaProperty& propiedad, const QJsonValue& valor)
{
    switch (propiedad.metaType().id()) {
    case QMetaType::QString:
        return valor.isString();
    case QMetaType::Bool:
        return valor.isBool();
    case QMetaType::Double:
        return valor.isDouble();
    case QMetaType::Short:
        return valor.isDouble() && valor.toDouble() == std::trunc(valor.toDouble())
            && std::abs(valor.toDouble()) <= std::numeric_limits<short>::max();
    default:
        return valor.isDouble() && valor.toDouble() == std::trunc(valor.toDouble())
            && std::abs(valor.toDouble()) <= std::numeric_limits<int>::max();
    }
}

} // namespace

QJsonObject leer(const QObject* entidad)
{
    QJsonObject propiedades;
    const QMetaObject* meta = entidad->metaObject();
    for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i) {
        const QMetaProperty propiedad = meta->property(i);
        if (seCopia(propiedad))
            propiedades.insert(QLatin1String(propiedad.name()), QJsonValue::fromVariant(propiedad.read(entidad)));
    }
    return propiedades;
}

bool escribir(QObject* entidad, const QJsonObject& propiedades)
{
    const QMetaObject* meta = entidad->metaObject();
    for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i) {
        const QMetaProperty propiedad = meta->property(i);
        const QJsonValue valor = propiedades.value(QLatin1String(propiedad.name()));
        if (!seCopia(propiedad) || valor.isUndefined())
            continue;
        QVariant convertido = valor.toVariant();
        if (!encaja(propiedad, valor) || !convertido.convert(propiedad.metaType()) || !propiedad.write(entidad, convertido))
            return false;
    }
    return true;
}

} // namespace propiedadesjson
