// A dashboard: its own row in ut_bi_Tablero, the figures and placed
// indicators that come with it on Load, and the traps around Load and Save.
#include "ado/connection.h"
#include "model/coleccion.h"
#include "model/efigura.h"
#include "model/etabindicador.h"
#include "model/etablero.h"
#include "entitychecks.h"
#include "testdatabase.h"
#include "vb/vb.h"

#include <QMetaObject>
#include <QMetaProperty>
#include <QPointer>
#include <QSet>
#include <QTest>
#include <memory>

class TstETablero : public QObject {
    Q_OBJECT

    TestDatabase db;

    int count(const char* table)
    {
        return db.scalar(QStringLiteral("SELECT COUNT(*) FROM %1").arg(QLatin1String(table))).toInt();
    }

    int newDashboard(const QString& nombre, int usuario = 7)
    {
        ETablero t;
        t.setNombre(nombre);
        t.setFK_Usuario(usuario);
        return t.Save(&db.connection()) ? t.Sys_PK() : 0;
    }

    int newFigure(int tablero, const QString& texto)
    {
        EFigura f;
        f.setFK_Tablero(tablero);
        f.setTexto(texto);
        f.setFuente(QStringLiteral("Arial"));
        f.setTam_fuente(10);
        return f.Save(&db.connection()) ? f.Sys_PK() : 0;
    }

    int newPlacement(int tablero, int indicador)
    {
        ETabIndicador p;
        p.setFK_Tablero(tablero);
        p.setFK_Indicador(indicador);
        p.setMuestra_Mes(true);
        return p.Save(&db.connection()) ? p.Sys_PK() : 0;
    }

    template <typename Child>
    static QSet<int> keysOf(const Coleccion* coleccion)
    {
        QSet<int> keys;
        for (QObject* item : *coleccion) {
            auto* child = qobject_cast<Child*>(item);
            keys.insert(child ? child->Sys_PK() : -1);
        }
        return keys;
    }

private slots:
    void initTestCase() { VBI_CREATE_TEST_DATABASE(db); }
    void init() { db.clear(); }

    void automationIdentityIsFixed()
    {
        verifyAutomationIdentity(ETablero::staticMetaObject, QStringLiteral("{84CF2164-E443-440C-B27B-20EDCDC53A5F}"),
                                 QStringLiteral("{FBEA10F0-BE7D-492F-852A-A9BE32FAADD0}"));
    }

    void membersComeInInterfaceOrder()
    {
        const QMetaObject& meta = ETablero::staticMetaObject;
        QCOMPARE(propertyNames(meta), QStringList({"Sys_PK", "Nombre", "FK_Usuario", "Figuras", "Indicadores"}));
        QStringList methods;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            if (meta.method(i).methodType() == QMetaMethod::Method)
                methods.append(QString::fromLatin1(meta.method(i).name()));
        }
        QCOMPARE(methods, QStringList({"Load", "Save"}));
        QVERIFY(meta.property(meta.indexOfProperty("Sys_PK")).isWritable());
        QVERIFY(meta.property(meta.indexOfProperty("Nombre")).isWritable());
        QVERIFY(meta.property(meta.indexOfProperty("FK_Usuario")).isWritable());
        QVERIFY(!meta.property(meta.indexOfProperty("Figuras")).isWritable());
        QVERIFY(!meta.property(meta.indexOfProperty("Indicadores")).isWritable());
    }

    void newDashboardHoldsZeroAndEmpty()
    {
        ETablero t;
        QCOMPARE(t.Sys_PK(), 0);
        QCOMPARE(t.Nombre(), QString());
        QCOMPARE(t.FK_Usuario(), 0);
    }

    void collectionsOfNeverLoadedDashboardAreNone()
    {
        ETablero t;
        QCOMPARE(t.Figuras(), nullptr);
        QCOMPARE(t.Indicadores(), nullptr);
        QCOMPARE(t.property("Figuras").value<QObject*>(), nullptr);
        QCOMPARE(t.property("Indicadores").value<QObject*>(), nullptr);
        t.setNombre(QStringLiteral("Sin cargar"));
        QVERIFY(t.Save(&db.connection()));
        QCOMPARE(t.Figuras(), nullptr);
        QCOMPARE(t.Indicadores(), nullptr);
    }

    void missingDashboardLoadLeavesNeverLoadedCollectionsNone()
    {
        ETablero t;
        QVERIFY(!t.Load(&db.connection(), 987654));
        QCOMPARE(t.Figuras(), nullptr);
        QCOMPARE(t.Indicadores(), nullptr);
        QCOMPARE(t.Sys_PK(), 0);
    }

    void dashboardWithoutChildrenLoadsEmptyCollections()
    {
        const int pk = newDashboard(QStringLiteral("Vacío"));
        ETablero t;
        QVERIFY(t.Load(&db.connection(), pk));
        QVERIFY(t.Figuras());
        QVERIFY(t.Indicadores());
        QCOMPARE(t.Figuras()->Count(), 0);
        QCOMPARE(t.Indicadores()->Count(), 0);
    }

    void loadReadsTheDashboardRow()
    {
        const int pk = newDashboard(QStringLiteral("Ventas"), 42);
        ETablero t;
        QVERIFY(t.Load(&db.connection(), pk));
        QCOMPARE(t.Sys_PK(), pk);
        QCOMPARE(t.Nombre(), QStringLiteral("Ventas"));
        QCOMPARE(t.FK_Usuario(), 42);
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_FK_Usuario FROM ut_bi_Tablero WHERE Sys_PK=%1").arg(pk)).toInt(), 42);
    }

    void loadFillsBothCollectionsWithLoadedChildren()
    {
        const int pk = newDashboard(QStringLiteral("Ventas"));
        const int f1 = newFigure(pk, QStringLiteral("Título"));
        const int f2 = newFigure(pk, QStringLiteral("Pie"));
        const int p1 = newPlacement(pk, 11);
        const int p2 = newPlacement(pk, 12);
        const int p3 = newPlacement(pk, 13);

        ETablero t;
        QVERIFY(t.Load(&db.connection(), pk));
        QCOMPARE(t.Figuras()->Count(), 2);
        QCOMPARE(t.Indicadores()->Count(), 3);
        QCOMPARE(keysOf<EFigura>(t.Figuras()), QSet<int>({f1, f2}));
        QCOMPARE(keysOf<ETabIndicador>(t.Indicadores()), QSet<int>({p1, p2, p3}));

        QSet<QString> textos;
        for (QObject* item : *t.Figuras()) {
            auto* f = qobject_cast<EFigura*>(item);
            QCOMPARE(f->FK_Tablero(), pk);
            QCOMPARE(f->Tam_fuente(), short(10));
            textos.insert(f->Texto());
        }
        QCOMPARE(textos, QSet<QString>({QStringLiteral("Título"), QStringLiteral("Pie")}));
        QSet<int> indicadores;
        for (QObject* item : *t.Indicadores()) {
            auto* p = qobject_cast<ETabIndicador*>(item);
            QCOMPARE(p->FK_Tablero(), pk);
            QVERIFY(p->Muestra_Mes());
            QVERIFY(!p->Muestra_Dia());
            QCOMPARE(p->objIndicador(), nullptr);
            indicadores.insert(p->FK_Indicador());
        }
        QCOMPARE(indicadores, QSet<int>({11, 12, 13}));
    }

    void collectionsAreReachableByName()
    {
        const int pk = newDashboard(QStringLiteral("Ventas"));
        newFigure(pk, QStringLiteral("Título"));
        ETablero t;
        QVERIFY(t.Load(&db.connection(), pk));
        auto* figuras = qobject_cast<Coleccion*>(t.property("Figuras").value<QObject*>());
        QCOMPARE(figuras, t.Figuras());
        QCOMPARE(figuras->property("Count").toInt(), 1);
        QCOMPARE(qobject_cast<Coleccion*>(t.property("Indicadores").value<QObject*>()), t.Indicadores());
    }

    void childrenOfOtherDashboardsAreLeftOut()
    {
        const int mine = newDashboard(QStringLiteral("Mío"));
        const int other = newDashboard(QStringLiteral("Otro"));
        const int f = newFigure(mine, QStringLiteral("mía"));
        newFigure(other, QStringLiteral("ajena"));
        newFigure(0, QStringLiteral("suelta"));
        const int p = newPlacement(mine, 1);
        newPlacement(other, 2);
        newPlacement(other, 3);

        ETablero t;
        QVERIFY(t.Load(&db.connection(), mine));
        QCOMPARE(keysOf<EFigura>(t.Figuras()), QSet<int>({f}));
        QCOMPARE(keysOf<ETabIndicador>(t.Indicadores()), QSet<int>({p}));
    }

    void loadAsksForChildrenWithTheirOwnQueries()
    {
        const int pk = newDashboard(QStringLiteral("Ventas"));
        db.connection().clearLog();
        db.connection().setLogSql(true);
        ETablero t;
        QVERIFY(t.Load(&db.connection(), pk));
        db.connection().setLogSql(false);
        const QStringList log = db.connection().executedSql();
        const int figuras = log.indexOf(QStringLiteral("Select Sys_PK From ut_bi_fig WHERE uf_FK_Tablero=%1").arg(pk));
        const int indicadores =
            log.indexOf(QStringLiteral("Select Sys_PK From ut_bi_tabindicador WHERE uf_FK_Tablero=%1").arg(pk));
        QVERIFY2(figuras >= 0, qPrintable(log.join(QLatin1Char('\n'))));
        QVERIFY2(indicadores > figuras, qPrintable(log.join(QLatin1Char('\n'))));
    }

    void secondLoadReplacesCollectionsAndEarlierReferenceKeepsItsMembers()
    {
        const int pk = newDashboard(QStringLiteral("Ventas"));
        const int f1 = newFigure(pk, QStringLiteral("uno"));
        const int p1 = newPlacement(pk, 1);
        ETablero t;
        QVERIFY(t.Load(&db.connection(), pk));
        QPointer<Coleccion> oldFiguras = t.Figuras();
        QPointer<Coleccion> oldIndicadores = t.Indicadores();
        QPointer<QObject> oldFigura = oldFiguras->Item(1);

        const int f2 = newFigure(pk, QStringLiteral("dos"));
        db.exec(QStringLiteral("DELETE FROM ut_bi_TabIndicador WHERE Sys_PK=%1").arg(p1));
        QVERIFY(t.Load(&db.connection(), pk));

        QVERIFY(t.Figuras() != oldFiguras.data());
        QVERIFY(t.Indicadores() != oldIndicadores.data());
        QCOMPARE(keysOf<EFigura>(t.Figuras()), QSet<int>({f1, f2}));
        QCOMPARE(t.Indicadores()->Count(), 0);

        // What the caller held before is still there, with the old members.
        QVERIFY(oldFiguras);
        QVERIFY(oldIndicadores);
        QVERIFY(oldFigura);
        QCOMPARE(oldFiguras->Count(), 1);
        QCOMPARE(oldFiguras->Item(1), oldFigura.data());
        QCOMPARE(qobject_cast<EFigura*>(oldFigura.data())->Texto(), QStringLiteral("uno"));
        QCOMPARE(keysOf<ETabIndicador>(oldIndicadores), QSet<int>({p1}));
        // The new collection holds new objects, not the old ones.
        for (QObject* item : *t.Figuras())
            QVERIFY(item != oldFigura.data());
    }

    void replacedCollectionsGoWithTheDashboard()
    {
        const int pk = newDashboard(QStringLiteral("Ventas"));
        newFigure(pk, QStringLiteral("uno"));
        auto t = std::make_unique<ETablero>();
        QVERIFY(t->Load(&db.connection(), pk));
        QPointer<Coleccion> first = t->Figuras();
        QPointer<QObject> firstMember = first->Item(1);
        QVERIFY(t->Load(&db.connection(), pk));
        QPointer<Coleccion> second = t->Figuras();
        QVERIFY(first);
        t.reset();
        QVERIFY(!first);
        QVERIFY(!firstMember);
        QVERIFY(!second);
    }

    void missingDashboardLoadKeepsObjectAndCollections()
    {
        const int pk = newDashboard(QStringLiteral("Ventas"), 3);
        newFigure(pk, QStringLiteral("uno"));
        newPlacement(pk, 1);
        ETablero t;
        QVERIFY(t.Load(&db.connection(), pk));
        Coleccion* figuras = t.Figuras();
        Coleccion* indicadores = t.Indicadores();

        QVERIFY(!t.Load(&db.connection(), 987654));
        QCOMPARE(t.Sys_PK(), pk);
        QCOMPARE(t.Nombre(), QStringLiteral("Ventas"));
        QCOMPARE(t.FK_Usuario(), 3);
        QCOMPARE(t.Figuras(), figuras);
        QCOMPARE(t.Indicadores(), indicadores);
        QCOMPARE(figuras->Count(), 1);
        QCOMPARE(indicadores->Count(), 1);
    }

    void unreadableFiguresStillLoadThePlacements()
    {
        const int pk = newDashboard(QStringLiteral("Ventas"));
        newFigure(pk, QStringLiteral("uno"));
        const int p = newPlacement(pk, 1);
        db.exec(QStringLiteral("ALTER TABLE ut_bi_Fig RENAME TO ut_bi_Fig_aparte"));
        ETablero t;
        const bool loaded = t.Load(&db.connection(), pk);
        db.exec(QStringLiteral("ALTER TABLE ut_bi_Fig_aparte RENAME TO ut_bi_Fig"));
        QVERIFY(loaded);
        QVERIFY(t.Figuras());
        QCOMPARE(t.Figuras()->Count(), 0);
        QCOMPARE(keysOf<ETabIndicador>(t.Indicadores()), QSet<int>({p}));
    }

    void errorWhileFillingFiguresStopsThatCollectionOnly()
    {
        // Only SQLite can hold a key wider than 32 bits in these tables; a
        // negative one sorts first, so the figure after it shows the stop.
        if (db.isPostgres())
            QSKIP("the key column holds 32-bit integers only");
        const int pk = newDashboard(QStringLiteral("Ventas"));
        db.exec(QStringLiteral("INSERT INTO ut_bi_Fig (Sys_PK, uf_FK_Tablero) VALUES (-5000000000, %1)").arg(pk));
        newFigure(pk, QStringLiteral("después"));
        const int p = newPlacement(pk, 1);
        QCOMPARE(db.scalar(QStringLiteral("SELECT Sys_PK FROM ut_bi_fig WHERE uf_FK_Tablero=%1").arg(pk)).toLongLong(),
                 -5000000000LL);
        ETablero t;
        QVERIFY(t.Load(&db.connection(), pk));
        QVERIFY(t.Figuras());
        QCOMPARE(t.Figuras()->Count(), 0);
        QCOMPARE(keysOf<ETabIndicador>(t.Indicadores()), QSet<int>({p}));
    }

    void saveWritesOnlyTheDashboardRow()
    {
        const int pk = newDashboard(QStringLiteral("Ventas"));
        const int f = newFigure(pk, QStringLiteral("uno"));
        newPlacement(pk, 1);
        ETablero t;
        QVERIFY(t.Load(&db.connection(), pk));
        auto* added = new EFigura;
        added->setFK_Tablero(pk);
        added->setTexto(QStringLiteral("nueva"));
        t.Figuras()->Add(added);
        qobject_cast<EFigura*>(t.Figuras()->Item(1))->setTexto(QStringLiteral("cambiada"));
        auto* placed = qobject_cast<ETabIndicador*>(t.Indicadores()->Item(1));
        placed->setFK_Indicador(99);
        Coleccion* figuras = t.Figuras();
        Coleccion* indicadores = t.Indicadores();

        t.setNombre(QStringLiteral("Ventas 2"));
        db.connection().clearLog();
        db.connection().setLogSql(true);
        QVERIFY(t.Save(&db.connection()));
        db.connection().setLogSql(false);

        for (const QString& sql : db.connection().executedSql())
            QVERIFY2(sql.contains(QLatin1String("ut_bi_Tablero"), Qt::CaseInsensitive), qPrintable(sql));
        QCOMPARE(count("ut_bi_Fig"), 1);
        QCOMPARE(count("ut_bi_TabIndicador"), 1);
        QCOMPARE(added->Sys_PK(), 0);
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_Texto FROM ut_bi_Fig WHERE Sys_PK=%1").arg(f)).toString(),
                 QStringLiteral("uno"));
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_FK_Indicador FROM ut_bi_TabIndicador")).toInt(), 1);
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_Nombre FROM ut_bi_Tablero WHERE Sys_PK=%1").arg(pk)).toString(),
                 QStringLiteral("Ventas 2"));
        // The collections are left exactly as they were.
        QCOMPARE(t.Figuras(), figuras);
        QCOMPARE(t.Indicadores(), indicadores);
        QCOMPARE(figuras->Count(), 2);
        QCOMPARE(indicadores->Count(), 1);
    }

    void saveDeclaresNameAndUserColumns()
    {
        db.connection().clearLog();
        db.connection().setLogSql(true);
        ETablero t;
        t.setNombre(QStringLiteral("Ventas"));
        t.setFK_Usuario(9);
        QVERIFY(t.Save(&db.connection()));
        QVERIFY(t.Save(&db.connection()));
        db.connection().setLogSql(false);
        // Texts may be bound through a cast (SQLite): the order of the columns is what counts here.
        const QStringList log = db.connection().executedSql().replaceInStrings(QStringLiteral("CAST(? AS TEXT)"),
                                                                                QStringLiteral("?"));
        QVERIFY2(log.size() >= 3, qPrintable(log.join(QLatin1Char('\n'))));
        QVERIFY2(log.first().contains(QLatin1String("ut_bi_Tablero (uf_Nombre,uf_FK_Usuario)"), Qt::CaseInsensitive),
                 qPrintable(log.first()));
        QVERIFY2(log.last().contains(QLatin1String("SET uf_nombre=?,uf_fk_usuario=? "), Qt::CaseInsensitive),
                 qPrintable(log.last()));
    }

    void savingNewDashboardTwiceUpdatesSameRow()
    {
        ETablero t;
        t.setNombre(QStringLiteral("Primero"));
        t.setFK_Usuario(4);
        QVERIFY(t.Save(&db.connection()));
        const int pk = t.Sys_PK();
        QVERIFY(pk > 0);
        t.setNombre(QStringLiteral("Segundo"));
        QVERIFY(t.Save(&db.connection()));
        QCOMPARE(t.Sys_PK(), pk);
        QCOMPARE(count("ut_bi_Tablero"), 1);
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_Nombre FROM ut_bi_Tablero")).toString(), QStringLiteral("Segundo"));
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_FK_Usuario FROM ut_bi_Tablero")).toInt(), 4);
    }

    void savingDeletedKeyFailsAndInsertsNothing()
    {
        ETablero t;
        t.setNombre(QStringLiteral("Borrado"));
        QVERIFY(t.Save(&db.connection()));
        const int pk = t.Sys_PK();
        db.exec(QStringLiteral("DELETE FROM ut_bi_Tablero WHERE Sys_PK=%1").arg(pk));
        QVERIFY(!t.Save(&db.connection()));
        QCOMPARE(t.Sys_PK(), pk);
        QCOMPARE(count("ut_bi_Tablero"), 0);
    }

    void namesRoundTripExactly_data()
    {
        QTest::addColumn<QString>("nombre");
        QTest::newRow("apostrophes") << QStringLiteral("Tablero d'Ana 'Q1'");
        QTest::newRow("quotes") << QStringLiteral("\"Ventas\" “norte”");
        QTest::newRow("backslashes") << QStringLiteral("C:\\ventas\\n \\' \\\\");
        QTest::newRow("semicolons") << QStringLiteral("a; b;; c;");
        QTest::newRow("sql") << QStringLiteral("x'); DELETE FROM ut_bi_Tablero; --");
        QTest::newRow("emoji") << QStringLiteral("Ventas 📈🔥 👩🏽‍💻");
        QTest::newRow("scripts") << QStringLiteral("販売 Πωλήσεις مبيعات מכירות Продажи");
        QTest::newRow("exactly fifty") << QString(50, QChar(0x00F1));
    }

    void namesRoundTripExactly()
    {
        QFETCH(QString, nombre);
        QVERIFY(nombre.toUcs4().size() <= 50);
        ETablero t;
        t.setNombre(nombre);
        QVERIFY(t.Save(&db.connection()));
        QCOMPARE(count("ut_bi_Tablero"), 1);
        ETablero back;
        QVERIFY(back.Load(&db.connection(), t.Sys_PK()));
        QCOMPARE(back.Nombre(), nombre);
    }

    void nameOver50CharactersIsRefusedWithNothingWritten()
    {
        ETablero t;
        t.setNombre(QString(51, QLatin1Char('n')));
        QVERIFY(!t.Save(&db.connection()));
        QCOMPARE(t.Sys_PK(), 0);
        QCOMPARE(count("ut_bi_Tablero"), 0);

        const int pk = newDashboard(QStringLiteral("Corto"));
        ETablero existing;
        QVERIFY(existing.Load(&db.connection(), pk));
        existing.setNombre(QString(51, QLatin1Char('n')));
        existing.setFK_Usuario(123);
        QVERIFY(!existing.Save(&db.connection()));
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_Nombre FROM ut_bi_Tablero")).toString(), QStringLiteral("Corto"));
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_FK_Usuario FROM ut_bi_Tablero")).toInt(), 7);
    }

    void emptyNameIsStoredAsEmptyText()
    {
        ETablero t;
        QVERIFY(t.Save(&db.connection()));
        const QVariant stored = db.scalar(QStringLiteral("SELECT uf_Nombre FROM ut_bi_Tablero WHERE Sys_PK=%1").arg(t.Sys_PK()));
        QVERIFY(!vb::isNull(stored));
        QCOMPARE(stored.toString(), QString());
    }

    void nullColumnsLeavePropertiesUnchanged()
    {
        const int pk = db.scalar(QStringLiteral("INSERT INTO ut_bi_Tablero (uf_Nombre, uf_FK_Usuario) VALUES (NULL, NULL) "
                                                "RETURNING Sys_PK"))
                           .toInt();
        ETablero t;
        t.setNombre(QStringLiteral("Antes"));
        t.setFK_Usuario(31);
        QVERIFY(t.Load(&db.connection(), pk));
        QCOMPARE(t.Sys_PK(), pk);
        QCOMPARE(t.Nombre(), QStringLiteral("Antes"));
        QCOMPARE(t.FK_Usuario(), 31);
        QVERIFY(t.Figuras());
    }

    void closedOrMissingConnectionGivesFalse()
    {
        const int pk = newDashboard(QStringLiteral("Ventas"));
        newFigure(pk, QStringLiteral("uno"));
        ado::Connection closed;
        QObject notAConnection;
        ETablero t;
        QVERIFY(!t.Load(&closed, pk));
        QVERIFY(!t.Load(nullptr, pk));
        QVERIFY(!t.Load(&notAConnection, pk));
        QCOMPARE(t.Sys_PK(), 0);
        QCOMPARE(t.Figuras(), nullptr);
        QCOMPARE(t.Indicadores(), nullptr);

        t.setNombre(QStringLiteral("Nuevo"));
        QVERIFY(!t.Save(&closed));
        QVERIFY(!t.Save(nullptr));
        QVERIFY(!t.Save(&notAConnection));
        QCOMPARE(t.Sys_PK(), 0);
        QCOMPARE(count("ut_bi_Tablero"), 1);
    }
};

QTEST_GUILESS_MAIN(TstETablero)
#include "tst_etablero.moc"
