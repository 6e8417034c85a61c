#pragma once

#include <QString>

namespace vb {

// VB Trim: removes blanks (spaces) at both ends and nothing else, so a text
// of line breaks or tabs is not empty after it.
QString Trim(const QString& text);

// The text in lower case, exactly as QString::toLower gives it. Table and
// column names are ASCII and are lower-cased on every write; for those a
// character at a time is much cheaper than toLower's Unicode tables, and any
// other text takes toLower itself.
QString minusculas(const QString& texto);

// Whether a database gives the text back exactly as it was stored: no half
// of a surrogate pair, which no database encoding can hold (each driver
// stores something else in its place), and neither of the noncharacters
// U+FFFE and U+FFFF, which SQLite gives back as U+FFFD.
bool almacenable(QStringView texto);

} // namespace vb
