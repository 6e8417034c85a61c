// The nine tables as the host program creates them, and `vbi init-db`.
#include "ado/connection.h"
#include "model/ematrizgrafico.h"
#include "schemainstaller.h"
#include "testdatabase.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

namespace {

struct TableColumns {
    const char* table;
    QStringList columns;
};

QStringList lower(QStringList names)
{
    for (QString& name : names)
        name = name.toLower();
    return names;
}

QStringList periodColumns(const QStringList& suffixes)
{
    QStringList result;
    for (const char* period : {"Dia", "Semana", "Mes", "Ano"}) {
        for (const QString& suffix : suffixes)
            result.append(QStringLiteral("uf_%1_%2").arg(QLatin1String(period), suffix));
    }
    return result;
}

QList<TableColumns> expectedTables()
{
    QStringList matrix{QStringLiteral("uf_FK_Indicador")};
    for (int i = 1; i <= 10; ++i)
        matrix.append(QStringLiteral("uf_FK_M_Metrica%1").arg(i));
    for (int i = 1; i <= 5; ++i)
        matrix.append(QStringLiteral("uf_FK_G_Metrica%1").arg(i));
    matrix << QStringLiteral("uf_G_Titulo") << QStringLiteral("uf_G_Tipo");
    QStringList placed = QString::fromLatin1("Sys_PK uf_FK_Tablero uf_FK_Indicador uf_FK_Entidad uf_X uf_Y uf_W uf_H "
                                             "uf_pinicial uf_Periodos").split(QLatin1Char(' '));
    for (int i = 1; i <= 8; ++i)
        placed.append(QStringLiteral("uf_l%1").arg(i));
    return {
        {"ut_bi_Perspectiva", QString::fromLatin1("Sys_PK uf_Nombre uf_Entidad uf_Grupos uf_padre").split(QLatin1Char(' '))},
        {"ut_bi_Metrica", QString::fromLatin1("Sys_PK Sys_GUID uf_Nombre uf_Descripcion uf_Titulo uf_Decimales "
                                              "uf_Formato uf_Codigo uf_FK_Perspectiva").split(QLatin1Char(' '))},
        {"ut_bi_Indicador", QString::fromLatin1("Sys_PK uf_Nombre uf_Tipo uf_FK_Perspectiva").split(QLatin1Char(' '))},
        {"ut_bi_BarraProg", QStringList{QStringLiteral("uf_FK_Indicador"), QStringLiteral("uf_FK_Metrica")}
                                + periodColumns({QStringLiteral("Min"), QStringLiteral("Max"), QStringLiteral("Color"),
                                                 QStringLiteral("ColorDebajo"), QStringLiteral("ColorArriba")})},
        {"ut_bi_Semaforo", QStringList{QStringLiteral("uf_FK_Indicador"), QStringLiteral("uf_FK_Metrica")}
                               + periodColumns({QStringLiteral("Lim1"), QStringLiteral("Lim2")})
                               + QStringList{QStringLiteral("uf_Invertido")}},
        {"ut_bi_MatrizGraf", matrix},
        {"ut_bi_Tablero", QString::fromLatin1("Sys_PK uf_Nombre uf_FK_Usuario").split(QLatin1Char(' '))},
        {"ut_bi_TabIndicador", placed},
        {"ut_bi_Fig", QString::fromLatin1("Sys_PK uf_FK_Tablero uf_X uf_Y uf_W uf_H uf_Tipo uf_Fuente uf_Texto "
                                          "uf_TamFuente uf_atrib_fuente uf_color uf_fondo uf_alin").split(QLatin1Char(' '))},
    };
}

// The matrix configuration table as this database's schema file creates it,
// with its text columns typed as older versions of the file typed them.
QString matrixTableWith(bool postgres, const QString& columnTypes)
{
    QFile file(postgres ? QStringLiteral(":/schema/postgresql.sql") : QStringLiteral(":/schema/sqlite.sql"));
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    for (QString statement : SchemaInstaller::statements(QString::fromUtf8(file.readAll()))) {
        if (statement.contains(QLatin1String("CREATE TABLE IF NOT EXISTS ut_bi_MatrizGraf"))) {
            statement.replace(QRegularExpression(QStringLiteral("uf_G_Titulo [^,\\n]+")),
                              QStringLiteral("uf_G_Titulo ") + columnTypes);
            return statement;
        }
    }
    return QString();
}

} // namespace

class TstSchema : public QObject {
    Q_OBJECT

    TestDatabase db;

    int runVbi(const QStringList& args, QString* output = nullptr)
    {
        QProcess vbi;
        vbi.start(QStringLiteral(VBI_PROGRAM), args);
        if (!vbi.waitForFinished(60000))
            return -1;
        if (output)
            *output = QString::fromUtf8(vbi.readAllStandardOutput() + vbi.readAllStandardError());
        return vbi.exitStatus() == QProcess::NormalExit ? vbi.exitCode() : -1;
    }

private slots:
    void initTestCase() { VBI_CREATE_TEST_DATABASE(db); }
    void init() { db.clear(); }

    void everyTableHasItsColumnsInOrder()
    {
        for (const TableColumns& expected : expectedTables())
            QCOMPARE(db.connection().columns(QLatin1String(expected.table)), lower(expected.columns));
    }

    void applyingTheSchemaAgainKeepsTablesAndRows()
    {
        db.exec(QStringLiteral("INSERT INTO ut_bi_Tablero (uf_Nombre, uf_FK_Usuario) VALUES ('Mío', 3)"));
        SchemaInstaller::apply(db.connection());
        SchemaInstaller::apply(db.connection());
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_Nombre FROM ut_bi_Tablero")).toString(), QStringLiteral("Mío"));
    }

    void lookupsByParentAndOwnerAreIndexed()
    {
        const QList<QPair<QString, QString>> indexes{
            {QStringLiteral("ix_bi_perspectiva_padre"), QStringLiteral("ut_bi_perspectiva")},
            {QStringLiteral("ix_bi_metrica_perspectiva"), QStringLiteral("ut_bi_metrica")},
            {QStringLiteral("ix_bi_indicador_perspectiva"), QStringLiteral("ut_bi_indicador")},
            {QStringLiteral("ix_bi_barraprog_indicador"), QStringLiteral("ut_bi_barraprog")},
            {QStringLiteral("ix_bi_semaforo_indicador"), QStringLiteral("ut_bi_semaforo")},
            {QStringLiteral("ix_bi_matrizgraf_indicador"), QStringLiteral("ut_bi_matrizgraf")},
            {QStringLiteral("ix_bi_tabindicador_tablero"), QStringLiteral("ut_bi_tabindicador")},
            {QStringLiteral("ix_bi_fig_tablero"), QStringLiteral("ut_bi_fig")},
        };
        const QString tableOf = db.isPostgres()
            ? QStringLiteral("SELECT tablename FROM pg_indexes WHERE indexname = '%1'")
            : QStringLiteral("SELECT lower(tbl_name) FROM sqlite_master WHERE type = 'index' AND lower(name) = '%1'");
        for (const auto& [index, table] : indexes)
            QCOMPARE(db.scalar(tableOf.arg(index)).toString(), table);
    }

    void figureFontAndTextDefaultToArial()
    {
        db.exec(QStringLiteral("INSERT INTO ut_bi_Fig (uf_FK_Tablero) VALUES (1)"));
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_Fuente FROM ut_bi_Fig")).toString(), QStringLiteral("Arial"));
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_Texto FROM ut_bi_Fig")).toString(), QStringLiteral("Arial"));
    }

    void databaseGivesEachNewRowItsOwnKey()
    {
        const QList<QPair<QString, QString>> tables{
            {QStringLiteral("ut_bi_Perspectiva"), QStringLiteral("uf_padre")},
            {QStringLiteral("ut_bi_Metrica"), QStringLiteral("uf_FK_Perspectiva")},
            {QStringLiteral("ut_bi_Indicador"), QStringLiteral("uf_FK_Perspectiva")},
            {QStringLiteral("ut_bi_Tablero"), QStringLiteral("uf_FK_Usuario")},
            {QStringLiteral("ut_bi_TabIndicador"), QStringLiteral("uf_FK_Tablero")},
            {QStringLiteral("ut_bi_Fig"), QStringLiteral("uf_FK_Tablero")},
        };
        for (const auto& [table, column] : tables) {
            for (int i = 0; i < 2; ++i)
                db.exec(QStringLiteral("INSERT INTO %1 (%2) VALUES (1)").arg(table, column));
            QCOMPARE(db.scalar(QStringLiteral("SELECT COUNT(DISTINCT Sys_PK) FROM %1").arg(table)).toInt(), 2);
            QVERIFY(db.scalar(QStringLiteral("SELECT MIN(Sys_PK) FROM %1").arg(table)).toInt() > 0);
        }
    }

    void statementsAreSplitAtLineEndSemicolons()
    {
        const QStringList parts = SchemaInstaller::statements(
            QStringLiteral("-- comment; not a statement\nCREATE TABLE a (\n  x int\n);\n\nINSERT INTO a VALUES (1);\n"));
        QCOMPARE(parts, QStringList({QStringLiteral("CREATE TABLE a (\n  x int\n)"), QStringLiteral("INSERT INTO a VALUES (1)")}));
    }

    void initDbTwiceIsHarmlessAndDemoDataComesOnce()
    {
        QString output;
        QCOMPARE(runVbi({QStringLiteral("init-db"), db.url()}, &output), 0);
        QVERIFY2(output.contains(QLatin1String("ut_bi_")), qPrintable(output));
        QCOMPARE(runVbi({QStringLiteral("init-db"), db.url(), QStringLiteral("--demo")}, &output), 0);
        const int perspectives = db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Perspectiva")).toInt();
        QVERIFY(perspectives > 0);
        QCOMPARE(runVbi({QStringLiteral("init-db"), db.url(), QStringLiteral("--demo")}, &output), 0);
        QCOMPARE(db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Perspectiva")).toInt(), perspectives);
        QVERIFY(db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_TabIndicador")).toInt() > 0);
        QVERIFY(db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Semaforo")).toInt() > 0);
    }

    void chartTitleAndGuidHoldTextsOfAnyLength()
    {
        const QString title(5000, QLatin1Char('t'));
        EMatrizGrafico saved;
        saved.setGrafico_Titulo(title);
        QVERIFY(saved.Save(&db.connection(), 41));
        EMatrizGrafico loaded;
        QVERIFY(loaded.Load(&db.connection(), 41));
        QCOMPARE(loaded.Grafico_Titulo(), title);
        const QString guid(400, QLatin1Char('g'));
        db.exec(QStringLiteral("INSERT INTO ut_bi_Metrica (Sys_GUID, uf_Nombre) VALUES ('%1', 'm')").arg(guid));
        QCOMPARE(db.scalar(QStringLiteral("SELECT Sys_GUID FROM ut_bi_Metrica")).toString(), guid);
    }

    void initDbGivesAnOldBoundedTitleColumnAnyLengthAndKeepsItsRows()
    {
        db.exec(QStringLiteral("DROP TABLE ut_bi_MatrizGraf"));
        db.exec(matrixTableWith(db.isPostgres(), QStringLiteral("varchar(255)")));
        db.exec(QStringLiteral("INSERT INTO ut_bi_MatrizGraf (uf_FK_Indicador, uf_G_Titulo, uf_G_Tipo) VALUES (7, 'Ventas', 3)"));
        EMatrizGrafico tooLong;
        tooLong.setGrafico_Titulo(QString(300, QLatin1Char('x')));
        if (db.isPostgres())
            QVERIFY(!tooLong.Save(&db.connection(), 8)); // what the old column did

        QCOMPARE(runVbi({QStringLiteral("init-db"), db.url()}), 0);

        EMatrizGrafico kept;
        QVERIFY(kept.Load(&db.connection(), 7));
        QCOMPARE(kept.Grafico_Titulo(), QStringLiteral("Ventas"));
        QCOMPARE(kept.Grafico_Tipo(), 3);
        QVERIFY(tooLong.Save(&db.connection(), 8));
        EMatrizGrafico loaded;
        QVERIFY(loaded.Load(&db.connection(), 8));
        QCOMPARE(loaded.Grafico_Titulo(), tooLong.Grafico_Titulo());
    }

    void configurationInsertTheDatabaseRefusesMakesSaveFalse()
    {
        db.exec(QStringLiteral("DROP TABLE ut_bi_MatrizGraf"));
        db.exec(matrixTableWith(db.isPostgres(), QStringLiteral("text CHECK (length(uf_G_Titulo) <= 10)")));
        EMatrizGrafico refused;
        refused.setGrafico_Titulo(QStringLiteral("Más de diez letras"));
        const bool saved = refused.Save(&db.connection(), 9);
        db.exec(QStringLiteral("DROP TABLE ut_bi_MatrizGraf"));
        SchemaInstaller::apply(db.connection());
        QVERIFY(!saved);
    }

    void initDbWithBadUrlSaysSoAndFails()
    {
        QString output;
        QCOMPARE(runVbi({QStringLiteral("init-db"), QStringLiteral("nonsense://")}, &output), 1);
        QVERIFY(output.contains(QLatin1String("nonsense://")));
    }
};

QTEST_GUILESS_MAIN(TstSchema)
#include "tst_schema.moc"
