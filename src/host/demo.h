#pragma once

#include <QStringList>

// `vbi demo [URL] [--user N] [--deny CODE ...]`: the designer's host window
// for a signed-in user. Answers the process exit status.
int ejecutarDemo(const QStringList& args, const QString& urlPorOmision);
