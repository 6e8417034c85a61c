// `vbi evaluate`: a stored metric's value for an entity and a period printed
// by the real program, its errors on stderr with exit status 1.
#include "comandoevaluar.h"
#include "testdatabase.h"

#include <QDate>
#include <QProcess>
#include <QTest>

namespace {

struct Salida {
    int estado = -1;
    QString out;
    QString err;
};

Salida vbi(const QStringList& args)
{
    QProcess programa;
    programa.start(QStringLiteral(VBI_PROGRAM), QStringList{QStringLiteral("evaluate")} + args);
    programa.waitForFinished(60000);
    return {programa.exitCode(), QString::fromUtf8(programa.readAllStandardOutput()).trimmed(),
            QString::fromUtf8(programa.readAllStandardError()).trimmed()};
}

} // namespace

class TstComandoEvaluar : public QObject {
    Q_OBJECT

    TestDatabase m_db;

    QString metrica(const QString& fuente)
    {
        QString texto = fuente;
        m_db.exec(QStringLiteral("INSERT INTO ut_bi_Metrica (uf_Nombre, uf_Codigo) VALUES ('m', '%1')")
                      .arg(texto.replace(QLatin1Char('\''), QStringLiteral("''"))));
        return m_db.scalar(QStringLiteral("SELECT MAX(Sys_PK) FROM ut_bi_Metrica")).toString();
    }

private slots:
    void initTestCase() { VBI_CREATE_TEST_DATABASE(m_db); }

    void printsTheValueForTheEntityAndThePeriodOfTheDate_data()
    {
        QTest::addColumn<QString>("periodo");
        QTest::addColumn<QString>("esperado");
        QTest::newRow("dia") << QStringLiteral("dia") << QStringLiteral("2024021020240210");
        QTest::newRow("semana") << QStringLiteral("semana") << QStringLiteral("2024020520240211");
        QTest::newRow("mes") << QStringLiteral("mes") << QStringLiteral("2024020120240229");
        QTest::newRow("ano") << QStringLiteral("ano") << QStringLiteral("2024010120241231");
    }
    void printsTheValueForTheEntityAndThePeriodOfTheDate()
    {
        QFETCH(QString, periodo);
        QFETCH(QString, esperado);
        const QString clave = metrica(QStringLiteral(
            "return StatsEngine.daytonum(inicio) * 100000000 + StatsEngine.daytonum(final) + sys_pk;"));
        const Salida s = vbi({m_db.url(), QStringLiteral("--metric"), clave, QStringLiteral("--period"), periodo,
                              QStringLiteral("--date"), QStringLiteral("2024-02-10"), QStringLiteral("--entity"),
                              QStringLiteral("0")});
        QCOMPARE(s.err, QString());
        QCOMPARE(s.estado, 0);
        QCOMPARE(s.out, esperado);
        const Salida conEntidad = vbi({QStringLiteral("--entity"), QStringLiteral("7"), QStringLiteral("--metric"), clave,
                                       QStringLiteral("--date"), QStringLiteral("2024-02-10"), QStringLiteral("--period"),
                                       periodo, m_db.url()});
        QCOMPARE(conEntidad.out.toLongLong(), esperado.toLongLong() + 7);
    }

    void todaysDayByDefault()
    {
        const QString clave = metrica(QStringLiteral("return StatsEngine.daytonum(inicio) * 10 + (final - inicio);"));
        const Salida s = vbi({m_db.url(), QStringLiteral("--metric"), clave});
        QCOMPARE(s.estado, 0);
        QCOMPARE(s.out, QDate::currentDate().toString(QStringLiteral("yyyyMMdd")) + QLatin1Char('0'));
    }

    void fractionsArePrintedWhole()
    {
        const Salida s = vbi({m_db.url(), QStringLiteral("--metric"), metrica(QStringLiteral("return -1234.5678;"))});
        QCOMPARE(s.out, QStringLiteral("-1234.5678"));
    }

    void valuesArePrintedWithoutFloatTails_data()
    {
        QTest::addColumn<double>("valor");
        QTest::addColumn<QString>("texto");
        QTest::newRow("sum of cents") << 41624.049999999974 << QStringLiteral("41624.05");
        QTest::newRow("tenths") << 0.1 + 0.2 << QStringLiteral("0.3");
        QTest::newRow("negative fraction") << -1234.5678 << QStringLiteral("-1234.5678");
        QTest::newRow("half") << 2.5 << QStringLiteral("2.5");
        QTest::newRow("whole") << 100.0 << QStringLiteral("100");
        QTest::newRow("zero") << 0.0 << QStringLiteral("0");
        QTest::newRow("negative zero") << -0.0 << QStringLiteral("0");
        QTest::newRow("sixteen-digit whole number") << 2024030120240331.0 << QStringLiteral("2024030120240331");
        QTest::newRow("beyond exact whole numbers") << 1e20 << QStringLiteral("100000000000000000000");
        QTest::newRow("small") << 1e-7 << QStringLiteral("0.0000001");
        QTest::newRow("fifteen significant digits") << 123456789.123456789 << QStringLiteral("123456789.123457");
        QTest::newRow("rounded up to a whole") << 99999.99999999996 << QStringLiteral("100000");
    }
    void valuesArePrintedWithoutFloatTails()
    {
        QFETCH(double, valor);
        QFETCH(QString, texto);
        QCOMPARE(textoValor(valor), texto);
    }

    void theProgramPrintsAMoneySumWithoutItsTail()
    {
        const Salida s = vbi({m_db.url(), QStringLiteral("--metric"), metrica(QStringLiteral("return 41624.049999999974;"))});
        QCOMPARE(s.estado, 0);
        QCOMPARE(s.out, QStringLiteral("41624.05"));
    }

    void metricErrorsExitWithOne_data()
    {
        QTest::addColumn<QString>("fuente");
        QTest::addColumn<QString>("mensaje");
        QTest::newRow("syntax") << QStringLiteral("var a = 1;\nreturn a +;")
                                << QStringLiteral("vbi evaluate: Línea 2: SyntaxError");
        QTest::newRow("not a number") << QStringLiteral("return 'x';")
                                      << QStringLiteral("vbi evaluate: La métrica no devolvió un número: x");
        QTest::newRow("write") << QStringLiteral("return _ejecutar('DELETE FROM ut_bi_Metrica');")
                               << QStringLiteral("vbi evaluate: Línea 1: Error: Una métrica solo lee");
    }
    void metricErrorsExitWithOne()
    {
        QFETCH(QString, fuente);
        QFETCH(QString, mensaje);
        const Salida s = vbi({m_db.url(), QStringLiteral("--metric"), metrica(fuente)});
        QCOMPARE(s.estado, 1);
        QCOMPARE(s.out, QString());
        QVERIFY2(s.err.startsWith(mensaje), qPrintable(s.err));
    }

    void endlessMetricIsStoppedAtTheTimeLimitGiven()
    {
        const Salida s = vbi({m_db.url(), QStringLiteral("--metric"), metrica(QStringLiteral("while (true) {}")),
                              QStringLiteral("--time-limit"), QStringLiteral("200")});
        QCOMPARE(s.estado, 1);
        QCOMPARE(s.err, QStringLiteral("vbi evaluate: La métrica tardó más de 200 ms y se detuvo"));
    }

    void missingMetricExitsWithOne()
    {
        const Salida s = vbi({m_db.url(), QStringLiteral("--metric"), QStringLiteral("999999")});
        QCOMPARE(s.estado, 1);
        QCOMPARE(s.err, QStringLiteral("vbi evaluate: No existe la métrica 999999"));
    }

    void unreadableDatabaseExitsWithOne()
    {
        const Salida s = vbi({QStringLiteral("nodb://x"), QStringLiteral("--metric"), QStringLiteral("1")});
        QCOMPARE(s.estado, 1);
        QVERIFY2(s.err.startsWith(QStringLiteral("vbi evaluate: cannot read the database")), qPrintable(s.err));
    }

    void wrongCommandsExitWithTwo_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::newRow("no metric") << QStringList{};
        QTest::newRow("metric without key") << QStringList{QStringLiteral("--metric")};
        QTest::newRow("metric not a number") << QStringList{QStringLiteral("--metric"), QStringLiteral("ventas")};
        QTest::newRow("unknown period") << QStringList{QStringLiteral("--metric"), QStringLiteral("1"),
                                                       QStringLiteral("--period"), QStringLiteral("quincena")};
        QTest::newRow("bad date") << QStringList{QStringLiteral("--metric"), QStringLiteral("1"),
                                                 QStringLiteral("--date"), QStringLiteral("2024-02-30")};
        QTest::newRow("entity not a number") << QStringList{QStringLiteral("--metric"), QStringLiteral("1"),
                                                            QStringLiteral("--entity"), QStringLiteral("x")};
        QTest::newRow("zero time limit") << QStringList{QStringLiteral("--metric"), QStringLiteral("1"),
                                                        QStringLiteral("--time-limit"), QStringLiteral("0")};
        QTest::newRow("option twice") << QStringList{QStringLiteral("--metric"), QStringLiteral("1"),
                                                     QStringLiteral("--metric"), QStringLiteral("2")};
        QTest::newRow("unknown option") << QStringList{QStringLiteral("--metric"), QStringLiteral("1"),
                                                       QStringLiteral("--json")};
    }
    void wrongCommandsExitWithTwo()
    {
        QFETCH(QStringList, args);
        const Salida s = vbi(QStringList{m_db.url()} + args);
        QCOMPARE(s.estado, 2);
        QVERIFY2(s.err.startsWith(QStringLiteral("Usage: vbi evaluate")), qPrintable(s.err));
    }
};

QTEST_MAIN(TstComandoEvaluar)
#include "tst_comandoevaluar.moc"
