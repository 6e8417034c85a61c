// The VB runtime layer: every conversion, date and colour rule the component
// takes from VB, checked against the shared VB semantics vectors and against
// focused cases for each behaviour.

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonValue>
#include <QRegularExpression>
#include <QTest>
#include <QTextStream>

#include <cmath>
#include <functional>
#include <limits>
#include <optional>

#include "vb/texto.h"
#include "vb/vb.h"

// Fails the current test unless `expr` raises AutomationError `num`.
#define VBI_VERIFY_RAISES(expr, num)                                                       \
    do {                                                                                   \
        int vbiRaised_ = 0;                                                                \
        try {                                                                              \
            (void)(expr);                                                                  \
        } catch (const vb::AutomationError& vbiError_) {                                   \
            vbiRaised_ = vbiError_.number();                                               \
        }                                                                                  \
        QVERIFY2(vbiRaised_ == (num),                                                      \
                 qPrintable(QStringLiteral(#expr " raised %1, expected %2").arg(vbiRaised_).arg(num))); \
    } while (false)

namespace {

// What the component's ValorNumero will be: Val, with any error read as 0.
double valorNumero(const QString& text)
{
    try {
        return vb::Val(text);
    } catch (const vb::AutomationError&) {
        return 0;
    }
}

const QLocale& englishUs()
{
    static const QLocale locale(QLocale::English, QLocale::UnitedStates);
    return locale;
}

const QLocale& spanishSpain()
{
    static const QLocale locale(QLocale::Spanish, QLocale::Spain);
    return locale;
}

// The vector columns hold JSON scalars; wrapping them in [ ] lets
// QJsonDocument parse a bare number or string.
std::optional<QJsonValue> parseJsonField(const QString& text)
{
    QJsonParseError error;
    const QJsonDocument doc = QJsonDocument::fromJson(QStringLiteral("[%1]").arg(text).toUtf8(), &error);
    if (error.error != QJsonParseError::NoError || !doc.isArray() || doc.array().size() != 1)
        return std::nullopt;
    return doc.array().at(0);
}

// "error N" in the expected column: the call must raise error N.
std::optional<int> expectedError(const QJsonValue& expected)
{
    static const QRegularExpression pattern(QStringLiteral("^error (\\d+)$"));
    if (!expected.isString())
        return std::nullopt;
    const QRegularExpressionMatch match = pattern.match(expected.toString());
    if (!match.hasMatch())
        return std::nullopt;
    return match.captured(1).toInt();
}

void checkNumericOutcome(const std::function<double()>& call, const QJsonValue& expected)
{
    if (const std::optional<int> error = expectedError(expected)) {
        int raised = 0;
        try {
            const double got = call();
            QFAIL(qPrintable(QStringLiteral("expected error %1, got %2").arg(*error).arg(got, 0, 'g', 17)));
        } catch (const vb::AutomationError& e) {
            raised = e.number();
        }
        QCOMPARE(raised, *error);
        return;
    }
    QVERIFY2(expected.isDouble(), "expected column is neither a number nor \"error N\"");
    double got = 0;
    try {
        got = call();
    } catch (const vb::AutomationError& e) {
        QFAIL(qPrintable(QStringLiteral("unexpected error: %1").arg(QString::fromUtf8(e.what()))));
    }
    QCOMPARE(got, expected.toDouble());
}

QDate dateOf(double serial)
{
    return vb::toQDate(serial);
}

double serialOf(int y, int m, int d)
{
    return vb::fromQDate(QDate(y, m, d));
}

} // namespace

class TstVb : public QObject {
    Q_OBJECT

private slots:
    void vectors_data();
    void vectors();

    void automationErrorCarriesNumberAndDescription();
    void nullIsDistinctFromEmptyAndZero();

    void cstrUsesLocaleDecimalSeparator();
    void cstrNegativeZeroIsZero();
    void cstrRoundsToFifteenSignificantDigits();
    void cstrSwitchesToExponentForm();
    void cdblParsesTextInLocale();
    void cdblRaisesTypeMismatchForText();
    void cdblRaisesOverflowForHugeNumber();

    void valSkipsBlanksTabsAndLineFeeds();
    void valStopsAtFirstCharacterThatCannotContinue();
    void valReadsHexAndOctalAsSignedIntegers();
    void valIntegerSuffixRejectsFraction();
    void valRaisesOverflowBeyondItsTypes();

    void cintRoundsHalfToEven();
    void cintRaisesOverflow();
    void clngRoundsHalfToEvenAndRaisesOverflow();
    void intRoundsTowardMinusInfinity();

    void dateSerialReadsTwoDigitYears();
    void dateSerialCarriesDayIntoNextMonth();
    void dateSerialCarriesMonthsIntoYears();
    void dateSerialOutOfRangeRaisesFive();
    void extremeIntegersNeverOverflowDateSerial();
    void dateSerialAgreesWithQDate();
    void dateAddMonthsClampsToMonthEnd();
    void dateAddMonthsKeepsTimeOfDay();
    void dateAddMonthsOutOfRangeRaisesFive();
    void dateAddDaysKeepsTimeOfDay();
    void dateDiffDaysIgnoresTimeOfDay();
    void negativeDatesTruncateTowardZero();
    void weekdayStartsOnSunday();
    void datesOutsideVbRangeRaiseOverflow();
    void qdateRoundTrip();

    void oleColourRoundTrip();
    void twipsToPixels();
    void minusculasIsToLower();
};

void TstVb::vectors_data()
{
    QTest::addColumn<QString>("function");
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<QString>("source");
    // A row with a problem fails on its own: a missing or malformed file must
    // never look like a file with nothing to check.
    QTest::addColumn<QString>("problem");

    QFile file(QStringLiteral(VBI_VECTORS_DIR "/vb-semantics.tsv"));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        QTest::newRow("vector file") << QString() << QString() << QString() << QString()
                                     << QStringLiteral("cannot read %1: %2").arg(file.fileName(), file.errorString());
        return;
    }

    QTextStream in(&file);
    const QString header = in.readLine();
    if (header.trimmed() != QStringLiteral("function\tinput\texpected\tsource")) {
        QTest::newRow("header") << QString() << QString() << QString() << QString()
                                << QStringLiteral("unexpected header: %1").arg(header);
        return;
    }

    int lineNumber = 1;
    int rows = 0;
    while (!in.atEnd()) {
        const QString line = in.readLine();
        ++lineNumber;
        if (line.trimmed().isEmpty())
            continue;
        const QStringList fields = line.split(QLatin1Char('\t'));
        QString problem;
        if (fields.size() < 3)
            problem = QStringLiteral("line %1 has %2 columns: %3").arg(lineNumber).arg(fields.size()).arg(line);
        const QString function = fields.value(0).trimmed();
        QTest::addRow("line %d %s %s", lineNumber, qPrintable(function), qPrintable(fields.value(1)))
            << function << fields.value(1).trimmed() << fields.value(2).trimmed() << fields.value(3).trimmed()
            << problem;
        ++rows;
    }
    if (rows == 0) {
        QTest::newRow("no rows") << QString() << QString() << QString() << QString()
                                 << QStringLiteral("%1 holds no vectors").arg(file.fileName());
    }
}

void TstVb::vectors()
{
    QFETCH(QString, function);
    QFETCH(QString, input);
    QFETCH(QString, expected);
    QFETCH(QString, source);
    QFETCH(QString, problem);

    if (!problem.isEmpty())
        QFAIL(qPrintable(problem));

    const std::optional<QJsonValue> in = parseJsonField(input);
    QVERIFY2(in.has_value(), qPrintable(QStringLiteral("input is not JSON: ") + input));
    const std::optional<QJsonValue> out = parseJsonField(expected);
    QVERIFY2(out.has_value(), qPrintable(QStringLiteral("expected is not JSON: ") + expected));

    if (function == QLatin1String("ValorNumero")) {
        QVERIFY(in->isString());
        QVERIFY(out->isDouble());
        const QString text = in->toString();
        if (source.contains(QLatin1String("(error -> 0)"))) {
            // The 0 comes from the error, so Val itself must raise it.
            VBI_VERIFY_RAISES(vb::Val(text), vb::ErrTypeMismatch);
        } else {
            checkNumericOutcome([&] { return vb::Val(text); }, *out);
        }
        QCOMPARE(valorNumero(text), out->toDouble());
    } else if (function == QLatin1String("CStr_en_US") || function == QLatin1String("CStr_es_ES")) {
        QVERIFY(in->isDouble());
        QVERIFY(out->isString());
        const QLocale& locale = function.endsWith(QLatin1String("en_US")) ? englishUs() : spanishSpain();
        QCOMPARE(vb::CStr(in->toDouble(), locale), out->toString());
    } else if (function == QLatin1String("CInt")) {
        QVERIFY(in->isDouble());
        const double value = in->toDouble();
        checkNumericOutcome([value] { return double(vb::CInt(value)); }, *out);
    } else if (function == QLatin1String("DateSerial")) {
        QVERIFY(in->isArray());
        const QJsonArray ymd = in->toArray();
        QCOMPARE(ymd.size(), 3);
        for (const QJsonValue& part : ymd)
            QVERIFY(part.isDouble() && part.toDouble() == std::trunc(part.toDouble()));
        const int y = ymd.at(0).toInt();
        const int m = ymd.at(1).toInt();
        const int d = ymd.at(2).toInt();
        checkNumericOutcome([=] { return vb::DateSerial(y, m, d); }, *out);
    } else if (function == QLatin1String("Weekday")) {
        QVERIFY(in->isDouble());
        const double value = in->toDouble();
        checkNumericOutcome([value] { return double(vb::Weekday(value)); }, *out);
    } else {
        QFAIL(qPrintable(QStringLiteral("unknown function in vectors: %1").arg(function)));
    }
}

void TstVb::automationErrorCarriesNumberAndDescription()
{
    const vb::AutomationError error(13, QStringLiteral("Type mismatch"));
    QCOMPARE(error.number(), 13);
    QCOMPARE(error.description(), QStringLiteral("Type mismatch"));
    QCOMPARE(QString::fromUtf8(error.what()), QStringLiteral("13: Type mismatch"));

    const vb::AutomationError accented(5, QStringLiteral("Fecha inv\u00e1lida"));
    QCOMPARE(QString::fromUtf8(accented.what()), QStringLiteral("5: Fecha inv\u00e1lida"));

    QCOMPARE(vb::standardDescription(5), QStringLiteral("Invalid procedure call or argument"));
    QCOMPARE(vb::standardDescription(6), QStringLiteral("Overflow"));
    QCOMPARE(vb::standardDescription(13), QStringLiteral("Type mismatch"));
    QCOMPARE(vb::standardDescription(91), QStringLiteral("Object variable or With block variable not set"));
    QCOMPARE(vb::standardDescription(438), QStringLiteral("Object doesn't support this property or method"));
    QCOMPARE(vb::standardDescription(1004), QStringLiteral("Application-defined or object-defined error"));

    try {
        vb::raise(91);
        QFAIL("raise returned");
    } catch (const vb::AutomationError& e) {
        QCOMPARE(e.number(), 91);
        QCOMPARE(e.description(), vb::standardDescription(91));
    }
}

void TstVb::nullIsDistinctFromEmptyAndZero()
{
    QVERIFY(vb::isNull(vb::Null()));
    QVERIFY(!vb::isEmpty(vb::Null()));
    QVERIFY(vb::isEmpty(vb::Empty()));
    QVERIFY(!vb::isNull(vb::Empty()));

    for (const QVariant& value : {QVariant(0), QVariant(0.0), QVariant(QString()), QVariant(QStringLiteral("")),
                                  QVariant(false)}) {
        QVERIFY2(!vb::isNull(value), value.typeName());
        QVERIFY2(!vb::isEmpty(value), value.typeName());
    }
}

void TstVb::cstrUsesLocaleDecimalSeparator()
{
    QCOMPARE(vb::CStr(1234.5, englishUs()), QStringLiteral("1234.5"));
    // No digit grouping in either locale.
    QCOMPARE(vb::CStr(1234.5, spanishSpain()), QStringLiteral("1234,5"));
    QCOMPARE(vb::CStr(-0.25, spanishSpain()), QStringLiteral("-0,25"));
    QCOMPARE(vb::CStr(5.6789e-13, spanishSpain()), QStringLiteral("5,6789E-13"));
    QCOMPARE(vb::CStr(1234567.0, QLocale(QLocale::German, QLocale::Germany)), QStringLiteral("1234567"));
}

void TstVb::cstrNegativeZeroIsZero()
{
    const double negativeZero = -0.0;
    QVERIFY(std::signbit(negativeZero));
    QCOMPARE(vb::CStr(negativeZero, englishUs()), QStringLiteral("0"));
    QCOMPARE(vb::CStr(0.0, englishUs()), QStringLiteral("0"));
}

void TstVb::cstrRoundsToFifteenSignificantDigits()
{
    QCOMPARE(vb::CStr(0.1 + 0.2, englishUs()), QStringLiteral("0.3"));
    QCOMPARE(vb::CStr(2.0 / 3.0, englishUs()), QStringLiteral("0.666666666666667"));
    QCOMPARE(vb::CStr(1.0 / 3.0, englishUs()), QStringLiteral("0.333333333333333"));
    QCOMPARE(vb::CStr(-2.5, englishUs()), QStringLiteral("-2.5"));
    QCOMPARE(vb::CStr(100.0, englishUs()), QStringLiteral("100"));
    QCOMPARE(vb::CStr(123456789012345.0, englishUs()), QStringLiteral("123456789012345"));
    // Rounding to 15 digits carries into a sixteenth integer digit.
    QCOMPARE(vb::CStr(999999999999999.9, englishUs()), QStringLiteral("1E+15"));
}

void TstVb::cstrSwitchesToExponentForm()
{
    QCOMPARE(vb::CStr(1.0 / 81.0, englishUs()), QStringLiteral("1.23456790123457E-02"));
    QCOMPARE(vb::CStr(1.0 / 30.0, englishUs()), QStringLiteral("3.33333333333333E-02"));
    QCOMPARE(vb::CStr(1e15, englishUs()), QStringLiteral("1E+15"));
    QCOMPARE(vb::CStr(-1e16, englishUs()), QStringLiteral("-1E+16"));
    QCOMPARE(vb::CStr(1234567890123456.0, englishUs()), QStringLiteral("1.23456789012346E+15"));
    QCOMPARE(vb::CStr(1.5e300, englishUs()), QStringLiteral("1.5E+300"));
    QCOMPARE(vb::CStr(1e-300, englishUs()), QStringLiteral("1E-300"));
    QCOMPARE(vb::CStr(5.6789e-13, englishUs()), QStringLiteral("5.6789E-13"));
}

void TstVb::cdblParsesTextInLocale()
{
    QCOMPARE(vb::CDbl(QStringLiteral(" 2.25 "), englishUs()), 2.25);
    QCOMPARE(vb::CDbl(QStringLiteral("1,5"), spanishSpain()), 1.5);
    QCOMPARE(vb::CDbl(QStringLiteral("-3e2"), englishUs()), -300.0);
    QCOMPARE(vb::CDbl(QStringLiteral("&HFF"), englishUs()), 255.0);
    // Thousands separators are ignored wherever they stand, as in VB.
    QCOMPARE(vb::CDbl(QStringLiteral("1,234.5"), englishUs()), 1234.5);
    QCOMPARE(vb::CDbl(QStringLiteral("1.234,5"), spanishSpain()), 1234.5);
    QCOMPARE(vb::CDbl(QStringLiteral("1.5"), spanishSpain()), 15.0);
    QCOMPARE(vb::CDbl(QStringLiteral("&HFFFE"), englishUs()), -2.0);
}

void TstVb::cdblRaisesTypeMismatchForText()
{
    for (const char* text : {"", "   ", ",", "abc", "12abc", "1.2.3", "&H", "&HFF&", "inf", "nan"})
        VBI_VERIFY_RAISES(vb::CDbl(QString::fromLatin1(text), englishUs()), vb::ErrTypeMismatch);
    // The other locale's decimal separator is not a decimal separator here.
    VBI_VERIFY_RAISES(vb::CDbl(QStringLiteral("1,5,5"), spanishSpain()), vb::ErrTypeMismatch);
}

void TstVb::cdblRaisesOverflowForHugeNumber()
{
    VBI_VERIFY_RAISES(vb::CDbl(QStringLiteral("1e400"), englishUs()), vb::ErrOverflow);
}

void TstVb::valSkipsBlanksTabsAndLineFeeds()
{
    QCOMPARE(vb::Val(QStringLiteral("1\t2\n3")), 123.0);
    QCOMPARE(vb::Val(QStringLiteral(" - 1 . 5 ")), -1.5);
    QCOMPARE(vb::Val(QStringLiteral("\n\t 4 2")), 42.0);
    QCOMPARE(vb::Val(QStringLiteral("1 e 2")), 100.0);
}

void TstVb::valStopsAtFirstCharacterThatCannotContinue()
{
    QCOMPARE(vb::Val(QStringLiteral("12abc")), 12.0);
    QCOMPARE(vb::Val(QStringLiteral("1.2.3")), 1.2);
    QCOMPARE(vb::Val(QStringLiteral("1e+1+")), 10.0);
    QCOMPARE(vb::Val(QStringLiteral("1e")), 1.0);
    QCOMPARE(vb::Val(QStringLiteral("1d2")), 100.0);
    QCOMPARE(vb::Val(QStringLiteral("2.5E-1x")), 0.25);
    QCOMPARE(vb::Val(QStringLiteral("0.05")), 0.05);
    QCOMPARE(vb::Val(QStringLiteral("--1")), 0.0);
    QCOMPARE(vb::Val(QStringLiteral("1,5")), 1.0);
    QCOMPARE(vb::Val(QStringLiteral("&")), 0.0);
    QCOMPARE(vb::Val(QStringLiteral("&H")), 0.0);
}

void TstVb::valReadsHexAndOctalAsSignedIntegers()
{
    QCOMPARE(vb::Val(QStringLiteral("&H7FFF")), 32767.0);
    QCOMPARE(vb::Val(QStringLiteral("&H8000")), -32768.0);
    QCOMPARE(vb::Val(QStringLiteral("&HFFFE")), -2.0);
    QCOMPARE(vb::Val(QStringLiteral("&H0000FFFF")), -1.0);
    QCOMPARE(vb::Val(QStringLiteral("&H10000")), 65536.0);
    QCOMPARE(vb::Val(QStringLiteral("&HFFFFFFFF")), -1.0);
    QCOMPARE(vb::Val(QStringLiteral("&H80000000")), -2147483648.0);
    // A Long suffix keeps a 16-bit pattern positive.
    QCOMPARE(vb::Val(QStringLiteral("&HFFFF&")), 65535.0);
    QCOMPARE(vb::Val(QStringLiteral("&o177777")), -1.0);
    QCOMPARE(vb::Val(QStringLiteral("&O200000")), 65536.0);
    QCOMPARE(vb::Val(QStringLiteral("&O37777777777")), -1.0);
    QCOMPARE(vb::Val(QStringLiteral("&O78")), 7.0);
}

void TstVb::valIntegerSuffixRejectsFraction()
{
    VBI_VERIFY_RAISES(vb::Val(QStringLiteral("1.0%")), vb::ErrTypeMismatch);
    VBI_VERIFY_RAISES(vb::Val(QStringLiteral("50.5%")), vb::ErrTypeMismatch);
    VBI_VERIFY_RAISES(vb::Val(QStringLiteral("2.5&")), vb::ErrTypeMismatch);
    VBI_VERIFY_RAISES(vb::Val(QStringLiteral("1e2&")), vb::ErrTypeMismatch);
    QCOMPARE(vb::Val(QStringLiteral("1%")), 1.0);
    QCOMPARE(vb::Val(QStringLiteral("-7&")), -7.0);
    QCOMPARE(vb::Val(QStringLiteral("1.%")), 1.0);
    QCOMPARE(vb::Val(QStringLiteral("1.5#")), 1.5);
    QCOMPARE(vb::Val(QStringLiteral("1.5@")), 1.5);
    // The Single suffix leaves a single-precision value.
    QCOMPARE(vb::Val(QStringLiteral("1.1!")), double(1.1f));
}

void TstVb::valRaisesOverflowBeyondItsTypes()
{
    VBI_VERIFY_RAISES(vb::Val(QStringLiteral("40000%")), vb::ErrOverflow);
    VBI_VERIFY_RAISES(vb::Val(QStringLiteral("3000000000&")), vb::ErrOverflow);
    VBI_VERIFY_RAISES(vb::Val(QStringLiteral("&HFFFFF%")), vb::ErrOverflow);
    VBI_VERIFY_RAISES(vb::Val(QStringLiteral("&H100000000")), vb::ErrOverflow);
    VBI_VERIFY_RAISES(vb::Val(QStringLiteral("1e400")), vb::ErrOverflow);
    QCOMPARE(vb::Val(QStringLiteral("1e-400")), 0.0);
    QCOMPARE(vb::Val(QStringLiteral("32767%")), 32767.0);
}

void TstVb::cintRoundsHalfToEven()
{
    QCOMPARE(vb::CInt(0.5), short(0));
    QCOMPARE(vb::CInt(1.5), short(2));
    QCOMPARE(vb::CInt(2.5), short(2));
    QCOMPARE(vb::CInt(-0.5), short(0));
    QCOMPARE(vb::CInt(-1.5), short(-2));
    QCOMPARE(vb::CInt(-2.5), short(-2));
    QCOMPARE(vb::CInt(2.5000001), short(3));
    QCOMPARE(vb::CInt(-32768.5), short(-32768));
}

void TstVb::cintRaisesOverflow()
{
    VBI_VERIFY_RAISES(vb::CInt(32767.5), vb::ErrOverflow);
    VBI_VERIFY_RAISES(vb::CInt(-32769.0), vb::ErrOverflow);
    VBI_VERIFY_RAISES(vb::CInt(1e300), vb::ErrOverflow);
    VBI_VERIFY_RAISES(vb::CInt(std::numeric_limits<double>::infinity()), vb::ErrOverflow);
    VBI_VERIFY_RAISES(vb::CInt(std::numeric_limits<double>::quiet_NaN()), vb::ErrOverflow);
}

void TstVb::clngRoundsHalfToEvenAndRaisesOverflow()
{
    QCOMPARE(vb::CLng(2.5), 2);
    QCOMPARE(vb::CLng(3.5), 4);
    QCOMPARE(vb::CLng(2147483646.5), 2147483646);
    QCOMPARE(vb::CLng(-2147483648.5), std::numeric_limits<int>::min());
    VBI_VERIFY_RAISES(vb::CLng(2147483647.5), vb::ErrOverflow);
    VBI_VERIFY_RAISES(vb::CLng(-2147483649.0), vb::ErrOverflow);
    VBI_VERIFY_RAISES(vb::CLng(std::numeric_limits<double>::quiet_NaN()), vb::ErrOverflow);
}

void TstVb::intRoundsTowardMinusInfinity()
{
    QCOMPARE(vb::Int(1.9), 1.0);
    QCOMPARE(vb::Int(-1.1), -2.0);
    QCOMPARE(vb::Int(-1.0), -1.0);
    QCOMPARE(vb::Int(1e20), 1e20);
}

void TstVb::dateSerialReadsTwoDigitYears()
{
    QCOMPARE(dateOf(vb::DateSerial(0, 1, 1)), QDate(2000, 1, 1));
    QCOMPARE(dateOf(vb::DateSerial(29, 12, 31)), QDate(2029, 12, 31));
    QCOMPARE(dateOf(vb::DateSerial(30, 1, 1)), QDate(1930, 1, 1));
    QCOMPARE(dateOf(vb::DateSerial(99, 12, 31)), QDate(1999, 12, 31));
    QCOMPARE(dateOf(vb::DateSerial(100, 1, 1)), QDate(100, 1, 1));
    // The year is read before the months carry: 29 + 13 months is 2030.
    QCOMPARE(dateOf(vb::DateSerial(29, 13, 1)), QDate(2030, 1, 1));
}

void TstVb::dateSerialCarriesDayIntoNextMonth()
{
    QCOMPARE(dateOf(vb::DateSerial(2011, 2, 29)), QDate(2011, 3, 1));
    QCOMPARE(dateOf(vb::DateSerial(2012, 2, 30)), QDate(2012, 3, 1));
    QCOMPARE(dateOf(vb::DateSerial(2011, 12, 32)), QDate(2012, 1, 1));
    QCOMPARE(dateOf(vb::DateSerial(2011, 1, 0)), QDate(2010, 12, 31));
    QCOMPARE(dateOf(vb::DateSerial(2011, 3, -1)), QDate(2011, 2, 27));
    QCOMPARE(dateOf(vb::DateSerial(2011, 1, 366)), QDate(2012, 1, 1));
}

void TstVb::dateSerialCarriesMonthsIntoYears()
{
    QCOMPARE(dateOf(vb::DateSerial(2011, 0, 1)), QDate(2010, 12, 1));
    QCOMPARE(dateOf(vb::DateSerial(2011, -11, 1)), QDate(2010, 1, 1));
    QCOMPARE(dateOf(vb::DateSerial(2011, -12, 1)), QDate(2009, 12, 1));
    QCOMPARE(dateOf(vb::DateSerial(2011, 25, 1)), QDate(2013, 1, 1));
    // Months carry before days: 2011-14-0 is the last day of 2012-01.
    QCOMPARE(dateOf(vb::DateSerial(2011, 14, 0)), QDate(2012, 1, 31));
}

void TstVb::dateSerialOutOfRangeRaisesFive()
{
    QCOMPARE(vb::DateSerial(100, 1, 1), -657434.0);
    QCOMPARE(vb::DateSerial(9999, 12, 31), 2958465.0);
    VBI_VERIFY_RAISES(vb::DateSerial(100, 1, 0), vb::ErrInvalidProcedureCall);
    VBI_VERIFY_RAISES(vb::DateSerial(9999, 12, 32), vb::ErrInvalidProcedureCall);
    VBI_VERIFY_RAISES(vb::DateSerial(10000, 1, 1), vb::ErrInvalidProcedureCall);
    VBI_VERIFY_RAISES(vb::DateSerial(-1, 1, 1), vb::ErrInvalidProcedureCall);
    VBI_VERIFY_RAISES(vb::DateSerial(100, 0, 1), vb::ErrInvalidProcedureCall);
}

void TstVb::extremeIntegersNeverOverflowDateSerial()
{
    constexpr int maxInt = std::numeric_limits<int>::max();
    constexpr int minInt = std::numeric_limits<int>::min();
    for (int y : {minInt, maxInt}) {
        for (int m : {minInt, 1, maxInt}) {
            for (int d : {minInt, 1, maxInt})
                VBI_VERIFY_RAISES(vb::DateSerial(y, m, d), vb::ErrInvalidProcedureCall);
        }
    }
    VBI_VERIFY_RAISES(vb::DateSerial(2000, maxInt, 1), vb::ErrInvalidProcedureCall);
    VBI_VERIFY_RAISES(vb::DateSerial(2000, minInt, 1), vb::ErrInvalidProcedureCall);
    VBI_VERIFY_RAISES(vb::DateSerial(2000, 1, maxInt), vb::ErrInvalidProcedureCall);
    VBI_VERIFY_RAISES(vb::DateSerial(2000, 1, minInt), vb::ErrInvalidProcedureCall);
    // Large parts that cancel out land on an ordinary date.
    QCOMPARE(dateOf(vb::DateSerial(1900, 1, 2000000)), QDate(1900, 1, 1).addDays(1999999));
    QCOMPARE(dateOf(vb::DateSerial(9999, -118776, 1)), QDate(100, 12, 1));
}

void TstVb::dateSerialAgreesWithQDate()
{
    for (int y = 100; y <= 9999; y += 37) {
        for (int m = 1; m <= 12; ++m) {
            for (int d : {1, 15, 28}) {
                const double serial = vb::DateSerial(y, m, d);
                QCOMPARE(serial, double(QDate(1899, 12, 30).daysTo(QDate(y, m, d))));
                QCOMPARE(vb::Year(serial), y);
                QCOMPARE(vb::Month(serial), m);
                QCOMPARE(vb::Day(serial), d);
            }
        }
    }
    QCOMPARE(vb::DateSerial(2011, 3, 15), 40617.0);
}

void TstVb::dateAddMonthsClampsToMonthEnd()
{
    QCOMPARE(dateOf(vb::DateAddMonths(serialOf(2011, 1, 31), 1)), QDate(2011, 2, 28));
    QCOMPARE(dateOf(vb::DateAddMonths(serialOf(2012, 1, 31), 1)), QDate(2012, 2, 29));
    QCOMPARE(dateOf(vb::DateAddMonths(serialOf(2011, 3, 31), -1)), QDate(2011, 2, 28));
    QCOMPARE(dateOf(vb::DateAddMonths(serialOf(2011, 1, 31), 13)), QDate(2012, 2, 29));
    QCOMPARE(dateOf(vb::DateAddMonths(serialOf(2011, 1, 15), -13)), QDate(2009, 12, 15));
    QCOMPARE(dateOf(vb::DateAddMonths(serialOf(2011, 5, 31), 0)), QDate(2011, 5, 31));
}

void TstVb::dateAddMonthsKeepsTimeOfDay()
{
    QCOMPARE(vb::DateAddMonths(serialOf(2011, 1, 31) + 0.75, 1), serialOf(2011, 2, 28) + 0.75);
    // -1.25 is 1899-12-29 06:00; a month later is 1900-01-29 06:00.
    QCOMPARE(vb::DateAddMonths(-1.25, 1), serialOf(1900, 1, 29) + 0.25);
    // And back before day 0 the fraction stays a time of day, not a step back.
    QCOMPARE(vb::DateAddMonths(serialOf(1900, 1, 29) + 0.25, -1), -1.25);
}

void TstVb::dateAddMonthsOutOfRangeRaisesFive()
{
    VBI_VERIFY_RAISES(vb::DateAddMonths(serialOf(9999, 12, 1), 1), vb::ErrInvalidProcedureCall);
    VBI_VERIFY_RAISES(vb::DateAddMonths(serialOf(100, 1, 31), -1), vb::ErrInvalidProcedureCall);
    VBI_VERIFY_RAISES(vb::DateAddMonths(0, std::numeric_limits<int>::max()), vb::ErrInvalidProcedureCall);
    VBI_VERIFY_RAISES(vb::DateAddMonths(0, std::numeric_limits<int>::min()), vb::ErrInvalidProcedureCall);
    QCOMPARE(dateOf(vb::DateAddMonths(serialOf(9999, 11, 30), 1)), QDate(9999, 12, 30));
}

void TstVb::dateAddDaysKeepsTimeOfDay()
{
    QCOMPARE(vb::DateAddDays(serialOf(2011, 2, 28) + 0.5, 1), serialOf(2011, 3, 1) + 0.5);
    QCOMPARE(vb::DateAddDays(1.5, -3), -2.5);
    QCOMPARE(dateOf(vb::DateAddDays(1.5, -3)), QDate(1899, 12, 28));
    VBI_VERIFY_RAISES(vb::DateAddDays(serialOf(9999, 12, 31), 1), vb::ErrInvalidProcedureCall);
    VBI_VERIFY_RAISES(vb::DateAddDays(0, std::numeric_limits<int>::min()), vb::ErrInvalidProcedureCall);
}

void TstVb::dateDiffDaysIgnoresTimeOfDay()
{
    QCOMPARE(vb::DateDiffDays(serialOf(2011, 1, 1) + 0.9, serialOf(2011, 1, 2) + 0.1), 1);
    QCOMPARE(vb::DateDiffDays(serialOf(2011, 1, 2) + 0.1, serialOf(2011, 1, 1) + 0.9), -1);
    QCOMPARE(vb::DateDiffDays(-1.25, 0.5), 1);
    QCOMPARE(vb::DateDiffDays(serialOf(100, 1, 1), serialOf(9999, 12, 31)), 2958465 + 657434);
}

void TstVb::negativeDatesTruncateTowardZero()
{
    QCOMPARE(vb::Year(-1.25), 1899);
    QCOMPARE(vb::Month(-1.25), 12);
    QCOMPARE(vb::Day(-1.25), 29);
    QCOMPARE(vb::Day(-0.5), 30);
    QCOMPARE(dateOf(-1.25), QDate(1899, 12, 29));
}

void TstVb::weekdayStartsOnSunday()
{
    QCOMPARE(vb::Weekday(serialOf(2011, 3, 13)), 1); // a Sunday
    QCOMPARE(vb::Weekday(serialOf(2011, 3, 19)), 7); // a Saturday
    QCOMPARE(vb::Weekday(-1.25), 6);                 // Friday 1899-12-29
    for (int serial = -657434; serial <= 2958465; serial += 997) {
        const int isoDay = QDate(1899, 12, 30).addDays(serial).dayOfWeek(); // 1 = Monday
        QCOMPARE(vb::Weekday(serial), isoDay % 7 + 1);
    }
}

void TstVb::datesOutsideVbRangeRaiseOverflow()
{
    VBI_VERIFY_RAISES(vb::Weekday(2958466), vb::ErrOverflow);
    VBI_VERIFY_RAISES(vb::Year(-657435), vb::ErrOverflow);
    VBI_VERIFY_RAISES(vb::Day(std::numeric_limits<double>::quiet_NaN()), vb::ErrOverflow);
    VBI_VERIFY_RAISES(vb::toQDate(1e300), vb::ErrOverflow);
    VBI_VERIFY_RAISES(vb::fromQDate(QDate(10000, 1, 1)), vb::ErrOverflow);
    QCOMPARE(vb::Year(2958465.99), 9999);
    QCOMPARE(vb::Year(-657434.99), 100);
}

void TstVb::qdateRoundTrip()
{
    QCOMPARE(vb::toQDate(40617), QDate(2011, 3, 15));
    QCOMPARE(vb::toQDate(40617.99), QDate(2011, 3, 15));
    QCOMPARE(vb::fromQDate(QDate(2011, 3, 15)), 40617.0);
    QCOMPARE(vb::fromQDate(QDate(1899, 12, 30)), 0.0);
    VBI_VERIFY_RAISES(vb::fromQDate(QDate()), vb::ErrInvalidProcedureCall);
}

void TstVb::oleColourRoundTrip()
{
    QCOMPARE(vb::oleToColor(0x0000FF), QColor(255, 0, 0));
    QCOMPARE(vb::oleToColor(0x00FF00), QColor(0, 255, 0));
    QCOMPARE(vb::oleToColor(0xFF0000), QColor(0, 0, 255));
    QCOMPARE(vb::oleToColor(0x123456), QColor(0x56, 0x34, 0x12));
    QCOMPARE(vb::colorToOle(QColor(0x12, 0x34, 0x56)), 0x563412);
    for (int ole : {0x000000, 0xFFFFFF, 0x0080FF, 0xC0C0C0, 0x7F0102})
        QCOMPARE(vb::colorToOle(vb::oleToColor(ole)), ole);
}

void TstVb::twipsToPixels()
{
    QCOMPARE(vb::twipsToPixels(0), 0);
    QCOMPARE(vb::twipsToPixels(15), 1);
    QCOMPARE(vb::twipsToPixels(1440), 96);
    QCOMPARE(vb::twipsToPixels(22), 1);
    QCOMPARE(vb::twipsToPixels(23), 2);
    QCOMPARE(vb::twipsToPixels(-15), -1);
    QCOMPARE(vb::pixelsToTwips(96), 1440);
    QCOMPARE(vb::pixelsToTwips(-2), -30);
}

void TstVb::minusculasIsToLower()
{
    const QStringList textos{QString(), QStringLiteral("uf_fk_tablero"), QStringLiteral("Sys_PK"),
                             QStringLiteral("UT_BI_METRICA"), QStringLiteral("uf_A_z[@]"),
                             QStringLiteral("ÁRBOL_Ñu"), QStringLiteral("İSTANBUL"), QStringLiteral("ΕΛΛΗΝΙΚΆ x")};
    for (const QString& texto : textos)
        QCOMPARE(vb::minusculas(texto), texto.toLower());
}

QTEST_GUILESS_MAIN(TstVb)
#include "tst_vb.moc"
