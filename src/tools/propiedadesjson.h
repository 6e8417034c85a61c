#pragma once

#include <QJsonObject>

class QObject;

// An entity's state as JSON: the properties its class declares, by their
// automation names, without its own key (Sys_PK) and without object
// references. Reading it back converts each value to the property's type.
namespace propiedadesjson {

QJsonObject leer(const QObject* entidad);
// Sets every property the object declares and the JSON names; false when a
// value cannot be converted to its property's type.
bool escribir(QObject* entidad, const QJsonObject& propiedades);

} // namespace propiedadesjson
