#pragma once

#include <QString>
#include <exception>
#include <string>

namespace vb {

// Error numbers the component raises, as VB numbers them.
enum ErrorNumber : int {
    ErrInvalidProcedureCall = 5,
    ErrOverflow = 6,
    ErrTypeMismatch = 13,
    ErrObjectNotSet = 91,
    ErrNoSuchMember = 438,
};

// An error that reaches the caller or the host, carrying VB's number.
class AutomationError : public std::exception {
public:
    AutomationError(int number, QString description);
    int number() const { return m_number; }
    const QString& description() const { return m_description; }
    const char* what() const noexcept override { return m_what.c_str(); }

private:
    int m_number;
    QString m_description;
    std::string m_what;
};

// The VB text of a standard error number ("Overflow", "Type mismatch", ...).
QString standardDescription(int number);
// Throws AutomationError(number, standardDescription(number)).
[[noreturn]] void raise(int number);

} // namespace vb
