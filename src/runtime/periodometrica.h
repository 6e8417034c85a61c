#pragma once

#include <QDate>
#include <QString>

// The days a metric is asked about: the first and last day of the day,
// week, month or year (cPeriodosTemporales 0 to 3) that holds a date.
struct IntervaloPeriodo {
    QDate inicio;
    QDate final;
};

class PeriodoMetrica {
public:
    // An invalid interval for a period out of range or an invalid date.
    static IntervaloPeriodo intervalo(int periodo, const QDate& fecha);
    // The period atras periods before the one that holds the date, as a
    // chart's history counts them back (0 is the one that holds it).
    static IntervaloPeriodo anterior(int periodo, const QDate& fecha, int atras);
    // The period named on the command line (dia, semana, mes, ano), or -1.
    static int desdeNombre(const QString& nombre);
};
