#include "vb/calendario.h"

#include "vb/vb.h"

#include <cmath>
#include <limits>

namespace {

// A 32-bit result, or overflow (error 6) as VB's Long arithmetic raises it.
int checkedLong(qint64 value)
{
    if (value < std::numeric_limits<int>::min() || value > std::numeric_limits<int>::max())
        vb::raise(vb::ErrOverflow);
    return int(value);
}

// Year and month parts of a packed yyyymm, both 16-bit as the month builder takes them.
void splitMonth(int V, short& y, short& m)
{
    y = vb::CInt(vb::Int(V / 100.0));
    m = vb::CInt(double(qint64(V) - qint64(y) * 100));
}

template <typename Result, typename Work>
Result orZero(Work work)
{
    try {
        return work();
    } catch (const vb::AutomationError&) {
        return Result(0);
    }
}

} // namespace

namespace vb::calendario {

int weekNum(double d)
{
    return orZero<int>([d] {
        const int y = vb::Year(d);
        const double j = vb::DateSerial(y, 1, 1);
        const int days = vb::DateDiffDays(j, d);
        // Week 1 is 1-7 January whatever weekday the year starts on.
        const short week = vb::CInt(vb::Int(days / 7.0) + 1);
        return checkedLong(qint64(y) * 100 + week);
    });
}

double iniMes(int V)
{
    return orZero<double>([V] {
        short y = 0, m = 0;
        splitMonth(V, y, m);
        return vb::DateSerial(y, m, 1);
    });
}

double finMes(int V)
{
    return orZero<double>([V] {
        short y = 0, m = 0;
        splitMonth(V, y, m);
        const double first = vb::DateSerial(y, m, 1);
        return vb::DateAddDays(vb::DateAddMonths(first, 1), -1);
    });
}

double dayOfWeekNum(int W)
{
    return orZero<double>([W] {
        const int y = int(vb::Int(W / 100.0));
        int wk = int(qint64(W) - qint64(y) * 100);
        // Week 0 is kept and week 53 reads as week 1: hosts depend on both.
        if (wk < 0 || wk > 52)
            wk = 1;
        const double j = vb::DateSerial(y, 1, 1);
        const int dow = vb::Weekday(j);
        const double t = vb::DateAddDays(j, 7 * wk);
        return vb::DateAddDays(t, -6 - dow);
    });
}

double numToDate(int n)
{
    return orZero<double>([n] {
        const int y = int(vb::Int(n / 10000.0));
        const qint64 r = qint64(n) - qint64(y) * 10000;
        const short m = vb::CInt(vb::Int(r / 100.0));
        const short dd = vb::CInt(double(r - qint64(m) * 100));
        return vb::DateSerial(y, m, dd);
    });
}

int dayToNum(double f)
{
    return orZero<int>([f] {
        return checkedLong(qint64(vb::Year(f)) * 10000 + vb::Month(f) * 100 + vb::Day(f));
    });
}

} // namespace vb::calendario
