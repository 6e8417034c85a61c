// The metric run-time: sources run as functions of (sys_pk, inicio, final)
// against the database, read-only, within a time limit, with their errors
// told with the line to blame.
#include "runtime/evaluador.h"
#include "schemainstaller.h"
#include "testdatabase.h"
#include "vb/automationerror.h"

#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QTest>

namespace {

struct Ejemplo {
    int linea = 0;
    QHash<QString, QString> atributos;
    QString fuente;
};

// Every "```js metrica key=value ..." block of the run-time guide; the last
// attribute's value runs to the end of the line, so an error may hold blanks.
QList<Ejemplo> ejemplosGuia()
{
    QFile archivo(QStringLiteral(VBI_DOCS_DIR "/runtime.md"));
    if (!archivo.open(QIODevice::ReadOnly))
        return {};
    const QStringList lineas = QString::fromUtf8(archivo.readAll()).split(QLatin1Char('\n'));
    static const QRegularExpression atributo(QStringLiteral("(\\w+)=([^=]+$|\\S+)"));
    QList<Ejemplo> ejemplos;
    Ejemplo actual;
    bool dentro = false;
    for (int i = 0; i < lineas.size(); ++i) {
        const QString linea = lineas.at(i);
        if (!dentro && linea.startsWith(QLatin1String("```js metrica"))) {
            dentro = true;
            actual = Ejemplo{i + 2, {}, {}};
            for (const auto& m : atributo.globalMatch(linea.mid(13)))
                actual.atributos.insert(m.captured(1), m.captured(2).trimmed());
        } else if (dentro && linea.trimmed() == QLatin1String("```")) {
            dentro = false;
            actual.fuente.chop(1);
            ejemplos.append(actual);
        } else if (dentro) {
            actual.fuente += linea + QLatin1Char('\n');
        }
    }
    return ejemplos;
}

IntervaloPeriodo marzo2024() { return {QDate(2024, 3, 1), QDate(2024, 3, 31)}; }

PedidoMetrica pedido(const QString& fuente, int sysPk = 0) { return {fuente, sysPk, marzo2024()}; }

// The sum of the branch's sales in March 2024: 15 for branch 1, 100 for branch 2.
const QString VentaMarzo = QStringLiteral(
    "return _ejecutar('SELECT SUM(importe) FROM prueba_venta WHERE fecha BETWEEN ' + _fecha.sql(inicio) +"
    " ' AND ' + _fecha.sql(final) + ' AND sucursal = ' + sys_pk);");

QString describir(const ResultadoMetrica& r)
{
    return r.correcto ? QString::number(r.valor, 'g', 17) : QStringLiteral("fallo: ") + r.mensaje();
}

// Whether two runs gave the same, the error's message and line included.
QStringList describir(const QList<ResultadoMetrica>& resultados)
{
    QStringList textos;
    for (const ResultadoMetrica& r : resultados)
        textos.append(describir(r));
    return textos;
}

} // namespace

Q_DECLARE_METATYPE(Ejemplo)

class TstEvaluador : public QObject {
    Q_OBJECT

    TestDatabase m_db;
    std::unique_ptr<Evaluador> m_evaluador;

    ResultadoMetrica evaluar(const QString& fuente, int sysPk = 0, IntervaloPeriodo periodo = marzo2024())
    {
        return m_evaluador->evaluar(fuente, sysPk, periodo);
    }

    double valor(const QString& fuente, int sysPk = 0, IntervaloPeriodo periodo = marzo2024())
    {
        const ResultadoMetrica r = evaluar(fuente, sysPk, periodo);
        if (!r.correcto)
            qWarning("%s", qPrintable(r.mensaje()));
        return r.correcto ? r.valor : std::nan("");
    }

private slots:
    void initTestCase()
    {
        VBI_CREATE_TEST_DATABASE(m_db);
        m_db.exec(QStringLiteral("CREATE TABLE prueba_venta (sucursal INTEGER, fecha DATE, importe NUMERIC(12,2))"));
        m_db.exec(QStringLiteral("INSERT INTO prueba_venta VALUES (1, '2024-03-01', 10.5), (1, '2024-03-31', 4.5), "
                                 "(2, '2024-03-15', 100), (1, '2024-04-01', 1000)"));
        m_evaluador = std::make_unique<Evaluador>(m_db.url());
    }

    void cleanupTestCase() { m_evaluador.reset(); }

    void returnsTheNumberTheBodyReturns() { QCOMPARE(valor(QStringLiteral("return 6 * 7;")), 42.0); }

    void templateCommentLinesAreHarmless()
    {
        const QString fuente = QStringLiteral(
            "//Objetos disponibles: ADOCnn, StatsEngine, _ejecutar y _fecha\n"
            "//Parámetros: sys_pk, inicio, final  [function_ClaveMetrica(sys_pk,inicio,final){}] \n"
            "//El valor debe ser devuelto mediante una sentencia return\n"
            "return 1; // trailing comment");
        QCOMPARE(valor(fuente), 1.0);
    }

    void parametersAreTheEntityAndThePeriodsDays()
    {
        QCOMPARE(valor(QStringLiteral("return sys_pk;"), 17), 17.0);
        QCOMPARE(valor(QStringLiteral("return _fecha.dia(inicio) * 100 + _fecha.dia(final);")), 131.0);
        QCOMPARE(valor(QStringLiteral("return inicio instanceof Date ? 1 : 0;")), 1.0);
    }

    void ejecutarGivesTheFirstColumnOfTheFirstRow()
    {
        const QString fuente = QStringLiteral(
            "return _ejecutar('SELECT SUM(importe) FROM prueba_venta WHERE fecha BETWEEN ' + _fecha.sql(inicio) +"
            " ' AND ' + _fecha.sql(final) + ' AND sucursal = ' + sys_pk);");
        QCOMPARE(valor(fuente, 1), 15.0);
        QCOMPARE(valor(fuente, 2), 100.0);
    }

    void aSemicolonInsideATextStillReads()
    {
        QCOMPARE(valor(QStringLiteral("return _ejecutar(\"SELECT COUNT(*) FROM prueba_venta WHERE 'a;b' <> ''\");")), 4.0);
        QCOMPARE(valor(QStringLiteral("return _ejecutar('SELECT COUNT(*) FROM prueba_venta;');")), 4.0);
    }

    void ejecutarGivesZeroForNoRowAndForNull()
    {
        QCOMPARE(valor(QStringLiteral("return _ejecutar('SELECT importe FROM prueba_venta WHERE sucursal = 9');")), 0.0);
        QCOMPARE(valor(QStringLiteral("return _ejecutar('SELECT SUM(importe) FROM prueba_venta WHERE sucursal = 9');")), 0.0);
    }

    void adoCnnExecuteGivesRowsByColumnName()
    {
        QCOMPARE(valor(QStringLiteral("var f = ADOCnn.Execute('SELECT sucursal, importe FROM prueba_venta ORDER BY importe');"
                                      "return f.length * 1000 + f[3].importe + f[0].sucursal;")),
                 4.0 * 1000 + 1000 + 1);
        QCOMPARE(valor(QStringLiteral("return ADOCnn.Dialecto == '%1' ? 1 : 0;").arg(m_db.isPostgres() ? "postgresql" : "sqlite")), 1.0);
    }

    void fechaHelpers()
    {
        QCOMPARE(valor(QStringLiteral("return _fecha.texto(inicio) == '2024-03-01' && _fecha.sql(final) == \"'2024-03-31'\" ? 1 : 0;")), 1.0);
        QCOMPARE(valor(QStringLiteral("return _fecha.anio('2024-03-15') * 10000 + _fecha.mes(inicio) * 100 + _fecha.dia(45366);")), 20240315.0);
        // 2024-03-01 was a Friday: 6 counting Sunday as 1.
        QCOMPARE(valor(QStringLiteral("return _fecha.diaSemana(inicio);")), 6.0);
        QCOMPARE(valor(QStringLiteral("return _fecha.dia(_fecha.sumarDias(final, 1));")), 1.0);
    }

    void statsEngineIsTheEnginesCalendar()
    {
        QCOMPARE(valor(QStringLiteral("return StatsEngine.WeekNum('2011-03-15');")), 201111.0);
        QCOMPARE(valor(QStringLiteral("return StatsEngine.daytonum(StatsEngine.FinMes(202402));")), 20240229.0);
        QCOMPARE(valor(QStringLiteral("return StatsEngine.daytonum(StatsEngine.IniMes(202402));")), 20240201.0);
        QCOMPARE(valor(QStringLiteral("return StatsEngine.daytonum(StatsEngine.day_ofweeknum(201101));")), 20101226.0);
        QCOMPARE(valor(QStringLiteral("return StatsEngine.daytonum(StatsEngine.numtodate(20240315));")), 20240315.0);
    }

    void aDateThatIsNoneIsATypeError()
    {
        const ResultadoMetrica r = evaluar(QStringLiteral("\nreturn _fecha.dia('mañana');"));
        QVERIFY(!r.correcto);
        QVERIFY2(r.error.contains(QStringLiteral("No es una fecha: mañana")), qPrintable(r.error));
        QCOMPARE(r.linea, 2);
    }

    void syntaxErrorIsReportedWithItsLine()
    {
        const ResultadoMetrica r = evaluar(QStringLiteral("var a = 1;\nvar b = ;\nreturn a;"));
        QVERIFY(!r.correcto);
        QVERIFY2(r.error.contains(QStringLiteral("SyntaxError")), qPrintable(r.error));
        QCOMPARE(r.linea, 2);
        QVERIFY(r.mensaje().startsWith(QStringLiteral("Línea 2: ")));
    }

    void exceptionIsReportedWithItsLine()
    {
        const ResultadoMetrica r = evaluar(QStringLiteral("var a = 1;\n\nreturn noExiste + a;"));
        QVERIFY(!r.correcto);
        QVERIFY2(r.error.contains(QStringLiteral("ReferenceError")), qPrintable(r.error));
        QCOMPARE(r.linea, 3);
    }

    void thrownValueThatIsNoErrorIsReported()
    {
        const ResultadoMetrica r = evaluar(QStringLiteral("throw 'sin datos';"));
        QVERIFY(!r.correcto);
        QVERIFY2(r.error.contains(QStringLiteral("sin datos")), qPrintable(r.error));
    }

    void sqlErrorIsReportedWithItsLine()
    {
        const ResultadoMetrica r = evaluar(QStringLiteral("var x = 1;\nreturn _ejecutar('SELECT nada FROM tabla_que_no_existe');"));
        QVERIFY(!r.correcto);
        QVERIFY2(r.error.contains(QStringLiteral("Error de SQL")), qPrintable(r.error));
        QCOMPARE(r.linea, 2);
    }

    void resultsThatAreNoNumberAreReported_data()
    {
        QTest::addColumn<QString>("fuente");
        QTest::newRow("nothing returned") << QStringLiteral("var a = 1;");
        QTest::newRow("text") << QStringLiteral("return 'doce';");
        QTest::newRow("numeric text") << QStringLiteral("return '12';");
        QTest::newRow("object") << QStringLiteral("return {};");
        QTest::newRow("NaN") << QStringLiteral("return 0 / 0;");
        QTest::newRow("infinity") << QStringLiteral("return 1 / 0;");
        QTest::newRow("empty source") << QString();
        QTest::newRow("blanks") << QStringLiteral("   \n\t ");
    }
    void resultsThatAreNoNumberAreReported()
    {
        QFETCH(QString, fuente);
        const ResultadoMetrica r = evaluar(fuente);
        QVERIFY(!r.correcto);
        QVERIFY2(r.error.startsWith(QStringLiteral("La métrica no devolvió un número")), qPrintable(r.error));
    }

    void writesAreRefused_data()
    {
        QTest::addColumn<QString>("sql");
        QTest::newRow("delete") << QStringLiteral("DELETE FROM prueba_venta");
        QTest::newRow("update") << QStringLiteral("UPDATE prueba_venta SET importe = 0");
        QTest::newRow("drop") << QStringLiteral("DROP TABLE prueba_venta");
        QTest::newRow("second statement") << QStringLiteral("SELECT 1; DELETE FROM prueba_venta");
        QTest::newRow("commit first") << QStringLiteral("COMMIT");
        QTest::newRow("commit then insert") << QStringLiteral("COMMIT; INSERT INTO prueba_venta VALUES (9, '2024-03-02', 1)");
        QTest::newRow("set transaction read write") << QStringLiteral("SET TRANSACTION READ WRITE");
        QTest::newRow("session made writable") << QStringLiteral("SET default_transaction_read_only = off");
        QTest::newRow("data-modifying cte")
            << QStringLiteral("WITH x AS (DELETE FROM prueba_venta RETURNING importe) SELECT COUNT(*) FROM x");
        QTest::newRow("leading blanks") << QStringLiteral("  \n delete from prueba_venta");
    }
    void writesAreRefused()
    {
        QFETCH(QString, sql);
        for (const char* llamada : {"_ejecutar", "ADOCnn.Execute"}) {
            const ResultadoMetrica r = evaluar(QStringLiteral("return %1(%2);").arg(QLatin1String(llamada), QString(sql).replace(QLatin1Char('\n'), QLatin1Char(' ')).prepend(QLatin1Char('"')).append(QLatin1Char('"'))));
            QVERIFY2(!r.correcto, qPrintable(sql));
        }
        QCOMPARE(m_db.scalar(QStringLiteral("SELECT COUNT(*) FROM prueba_venta")).toInt(), 4);
    }

    void aWriteInsideASelectIsRefusedByTheDatabase()
    {
        if (!m_db.isPostgres())
            QSKIP("SQLite has no function that writes");
        const ResultadoMetrica r = evaluar(QStringLiteral(
            "return _ejecutar(\"SELECT set_config('transaction_read_only', 'off', true)\");"));
        QVERIFY(!r.correcto);
        QVERIFY2(r.error.contains(QStringLiteral("read-write")), qPrintable(r.error));
    }

    void globalsCannotBeReplaced()
    {
        evaluar(QStringLiteral("_ejecutar = function () { return 99; }; ADOCnn = null; return 0;"));
        QCOMPARE(valor(QStringLiteral("return _ejecutar('SELECT COUNT(*) FROM prueba_venta');")), 4.0);
    }

    void endlessLoopIsStoppedAtTheLimit()
    {
        m_evaluador->setLimite(300);
        QElapsedTimer reloj;
        reloj.start();
        const ResultadoMetrica r = evaluar(QStringLiteral("while (true) {}"));
        QVERIFY(!r.correcto);
        QCOMPARE(r.error, QStringLiteral("La métrica tardó más de 300 ms y se detuvo"));
        // The engine is usable again afterwards.
        QCOMPARE(valor(QStringLiteral("return 5;")), 5.0);
        m_evaluador->setLimite(0);
        QCOMPARE(m_evaluador->limite(), Evaluador::LimitePorDefecto);
    }

    void slowQueryIsStoppedOnPostgres()
    {
        if (!m_db.isPostgres())
            QSKIP("Only PostgreSQL can sleep inside a query");
        m_evaluador->setLimite(300);
        QElapsedTimer reloj;
        reloj.start();
        const ResultadoMetrica r = evaluar(QStringLiteral("return _ejecutar('SELECT 1 FROM pg_sleep(30)');"));
        m_evaluador->setLimite(0);
        QCOMPARE(r.error, QStringLiteral("La métrica tardó más de 300 ms y se detuvo"));
        // The query itself was cut short, not waited for.
        QVERIFY(reloj.elapsed() < 20000);
    }

    void hostileSources_data()
    {
        QTest::addColumn<QString>("fuente");
        QTest::newRow("50,000 characters") << QString(50000, QLatin1Char('x'));
        QTest::newRow("closing the function early") << QStringLiteral("}); (function () { return 1;");
        QTest::newRow("quotes") << QStringLiteral("return _ejecutar(\"SELECT '\\\"');\");");
        QTest::newRow("non-Latin") << QStringLiteral("return 数据;");
    }
    void hostileSources()
    {
        QFETCH(QString, fuente);
        QVERIFY(!evaluar(fuente).correcto);
        QCOMPARE(valor(QStringLiteral("return 1;")), 1.0);
    }

    void examplesOfTheGuideGiveWhatTheySay_data()
    {
        QTest::addColumn<Ejemplo>("ejemplo");
        const QList<Ejemplo> ejemplos = ejemplosGuia();
        if (ejemplos.size() < 8)
            QTest::newRow("docs/runtime.md has fewer examples than it should") << Ejemplo();
        for (const Ejemplo& e : ejemplos)
            QTest::newRow(qPrintable(QStringLiteral("docs/runtime.md line %1").arg(e.linea))) << e;
    }
    void examplesOfTheGuideGiveWhatTheySay()
    {
        QFETCH(Ejemplo, ejemplo);
        QVERIFY(!ejemplo.fuente.isEmpty());
        const auto& a = ejemplo.atributos;
        const IntervaloPeriodo periodo{QDate::fromString(a.value(QStringLiteral("inicio")), Qt::ISODate),
                                       QDate::fromString(a.value(QStringLiteral("final")), Qt::ISODate)};
        const ResultadoMetrica r = evaluar(ejemplo.fuente, a.value(QStringLiteral("sys_pk"), QStringLiteral("0")).toInt(), periodo);
        if (a.contains(QStringLiteral("error"))) {
            QCOMPARE(r.mensaje(), a.value(QStringLiteral("error")));
        } else {
            QVERIFY2(r.correcto, qPrintable(r.mensaje()));
            QCOMPARE(r.valor, a.value(QStringLiteral("valor")).toDouble());
        }
    }

    void anEmptyBatchGivesNoResults() { QVERIFY(m_evaluador->evaluarLote({}).isEmpty()); }

    void aBatchNoLongerWantedStopsBetweenRuns()
    {
        const IntervaloPeriodo hoy = PeriodoMetrica::intervalo(0, QDate::currentDate());
        int preguntas = 0;
        const QList<ResultadoMetrica> r = m_evaluador->evaluarLote(
            {{QStringLiteral("return 1;"), 0, hoy}, {QStringLiteral("return 2;"), 0, hoy}, {QStringLiteral("return 3;"), 0, hoy}},
            [&preguntas] { return ++preguntas < 2; });
        QCOMPARE(r.size(), 3);
        QVERIFY(r[0].correcto);
        QCOMPARE(r[0].valor, 1.0);
        QCOMPARE(r[1].mensaje(), QStringLiteral("La métrica no se calculó: ya no se necesitaba"));
        QVERIFY(!r[2].correcto);
        QCOMPARE(preguntas, 3);
        // The evaluator is left as it was: the next batch runs whole.
        QCOMPARE(m_evaluador->evaluarLote({{QStringLiteral("return 4;"), 0, hoy}}).constFirst().valor, 4.0);
    }

    void aBatchGivesWhatEachRunAloneGivesOnTheSampleShop()
    {
        TestDatabase tienda;
        VBI_CREATE_TEST_DATABASE(tienda);
        QVERIFY(SchemaInstaller::addDemoData(tienda.connection()));
        Evaluador evaluador(tienda.url());
        QSqlQuery fuentes = tienda.connection().runText(QStringLiteral("SELECT uf_Codigo FROM ut_bi_Metrica ORDER BY Sys_PK"));
        QList<PedidoMetrica> pedidos;
        const QDate hoy = QDate::currentDate();
        while (fuentes.next())
            for (const QDate& fecha : {hoy, hoy.addDays(-40), hoy.addYears(-1)})
                for (int periodo = 0; periodo < 4; ++periodo)
                    for (int entidad = 0; entidad <= 3; ++entidad)
                        pedidos.append({fuentes.value(0).toString(), entidad, PeriodoMetrica::intervalo(periodo, fecha)});
        QVERIFY(pedidos.size() >= 3 * 48);
        QList<ResultadoMetrica> unoPorUno;
        for (const PedidoMetrica& p : pedidos)
            unoPorUno.append(evaluador.evaluar(p.fuente, p.sysPk, p.periodo));
        const QList<ResultadoMetrica> lote = evaluador.evaluarLote(pedidos);
        QCOMPARE(describir(lote), describir(unoPorUno));
        QVERIFY(std::all_of(lote.cbegin(), lote.cend(), [](const ResultadoMetrica& r) { return r.correcto; }));
    }

    void failuresInTheMiddleOfABatchLeaveTheRestRight()
    {
        const QList<ResultadoMetrica> r = m_evaluador->evaluarLote({
            pedido(VentaMarzo, 1),
            pedido(QStringLiteral("return _ejecutar('SELECT nada FROM tabla_que_no_existe');")),
            pedido(VentaMarzo, 2),
            pedido(QStringLiteral("try { _ejecutar('SELECT nada FROM tabla_que_no_existe'); } catch (e) {}\nreturn 7;")),
            pedido(VentaMarzo, 1),
            pedido(QStringLiteral("var a = ;")),
            pedido(QStringLiteral("throw new Error('sin datos');")),
            pedido(QStringLiteral("return 'doce';")),
            pedido(VentaMarzo, 2),
        });
        QCOMPARE(r.size(), 9);
        QVERIFY2(r.at(1).error.contains(QStringLiteral("Error de SQL")), qPrintable(r.at(1).error));
        QVERIFY(!r.at(5).correcto && !r.at(6).correcto && !r.at(7).correcto);
        QCOMPARE(describir(r.at(3)), QStringLiteral("7"));
        for (const auto& [i, valor] : {std::pair{0, 15}, {2, 100}, {4, 15}, {8, 100}})
            QCOMPARE(describir(r.at(i)), QString::number(valor));
        QVERIFY(!describir(r).join(QLatin1Char('\n')).contains(QLatin1String("current transaction is aborted")));
    }

    void aTimeoutInTheMiddleOfABatchLeavesTheRestRight()
    {
        m_evaluador->setLimite(300);
        QList<PedidoMetrica> pedidos = {pedido(VentaMarzo, 1), pedido(QStringLiteral("while (true) {}")), pedido(VentaMarzo, 2)};
        if (m_db.isPostgres())
            pedidos << pedido(QStringLiteral("return _ejecutar('SELECT 1 FROM pg_sleep(30)');")) << pedido(VentaMarzo, 1);
        const QList<ResultadoMetrica> r = m_evaluador->evaluarLote(pedidos);
        m_evaluador->setLimite(0);
        const QString detenida = QStringLiteral("fallo: La métrica tardó más de 300 ms y se detuvo");
        QStringList esperados = {QStringLiteral("15"), detenida, QStringLiteral("100")};
        if (m_db.isPostgres())
            esperados << detenida << QStringLiteral("15");
        QCOMPARE(describir(r), esperados);
    }

    // What a run changes in its session stays in that run: a setting a
    // metric changes reaches neither the next metric of the batch nor its
    // time limit.
    void settingsChangedByARunDoNotReachTheNext()
    {
        if (!m_db.isPostgres())
            QSKIP("Only PostgreSQL has settings a query can change");
        m_evaluador->setLimite(300);
        const QList<ResultadoMetrica> r = m_evaluador->evaluarLote({
            pedido(QStringLiteral("return _ejecutar(\"SELECT LENGTH(set_config('statement_timeout', '0', false))"
                                  " + LENGTH(set_config('search_path', 'pg_catalog', false))\");")),
            pedido(VentaMarzo, 2),
            pedido(QStringLiteral("return _ejecutar('SELECT 1 FROM pg_sleep(30)');")),
        });
        m_evaluador->setLimite(0);
        QCOMPARE(describir(r), (QStringList{QStringLiteral("11"), QStringLiteral("100"),
                                            QStringLiteral("fallo: La métrica tardó más de 300 ms y se detuvo")}));
    }

    void theWholeBatchReadsOneSnapshot()
    {
        if (!m_db.isPostgres())
            QSKIP("SQLite keeps a transaction's snapshot by itself and cannot tell when it began");
        // now() is when the transaction began: one value for every run, even after a failed one.
        const QString inicio = QStringLiteral(
            "return _ejecutar(\"SELECT EXTRACT(EPOCH FROM now()) * 1000000 + "
            "CASE WHEN current_setting('transaction_isolation') = 'repeatable read' THEN 0 ELSE 0.5 END\");");
        const QList<ResultadoMetrica> r = m_evaluador->evaluarLote(
            {pedido(inicio), pedido(QStringLiteral("return _ejecutar('SELECT nada FROM tabla_que_no_existe');")), pedido(inicio)});
        QVERIFY(r.at(0).correcto && r.at(2).correcto);
        QCOMPARE(r.at(2).valor, r.at(0).valor);
        QCOMPARE(std::fmod(r.at(0).valor, 1.0), 0.0);
    }

    void writeAttemptsInABatchAreRefused_data()
    {
        QTest::addColumn<QString>("fuente");
        QTest::addColumn<int>("posicion");
        const QList<std::pair<const char*, QString>> intentos = {
            {"set transaction read write", QStringLiteral("return _ejecutar('SET TRANSACTION READ WRITE');")},
            {"session made writable", QStringLiteral("return _ejecutar('SET default_transaction_read_only = off');")},
            {"commit then insert",
             QStringLiteral("return _ejecutar(\"COMMIT; INSERT INTO prueba_venta VALUES (9, '2024-03-02', 1)\");")},
            {"rollback then write",
             QStringLiteral("try { _ejecutar('ROLLBACK'); } catch (e) {}\n"
                            "return _ejecutar('WITH x AS (DELETE FROM prueba_venta RETURNING 1) SELECT COUNT(*) FROM x');")},
            {"settings turned off then write",
             QStringLiteral("try { _ejecutar(\"SELECT set_config('default_transaction_read_only', 'off', false)\"); } catch (e) {}\n"
                            "try { _ejecutar(\"SELECT set_config('transaction_read_only', 'off', false)\"); } catch (e) {}\n"
                            "return _ejecutar('WITH x AS (DELETE FROM prueba_venta RETURNING 1) SELECT COUNT(*) FROM x');")},
        };
        for (const auto& [nombre, fuente] : intentos) {
            QTest::addRow("%s, first of the batch", nombre) << fuente << 0;
            QTest::addRow("%s, in the middle of the batch", nombre) << fuente << 1;
        }
    }
    void writeAttemptsInABatchAreRefused()
    {
        QFETCH(QString, fuente);
        QFETCH(int, posicion);
        QList<PedidoMetrica> pedidos = {pedido(VentaMarzo, 1), pedido(VentaMarzo, 2)};
        pedidos.insert(posicion, pedido(fuente));
        // A later run in the same batch tries the write the first one prepared.
        pedidos.append(pedido(QStringLiteral("return _ejecutar('WITH x AS (DELETE FROM prueba_venta RETURNING 1) SELECT COUNT(*) FROM x');")));
        pedidos.append(pedido(VentaMarzo, 1));
        const QList<ResultadoMetrica> r = m_evaluador->evaluarLote(pedidos);
        QVERIFY2(!r.at(posicion).correcto, qPrintable(describir(r.at(posicion))));
        QVERIFY2(!r.at(3).correcto, qPrintable(describir(r.at(3))));
        QCOMPARE(describir(r.at(posicion == 0 ? 1 : 0)), QStringLiteral("15"));
        QCOMPARE(describir(r.at(2)), QStringLiteral("100"));
        QCOMPARE(describir(r.at(4)), QStringLiteral("15"));
        QCOMPARE(m_db.scalar(QStringLiteral("SELECT COUNT(*) FROM prueba_venta")).toInt(), 4);
    }

    void aClosedConnectionFailsEveryRunOfABatch()
    {
        const QStringList antes = QSqlDatabase::connectionNames();
        Evaluador evaluador(m_db.url());
        const QStringList despues = QSqlDatabase::connectionNames();
        for (const QString& nombre : despues)
            if (!antes.contains(nombre))
                QSqlDatabase::database(nombre, false).close();
        const QList<ResultadoMetrica> r = evaluador.evaluarLote({pedido(VentaMarzo, 1), pedido(QStringLiteral("return 1;"))});
        QCOMPARE(r.size(), 2);
        for (const ResultadoMetrica& uno : r)
            QCOMPARE(describir(uno), QStringLiteral("fallo: No hay conexión con la base de datos"));
        QCOMPARE(describir(evaluador.evaluar(QStringLiteral("return 1;"), 0, marzo2024())), describir(r.at(1)));
    }

    void aConnectionLostInTheMiddleOfABatchFailsTheRest()
    {
        if (!m_db.isPostgres())
            QSKIP("Only a server connection can be lost");
        Evaluador evaluador(m_db.url());
        const QList<ResultadoMetrica> r = evaluador.evaluarLote(
            {pedido(VentaMarzo, 1), pedido(QStringLiteral("return _ejecutar('SELECT 1 FROM pg_terminate_backend(pg_backend_pid())');")),
             pedido(VentaMarzo, 2), pedido(QStringLiteral("return 1;"))});
        QCOMPARE(describir(r.at(0)), QStringLiteral("15"));
        // The server ends the connection once the statement that asked it is answered.
        for (int i = 2; i < r.size(); ++i) {
            QVERIFY(!r.at(i).correcto);
            QVERIFY2(!r.at(i).error.contains(QLatin1String("current transaction is aborted")), qPrintable(r.at(i).error));
        }
    }

    void storedMetricRunsByItsKey()
    {
        m_db.exec(QStringLiteral("INSERT INTO ut_bi_Metrica (uf_Nombre, uf_Codigo) VALUES ('ventas', "
                                 "'return _ejecutar(\"SELECT COUNT(*) FROM prueba_venta WHERE sucursal = \" + sys_pk);')"));
        const int clave = m_db.scalar(QStringLiteral("SELECT MAX(Sys_PK) FROM ut_bi_Metrica")).toInt();
        const ResultadoMetrica r = m_evaluador->evaluarMetrica(clave, 1, marzo2024());
        QVERIFY2(r.correcto, qPrintable(r.mensaje()));
        QCOMPARE(r.valor, 3.0);
        QCOMPARE(m_evaluador->evaluarMetrica(clave + 1, 1, marzo2024()).error,
                 QStringLiteral("No existe la métrica %1").arg(clave + 1));
        m_db.exec(QStringLiteral("DELETE FROM ut_bi_Metrica"));
    }

    void periodsOfADate_data()
    {
        QTest::addColumn<int>("periodo");
        QTest::addColumn<QDate>("fecha");
        QTest::addColumn<QDate>("inicio");
        QTest::addColumn<QDate>("final");
        QTest::newRow("day") << 0 << QDate(2024, 2, 29) << QDate(2024, 2, 29) << QDate(2024, 2, 29);
        QTest::newRow("week 1") << 1 << QDate(2024, 1, 7) << QDate(2024, 1, 1) << QDate(2024, 1, 7);
        QTest::newRow("week 11") << 1 << QDate(2011, 3, 15) << QDate(2011, 3, 12) << QDate(2011, 3, 18);
        QTest::newRow("last week of a leap year") << 1 << QDate(2024, 12, 31) << QDate(2024, 12, 30) << QDate(2024, 12, 31);
        QTest::newRow("last week of a common year") << 1 << QDate(2023, 12, 31) << QDate(2023, 12, 31) << QDate(2023, 12, 31);
        QTest::newRow("month") << 2 << QDate(2024, 2, 10) << QDate(2024, 2, 1) << QDate(2024, 2, 29);
        QTest::newRow("year") << 3 << QDate(2024, 7, 4) << QDate(2024, 1, 1) << QDate(2024, 12, 31);
        QTest::newRow("no period") << 4 << QDate(2024, 7, 4) << QDate() << QDate();
        QTest::newRow("no date") << 0 << QDate() << QDate() << QDate();
    }
    void periodsOfADate()
    {
        QFETCH(int, periodo);
        QFETCH(QDate, fecha);
        QFETCH(QDate, inicio);
        QFETCH(QDate, final);
        const IntervaloPeriodo intervalo = PeriodoMetrica::intervalo(periodo, fecha);
        QCOMPARE(intervalo.inicio, inicio);
        QCOMPARE(intervalo.final, final);
    }

    void periodNames()
    {
        QCOMPARE(PeriodoMetrica::desdeNombre(QStringLiteral("dia")), 0);
        QCOMPARE(PeriodoMetrica::desdeNombre(QStringLiteral("Semana")), 1);
        QCOMPARE(PeriodoMetrica::desdeNombre(QStringLiteral("mes")), 2);
        QCOMPARE(PeriodoMetrica::desdeNombre(QStringLiteral("ano")), 3);
        QCOMPARE(PeriodoMetrica::desdeNombre(QStringLiteral("quincena")), -1);
    }

    void unreachableDatabaseRaises()
    {
        QVERIFY_THROWS_EXCEPTION(vb::AutomationError, Evaluador{QStringLiteral("nodb://x")});
    }
};

QTEST_MAIN(TstEvaluador)
#include "tst_evaluador.moc"
