#include "variantconv.h"

#include "vb.h"

#include <QLocale>

namespace vb {

namespace {

void refuseNull(const QVariant& value)
{
    if (isNull(value))
        throw AutomationError(ErrInvalidUseOfNull, QStringLiteral("Invalid use of Null"));
}

} // namespace

double toDouble(const QVariant& value)
{
    refuseNull(value);
    if (isEmpty(value))
        return 0.0;
    switch (value.typeId()) {
    case QMetaType::QString:
        return CDbl(value.toString(), QLocale());
    case QMetaType::Bool:
        return value.toBool() ? -1.0 : 0.0;
    default:
        break;
    }
    bool ok = false;
    const double number = value.toDouble(&ok);
    if (!ok)
        raise(ErrTypeMismatch);
    return number;
}

int toLong(const QVariant& value)
{
    return CLng(toDouble(value));
}

short toInteger(const QVariant& value)
{
    return CInt(toDouble(value));
}

bool toBoolean(const QVariant& value)
{
    return toDouble(value) != 0.0;
}

QString toText(const QVariant& value)
{
    refuseNull(value);
    switch (value.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float:
        return CStr(value.toDouble(), QLocale());
    case QMetaType::Bool:
        return value.toBool() ? QStringLiteral("True") : QStringLiteral("False");
    default:
        return value.toString();
    }
}

} // namespace vb
