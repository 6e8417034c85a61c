#include "valorsql.h"

#include <QJSEngine>

QJSValue ValorSql::aJS(QJSEngine& motor, const QVariant& valor)
{
    if (valor.isNull())
        return QJSValue(QJSValue::NullValue);
    switch (valor.metaType().id()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
        return QJSValue(valor.toDouble());
    default:
        return motor.toScriptValue(valor);
    }
}
