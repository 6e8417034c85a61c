#pragma once

#include <QStringList>

// `vbi import [URL] FILE [--dry-run]`: reads a bundle into the library in
// one transaction and prints what was created and what reused. Exit status
// 0 when imported (or, with --dry-run, when it would import), 1 when the
// bundle was refused and nothing written, 2 for a wrong command.
int ejecutarImportacion(const QStringList& args, const QString& urlPorOmision);
