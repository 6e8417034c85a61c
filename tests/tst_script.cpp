// The script host as its users meet it: the real `vbi script` program run on
// the scripts in tests/scripts and on every example of docs/scripting.md,
// against a fresh test database (SQLite, or PostgreSQL in the second run).
#include "testdatabase.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString SourceDir = QFileInfo(QStringLiteral(__FILE__)).absolutePath();

QString scriptPath(const QString& name)
{
    return SourceDir + QStringLiteral("/scripts/") + name;
}

struct Example {
    int line = 0;
    QString code;
};

// Every ```js block of the scripting guide, with the line it starts on.
QList<Example> docsExamples()
{
    QFile file(SourceDir + QStringLiteral("/../docs/scripting.md"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    QList<Example> examples;
    Example current;
    bool inside = false;
    for (int i = 0; i < lines.size(); ++i) {
        const QString trimmed = lines.at(i).trimmed();
        if (!inside && trimmed == QLatin1String("```js")) {
            inside = true;
            current = Example{i + 2, QString()};
        } else if (inside && trimmed == QLatin1String("```")) {
            inside = false;
            examples.append(current);
        } else if (inside) {
            current.code += lines.at(i) + QLatin1Char('\n');
        }
    }
    return examples;
}

} // namespace

class TstScript : public QObject {
    Q_OBJECT

    TestDatabase db;
    QTemporaryDir folder;

    struct Run {
        int status = -1;
        QString out;
        QString err;
        qint64 milliseconds = 0;
    };

    // Runs `vbi script` on a file with the test database's URL, unless told otherwise.
    Run run(const QString& script, const QStringList& extra = {}, bool withUrl = true)
    {
        QProcess vbi;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        vbi.setProcessEnvironment(environment);
        QStringList args{QStringLiteral("script"), script};
        if (withUrl)
            args.append(db.url());
        args.append(extra);
        QElapsedTimer clock;
        clock.start();
        vbi.start(QStringLiteral(VBI_PROGRAM), args);
        Run result;
        if (!vbi.waitForFinished(180000)) {
            vbi.kill();
            vbi.waitForFinished();
            result.err = QStringLiteral("<vbi script did not finish: it hung>");
            return result;
        }
        result.milliseconds = clock.elapsed();
        result.out = QString::fromUtf8(vbi.readAllStandardOutput());
        result.err = QString::fromUtf8(vbi.readAllStandardError());
        result.status = vbi.exitStatus() == QProcess::NormalExit ? vbi.exitCode() : -1;
        return result;
    }

    QString writeScript(const QString& name, const QString& code)
    {
        const QString path = folder.filePath(name);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            return QString();
        file.write(code.toUtf8());
        return path;
    }

    // The host's own report lines, without the platform's chatter.
    static QStringList reports(const QString& err)
    {
        QStringList lines;
        for (const QString& line : err.split(QLatin1Char('\n'))) {
            if (line.startsWith(QLatin1String("vbi script:")))
                lines.append(line);
        }
        return lines;
    }

    static QString context(const Run& r)
    {
        return QStringLiteral("status %1\n--- stdout\n%2--- stderr\n%3").arg(r.status).arg(r.out, r.err);
    }

private slots:
    void initTestCase()
    {
        VBI_CREATE_TEST_DATABASE(db);
        QVERIFY(folder.isValid());
        QVERIFY2(QFileInfo::exists(QStringLiteral(VBI_PROGRAM)), VBI_PROGRAM);
    }

    void init() { db.clear(); }

    // --- Scripts that must run to their end ---------------------------------

    void scriptRunsToItsEnd_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("lastLine");
        QTest::newRow("entitiesOfEveryKindAreCreatedSavedLoadedAndDeleted")
            << QStringLiteral("entities.js") << QStringLiteral("entities ok");
        QTest::newRow("argumentsAndPropertiesConvertAsAutomationDoes")
            << QStringLiteral("conversions.js") << QStringLiteral("conversions ok");
        QTest::newRow("raisedErrorsAreCaughtWithNumberAndMessageAndTrappedOnesStayTrapped")
            << QStringLiteral("errors.js") << QStringLiteral("errors ok");
        QTest::newRow("refusedRightOpensNothingAndTheCodesAskedAreRecorded")
            << QStringLiteral("refused_right.js") << QStringLiteral("refused right ok");
        QTest::newRow("searchObjectAnswersAsSetAndItsWindowIsDriven")
            << QStringLiteral("search.js") << QStringLiteral("search ok");
        QTest::newRow("perspectiveEditorAcceptedAndCancelled")
            << QStringLiteral("editor_perspective.js") << QStringLiteral("perspective editor ok");
        QTest::newRow("metricEditorAcceptedAndCancelled")
            << QStringLiteral("editor_metric.js") << QStringLiteral("metric editor ok");
        QTest::newRow("indicatorEditorAcceptedAndCancelledWithColourPicks")
            << QStringLiteral("editor_indicator.js") << QStringLiteral("indicator editor ok");
        QTest::newRow("dashboardEditorAcceptedAndCancelled")
            << QStringLiteral("editor_dashboard.js") << QStringLiteral("dashboard editor ok");
        QTest::newRow("metricLibraryAddsEditsAndDeletesThroughItsEditors")
            << QStringLiteral("library_metrics.js") << QStringLiteral("metric library ok");
        QTest::newRow("indicatorLibraryAddsRefusesAndDeletes")
            << QStringLiteral("library_indicators.js") << QStringLiteral("indicator library ok");
        QTest::newRow("indicatorPickerAcceptedDoubleClickedAndCancelled")
            << QStringLiteral("indicator_picker.js") << QStringLiteral("indicator picker ok");
        QTest::newRow("placedIndicatorEditorAcceptedWithASearchAndCancelled")
            << QStringLiteral("placed_indicator.js") << QStringLiteral("placed indicator editor ok");
        QTest::newRow("figureEditorAcceptedWithFontAndColourPicksAndCancelled")
            << QStringLiteral("figure_editor.js") << QStringLiteral("figure editor ok");
        QTest::newRow("longRunOfWindowsWithGarbageCollectionsEndsNormally")
            << QStringLiteral("many_windows.js") << QStringLiteral("many windows ok");
        QTest::newRow("windowObjectsAreOnePerWindowAndRefuseWhatIsNoWindow")
            << QStringLiteral("window_objects.js") << QStringLiteral("window objects ok");
        QTest::newRow("libraryTreeSelectionIsWhatTheDialogActsOnAndADoubleClickOpensOneEditor")
            << QStringLiteral("library_tree.js") << QStringLiteral("library tree ok");
    }
    void scriptRunsToItsEnd()
    {
        QFETCH(QString, script);
        QFETCH(QString, lastLine);
        const Run r = run(scriptPath(script));
        QVERIFY2(r.status == 0, qPrintable(context(r)));
        QVERIFY2(reports(r.err).isEmpty(), qPrintable(context(r)));
        QVERIFY2(r.out.trimmed().endsWith(lastLine), qPrintable(context(r)));
    }

    // --- Scripts that must fail, clearly and quickly ---------------------------

    void hostileScriptEndsWithAClearReport_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QStringList>("extra");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("report");

        const QStringList none;
        QTest::newRow("tooFewArguments") << QStringLiteral("hostile_too_few_arguments.js") << none << 1
                                         << QStringLiteral("hostile_too_few_arguments.js:3: error 450 in EEngine.CargarEntidad: "
                                                           "Wrong number of arguments or invalid property assignment: "
                                                           "EEngine.CargarEntidad takes 2 arguments (Tipo, PK), 1 given");
        QTest::newRow("textForANumber") << QStringLiteral("hostile_wrong_type.js") << none << 1
                                        << QStringLiteral("error 13 in EEngine.CargarEntidad: Type mismatch: argument 2 (PK) "
                                                          "of EEngine.CargarEntidad got the text \"the first one\"");
        QTest::newRow("objectForANumber") << QStringLiteral("hostile_object_for_number.js") << none << 1
                                          << QStringLiteral("error 13 in EEngine.EliminarEntidad: Type mismatch: argument 1 "
                                                            "(Tipo) of EEngine.EliminarEntidad got an object (EEngine)");
        QTest::newRow("functionForAnObject") << QStringLiteral("hostile_function_argument.js") << none << 1
                                             << QStringLiteral("error 13 in EEngine.GuardarEntidad: Type mismatch: "
                                                               "a function cannot be passed to the component");
        QTest::newRow("missingPropertyRead") << QStringLiteral("hostile_missing_property.js") << none << 1
                                             << QStringLiteral("hostile_missing_property.js:3: error 438 in EEngine.Usuario: "
                                                               "Object doesn't support this property or method: 'EEngine.Usuario'");
        QTest::newRow("missingPropertyAssigned")
            << QStringLiteral("hostile_missing_property_assignment.js") << none << 1
            << QStringLiteral("error 438 in EMetrica.Color: Object doesn't support this property or method: 'EMetrica.Color'");
        QTest::newRow("readOnlyPropertyAssigned")
            << QStringLiteral("hostile_read_only_property.js") << none << 1
            << QStringLiteral("error 438 in Recordset.EOF: Object doesn't support this property or method: "
                              "'Recordset.EOF' is read-only");
        QTest::newRow("missingMethod") << QStringLiteral("hostile_missing_method.js") << none << 1
                                       << QStringLiteral("hostile_missing_method.js:3: error 438 in EEngine.Publicar: "
                                                         "Object doesn't support this property or method: 'EEngine.Publicar'");
        QTest::newRow("unknownProgrammaticName") << QStringLiteral("hostile_unknown_object.js") << none << 1
                                                 << QStringLiteral("error 429 in CreateObject: ActiveX component can't "
                                                                   "create object: 'Word.Application'");
        QTest::newRow("syntaxError") << QStringLiteral("hostile_syntax_error.js") << none << 1
                                     << QStringLiteral("hostile_syntax_error.js:1: SyntaxError");
        QTest::newRow("failedAssertion") << QStringLiteral("hostile_failed_assertion.js") << none << 1
                                         << QStringLiteral("hostile_failed_assertion.js:2: AssertionError: Assertion failed: "
                                                           "one and one make three");
        QTest::newRow("caughtAssertionStillFails")
            << QStringLiteral("hostile_caught_assertion.js") << none << 1
            << QStringLiteral("an assertion failed (the script caught it and went on): hostile_caught_assertion.js:3");
        QTest::newRow("unusedWindowHandler") << QStringLiteral("hostile_unused_handler.js") << none << 1
                                             << QStringLiteral("1 window handler(s) registered with onNextWindow were "
                                                               "never used");
        QTest::newRow("handlerThatThrows") << QStringLiteral("hostile_handler_throws.js") << none << 1
                                           << QStringLiteral("the handler of window dlgPropPers \"Propiedades de perspectiva\" "
                                                             "failed: hostile_handler_throws.js:8: error 5 in Window.setText: "
                                                             "dlgPropPers has no control named 'cNoExiste'");
        QTest::newRow("windowOperationWithTooFewArguments")
            << QStringLiteral("hostile_window_wrong_arguments.js") << none << 1
            << QStringLiteral("error 450 in Window.select: Wrong number of arguments or invalid property assignment: "
                              "Window.select takes 2 arguments");
        QTest::newRow("unexpectedDialog") << QStringLiteral("hostile_unexpected_window.js") << none << 4
                                          << QStringLiteral("unexpected window with no handler waiting: dlgDato "
                                                            "\"Propiedades de métrica\"; it was cancelled and the script stopped");
        QTest::newRow("unexpectedMessageBox")
            << QStringLiteral("hostile_unexpected_message.js") << none << 4
            << QStringLiteral("unexpected window with no handler waiting: MsgBox \"VendimarBI\": "
                              "¿Está seguro que desea eliminar el tablero seleccionado?");
        QTest::newRow("windowLeftOpenByItsHandler")
            << QStringLiteral("hostile_window_left_open.js") << none << 4
            << QStringLiteral("unexpected window with no handler waiting: dlgPropPers \"Propiedades de perspectiva\", "
                              "left open by its handler,");
        QTest::newRow("infiniteLoop") << QStringLiteral("hostile_infinite_loop.js")
                                      << QStringList{QStringLiteral("--time-limit"), QStringLiteral("1")} << 3
                                      << QStringLiteral("time limit of 1 s reached; the script was stopped");
        QTest::newRow("infiniteLoopUnderItsOwnLimit")
            << QStringLiteral("hostile_infinite_loop_script_limit.js") << none << 3
            << QStringLiteral("time limit of 0.5 s reached; the script was stopped");
        QTest::newRow("infiniteLoopInAWindowHandler")
            << QStringLiteral("hostile_infinite_loop_in_handler.js") << QStringList{QStringLiteral("--time-limit=1")} << 3
            << QStringLiteral("time limit of 1 s reached; the script was stopped");
    }
    void hostileScriptEndsWithAClearReport()
    {
        QFETCH(QString, script);
        QFETCH(QStringList, extra);
        QFETCH(int, status);
        QFETCH(QString, report);
        const Run r = run(scriptPath(script), extra);
        QVERIFY2(r.status == status, qPrintable(context(r)));
        const QStringList lines = reports(r.err);
        QVERIFY2(lines.size() == 1, qPrintable(context(r)));
        QVERIFY2(lines.first().contains(report), qPrintable(context(r)));
        QVERIFY2(!r.out.contains(QLatin1String("not reached")), qPrintable(context(r)));
        // Stopped at once, never by the test's own patience.
        QVERIFY2(r.milliseconds < 30000, qPrintable(context(r)));
    }

    // --- The command line and the globals ---------------------------------------

    void databaseUrlHoldsTheUrlGivenOrNothing()
    {
        const QString script = writeScript(QStringLiteral("url.js"), QStringLiteral("print('[' + DatabaseUrl + ']');\n"));
        Run r = run(script);
        QVERIFY2(r.status == 0, qPrintable(context(r)));
        QCOMPARE(r.out.trimmed(), QLatin1Char('[') + db.url() + QLatin1Char(']'));
        r = run(script, {}, false);
        QVERIFY2(r.status == 0, qPrintable(context(r)));
        QCOMPARE(r.out.trimmed(), QStringLiteral("[]"));
    }

    void whatAScriptSavesIsInTheDatabase()
    {
        const QString script = writeScript(QStringLiteral("save.js"), QStringLiteral(
            "var cnx = CreateObject('ADODB.Connection');\n"
            "cnx.Open(DatabaseUrl);\n"
            "var engine = CreateObject('VendimarBI.EEngine');\n"
            "engine.SetConnection(cnx, 1);\n"
            "var p = engine.CrearEntidad(VendimarBI.cPerspectiva);\n"
            "p.Nombre = 'Desde un script';\n"
            "assert(engine.GuardarEntidad(p));\n"
            "print(p.Sys_PK);\n"));
        const Run r = run(script);
        QVERIFY2(r.status == 0, qPrintable(context(r)));
        const int key = r.out.trimmed().toInt();
        QVERIFY(key > 0);
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_Nombre FROM ut_bi_Perspectiva WHERE Sys_PK=%1").arg(key)).toString(),
                 QStringLiteral("Desde un script"));
    }

    void missingScriptFileIsAUsageError()
    {
        const Run r = run(folder.filePath(QStringLiteral("no-such-script.js")));
        QCOMPARE(r.status, 2);
        QVERIFY2(r.err.contains(QLatin1String("vbi script: cannot read")), qPrintable(context(r)));
    }

    void badCommandLineIsAUsageError_data()
    {
        QTest::addColumn<QStringList>("extra");
        QTest::newRow("zeroLimit") << QStringList{QStringLiteral("--time-limit"), QStringLiteral("0")};
        QTest::newRow("limitWithoutValue") << QStringList{QStringLiteral("--time-limit")};
        QTest::newRow("unknownOption") << QStringList{QStringLiteral("--fast")};
        QTest::newRow("extraArgument") << QStringList{QStringLiteral("another")};
    }
    void badCommandLineIsAUsageError()
    {
        QFETCH(QStringList, extra);
        const QString script = writeScript(QStringLiteral("nothing.js"), QStringLiteral("print('ran');\n"));
        const Run r = run(script, extra);
        QCOMPARE(r.status, 2);
        QVERIFY2(r.err.contains(QLatin1String("Usage: vbi script FILE.js [URL] [--time-limit SECONDS]")), qPrintable(context(r)));
        QVERIFY(!r.out.contains(QLatin1String("ran")));
    }

    // --- The guide's examples ---------------------------------------------------

    void everyGuideExampleRuns_data()
    {
        QTest::addColumn<QString>("code");
        const QList<Example> examples = docsExamples();
        if (examples.size() < 5)
            QTest::newRow("docs/scripting.md has fewer examples than it should") << QString();
        for (const Example& example : examples) {
            const QByteArray name = QStringLiteral("docs/scripting.md:%1").arg(example.line).toUtf8();
            QTest::newRow(name.constData()) << example.code;
        }
    }
    void everyGuideExampleRuns()
    {
        QFETCH(QString, code);
        QVERIFY2(!code.trimmed().isEmpty(), "docs/scripting.md keeps its examples in ```js blocks");
        const QString script = writeScript(QStringLiteral("example.js"), code);
        const Run r = run(script);
        QVERIFY2(r.status == 0, qPrintable(context(r) + QStringLiteral("\n--- example\n") + code));
        QVERIFY2(reports(r.err).isEmpty(), qPrintable(context(r)));
    }
};

QTEST_GUILESS_MAIN(TstScript)
#include "tst_script.moc"
