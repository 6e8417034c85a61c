// A text label on a dashboard: its row in ut_bi_Fig, the packed font
// attributes, and the traps around Load and Save.
#include "ado/connection.h"
#include "model/efigura.h"
#include "entitychecks.h"
#include "testdatabase.h"
#include "vb/vb.h"

#include <QMetaObject>
#include <QMetaProperty>
#include <QTest>
#include <memory>

class TstEFigura : public QObject {
    Q_OBJECT

    TestDatabase db;

    int count() { return db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Fig")).toInt(); }

    QVariant column(int pk, const QString& name)
    {
        return db.scalar(QStringLiteral("SELECT %1 FROM ut_bi_Fig WHERE Sys_PK=%2").arg(name).arg(pk));
    }

    // A row written behind the entity's back, so Load meets exactly these values.
    int insertRow(const QString& columns, const QString& values)
    {
        return db.scalar(QStringLiteral("INSERT INTO ut_bi_Fig (%1) VALUES (%2) RETURNING Sys_PK").arg(columns, values))
            .toInt();
    }

    int rowWithAttributes(const QString& atributos)
    {
        return insertRow(QStringLiteral("uf_FK_Tablero, uf_atrib_fuente"), QStringLiteral("1, ") + atributos);
    }

    static void fill(EFigura& f)
    {
        f.setFK_Tablero(12);
        f.setTexto(QStringLiteral("Ventas del día"));
        f.setFuente(QStringLiteral("Tahoma"));
        f.setTam_fuente(14);
        f.setNegrita(true);
        f.setCursiva(false);
        f.setSubrayado(true);
        f.setColor(0x0000FF);
        f.setColorFondo(0xFFFFFF);
        f.setAlineacion(2);
        f.setx(150);
        f.setY(300);
        f.setW(4500);
        f.setH(600);
        f.setTipo(0);
    }

private slots:
    void initTestCase() { VBI_CREATE_TEST_DATABASE(db); }
    void init() { db.clear(); }

    void automationIdentityIsFixed()
    {
        verifyAutomationIdentity(EFigura::staticMetaObject, QStringLiteral("{1A1B1C44-1F57-43B6-9DF2-0D9C9FF3946A}"),
                                 QStringLiteral("{7277294E-E891-44B8-A92F-39C021D80351}"));
    }

    void membersComeInInterfaceOrder()
    {
        const QMetaObject& meta = EFigura::staticMetaObject;
        QCOMPARE(propertyNames(meta),
                 QStringList({"Sys_PK", "FK_Tablero", "Texto", "Fuente", "Tam_fuente", "Negrita", "Cursiva",
                              "Subrayado", "Color", "ColorFondo", "Alineacion", "x", "Y", "W", "H", "Tipo"}));
        QCOMPARE(QString::fromLatin1(meta.property(meta.indexOfProperty("Tam_fuente")).typeName()),
                 QStringLiteral("short"));
        QCOMPARE(QString::fromLatin1(meta.property(meta.indexOfProperty("Alineacion")).typeName()),
                 QStringLiteral("short"));
        QStringList methods;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            if (meta.method(i).methodType() == QMetaMethod::Method)
                methods.append(QString::fromLatin1(meta.method(i).name()));
        }
        QCOMPARE(methods, QStringList({"Load", "Save"}));
        for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
            QVERIFY2(meta.property(i).isWritable(), meta.property(i).name());
    }

    void newFigureHoldsZeroFalseAndEmpty()
    {
        EFigura f;
        QCOMPARE(f.Sys_PK(), 0);
        QCOMPARE(f.FK_Tablero(), 0);
        QCOMPARE(f.Texto(), QString());
        QCOMPARE(f.Fuente(), QString());
        QCOMPARE(f.Tam_fuente(), short(0));
        QVERIFY(!f.Negrita());
        QVERIFY(!f.Cursiva());
        QVERIFY(!f.Subrayado());
        QCOMPARE(f.Color(), 0);
        QCOMPARE(f.ColorFondo(), 0);
        QCOMPARE(f.Alineacion(), short(0));
        QCOMPARE(f.x(), 0);
        QCOMPARE(f.Y(), 0);
        QCOMPARE(f.W(), 0);
        QCOMPARE(f.H(), 0);
        QCOMPARE(f.Tipo(), 0);
    }

    void savedFigureReadsBackEveryProperty()
    {
        EFigura f;
        fill(f);
        QVERIFY(f.Save(&db.connection()));
        QVERIFY(f.Sys_PK() > 0);
        QCOMPARE(count(), 1);

        EFigura back;
        QVERIFY(back.Load(&db.connection(), f.Sys_PK()));
        QCOMPARE(back.Sys_PK(), f.Sys_PK());
        QCOMPARE(back.FK_Tablero(), 12);
        QCOMPARE(back.Texto(), QStringLiteral("Ventas del día"));
        QCOMPARE(back.Fuente(), QStringLiteral("Tahoma"));
        QCOMPARE(back.Tam_fuente(), short(14));
        QVERIFY(back.Negrita());
        QVERIFY(!back.Cursiva());
        QVERIFY(back.Subrayado());
        QCOMPARE(back.Color(), 0x0000FF);
        QCOMPARE(back.ColorFondo(), 0xFFFFFF);
        QCOMPARE(back.Alineacion(), short(2));
        QCOMPARE(back.x(), 150);
        QCOMPARE(back.Y(), 300);
        QCOMPARE(back.W(), 4500);
        QCOMPARE(back.H(), 600);
        QCOMPARE(back.Tipo(), 0);
    }

    void columnsHoldTheirProperties()
    {
        EFigura f;
        fill(f);
        f.setTipo(3);
        QVERIFY(f.Save(&db.connection()));
        const int pk = f.Sys_PK();
        QCOMPARE(column(pk, QStringLiteral("uf_FK_Tablero")).toInt(), 12);
        QCOMPARE(column(pk, QStringLiteral("uf_X")).toInt(), 150);
        QCOMPARE(column(pk, QStringLiteral("uf_Y")).toInt(), 300);
        QCOMPARE(column(pk, QStringLiteral("uf_W")).toInt(), 4500);
        QCOMPARE(column(pk, QStringLiteral("uf_H")).toInt(), 600);
        QCOMPARE(column(pk, QStringLiteral("uf_Tipo")).toInt(), 3);
        QCOMPARE(column(pk, QStringLiteral("uf_Fuente")).toString(), QStringLiteral("Tahoma"));
        QCOMPARE(column(pk, QStringLiteral("uf_Texto")).toString(), QStringLiteral("Ventas del día"));
        QCOMPARE(column(pk, QStringLiteral("uf_TamFuente")).toInt(), 14);
        QCOMPARE(column(pk, QStringLiteral("uf_color")).toInt(), 0x0000FF);
        QCOMPARE(column(pk, QStringLiteral("uf_fondo")).toInt(), 0xFFFFFF);
        QCOMPARE(column(pk, QStringLiteral("uf_alin")).toInt(), 2);
    }

    void boldAndUnderlinedIsStoredAsFive()
    {
        EFigura f;
        f.setNegrita(true);
        f.setSubrayado(true);
        QVERIFY(f.Save(&db.connection()));
        QCOMPARE(column(f.Sys_PK(), QStringLiteral("uf_atrib_fuente")).toInt(), 5);
    }

    void styleFlagsPackIntoAttributeBits_data()
    {
        QTest::addColumn<bool>("negrita");
        QTest::addColumn<bool>("cursiva");
        QTest::addColumn<bool>("subrayado");
        QTest::addColumn<int>("stored");
        for (int v = 0; v < 8; ++v)
            QTest::addRow("%d", v) << bool(v & 1) << bool(v & 2) << bool(v & 4) << v;
    }

    void styleFlagsPackIntoAttributeBits()
    {
        QFETCH(bool, negrita);
        QFETCH(bool, cursiva);
        QFETCH(bool, subrayado);
        QFETCH(int, stored);
        EFigura f;
        f.setNegrita(negrita);
        f.setCursiva(cursiva);
        f.setSubrayado(subrayado);
        QVERIFY(f.Save(&db.connection()));
        QCOMPARE(column(f.Sys_PK(), QStringLiteral("uf_atrib_fuente")).toInt(), stored);
    }

    void attributeValuesOneToSevenDecodeBitByBit_data()
    {
        QTest::addColumn<int>("stored");
        for (int v = 1; v <= 7; ++v)
            QTest::addRow("%d", v) << v;
    }

    void attributeValuesOneToSevenDecodeBitByBit()
    {
        QFETCH(int, stored);
        const int pk = rowWithAttributes(QString::number(stored));
        EFigura f;
        QVERIFY(f.Load(&db.connection(), pk));
        QCOMPARE(f.Negrita(), bool(stored & 1));
        QCOMPARE(f.Cursiva(), bool(stored & 2));
        QCOMPARE(f.Subrayado(), bool(stored & 4));
    }

    void attributeValuesOutsideOneToSevenReadBackPlain_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::newRow("eight") << QStringLiteral("8");
        QTest::newRow("zero") << QStringLiteral("0");
        QTest::newRow("negative") << QStringLiteral("-1");
        QTest::newRow("fifteen") << QStringLiteral("15");
        QTest::newRow("null") << QStringLiteral("NULL");
    }

    void attributeValuesOutsideOneToSevenReadBackPlain()
    {
        QFETCH(QString, stored);
        const int pk = rowWithAttributes(stored);
        // Flags already set on the object are reset, not left over.
        EFigura f;
        f.setNegrita(true);
        f.setCursiva(true);
        f.setSubrayado(true);
        QVERIFY(f.Load(&db.connection(), pk));
        QVERIFY(!f.Negrita());
        QVERIFY(!f.Cursiva());
        QVERIFY(!f.Subrayado());
    }

    void nullColumnsLeavePropertiesUnchanged()
    {
        // Explicit NULLs: the two text columns would otherwise take their "Arial" defaults.
        const int pk = insertRow(QStringLiteral("uf_FK_Tablero, uf_X, uf_Y, uf_W, uf_H, uf_Tipo, uf_Fuente, uf_Texto, "
                                                "uf_TamFuente, uf_atrib_fuente, uf_color, uf_fondo, uf_alin"),
                                 QStringLiteral("NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, "
                                                "NULL, NULL"));
        EFigura f;
        fill(f);
        f.setTipo(4);
        QVERIFY(f.Load(&db.connection(), pk));
        QCOMPARE(f.Sys_PK(), pk);
        QCOMPARE(f.FK_Tablero(), 12);
        QCOMPARE(f.Texto(), QStringLiteral("Ventas del día"));
        QCOMPARE(f.Fuente(), QStringLiteral("Tahoma"));
        QCOMPARE(f.Tam_fuente(), short(14));
        QCOMPARE(f.Color(), 0x0000FF);
        QCOMPARE(f.ColorFondo(), 0xFFFFFF);
        QCOMPARE(f.Alineacion(), short(2));
        QCOMPARE(f.x(), 150);
        QCOMPARE(f.Y(), 300);
        QCOMPARE(f.W(), 4500);
        QCOMPARE(f.H(), 600);
        QCOMPARE(f.Tipo(), 4);
        // The packed flags are decoded from a reset state, NULL included.
        QVERIFY(!f.Negrita());
        QVERIFY(!f.Subrayado());
    }

    void fontSizeOutOfSixteenBitsLeavesPropertyUnchanged()
    {
        const int pk = insertRow(QStringLiteral("uf_TamFuente, uf_alin"), QStringLiteral("40000, 1"));
        EFigura f;
        f.setTam_fuente(9);
        QVERIFY(f.Load(&db.connection(), pk));
        QCOMPARE(f.Tam_fuente(), short(9));
        QCOMPARE(f.Alineacion(), short(1));
    }

    void newFigureWithEmptyFontStoresEmptyText()
    {
        // The "Arial" defaults only fill columns that are not assigned, and
        // Save assigns every column: an empty font is stored as it is.
        EFigura f;
        QVERIFY(f.Save(&db.connection()));
        const QVariant fuente = column(f.Sys_PK(), QStringLiteral("uf_Fuente"));
        const QVariant texto = column(f.Sys_PK(), QStringLiteral("uf_Texto"));
        QVERIFY(!vb::isNull(fuente));
        QVERIFY(!vb::isNull(texto));
        QCOMPARE(fuente.toString(), QString());
        QCOMPARE(texto.toString(), QString());
        EFigura back;
        back.setFuente(QStringLiteral("Courier"));
        QVERIFY(back.Load(&db.connection(), f.Sys_PK()));
        QCOMPARE(back.Fuente(), QString());
        QCOMPARE(back.Texto(), QString());
    }

    void savingNewFigureTwiceUpdatesSameRow()
    {
        EFigura f;
        fill(f);
        QVERIFY(f.Save(&db.connection()));
        const int pk = f.Sys_PK();
        f.setTexto(QStringLiteral("Cambiado"));
        QVERIFY(f.Save(&db.connection()));
        QCOMPARE(f.Sys_PK(), pk);
        QCOMPARE(count(), 1);
        QCOMPARE(column(pk, QStringLiteral("uf_Texto")).toString(), QStringLiteral("Cambiado"));
    }

    void savingDeletedKeyFailsAndInsertsNothing()
    {
        EFigura f;
        fill(f);
        QVERIFY(f.Save(&db.connection()));
        const int pk = f.Sys_PK();
        db.exec(QStringLiteral("DELETE FROM ut_bi_Fig WHERE Sys_PK=%1").arg(pk));
        QVERIFY(!f.Save(&db.connection()));
        QCOMPARE(f.Sys_PK(), pk);
        QCOMPARE(count(), 0);
    }

    void loadOfMissingKeyIsFalseAndLeavesObjectUntouched()
    {
        EFigura f;
        fill(f);
        f.setSys_PK(77);
        QVERIFY(!f.Load(&db.connection(), 987654));
        QCOMPARE(f.Sys_PK(), 77);
        QCOMPARE(f.Texto(), QStringLiteral("Ventas del día"));
        QVERIFY(f.Negrita());
        QVERIFY(f.Subrayado());
    }

    void textsRoundTripExactly_data()
    {
        QTest::addColumn<QString>("texto");
        QTest::newRow("apostrophes") << QStringLiteral("O'Brien's 'día'");
        QTest::newRow("quotes") << QStringLiteral("\"comillas\" y “tipográficas”");
        QTest::newRow("backslashes") << QStringLiteral("C:\\ruta\\n\\t \\' \\\\");
        QTest::newRow("semicolons") << QStringLiteral("uno; dos;; tres;");
        QTest::newRow("sql") << QStringLiteral("'); DROP TABLE ut_bi_Fig; -- /* */ OR 1=1");
        QTest::newRow("emoji") << QStringLiteral("Meta 🎯 cumplida 🙂👍🏽");
        QTest::newRow("scripts") << QStringLiteral("日本語 Ελληνικά العربية עברית Русский हिन्दी");
        QTest::newRow("percent and underscore") << QStringLiteral("100% _ventas_ ? :param $1");
    }

    void textsRoundTripExactly()
    {
        QFETCH(QString, texto);
        QVERIFY(texto.toUcs4().size() <= 50);
        EFigura f;
        f.setTexto(texto);
        f.setFuente(texto);
        QVERIFY(f.Save(&db.connection()));
        QCOMPARE(count(), 1);
        EFigura back;
        QVERIFY(back.Load(&db.connection(), f.Sys_PK()));
        QCOMPARE(back.Texto(), texto);
        QCOMPARE(back.Fuente(), texto);
    }

    void textOfExactly255CharactersIsStored()
    {
        EFigura f;
        f.setTexto(QString(255, QLatin1Char('x')));
        f.setFuente(QString(50, QLatin1Char('f')));
        QVERIFY(f.Save(&db.connection()));
        EFigura back;
        QVERIFY(back.Load(&db.connection(), f.Sys_PK()));
        QCOMPARE(back.Texto(), QString(255, QLatin1Char('x')));
        QCOMPARE(back.Fuente(), QString(50, QLatin1Char('f')));
    }

    void textOver255CharactersIsRefusedWithNothingWritten()
    {
        EFigura f;
        f.setTexto(QString(256, QLatin1Char('x')));
        QVERIFY(!f.Save(&db.connection()));
        QCOMPARE(f.Sys_PK(), 0);
        QCOMPARE(count(), 0);
    }

    void fontOver50CharactersIsRefusedWithNothingWritten()
    {
        EFigura f;
        fill(f);
        QVERIFY(f.Save(&db.connection()));
        f.setFuente(QString(51, QLatin1Char('f')));
        QVERIFY(!f.Save(&db.connection()));
        QCOMPARE(column(f.Sys_PK(), QStringLiteral("uf_Fuente")).toString(), QStringLiteral("Tahoma"));
    }

    void declaresColumnsInOrderAndAssignsInOrder()
    {
        db.connection().setLogSql(true);
        EFigura f;
        fill(f);
        QVERIFY(f.Save(&db.connection()));
        QVERIFY(f.Save(&db.connection()));
        db.connection().setLogSql(false);
        // Texts may be bound through a cast (SQLite): the order of the columns is what counts here.
        const QStringList log = db.connection().executedSql().replaceInStrings(QStringLiteral("CAST(? AS TEXT)"),
                                                                                QStringLiteral("?"));
        QVERIFY2(log.size() >= 3, qPrintable(log.join(QLatin1Char('\n'))));
        // The new row lists the declared columns in declaration order.
        QVERIFY2(log.first().contains(QLatin1String("(uf_FK_Tablero,uf_X,uf_Y,uf_W,uf_H,uf_Tipo,uf_Fuente,uf_Texto,"
                                                    "uf_TamFuente,uf_atrib_fuente,uf_color,uf_fondo,uf_alin"),
                                      Qt::CaseInsensitive),
                 qPrintable(log.first()));
        // The update sets the columns in assignment order.
        QVERIFY2(log.last().contains(QLatin1String("SET uf_fk_tablero=?,uf_x=?,uf_y=?,uf_w=?,uf_h=?,uf_color=?,"
                                                   "uf_fondo=?,uf_atrib_fuente=?,uf_fuente=?,uf_tamfuente=?,uf_alin=?,"
                                                   "uf_texto=?,uf_tipo=?"),
                                     Qt::CaseInsensitive),
                 qPrintable(log.last()));
    }

    void closedOrMissingConnectionGivesFalse()
    {
        EFigura f;
        fill(f);
        ado::Connection closed;
        QVERIFY(!f.Save(&closed));
        QVERIFY(!f.Save(nullptr));
        QObject notAConnection;
        QVERIFY(!f.Save(&notAConnection));
        QCOMPARE(f.Sys_PK(), 0);
        QVERIFY(f.Save(&db.connection()));
        const int pk = f.Sys_PK();
        EFigura back;
        QVERIFY(!back.Load(&closed, pk));
        QVERIFY(!back.Load(nullptr, pk));
        QVERIFY(!back.Load(&notAConnection, pk));
        QCOMPARE(back.Sys_PK(), 0);
        QCOMPARE(back.Texto(), QString());
        QCOMPARE(count(), 1);
    }

    void propertiesAreReachableByName()
    {
        EFigura f;
        QVERIFY(f.setProperty("Texto", QStringLiteral("hola")));
        QVERIFY(f.setProperty("Tam_fuente", 12));
        QVERIFY(f.setProperty("Negrita", true));
        QCOMPARE(f.Texto(), QStringLiteral("hola"));
        QCOMPARE(f.Tam_fuente(), short(12));
        QVERIFY(f.Negrita());
        bool saved = false;
        QVERIFY(QMetaObject::invokeMethod(&f, "Save", Q_RETURN_ARG(bool, saved),
                                          Q_ARG(QObject*, &db.connection())));
        QVERIFY(saved);
        QCOMPARE(f.property("Sys_PK").toInt(), f.Sys_PK());
    }
};

QTEST_GUILESS_MAIN(TstEFigura)
#include "tst_efigura.moc"
