#pragma once

#include <QString>

// Renders the component's dialogs, filled with the sample library, to PNG
// files in a folder. Answers the number of files written, or -1 on failure.
int escribirCapturas(const QString& carpeta, QString* error);
