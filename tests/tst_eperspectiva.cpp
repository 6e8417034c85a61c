// Perspectives: the folders of the library tree, loaded through a plain query
// and saved through the row component.
#include "entitychecks.h"
#include "model/eperspectiva.h"
#include "testdatabase.h"

#include <QTest>

namespace {
const QString Hostile = QStringLiteral("O'Brien \"x\"; DROP TABLE ut_bi_Metrica; -- \\ 日本 🙂");
}

class TstEPerspectiva : public QObject {
    Q_OBJECT

    TestDatabase db;

    int count() { return db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Perspectiva")).toInt(); }

    void fill(EPerspectiva& p, const QString& name, int parent)
    {
        p.setNombre(name);
        p.setEntidadAsociada(QStringLiteral("Cliente"));
        p.setGrupos(QStringLiteral("*"));
        p.setFK_Padre(parent);
    }

private slots:
    void initTestCase() { VBI_CREATE_TEST_DATABASE(db); }
    void init() { db.clear(); }

    void identityAndMemberOrder()
    {
        verifyAutomationIdentity(EPerspectiva::staticMetaObject, QStringLiteral("{3805C446-6BBA-4297-8753-87C6E9CC2BB7}"),
                                 QStringLiteral("{75393685-3525-47B3-8913-742DDFCD18A2}"));
        QCOMPARE(propertyNames(EPerspectiva::staticMetaObject),
                 QString::fromLatin1("Sys_PK Nombre EntidadAsociada FK_Padre Grupos").split(QLatin1Char(' ')));
        QCOMPARE(invokableNames(EPerspectiva::staticMetaObject), QStringList({QStringLiteral("Load"), QStringLiteral("Save")}));
    }

    void newPerspectiveIsEmpty()
    {
        EPerspectiva p;
        QCOMPARE(p.Sys_PK(), 0);
        QCOMPARE(p.FK_Padre(), 0);
        QVERIFY(p.Nombre().isEmpty() && p.EntidadAsociada().isEmpty() && p.Grupos().isEmpty());
    }

    void saveThenLoadRoundTrips()
    {
        EPerspectiva p;
        fill(p, QStringLiteral("Ventas"), 4);
        QVERIFY(p.Save(&db.connection()));
        QVERIFY(p.Sys_PK() > 0);
        EPerspectiva back;
        QVERIFY(back.Load(&db.connection(), p.Sys_PK()));
        QCOMPARE(back.Sys_PK(), p.Sys_PK());
        QCOMPARE(back.Nombre(), QStringLiteral("Ventas"));
        QCOMPARE(back.EntidadAsociada(), QStringLiteral("Cliente"));
        QCOMPARE(back.Grupos(), QStringLiteral("*"));
        QCOMPARE(back.FK_Padre(), 4);
    }

    void loadReadsThroughItsOwnQuery()
    {
        EPerspectiva p;
        fill(p, QStringLiteral("Ventas"), 0);
        QVERIFY(p.Save(&db.connection()));
        db.connection().setLogSql(true);
        db.connection().clearLog();
        EPerspectiva back;
        QVERIFY(back.Load(&db.connection(), p.Sys_PK()));
        db.connection().setLogSql(false);
        QCOMPARE(db.connection().executedSql(),
                 QStringList{QStringLiteral("Select Sys_PK, uf_Nombre, uf_Entidad, uf_Grupos, uf_padre FROM ut_bi_perspectiva "
                                            "WHERE Sys_PK=%1").arg(p.Sys_PK())});
    }

    void loadOfMissingKeyIsFalseAndLeavesObjectUntouched()
    {
        EPerspectiva p;
        fill(p, QStringLiteral("Sin tocar"), 3);
        p.setSys_PK(77);
        QVERIFY(!p.Load(&db.connection(), 123456));
        QVERIFY(!p.Load(&db.connection(), -5));
        QCOMPARE(p.Sys_PK(), 77);
        QCOMPARE(p.Nombre(), QStringLiteral("Sin tocar"));
        QCOMPARE(p.FK_Padre(), 3);
    }

    void nullColumnsLeavePropertiesUnchanged()
    {
        db.exec(QStringLiteral("INSERT INTO ut_bi_Perspectiva (uf_Nombre) VALUES ('Solo nombre')"));
        const int pk = db.scalar(QStringLiteral("SELECT Sys_PK FROM ut_bi_Perspectiva")).toInt();
        EPerspectiva p;
        p.setEntidadAsociada(QStringLiteral("antes"));
        p.setGrupos(QStringLiteral("g"));
        p.setFK_Padre(9);
        QVERIFY(p.Load(&db.connection(), pk));
        QCOMPARE(p.Nombre(), QStringLiteral("Solo nombre"));
        QCOMPARE(p.EntidadAsociada(), QStringLiteral("antes"));
        QCOMPARE(p.Grupos(), QStringLiteral("g"));
        QCOMPARE(p.FK_Padre(), 9);
    }

    void savingANewPerspectiveTwiceUpdatesTheSameRow()
    {
        EPerspectiva p;
        fill(p, QStringLiteral("Uno"), 0);
        QVERIFY(p.Save(&db.connection()));
        const int pk = p.Sys_PK();
        p.setNombre(QStringLiteral("Dos"));
        QVERIFY(p.Save(&db.connection()));
        QCOMPARE(p.Sys_PK(), pk);
        QCOMPARE(count(), 1);
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_Nombre FROM ut_bi_Perspectiva")).toString(), QStringLiteral("Dos"));
    }

    void savingADeletedRowIsFalseAndCreatesNothing()
    {
        EPerspectiva p;
        fill(p, QStringLiteral("Borrada"), 0);
        QVERIFY(p.Save(&db.connection()));
        db.openAnother()->Execute(QStringLiteral("DELETE FROM ut_bi_Perspectiva WHERE Sys_PK=%1").arg(p.Sys_PK()));
        QVERIFY(!p.Save(&db.connection()));
        QCOMPARE(count(), 0);
    }

    void hostileTextsRoundTrip()
    {
        EPerspectiva p;
        p.setNombre(Hostile);
        p.setEntidadAsociada(QStringLiteral("Ελληνικά'\""));
        p.setGrupos(Hostile + Hostile);
        QVERIFY(p.Save(&db.connection()));
        EPerspectiva back;
        QVERIFY(back.Load(&db.connection(), p.Sys_PK()));
        QCOMPARE(back.Nombre(), Hostile);
        QCOMPARE(back.EntidadAsociada(), QStringLiteral("Ελληνικά'\""));
        QCOMPARE(back.Grupos(), Hostile + Hostile);
        QCOMPARE(db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Metrica")).toInt(), 0);
    }

    void textOverItsLengthMakesSaveFalseWithNothingWritten()
    {
        EPerspectiva p;
        p.setNombre(QString(51, QLatin1Char('n')));
        QVERIFY(!p.Save(&db.connection()));
        p.setNombre(QStringLiteral("ok"));
        p.setGrupos(QString(50000, QLatin1Char('g')));
        QVERIFY(!p.Save(&db.connection()));
        QCOMPARE(p.Sys_PK(), 0);
        QCOMPARE(count(), 0);
    }

    void closedOrMissingConnectionGivesFalse()
    {
        ado::Connection closed;
        EPerspectiva p;
        fill(p, QStringLiteral("x"), 0);
        QVERIFY(!p.Save(&closed));
        QVERIFY(!p.Save(nullptr));
        QVERIFY(!p.Load(&closed, 1));
        QVERIFY(!p.Load(nullptr, 1));
        QCOMPARE(p.Sys_PK(), 0);
    }
};

QTEST_GUILESS_MAIN(TstEPerspectiva)
#include "tst_eperspectiva.moc"
