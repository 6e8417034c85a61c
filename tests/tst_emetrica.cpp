// Metrics: named JavaScript formulas, loaded and saved through the row component.
#include "entitychecks.h"
#include "model/emetrica.h"
#include "testdatabase.h"

#include <QRegularExpression>
#include <QTest>

namespace {
const QString Source = QStringLiteral("// Ventas del día\r\nfunction valor(d) { return \"a\" + 'b' + `c`; } /* ; DROP TABLE x; */\r\n"
                                      "var s = '\\\\server\\share'; // 日本語 🙂\r\n");
}

class TstEMetrica : public QObject {
    Q_OBJECT

    TestDatabase db;

    int count() { return db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Metrica")).toInt(); }

    void fill(EMetrica& m)
    {
        m.setNombre(QStringLiteral("Venta diaria"));
        m.setDescripcion(QStringLiteral("Importe del día"));
        m.setTitulo(QStringLiteral("Venta"));
        m.setDecimales(2);
        m.setFormato(QStringLiteral("#,##0.00"));
        m.setCodigoFuente(Source);
        m.setFK_Perspectiva(5);
    }

private slots:
    void initTestCase() { VBI_CREATE_TEST_DATABASE(db); }
    void init() { db.clear(); }

    void identityAndMemberOrder()
    {
        verifyAutomationIdentity(EMetrica::staticMetaObject, QStringLiteral("{A795E23C-EA2A-4724-B2F1-5ABE626805CF}"),
                                 QStringLiteral("{591322AB-365C-4540-A2B3-7373E6BBF616}"));
        QCOMPARE(propertyNames(EMetrica::staticMetaObject),
                 QString::fromLatin1("Sys_PK Sys_GUID Nombre Descripcion Titulo Decimales Formato CodigoFuente FK_Perspectiva")
                     .split(QLatin1Char(' ')));
        QCOMPARE(invokableNames(EMetrica::staticMetaObject), QStringList({QStringLiteral("Load"), QStringLiteral("Save")}));
    }

    void saveThenLoadRoundTripsEveryProperty()
    {
        EMetrica m;
        fill(m);
        QVERIFY(m.Save(&db.connection()));
        EMetrica back;
        QVERIFY(back.Load(&db.connection(), m.Sys_PK()));
        QCOMPARE(back.Sys_PK(), m.Sys_PK());
        QCOMPARE(back.Nombre(), m.Nombre());
        QCOMPARE(back.Descripcion(), m.Descripcion());
        QCOMPARE(back.Titulo(), m.Titulo());
        QCOMPARE(back.Decimales(), short(2));
        QCOMPARE(back.Formato(), m.Formato());
        QCOMPARE(back.CodigoFuente(), Source);
        QCOMPARE(back.FK_Perspectiva(), 5);
    }

    void emptyFormatIsStoredAsHashAndChangesTheProperty()
    {
        EMetrica m;
        fill(m);
        m.setFormato(QString());
        QVERIFY(m.Save(&db.connection()));
        QCOMPARE(m.Formato(), QStringLiteral("#"));
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_Formato FROM ut_bi_Metrica")).toString(), QStringLiteral("#"));
    }

    void formatIsLeftAloneWhenTheRowToUpdateIsMissing()
    {
        EMetrica m;
        fill(m);
        m.setSys_PK(999999);
        m.setFormato(QString());
        QVERIFY(!m.Save(&db.connection()));
        QCOMPARE(m.Formato(), QString());
        QCOMPARE(count(), 0);
    }

    void newMetricGetsKeyButNotGuidUntilLoaded()
    {
        EMetrica m;
        fill(m);
        QVERIFY(m.Save(&db.connection()));
        QVERIFY(m.Sys_PK() > 0);
        QCOMPARE(m.Sys_GUID(), QString());
        QVERIFY(m.Load(&db.connection(), m.Sys_PK()));
        static const QRegularExpression guid(QStringLiteral("^\\{[0-9A-F-]{36}\\}$"));
        QVERIFY2(guid.match(m.Sys_GUID()).hasMatch(), qPrintable(m.Sys_GUID()));
        QCOMPARE(m.Sys_GUID(), db.scalar(QStringLiteral("SELECT Sys_GUID FROM ut_bi_Metrica")).toString());
    }

    void saveNeverWritesTheGuid()
    {
        EMetrica m;
        fill(m);
        QVERIFY(m.Save(&db.connection()));
        const QString stored = db.scalar(QStringLiteral("SELECT Sys_GUID FROM ut_bi_Metrica")).toString();
        m.setSys_GUID(QStringLiteral("{00000000-0000-0000-0000-000000000000}"));
        m.setNombre(QStringLiteral("otra"));
        QVERIFY(m.Save(&db.connection()));
        QCOMPARE(db.scalar(QStringLiteral("SELECT Sys_GUID FROM ut_bi_Metrica")).toString(), stored);
    }

    void loadOfMissingKeyIsFalseAndLeavesEverything()
    {
        EMetrica m;
        fill(m);
        m.setSys_PK(3);
        m.setSys_GUID(QStringLiteral("g"));
        QVERIFY(!m.Load(&db.connection(), 424242));
        QCOMPARE(m.Sys_PK(), 3);
        QCOMPARE(m.Sys_GUID(), QStringLiteral("g"));
        QCOMPARE(m.Nombre(), QStringLiteral("Venta diaria"));
        QCOMPARE(m.CodigoFuente(), Source);
    }

    void savingADeletedRowIsFalseAndCreatesNothing()
    {
        EMetrica m;
        fill(m);
        QVERIFY(m.Save(&db.connection()));
        db.openAnother()->Execute(QStringLiteral("DELETE FROM ut_bi_Metrica WHERE Sys_PK=%1").arg(m.Sys_PK()));
        QVERIFY(!m.Save(&db.connection()));
        QCOMPARE(count(), 0);
    }

    void savingANewMetricTwiceUpdatesTheSameRow()
    {
        EMetrica m;
        fill(m);
        QVERIFY(m.Save(&db.connection()));
        const int pk = m.Sys_PK();
        m.setDecimales(4);
        QVERIFY(m.Save(&db.connection()));
        QCOMPARE(m.Sys_PK(), pk);
        QCOMPARE(count(), 1);
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_Decimales FROM ut_bi_Metrica")).toInt(), 4);
    }

    void sourceOfExactlySixteenThousandCharactersIsKept()
    {
        EMetrica m;
        fill(m);
        m.setCodigoFuente(QString(16000, QChar(0x00E9)));
        QVERIFY(m.Save(&db.connection()));
        EMetrica back;
        QVERIFY(back.Load(&db.connection(), m.Sys_PK()));
        QCOMPARE(back.CodigoFuente(), m.CodigoFuente());
    }

    void sourceOverSixteenThousandCharactersIsRefusedWithNothingWritten()
    {
        EMetrica m;
        fill(m);
        m.setCodigoFuente(QString(16001, QLatin1Char('x')));
        QVERIFY(!m.Save(&db.connection()));
        m.setCodigoFuente(QString(50000, QLatin1Char('\'')));
        QVERIFY(!m.Save(&db.connection()));
        QCOMPARE(m.Sys_PK(), 0);
        QCOMPARE(count(), 0);
    }

    void everyDeclaredLengthIsEnforced()
    {
        const QList<std::function<void(EMetrica&)>> tooLong{
            [](EMetrica& m) { m.setNombre(QString(51, QLatin1Char('a'))); },
            [](EMetrica& m) { m.setDescripcion(QString(256, QLatin1Char('a'))); },
            [](EMetrica& m) { m.setTitulo(QString(101, QLatin1Char('a'))); },
            [](EMetrica& m) { m.setFormato(QString(51, QLatin1Char('a'))); },
        };
        for (const auto& spoil : tooLong) {
            EMetrica m;
            fill(m);
            spoil(m);
            QVERIFY(!m.Save(&db.connection()));
        }
        QCOMPARE(count(), 0);
    }

    void nullColumnsLeavePropertiesUnchanged()
    {
        db.exec(QStringLiteral("INSERT INTO ut_bi_Metrica (uf_Nombre) VALUES ('solo')"));
        const int pk = db.scalar(QStringLiteral("SELECT Sys_PK FROM ut_bi_Metrica")).toInt();
        EMetrica m;
        fill(m);
        m.setSys_GUID(QStringLiteral("antes"));
        QVERIFY(m.Load(&db.connection(), pk));
        QCOMPARE(m.Sys_PK(), pk);
        QCOMPARE(m.Nombre(), QStringLiteral("solo"));
        QCOMPARE(m.Sys_GUID(), QString()); // the row has no GUID: the row component answers an empty text
        QCOMPARE(m.Descripcion(), QStringLiteral("Importe del día"));
        QCOMPARE(m.Decimales(), short(2));
        QCOMPARE(m.CodigoFuente(), Source);
        QCOMPARE(m.FK_Perspectiva(), 5);
    }

    void decimalsThatDoNotFitSixteenBitsAreLeftUnchanged()
    {
        db.exec(QStringLiteral("INSERT INTO ut_bi_Metrica (uf_Nombre, uf_Decimales) VALUES ('x', 70000)"));
        const int pk = db.scalar(QStringLiteral("SELECT Sys_PK FROM ut_bi_Metrica")).toInt();
        EMetrica m;
        m.setDecimales(3);
        QVERIFY(m.Load(&db.connection(), pk));
        QCOMPARE(m.Nombre(), QStringLiteral("x"));
        QCOMPARE(m.Decimales(), short(3));
    }

    void closedOrMissingConnectionGivesFalse()
    {
        ado::Connection closed;
        EMetrica m;
        fill(m);
        QVERIFY(!m.Save(&closed));
        QVERIFY(!m.Save(nullptr));
        QVERIFY(!m.Load(&closed, 1));
        QCOMPARE(m.Sys_PK(), 0);
    }
};

QTEST_GUILESS_MAIN(TstEMetrica)
#include "tst_emetrica.moc"
