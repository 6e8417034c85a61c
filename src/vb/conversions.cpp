#include "vb.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>

namespace vb {

namespace {

// --- CStr -------------------------------------------------------------------

// VB prints at most 15 significant digits (DBL_DIG): enough to round-trip
// what the user typed, few enough to hide binary noise such as 0.1 + 0.2.
constexpr int SignificantDigits = 15;

QString exponentText(int exponent)
{
    QString digits = QString::number(exponent < 0 ? -qint64(exponent) : qint64(exponent));
    if (digits.size() < 2)
        digits.prepend(QLatin1Char('0'));
    return (exponent < 0 ? QStringLiteral("E-") : QStringLiteral("E+")) + digits;
}

// --- Val --------------------------------------------------------------------

// VB's Val ignores these wherever they appear, even between digits.
bool isValBlank(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\t') || c == QLatin1Char('\n');
}

int hexDigitValue(QChar c)
{
    const char16_t u = c.unicode();
    if (u >= u'0' && u <= u'9')
        return u - u'0';
    if (u >= u'A' && u <= u'F')
        return u - u'A' + 10;
    if (u >= u'a' && u <= u'f')
        return u - u'a' + 10;
    return -1;
}

qint64 asSigned16(qint64 v)
{
    return v > 0x7FFF ? v - 0x10000 : v;
}

qint64 asSigned32(qint64 v)
{
    return v > 0x7FFFFFFF ? v - 0x100000000LL : v;
}

struct Scan {
    double value = 0;
    qsizetype end = 0; // index of the first character not taken
};

// Reads the digits of an &H / &O literal; `pos` points just past the '&'.
// VB has no 64-bit integer: more than 32 bits of digits is an overflow. The
// width decides the sign: a value that fits 16 bits is an Integer (&HFFFE is
// -2), otherwise a Long (&HFFFFFFFF is -1). A trailing '&' forces Long and a
// trailing '%' demands Integer, as for the literals in VB source.
Scan scanHexOrOctal(const QString& text, qsizetype pos)
{
    Scan scan;
    scan.end = pos;
    const qsizetype n = text.size();
    if (pos >= n)
        return scan;
    const QChar radixChar = text.at(pos).toUpper();
    int radix = 0;
    if (radixChar == QLatin1Char('H'))
        radix = 16;
    else if (radixChar == QLatin1Char('O'))
        radix = 8;
    else
        return scan; // "&F" and the like are not numbers at all

    qint64 value = 0;
    qsizetype i = pos + 1;
    for (; i < n; ++i) {
        const QChar c = text.at(i);
        if (isValBlank(c))
            continue;
        const int digit = hexDigitValue(c);
        if (digit < 0 || digit >= radix)
            break;
        value = value * radix + digit;
        if (value > 0xFFFFFFFFLL)
            raise(ErrOverflow);
    }
    scan.end = i;

    const QChar suffix = i < n ? text.at(i) : QChar();
    if (suffix == QLatin1Char('%')) {
        if (value > 0xFFFF)
            raise(ErrOverflow);
        scan.value = double(asSigned16(value));
    } else if (suffix == QLatin1Char('&') || value > 0xFFFF) {
        scan.value = double(asSigned32(value));
    } else {
        scan.value = double(asSigned16(value));
    }
    return scan;
}

Scan scanDecimal(const QString& text, qsizetype pos)
{
    const qsizetype n = text.size();
    qsizetype i = pos;
    bool negative = false;
    if (i < n && (text.at(i) == QLatin1Char('-') || text.at(i) == QLatin1Char('+'))) {
        negative = text.at(i) == QLatin1Char('-');
        ++i;
    }

    // Digits are collected as text and converted once by strtod, so the result
    // is the correctly rounded double of the literal ("123.321" == 123.321),
    // not the drift of digit-by-digit accumulation.
    std::string mantissa;
    qint64 fractionDigits = 0;
    bool seenPoint = false;
    bool seenExponent = false;
    for (; i < n; ++i) {
        const QChar c = text.at(i);
        if (isValBlank(c))
            continue;
        if (c.unicode() >= u'0' && c.unicode() <= u'9') {
            // Leading zeros add nothing to the mantissa, but after the point
            // they still shift it ("0.05").
            if (!(mantissa.empty() && c == QLatin1Char('0')))
                mantissa.push_back(char(c.unicode()));
            if (seenPoint)
                ++fractionDigits;
            continue;
        }
        if (c == QLatin1Char('.') && !seenPoint) {
            seenPoint = true;
            continue;
        }
        const char16_t u = c.unicode();
        if (u == u'E' || u == u'e' || u == u'D' || u == u'd') {
            seenExponent = true;
            ++i;
        }
        break;
    }

    qint64 exponent = 0;
    if (seenExponent) {
        bool exponentNegative = false;
        bool signAllowed = true;
        for (; i < n; ++i) {
            const QChar c = text.at(i);
            if (isValBlank(c))
                continue;
            if (signAllowed && (c == QLatin1Char('+') || c == QLatin1Char('-'))) {
                exponentNegative = c == QLatin1Char('-');
                signAllowed = false;
                continue;
            }
            if (c.unicode() >= u'0' && c.unicode() <= u'9') {
                signAllowed = false;
                // Past a few thousand the result is 0 or an overflow anyway;
                // capping keeps the arithmetic itself from overflowing.
                if (exponent < 100000)
                    exponent = exponent * 10 + (c.unicode() - u'0');
                continue;
            }
            break;
        }
        if (exponentNegative)
            exponent = -exponent;
    }

    Scan scan;
    scan.end = i;
    if (mantissa.empty()) {
        scan.value = 0;
    } else {
        const qint64 power = exponent - fractionDigits;
        const std::string literal = mantissa + 'e' + std::to_string(power);
        // No decimal point in the literal, so strtod's locale cannot matter.
        scan.value = std::strtod(literal.c_str(), nullptr);
        if (std::isinf(scan.value))
            raise(ErrOverflow);
    }
    if (negative && scan.value != 0)
        scan.value = -scan.value; // "-" alone or "-0" is 0, never -0

    // A type-declaration character right after the number converts it to that
    // type; the integer ones refuse anything that is not written as an integer.
    const QChar suffix = i < n ? text.at(i) : QChar();
    if (suffix == QLatin1Char('%') || suffix == QLatin1Char('&')) {
        if (fractionDigits > 0 || seenExponent)
            raise(ErrTypeMismatch);
        scan.value = suffix == QLatin1Char('%') ? double(CInt(scan.value)) : double(CLng(scan.value));
    } else if (suffix == QLatin1Char('!')) {
        // Single precision, as VB would hold it.
        scan.value = double(float(scan.value));
    }
    return scan;
}

// Leading blanks skipped, then either an &H/&O literal or a decimal number.
Scan scanNumber(const QString& text)
{
    qsizetype i = 0;
    while (i < text.size() && isValBlank(text.at(i)))
        ++i;
    if (i < text.size() && text.at(i) == QLatin1Char('&'))
        return scanHexOrOctal(text, i + 1);
    return scanDecimal(text, i);
}

// Half to even, independent of the FPU rounding mode.
double roundHalfEven(double value)
{
    const double lower = std::floor(value);
    const double diff = value - lower;
    if (diff > 0.5)
        return lower + 1;
    if (diff < 0.5)
        return lower;
    return std::fmod(lower, 2.0) == 0 ? lower : lower + 1;
}

} // namespace

QString CStr(double value, const QLocale& locale)
{
    if (std::isnan(value))
        return QStringLiteral("NaN");
    if (std::isinf(value))
        return value < 0 ? QStringLiteral("-Infinity") : QStringLiteral("Infinity");
    if (value == 0)
        return QStringLiteral("0"); // also -0, which VB never shows as "-0"

    // Scientific form with 15 significant digits: "d.dddddddddddddde+XX".
    // to_chars is locale-independent, unlike printf under Qt's setlocale().
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value,
                                      std::chars_format::scientific, SignificantDigits - 1);
    const std::string text(buffer, result.ptr);

    QString digits;
    const auto e = text.find('e');
    for (std::size_t k = 0; k < e; ++k) {
        if (text[k] >= '0' && text[k] <= '9')
            digits.append(QLatin1Char(text[k]));
    }
    const int exponent = std::atoi(text.c_str() + e + 1);
    while (digits.size() > 1 && digits.endsWith(QLatin1Char('0')))
        digits.chop(1);

    const QString point = locale.decimalPoint();
    const QString sign = value < 0 ? QStringLiteral("-") : QString();
    const int fractionDigits = std::max<int>(0, int(digits.size()) - 1 - exponent);

    if (exponent < SignificantDigits && fractionDigits <= SignificantDigits) {
        if (exponent < 0)
            return sign + QLatin1Char('0') + point + QString(-exponent - 1, QLatin1Char('0')) + digits;
        QString integerPart = digits.left(exponent + 1);
        if (integerPart.size() < exponent + 1)
            integerPart += QString(exponent + 1 - integerPart.size(), QLatin1Char('0'));
        const QString fraction = digits.mid(exponent + 1);
        return sign + integerPart + (fraction.isEmpty() ? QString() : point + fraction);
    }

    QString mantissa = digits.left(1);
    if (digits.size() > 1)
        mantissa += point + digits.mid(1);
    return sign + mantissa + exponentText(exponent);
}

double CDbl(const QString& text, const QLocale& locale)
{
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        raise(ErrTypeMismatch);

    bool ok = false;
    double value = locale.toDouble(trimmed, &ok);
    if (!ok && !std::isinf(value)) {
        // VB ignores thousands separators wherever they stand ("1.234,5" and
        // "1.5" in Spanish, "1,2,3" in English); Qt insists on well-placed
        // groups, so try again without them.
        QString ungrouped = trimmed;
        ungrouped.remove(locale.groupSeparator());
        if (ungrouped != trimmed && !ungrouped.isEmpty())
            value = locale.toDouble(ungrouped, &ok);
    }
    if (ok && std::isfinite(value))
        return value;
    // Qt answers a number too large for a double with infinity and !ok.
    if (!ok && std::isinf(value))
        raise(ErrOverflow);

    // "&HFF" converts as in VB, but only when the literal is the whole text.
    if (trimmed.startsWith(QLatin1Char('&')) && !trimmed.contains(QLatin1Char(' '))) {
        const Scan scan = scanHexOrOctal(trimmed, 1);
        if (scan.end > 2 && scan.end == trimmed.size())
            return scan.value;
    }
    raise(ErrTypeMismatch);
}

double Val(const QString& text)
{
    return scanNumber(text).value;
}

short CInt(double value)
{
    const double rounded = roundHalfEven(value);
    // Written so that NaN fails the test as well.
    if (!(rounded >= std::numeric_limits<short>::min() && rounded <= std::numeric_limits<short>::max()))
        raise(ErrOverflow);
    return static_cast<short>(rounded);
}

int CLng(double value)
{
    const double rounded = roundHalfEven(value);
    if (!(rounded >= std::numeric_limits<int>::min() && rounded <= std::numeric_limits<int>::max()))
        raise(ErrOverflow);
    return static_cast<int>(rounded);
}

double Int(double value)
{
    return std::floor(value);
}

double Finito(double value)
{
    if (!std::isfinite(value))
        raise(ErrOverflow);
    return value;
}

} // namespace vb
