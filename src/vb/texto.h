#pragma once

#include <QString>

namespace vb {

// VB Trim: removes blanks (spaces) at both ends and nothing else, so a text
// of line breaks or tabs is not empty after it.
QString Trim(const QString& text);

} // namespace vb
