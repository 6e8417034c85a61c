#pragma once
// Assigning a variant to a typed variable, as VB does it: the value is
// converted, and a value that cannot be converted raises (13 type mismatch,
// 6 overflow, 94 invalid use of Null).

#include <QString>
#include <QVariant>

namespace vb {

constexpr int ErrInvalidUseOfNull = 94;

int toLong(const QVariant& value);    // 32-bit, rounding half to even
short toInteger(const QVariant& value); // 16-bit, rounding half to even
double toDouble(const QVariant& value);
bool toBoolean(const QVariant& value); // any non-zero number is true
QString toText(const QVariant& value);

} // namespace vb
