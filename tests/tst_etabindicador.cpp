// An indicator placed on a dashboard: its row in ut_bi_TabIndicador, the
// packed period flags, the working reference that is never stored, and the
// traps around Load and Save.
#include "ado/connection.h"
#include "model/etabindicador.h"
#include "entitychecks.h"
#include "testdatabase.h"
#include "vb/vb.h"

#include <QMetaObject>
#include <QMetaProperty>
#include <QTest>
#include <memory>

class TstETabIndicador : public QObject {
    Q_OBJECT

    TestDatabase db;

    int count() { return db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_TabIndicador")).toInt(); }

    QVariant column(int pk, const QString& name)
    {
        return db.scalar(QStringLiteral("SELECT %1 FROM ut_bi_TabIndicador WHERE Sys_PK=%2").arg(name).arg(pk));
    }

    // A row written behind the entity's back, so Load meets exactly these values.
    int insertRow(const QString& columns, const QString& values)
    {
        return db
            .scalar(QStringLiteral("INSERT INTO ut_bi_TabIndicador (%1) VALUES (%2) RETURNING Sys_PK").arg(columns, values))
            .toInt();
    }

    int rowWithPeriods(const QString& periodos)
    {
        return insertRow(QStringLiteral("uf_FK_Tablero, uf_Periodos"), QStringLiteral("1, ") + periodos);
    }

    static void fill(ETabIndicador& t)
    {
        t.setFK_Tablero(3);
        t.setFK_Indicador(8);
        t.setFK_Entidad(1234);
        t.setx(100);
        t.setY(200);
        t.setW(3000);
        t.setH(1500);
        t.setMuestra_Dia(true);
        t.setMuestra_Semana(false);
        t.setMuestra_Mes(true);
        t.setMuestra_Ano(false);
        t.setPeriodoInicio(2);
        t.setLimite1(1.5);
        t.setLimite2(-2.25);
        t.setLimite3(0.0);
        t.setLimite4(1e10);
        t.setLimite5(123456.789);
        t.setLimite6(-0.001);
        t.setLimite7(42.0);
        t.setLimite8(99.5);
    }

    static void setPeriods(ETabIndicador& t, bool dia, bool semana, bool mes, bool ano)
    {
        t.setMuestra_Dia(dia);
        t.setMuestra_Semana(semana);
        t.setMuestra_Mes(mes);
        t.setMuestra_Ano(ano);
    }

    static void verifyAllShown(const ETabIndicador& t)
    {
        QVERIFY(t.Muestra_Dia());
        QVERIFY(t.Muestra_Semana());
        QVERIFY(t.Muestra_Mes());
        QVERIFY(t.Muestra_Ano());
    }

private slots:
    void initTestCase() { VBI_CREATE_TEST_DATABASE(db); }
    void init() { db.clear(); }

    void automationIdentityIsFixed()
    {
        verifyAutomationIdentity(ETabIndicador::staticMetaObject, QStringLiteral("{D8076953-DE33-46DF-A03B-1BC940C673EE}"),
                                 QStringLiteral("{42513B23-F3F8-4CCB-9202-49F5BF55A212}"));
    }

    void membersComeInInterfaceOrder()
    {
        const QMetaObject& meta = ETabIndicador::staticMetaObject;
        QCOMPARE(propertyNames(meta),
                 QStringList({"Sys_PK",      "FK_Tablero",  "FK_Indicador",   "FK_Entidad",    "x",
                              "Y",           "W",           "H",              "Muestra_Dia",   "Muestra_Semana",
                              "Muestra_Mes", "Muestra_Ano", "PeriodoInicio",  "Limite1",       "Limite2",
                              "Limite3",     "Limite4",     "Limite5",        "Limite6",       "Limite7",
                              "Limite8",     "objIndicador"}));
        QStringList methods;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            if (meta.method(i).methodType() == QMetaMethod::Method)
                methods.append(QString::fromLatin1(meta.method(i).name()));
        }
        QCOMPARE(methods, QStringList({"Load", "Save"}));
        for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
            QVERIFY2(meta.property(i).isWritable(), meta.property(i).name());
    }

    void newPlacementHoldsZeroFalseAndNothing()
    {
        ETabIndicador t;
        QCOMPARE(t.Sys_PK(), 0);
        QCOMPARE(t.FK_Tablero(), 0);
        QCOMPARE(t.FK_Indicador(), 0);
        QCOMPARE(t.FK_Entidad(), 0);
        QCOMPARE(t.x(), 0);
        QCOMPARE(t.Y(), 0);
        QCOMPARE(t.W(), 0);
        QCOMPARE(t.H(), 0);
        QVERIFY(!t.Muestra_Dia());
        QVERIFY(!t.Muestra_Semana());
        QVERIFY(!t.Muestra_Mes());
        QVERIFY(!t.Muestra_Ano());
        QCOMPARE(t.PeriodoInicio(), 0);
        QCOMPARE(t.Limite1(), 0.0);
        QCOMPARE(t.Limite8(), 0.0);
        QCOMPARE(t.objIndicador(), nullptr);
    }

    void savedPlacementReadsBackEveryProperty()
    {
        ETabIndicador t;
        fill(t);
        QVERIFY(t.Save(&db.connection()));
        QVERIFY(t.Sys_PK() > 0);
        QCOMPARE(count(), 1);

        ETabIndicador back;
        QVERIFY(back.Load(&db.connection(), t.Sys_PK()));
        QCOMPARE(back.Sys_PK(), t.Sys_PK());
        QCOMPARE(back.FK_Tablero(), 3);
        QCOMPARE(back.FK_Indicador(), 8);
        QCOMPARE(back.FK_Entidad(), 1234);
        QCOMPARE(back.x(), 100);
        QCOMPARE(back.Y(), 200);
        QCOMPARE(back.W(), 3000);
        QCOMPARE(back.H(), 1500);
        QCOMPARE(back.PeriodoInicio(), 2);
        QCOMPARE(back.Limite1(), 1.5);
        QCOMPARE(back.Limite2(), -2.25);
        QCOMPARE(back.Limite3(), 0.0);
        QCOMPARE(back.Limite4(), 1e10);
        QCOMPARE(back.Limite5(), 123456.789);
        QCOMPARE(back.Limite6(), -0.001);
        QCOMPARE(back.Limite7(), 42.0);
        QCOMPARE(back.Limite8(), 99.5);
    }

    void columnsHoldTheirProperties()
    {
        ETabIndicador t;
        fill(t);
        QVERIFY(t.Save(&db.connection()));
        const int pk = t.Sys_PK();
        QCOMPARE(column(pk, QStringLiteral("uf_FK_Tablero")).toInt(), 3);
        QCOMPARE(column(pk, QStringLiteral("uf_FK_Indicador")).toInt(), 8);
        QCOMPARE(column(pk, QStringLiteral("uf_FK_Entidad")).toInt(), 1234);
        QCOMPARE(column(pk, QStringLiteral("uf_X")).toInt(), 100);
        QCOMPARE(column(pk, QStringLiteral("uf_Y")).toInt(), 200);
        QCOMPARE(column(pk, QStringLiteral("uf_W")).toInt(), 3000);
        QCOMPARE(column(pk, QStringLiteral("uf_H")).toInt(), 1500);
        QCOMPARE(column(pk, QStringLiteral("uf_pinicial")).toInt(), 2);
        QCOMPARE(column(pk, QStringLiteral("uf_l1")).toDouble(), 1.5);
        QCOMPARE(column(pk, QStringLiteral("uf_l2")).toDouble(), -2.25);
        QCOMPARE(column(pk, QStringLiteral("uf_l8")).toDouble(), 99.5);
    }

    void dayAndMonthShownIsStoredAsFiveAndReadsBackExactly()
    {
        ETabIndicador t;
        setPeriods(t, true, false, true, false);
        QVERIFY(t.Save(&db.connection()));
        QCOMPARE(column(t.Sys_PK(), QStringLiteral("uf_Periodos")).toInt(), 5);
        ETabIndicador back;
        QVERIFY(back.Load(&db.connection(), t.Sys_PK()));
        QVERIFY(back.Muestra_Dia());
        QVERIFY(!back.Muestra_Semana());
        QVERIFY(back.Muestra_Mes());
        QVERIFY(!back.Muestra_Ano());
    }

    void noPeriodShownIsStoredAsZeroAndReadsBackAllShown()
    {
        ETabIndicador t;
        setPeriods(t, false, false, false, false);
        QVERIFY(t.Save(&db.connection()));
        QCOMPARE(column(t.Sys_PK(), QStringLiteral("uf_Periodos")).toInt(), 0);
        ETabIndicador back;
        QVERIFY(back.Load(&db.connection(), t.Sys_PK()));
        verifyAllShown(back);
    }

    void periodFlagsPackIntoPeriodBits_data()
    {
        QTest::addColumn<int>("bits");
        for (int v = 0; v < 16; ++v)
            QTest::addRow("%d", v) << v;
    }

    void periodFlagsPackIntoPeriodBits()
    {
        QFETCH(int, bits);
        ETabIndicador t;
        setPeriods(t, bits & 1, bits & 2, bits & 4, bits & 8);
        QVERIFY(t.Save(&db.connection()));
        QCOMPARE(column(t.Sys_PK(), QStringLiteral("uf_Periodos")).toInt(), bits);
    }

    void periodValuesOneToFifteenDecodeBitByBit_data()
    {
        QTest::addColumn<int>("stored");
        for (int v = 1; v <= 15; ++v)
            QTest::addRow("%d", v) << v;
    }

    void periodValuesOneToFifteenDecodeBitByBit()
    {
        QFETCH(int, stored);
        const int pk = rowWithPeriods(QString::number(stored));
        ETabIndicador t;
        // Flags already set on the object do not leak into the decoded value.
        setPeriods(t, !(stored & 1), !(stored & 2), !(stored & 4), !(stored & 8));
        QVERIFY(t.Load(&db.connection(), pk));
        QCOMPARE(t.Muestra_Dia(), bool(stored & 1));
        QCOMPARE(t.Muestra_Semana(), bool(stored & 2));
        QCOMPARE(t.Muestra_Mes(), bool(stored & 4));
        QCOMPARE(t.Muestra_Ano(), bool(stored & 8));
    }

    void periodValuesOutsideOneToFifteenReadBackAllShown_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::newRow("zero") << QStringLiteral("0");
        QTest::newRow("null") << QStringLiteral("NULL");
        QTest::newRow("minus one") << QStringLiteral("-1");
        QTest::newRow("minus sixteen") << QStringLiteral("-16");
        QTest::newRow("sixteen") << QStringLiteral("16");
        QTest::newRow("seventeen") << QStringLiteral("17");
        QTest::newRow("large") << QStringLiteral("65535");
    }

    void periodValuesOutsideOneToFifteenReadBackAllShown()
    {
        QFETCH(QString, stored);
        const int pk = rowWithPeriods(stored);
        ETabIndicador t;
        QVERIFY(t.Load(&db.connection(), pk));
        verifyAllShown(t);
    }

    void objIndicadorIsNeverStored()
    {
        QObject indicador;
        ETabIndicador t;
        fill(t);
        t.setobjIndicador(&indicador);
        db.connection().setLogSql(true);
        QVERIFY(t.Save(&db.connection()));
        QVERIFY(t.Save(&db.connection()));
        db.connection().setLogSql(false);
        QCOMPARE(t.objIndicador(), &indicador);
        const QStringList log = db.connection().executedSql();
        QVERIFY(!log.isEmpty());
        for (const QString& sql : log)
            QVERIFY2(!sql.contains(QLatin1String("objIndicador"), Qt::CaseInsensitive), qPrintable(sql));
        // The new row's column list ends with the last limit: nothing else is written.
        QVERIFY2(log.first().contains(QLatin1String("uf_l8) VALUES"), Qt::CaseInsensitive), qPrintable(log.first()));
        ETabIndicador back;
        QVERIFY(back.Load(&db.connection(), t.Sys_PK()));
        QCOMPARE(back.objIndicador(), nullptr);
    }

    void loadLeavesObjIndicadorAsItWas()
    {
        ETabIndicador saved;
        fill(saved);
        QVERIFY(saved.Save(&db.connection()));
        QObject indicador;
        ETabIndicador t;
        t.setobjIndicador(&indicador);
        QVERIFY(t.Load(&db.connection(), saved.Sys_PK()));
        QCOMPARE(t.objIndicador(), &indicador);
    }

    void objIndicadorIsAWorkingReferenceOnly()
    {
        // Set and read back by name, as a host would; the placement does not
        // own the indicator and forgets it when it goes away.
        ETabIndicador t;
        auto indicador = std::make_unique<QObject>();
        QVERIFY(t.setProperty("objIndicador", QVariant::fromValue<QObject*>(indicador.get())));
        QCOMPARE(t.property("objIndicador").value<QObject*>(), indicador.get());
        indicador.reset();
        QCOMPARE(t.objIndicador(), nullptr);
    }

    void nullColumnsLeavePropertiesUnchanged()
    {
        const int pk = insertRow(QStringLiteral("uf_FK_Tablero, uf_FK_Indicador, uf_FK_Entidad, uf_X, uf_Y, uf_W, uf_H, "
                                                "uf_pinicial, uf_Periodos, uf_l1, uf_l2, uf_l3, uf_l4, uf_l5, uf_l6, "
                                                "uf_l7, uf_l8"),
                                 QStringLiteral("NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, "
                                                "NULL, NULL, NULL, NULL, NULL, NULL"));
        ETabIndicador t;
        fill(t);
        QVERIFY(t.Load(&db.connection(), pk));
        QCOMPARE(t.Sys_PK(), pk);
        QCOMPARE(t.FK_Tablero(), 3);
        QCOMPARE(t.FK_Indicador(), 8);
        QCOMPARE(t.FK_Entidad(), 1234);
        QCOMPARE(t.x(), 100);
        QCOMPARE(t.Y(), 200);
        QCOMPARE(t.W(), 3000);
        QCOMPARE(t.H(), 1500);
        QCOMPARE(t.PeriodoInicio(), 2);
        QCOMPARE(t.Limite1(), 1.5);
        QCOMPARE(t.Limite2(), -2.25);
        QCOMPARE(t.Limite8(), 99.5);
        // The packed flags are decoded from a reset state, NULL included.
        verifyAllShown(t);
    }

    void savingNewPlacementTwiceUpdatesSameRow()
    {
        ETabIndicador t;
        fill(t);
        QVERIFY(t.Save(&db.connection()));
        const int pk = t.Sys_PK();
        t.setW(4444);
        QVERIFY(t.Save(&db.connection()));
        QCOMPARE(t.Sys_PK(), pk);
        QCOMPARE(count(), 1);
        QCOMPARE(column(pk, QStringLiteral("uf_W")).toInt(), 4444);
    }

    void savingDeletedKeyFailsAndInsertsNothing()
    {
        ETabIndicador t;
        fill(t);
        QVERIFY(t.Save(&db.connection()));
        const int pk = t.Sys_PK();
        db.exec(QStringLiteral("DELETE FROM ut_bi_TabIndicador WHERE Sys_PK=%1").arg(pk));
        QVERIFY(!t.Save(&db.connection()));
        QCOMPARE(t.Sys_PK(), pk);
        QCOMPARE(count(), 0);
    }

    void loadOfMissingKeyIsFalseAndLeavesObjectUntouched()
    {
        ETabIndicador t;
        fill(t);
        t.setSys_PK(55);
        QVERIFY(!t.Load(&db.connection(), 987654));
        QCOMPARE(t.Sys_PK(), 55);
        QCOMPARE(t.FK_Entidad(), 1234);
        QVERIFY(t.Muestra_Dia());
        QVERIFY(!t.Muestra_Semana());
        QVERIFY(t.Muestra_Mes());
        QVERIFY(!t.Muestra_Ano());
    }

    void declaresColumnsInOrderAndAssignsInOrder()
    {
        db.connection().setLogSql(true);
        ETabIndicador t;
        fill(t);
        QVERIFY(t.Save(&db.connection()));
        QVERIFY(t.Save(&db.connection()));
        db.connection().setLogSql(false);
        const QStringList log = db.connection().executedSql();
        QVERIFY2(log.size() >= 3, qPrintable(log.join(QLatin1Char('\n'))));
        // The new row lists the declared columns in declaration order.
        QVERIFY2(log.first().contains(QLatin1String("(uf_FK_Tablero,uf_FK_Indicador,uf_FK_Entidad,uf_pinicial,"
                                                    "uf_Periodos,uf_X,uf_Y,uf_W,uf_H,uf_l1,uf_l2,uf_l3,uf_l4,uf_l5,"
                                                    "uf_l6,uf_l7,uf_l8)"),
                                      Qt::CaseInsensitive),
                 qPrintable(log.first()));
        // The update sets the columns in assignment order.
        QVERIFY2(log.last().contains(QLatin1String("SET uf_fk_tablero=?,uf_fk_indicador=?,uf_fk_entidad=?,"
                                                   "uf_pinicial=?,uf_periodos=?,uf_l1=?,uf_l2=?,uf_l3=?,uf_l4=?,"
                                                   "uf_l5=?,uf_l6=?,uf_l7=?,uf_l8=?,uf_x=?,uf_y=?,uf_w=?,uf_h=? "),
                                     Qt::CaseInsensitive),
                 qPrintable(log.last()));
    }

    void fractionalLimitsAreStoredWhateverTheLocale()
    {
        // The row component binds values, so a decimal-comma locale cannot
        // garble a limit.
        const QLocale before;
        QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
        ETabIndicador t;
        t.setLimite3(3.75);
        const bool saved = t.Save(&db.connection());
        QLocale::setDefault(before);
        QVERIFY(saved);
        ETabIndicador back;
        QVERIFY(back.Load(&db.connection(), t.Sys_PK()));
        QCOMPARE(back.Limite3(), 3.75);
    }

    void closedOrMissingConnectionGivesFalse()
    {
        ETabIndicador t;
        fill(t);
        ado::Connection closed;
        QVERIFY(!t.Save(&closed));
        QVERIFY(!t.Save(nullptr));
        QObject notAConnection;
        QVERIFY(!t.Save(&notAConnection));
        QCOMPARE(t.Sys_PK(), 0);
        QVERIFY(t.Save(&db.connection()));
        const int pk = t.Sys_PK();
        ETabIndicador back;
        QVERIFY(!back.Load(&closed, pk));
        QVERIFY(!back.Load(nullptr, pk));
        QVERIFY(!back.Load(&notAConnection, pk));
        QCOMPARE(back.Sys_PK(), 0);
        QVERIFY(!back.Muestra_Dia());
        QCOMPARE(count(), 1);
    }
};

QTEST_GUILESS_MAIN(TstETabIndicador)
#include "tst_etabindicador.moc"
