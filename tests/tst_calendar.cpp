// Calendar and period arithmetic of the engine: packed day, week and month
// numbers against automation dates.
#include "engine/eengine.h"
#include "vb/vb.h"

#include <QTest>
#include <limits>

namespace {

double date(int y, int m, int d)
{
    return vb::fromQDate(QDate(y, m, d));
}

QString show(double serial)
{
    return vb::toQDate(serial).toString(Qt::ISODate) + QStringLiteral(" (%1)").arg(serial);
}

// Serial 0 is 1899-12-30; overflowing inputs must land within a few days of it.
bool nearDateZero(double serial)
{
    return serial > -7.0 && serial < 7.0;
}

} // namespace

class TstCalendar : public QObject {
    Q_OBJECT

private slots:
    void automationDateOfMarch15th2011Is40617() { QCOMPARE(date(2011, 3, 15), 40617.0); }

    void weekNumWorkedExamples_data()
    {
        QTest::addColumn<double>("d");
        QTest::addColumn<int>("expected");
        QTest::newRow("2011-01-01") << date(2011, 1, 1) << 201101;
        QTest::newRow("2011-01-07") << date(2011, 1, 7) << 201101;
        QTest::newRow("2011-01-08") << date(2011, 1, 8) << 201102;
        QTest::newRow("2011-03-15") << date(2011, 3, 15) << 201111;
        QTest::newRow("2011-12-31") << date(2011, 12, 31) << 201153;
        QTest::newRow("2012-12-31") << date(2012, 12, 31) << 201253;
        QTest::newRow("2012-12-30 leap year") << date(2012, 12, 30) << 201253;
        QTest::newRow("2011-12-30") << date(2011, 12, 30) << 201152;
    }
    void weekNumWorkedExamples()
    {
        QFETCH(double, d);
        QFETCH(int, expected);
        EEngine engine;
        QCOMPARE(engine.WeekNum(d), expected);
    }

    void dayOfWeekNumWorkedExamples_data()
    {
        QTest::addColumn<int>("w");
        QTest::addColumn<QDate>("expected");
        QTest::newRow("201101") << 201101 << QDate(2010, 12, 26);
        QTest::newRow("201111") << 201111 << QDate(2011, 3, 6);
        QTest::newRow("201100 week zero is kept") << 201100 << QDate(2010, 12, 19);
        QTest::newRow("201152") << 201152 << QDate(2011, 12, 18);
        QTest::newRow("201153 reads as week 1") << 201153 << QDate(2010, 12, 26);
        QTest::newRow("201199 reads as week 1") << 201199 << QDate(2010, 12, 26);
        QTest::newRow("201201") << 201201 << QDate(2012, 1, 1);
    }
    void dayOfWeekNumWorkedExamples()
    {
        QFETCH(int, w);
        QFETCH(QDate, expected);
        EEngine engine;
        const double result = engine.day_ofweeknum(w);
        QCOMPARE(vb::toQDate(result), expected);
        QCOMPARE(vb::Weekday(result), 1); // always a Sunday
    }

    void monthBoundsWorkedExamples_data()
    {
        QTest::addColumn<int>("v");
        QTest::addColumn<QDate>("first");
        QTest::addColumn<QDate>("last");
        QTest::newRow("201103") << 201103 << QDate(2011, 3, 1) << QDate(2011, 3, 31);
        QTest::newRow("201202 leap February") << 201202 << QDate(2012, 2, 1) << QDate(2012, 2, 29);
        QTest::newRow("201102 plain February") << 201102 << QDate(2011, 2, 1) << QDate(2011, 2, 28);
        QTest::newRow("201113 carries into next year") << 201113 << QDate(2012, 1, 1) << QDate(2012, 1, 31);
        QTest::newRow("201100 is December before") << 201100 << QDate(2010, 12, 1) << QDate(2010, 12, 31);
        QTest::newRow("1003 two-digit year") << 1003 << QDate(2010, 3, 1) << QDate(2010, 3, 31);
        QTest::newRow("4512 two-digit year 1945") << 4512 << QDate(1945, 12, 1) << QDate(1945, 12, 31);
    }
    void monthBoundsWorkedExamples()
    {
        QFETCH(int, v);
        QFETCH(QDate, first);
        QFETCH(QDate, last);
        EEngine engine;
        QCOMPARE(vb::toQDate(engine.IniMes(v)), first);
        QCOMPARE(vb::toQDate(engine.FinMes(v)), last);
    }

    void numToDateReadsPackedDay()
    {
        EEngine engine;
        QCOMPARE(vb::toQDate(engine.numtodate(20110315)), QDate(2011, 3, 15));
    }

    void numToDateCarriesDayIntoNextMonth()
    {
        EEngine engine;
        QCOMPARE(vb::toQDate(engine.numtodate(20110230)), QDate(2011, 3, 2));
    }

    void dayToNumPacksDay()
    {
        EEngine engine;
        QCOMPARE(engine.daytonum(date(2011, 3, 15)), 20110315);
    }

    void weekNumAndDayToNumIgnoreTimeOfDay()
    {
        EEngine engine;
        const double evening = date(2011, 1, 7) + 0.99;
        QCOMPARE(engine.WeekNum(evening), 201101);
        QCOMPARE(engine.daytonum(evening), 20110107);
        QCOMPARE(engine.daytonum(date(2011, 3, 15) + 0.5), 20110315);
    }

    void dayOfWeekNumIsNotAnInverseOfWeekNum()
    {
        EEngine engine;
        // 2011-03-15 is in week 11, which begins on Saturday 2011-03-12;
        // the answer is the Sunday that opens that Sunday-to-Saturday week.
        const int week = engine.WeekNum(date(2011, 3, 15));
        QCOMPARE(vb::toQDate(engine.day_ofweeknum(week)), QDate(2011, 3, 6));
    }

    void overflowingInputsGiveDateNearZeroAndNoError_data()
    {
        QTest::addColumn<QString>("call");
        QTest::newRow("IniMes(2147483647)") << QStringLiteral("IniMes(2147483647)");
        QTest::newRow("FinMes(2147483647)") << QStringLiteral("FinMes(2147483647)");
        QTest::newRow("IniMes(-2147483648)") << QStringLiteral("IniMes(-2147483648)");
        QTest::newRow("numtodate(-2147483648)") << QStringLiteral("numtodate(-2147483648)");
        QTest::newRow("numtodate(2147483647)") << QStringLiteral("numtodate(2147483647)");
        QTest::newRow("day_ofweeknum(2147483647)") << QStringLiteral("day_ofweeknum(2147483647)");
        QTest::newRow("day_ofweeknum(-2147483648)") << QStringLiteral("day_ofweeknum(-2147483648)");
        QTest::newRow("day_ofweeknum(1000000000)") << QStringLiteral("day_ofweeknum(1000000000)");
    }
    void overflowingInputsGiveDateNearZeroAndNoError()
    {
        QFETCH(QString, call);
        EEngine engine;
        double result = -1e9;
        const QString name = call.section(QLatin1Char('('), 0, 0);
        const int arg = call.section(QLatin1Char('('), 1).chopped(1).toInt();
        if (name == QLatin1String("IniMes"))
            result = engine.IniMes(arg);
        else if (name == QLatin1String("FinMes"))
            result = engine.FinMes(arg);
        else if (name == QLatin1String("numtodate"))
            result = engine.numtodate(arg);
        else
            result = engine.day_ofweeknum(arg);
        QVERIFY2(nearDateZero(result), qPrintable(show(result)));
    }

    void weeksZeroFiftyThreeAndNinetyNineNeverRaise()
    {
        EEngine engine;
        for (int week : {0, 53, 99}) {
            const double result = engine.day_ofweeknum(2011 * 100 + week);
            QVERIFY(result > 0);
        }
        QCOMPARE(engine.day_ofweeknum(201153), engine.day_ofweeknum(201101));
        QCOMPARE(engine.day_ofweeknum(201199), engine.day_ofweeknum(201101));
    }

    void outOfRangeDatesGiveNumberZero()
    {
        EEngine engine;
        QCOMPARE(engine.WeekNum(1e12), 0);
        QCOMPARE(engine.daytonum(-1e12), 0);
        QCOMPARE(engine.WeekNum(std::numeric_limits<double>::quiet_NaN()), 0);
    }

    void daysAroundDateZeroConvert()
    {
        EEngine engine;
        QCOMPARE(engine.daytonum(0.0), 18991230);
        QCOMPARE(vb::toQDate(engine.numtodate(18991230)), QDate(1899, 12, 30));
    }
};

QTEST_GUILESS_MAIN(TstCalendar)
#include "tst_calendar.moc"
