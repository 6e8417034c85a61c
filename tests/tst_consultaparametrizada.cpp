// Which literal reads by key run as one prepared statement with the key bound.
#include "ado/consultaparametrizada.h"

#include <QTest>

class TstConsultaParametrizada : public QObject {
    Q_OBJECT

private slots:
    void readsByKeyTakeAPlaceholder_data()
    {
        QTest::addColumn<QString>("sql");
        QTest::addColumn<QString>("texto");
        QTest::addColumn<qlonglong>("valor");
        QTest::newRow("configuration") << QStringLiteral("Select * From ut_bi_semaforo Where uf_FK_Indicador=52")
                                       << QStringLiteral("Select * From ut_bi_semaforo Where uf_FK_Indicador=?")
                                       << qlonglong(52);
        QTest::newRow("blanks around =") << QStringLiteral("SELECT Sys_PK FROM ut_bi_Fig WHERE uf_FK_Tablero = 7")
                                         << QStringLiteral("SELECT Sys_PK FROM ut_bi_Fig WHERE uf_FK_Tablero = ?")
                                         << qlonglong(7);
        QTest::newRow("leading blanks, lower case") << QStringLiteral("  select a from t where b=0")
                                                    << QStringLiteral("  select a from t where b=?") << qlonglong(0);
        QTest::newRow("leading zeros") << QStringLiteral("Select a From t Where b=007")
                                       << QStringLiteral("Select a From t Where b=?") << qlonglong(7);
        QTest::newRow("eighteen digits") << QStringLiteral("Select a From t Where b=999999999999999999")
                                         << QStringLiteral("Select a From t Where b=?")
                                         << qlonglong(999999999999999999LL);
        QTest::newRow("at most") << QStringLiteral("Select a From t Where b<=3")
                                 << QStringLiteral("Select a From t Where b<=?") << qlonglong(3);
    }

    void readsByKeyTakeAPlaceholder()
    {
        QFETCH(QString, sql);
        QFETCH(QString, texto);
        QFETCH(qlonglong, valor);
        const auto consulta = ado::ConsultaParametrizada::desde(sql);
        QVERIFY(consulta);
        QCOMPARE(consulta->texto, texto);
        QCOMPARE(consulta->valor, valor);
    }

    void anythingElseRunsAsWritten_data()
    {
        QTest::addColumn<QString>("sql");
        QTest::newRow("empty") << QString();
        QTest::newRow("no number") << QStringLiteral("Select * From ut_bi_Metrica");
        QTest::newRow("order by after the key")
            << QStringLiteral("Select Sys_PK, uf_Nombre FROM ut_bi_Metrica Where uf_FK_Perspectiva=3 Order by uf_Nombre");
        QTest::newRow("negative key") << QStringLiteral("Select a From t Where b=-5");
        QTest::newRow("decimal") << QStringLiteral("Select a From t Where b=1.5");
        QTest::newRow("exponent") << QStringLiteral("Select a From t Where b=1e5");
        QTest::newRow("name ending in digits") << QStringLiteral("Select a From t Where b=c5");
        QTest::newRow("not equal") << QStringLiteral("Select a From t Where b<>3");
        QTest::newRow("plus") << QStringLiteral("Select a From t Where b=c+5");
        QTest::newRow("nineteen digits") << QStringLiteral("Select a From t Where b=1234567890123456789");
        QTest::newRow("trailing blank") << QStringLiteral("Select a From t Where b=5 ");
        QTest::newRow("only a number") << QStringLiteral("5");
        QTest::newRow("update") << QStringLiteral("UPDATE t SET a=1 WHERE b=5");
        QTest::newRow("delete") << QStringLiteral("DELETE FROM ut_bi_Fig WHERE Sys_PK=5");
        QTest::newRow("select without blank") << QStringLiteral("Select*From t Where b=5");
        QTest::newRow("quote") << QStringLiteral("Select a From t Where c='x' And b=5");
        QTest::newRow("double quote") << QStringLiteral("Select \"a\" From t Where b=5");
        QTest::newRow("bracket") << QStringLiteral("Select [a] From t Where b=5");
        QTest::newRow("line comment") << QStringLiteral("Select a From t -- x\nWhere b=5");
        QTest::newRow("block comment") << QStringLiteral("Select a From t /* x */ Where b=5");
        QTest::newRow("two statements") << QStringLiteral("Select a From t; Select b From u Where c=5");
        QTest::newRow("other digits") << QStringLiteral("Select a From t Where b=٥");
    }

    void anythingElseRunsAsWritten()
    {
        QFETCH(QString, sql);
        QVERIFY(!ado::ConsultaParametrizada::desde(sql));
    }
};

QTEST_MAIN(TstConsultaParametrizada)
#include "tst_consultaparametrizada.moc"
