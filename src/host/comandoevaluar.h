#pragma once

#include <QStringList>

// `vbi evaluate [URL] --metric K [--entity K] [--period dia|semana|mes|ano]
// [--date YYYY-MM-DD] [--time-limit MS]`: runs a stored metric for the
// period holding the date (today and the day by default) and prints its
// value. Exit status 1 with the metric's error when it gives no value, 2
// when the command is wrong.
int ejecutarEvaluacion(const QStringList& args, const QString& urlPorOmision);
