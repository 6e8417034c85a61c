#pragma once
// Automation runtime: the handful of VB/OLE Automation semantics the component
// relies on (conversions, dates, colours, twips), written against Qt Core only.

#include <QColor>
#include <QDate>
#include <QLocale>
#include <QString>
#include <QVariant>

#include "automationerror.h"

namespace vb {

// --- Null and Empty -------------------------------------------------------
// VB Null is a valid QVariant that reports isNull(); Empty is an invalid QVariant.
QVariant Null();
QVariant Empty();
bool isNull(const QVariant& v);
bool isEmpty(const QVariant& v);

// --- Numbers ---------------------------------------------------------------
// Default double-to-text form (CStr): at most 15 significant digits, no digit
// grouping, the locale's decimal separator, exponent form ("1E+16") where the
// plain form would not fit.
QString CStr(double value, const QLocale& locale = QLocale());
// Text to double in a locale (CDbl); raises 13 for a text that is not a number.
double CDbl(const QString& text, const QLocale& locale = QLocale());
// VB Val: longest leading number, blanks skipped, "." decimal point, sign,
// exponent, &H and &O prefixes. Raises 13 where VB raises (a type suffix that
// does not fit the number, e.g. "1.0%").
double Val(const QString& text);
// Rounding half to even; raise 6 when the result does not fit.
short CInt(double value);
int CLng(double value);
// Rounding toward minus infinity.
double Int(double value);
// The value a Double property takes: an automation Double is a finite number,
// so NaN and the infinities raise 6 as a value out of range.
double Finito(double value);

// --- Dates (automation dates: days since 1899-12-30) ------------------------
// DateSerial: two-digit years first (0-29 -> 2000-2029, 30-99 -> 1930-1999),
// then months and days carried into neighbouring months and years.
// Raises 5 when the result leaves 100-01-01 .. 9999-12-31.
double DateSerial(int year, int month, int day);
// DateAdd("m", n, d): the day is clamped to the end of the target month.
double DateAddMonths(double date, int months);
// DateAdd("d", n, d)
double DateAddDays(double date, int days);
// DateDiff("d", d1, d2): whole days from d1 to d2, time of day ignored.
int DateDiffDays(double from, double to);
// 1 = Sunday ... 7 = Saturday
int Weekday(double date);
int Year(double date);
int Month(double date);
int Day(double date);
QDate toQDate(double date);
double fromQDate(const QDate& date);

// --- Colours and twips ------------------------------------------------------
// OLE colour 0x00BBGGRR
QColor oleToColor(int ole);
int colorToOle(const QColor& color);
constexpr int TwipsPerPixel = 15;
int twipsToPixels(int twips);
int pixelsToTwips(int pixels);

} // namespace vb
