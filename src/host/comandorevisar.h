#pragma once

#include <QStringList>

// `vbi check [URL] [--json]`: the library's health report. Exit status 0
// when the library is healthy, 1 when it has problems, 2 when the command is
// wrong or the database cannot be read.
int ejecutarRevision(const QStringList& args, const QString& urlPorOmision);
