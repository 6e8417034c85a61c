#include "vb.h"

#include <algorithm>
#include <cmath>

namespace vb {

namespace {

// All calendar arithmetic is done in 64 bits on the proleptic Gregorian
// calendar (the one VB uses), so that DateSerial(2147483647, ...) or a month
// count of -2147483648 reaches the range check instead of wrapping around.

// Automation day 0 is 1899-12-30, which is 25569 days before 1970-01-01.
constexpr qint64 EpochShift = 25569;
// 100-01-01 and 9999-12-31, the range of a VB Date.
constexpr qint64 MinDay = -657434;
constexpr qint64 MaxDay = 2958465;

struct Civil {
    qint64 year;
    int month;
    int day;
};

qint64 floorDiv(qint64 a, qint64 b)
{
    qint64 q = a / b;
    if ((a % b != 0) && ((a < 0) != (b < 0)))
        --q;
    return q;
}

// Days since 1970-01-01 of a civil date (Howard Hinnant's algorithm).
qint64 daysFromCivil(qint64 y, int m, int d)
{
    y -= m <= 2 ? 1 : 0;
    const qint64 era = floorDiv(y, 400);
    const qint64 yoe = y - era * 400;
    const qint64 doy = (153 * (m > 2 ? m - 3 : m + 9) + 2) / 5 + d - 1;
    const qint64 doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + doe - 719468;
}

Civil civilFromDays(qint64 z)
{
    z += 719468;
    const qint64 era = floorDiv(z, 146097);
    const qint64 doe = z - era * 146097;
    const qint64 yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const qint64 doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const qint64 mp = (5 * doy + 2) / 153;
    const int d = int(doy - (153 * mp + 2) / 5 + 1);
    const int m = int(mp < 10 ? mp + 3 : mp - 9);
    return {yoe + era * 400 + (m <= 2 ? 1 : 0), m, d};
}

bool isLeapYear(qint64 y)
{
    return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
}

int daysInMonth(qint64 y, int m)
{
    static constexpr int lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return m == 2 && isLeapYear(y) ? 29 : lengths[m - 1];
}

qint64 serialFromCivil(qint64 y, int m, int d)
{
    return daysFromCivil(y, m, d) + EpochShift;
}

Civil civilFromSerial(qint64 serial)
{
    return civilFromDays(serial - EpochShift);
}

// The whole-day part of an automation date. The time of day is stored as a
// positive fraction even before 1899-12-30 (-1.25 is 1899-12-29 06:00), so
// the day is the value truncated toward zero, not its floor.
// A double outside VB's Date range cannot be converted to a Date: Overflow,
// as VB reports it for CDate.
qint64 wholeDays(double date)
{
    if (!(date > double(MinDay - 1) && date < double(MaxDay + 1)))
        raise(ErrOverflow);
    return qint64(std::trunc(date));
}

double timeOfDay(double date)
{
    return std::fabs(date - std::trunc(date));
}

double compose(qint64 day, double time)
{
    return day < 0 ? double(day) - time : double(day) + time;
}

void requireInRange(qint64 day)
{
    if (day < MinDay || day > MaxDay)
        raise(ErrInvalidProcedureCall);
}

} // namespace

double DateSerial(int year, int month, int day)
{
    qint64 y = year;
    if (y >= 0 && y <= 29)
        y += 2000;
    else if (y >= 30 && y <= 99)
        y += 1900;

    // Months first, then days, each carried into the next larger unit:
    // month 0 is December of the year before, day 0 the last day of the
    // month before.
    const qint64 monthIndex = y * 12 + (qint64(month) - 1);
    const qint64 carriedYear = floorDiv(monthIndex, 12);
    const int carriedMonth = int(monthIndex - carriedYear * 12) + 1;

    const qint64 serial = serialFromCivil(carriedYear, carriedMonth, 1) + (qint64(day) - 1);
    requireInRange(serial);
    return double(serial);
}

double DateAddMonths(double date, int months)
{
    const Civil c = civilFromSerial(wholeDays(date));
    const qint64 monthIndex = c.year * 12 + (c.month - 1) + qint64(months);
    const qint64 year = floorDiv(monthIndex, 12);
    const int month = int(monthIndex - year * 12) + 1;
    if (year < 100 || year > 9999)
        raise(ErrInvalidProcedureCall);
    // Jan 31 plus a month is the last day of February, not early March.
    const int day = std::min(c.day, daysInMonth(year, month));
    const qint64 serial = serialFromCivil(year, month, day);
    requireInRange(serial);
    return compose(serial, timeOfDay(date));
}

double DateAddDays(double date, int days)
{
    const qint64 serial = wholeDays(date) + days;
    requireInRange(serial);
    return compose(serial, timeOfDay(date));
}

int DateDiffDays(double from, double to)
{
    return int(wholeDays(to) - wholeDays(from));
}

int Weekday(double date)
{
    // Day 0 (1899-12-30) was a Saturday.
    const qint64 day = wholeDays(date);
    return int(day + 6 - floorDiv(day + 6, 7) * 7) + 1;
}

int Year(double date)
{
    return int(civilFromSerial(wholeDays(date)).year);
}

int Month(double date)
{
    return civilFromSerial(wholeDays(date)).month;
}

int Day(double date)
{
    return civilFromSerial(wholeDays(date)).day;
}

QDate toQDate(double date)
{
    return QDate(1899, 12, 30).addDays(wholeDays(date));
}

double fromQDate(const QDate& date)
{
    if (!date.isValid())
        raise(ErrInvalidProcedureCall);
    const qint64 serial = QDate(1899, 12, 30).daysTo(date);
    if (serial < MinDay || serial > MaxDay)
        raise(ErrOverflow);
    return double(serial);
}

} // namespace vb
