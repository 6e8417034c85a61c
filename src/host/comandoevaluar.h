#pragma once

#include <QStringList>

// `vbi evaluate [URL] --metric K [--entity K] [--period dia|semana|mes|ano]
// [--date YYYY-MM-DD] [--time-limit MS]`: runs a stored metric for the
// period holding the date (today and the day by default) and prints its
// value. Exit status 1 with the metric's error when it gives no value, 2
// when the command is wrong.
int ejecutarEvaluacion(const QStringList& args, const QString& urlPorOmision);

// A metric's value as a person reads it and a program parses it: plain
// digits with '.' for decimals, never an exponent, and without the tail
// binary fractions leave on sums of decimals (41624.049999999974 is
// 41624.05). A whole number is printed whole, every digit of it; any other
// to fifteen significant digits, all that a double holds for certain.
QString textoValor(double valor);
