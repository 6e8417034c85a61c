#include "vb.h"

namespace vb {

// Qt 6 reports a variant holding std::nullptr_t as isNull() while it stays
// valid, which is exactly the Null/Empty split VB needs: Null is a value that
// says "no data", Empty is the absence of any value.
QVariant Null()
{
    return QVariant::fromValue(nullptr);
}

QVariant Empty()
{
    return QVariant();
}

bool isNull(const QVariant& v)
{
    return v.isValid() && v.isNull();
}

bool isEmpty(const QVariant& v)
{
    return !v.isValid();
}

} // namespace vb
