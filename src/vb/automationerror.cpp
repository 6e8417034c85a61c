#include "automationerror.h"

#include <utility>

namespace vb {

AutomationError::AutomationError(int number, QString description)
    : m_number(number)
    , m_description(std::move(description))
    // Built once here: what() must not allocate and must outlive the call.
    , m_what(QStringLiteral("%1: %2").arg(number).arg(m_description).toStdString())
{
}

QString standardDescription(int number)
{
    switch (number) {
    case ErrInvalidProcedureCall:
        return QStringLiteral("Invalid procedure call or argument");
    case ErrOverflow:
        return QStringLiteral("Overflow");
    case ErrTypeMismatch:
        return QStringLiteral("Type mismatch");
    case ErrObjectNotSet:
        return QStringLiteral("Object variable or With block variable not set");
    case ErrNoSuchMember:
        return QStringLiteral("Object doesn't support this property or method");
    default:
        // What VB says for any number it has no text of its own for.
        return QStringLiteral("Application-defined or object-defined error");
    }
}

void raise(int number)
{
    throw AutomationError(number, standardDescription(number));
}

} // namespace vb
