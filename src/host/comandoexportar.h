#pragma once

#include <QStringList>

// `vbi export [URL] (--perspective K | --dashboard K | --all) [--out FILE]`:
// writes a bundle to FILE or to the standard output. Exit status 0 when
// written, 1 when the selection does not exist or the library cannot be
// read, 2 for a wrong command.
int ejecutarExportacion(const QStringList& args, const QString& urlPorOmision);
