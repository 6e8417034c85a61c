#pragma once
// `vbi script FILE.js [URL]`: runs JavaScript against the automation objects
// the way a VBScript host drove the COM server, with modal windows answered
// by the script's own handlers and a time limit so no script runs forever.

#include <QJSValue>
#include <QObject>
#include <QString>
#include <QStringList>
#include <memory>

class AutomationBridge;
class QJSEngine;
class Watchdog;
class WindowDriver;

class ScriptHost : public QObject {
    Q_OBJECT

public:
    // The exit statuses, so callers (and tests) can tell the outcomes apart.
    enum Status {
        Succeeded = 0,
        ScriptFailed = 1,    // an uncaught exception, a failed assertion, unused window handlers
        UsageError = 2,      // bad command line or unreadable file
        TimeLimitReached = 3,
        UnexpectedWindow = 4,
    };

    static constexpr double DefaultTimeLimit = 60;

    explicit ScriptHost(QObject* parent = nullptr);
    ~ScriptHost() override;

    int run(const QString& file, const QString& databaseUrl, double timeLimitSeconds);

    // What the prelude calls. None of them lets a C++ exception out: an
    // automation error becomes a script exception with number and message.
    Q_INVOKABLE void setup(const QJSValue& referencePrototype, const QJSValue& proxyFactory,
                           const QJSValue& windowFactory);
    Q_INVOKABLE QJSValue createObject(const QString& progId);
    Q_INVOKABLE QString memberKind(int id, const QString& name);
    Q_INVOKABLE QStringList propertyNames(int id);
    Q_INVOKABLE QStringList methodNames(int id);
    Q_INVOKABLE QJSValue get(int id, const QString& name);
    Q_INVOKABLE void set(int id, const QString& name, const QJSValue& value);
    Q_INVOKABLE QJSValue call(int id, const QString& name, const QJSValue& args);
    Q_INVOKABLE QJSValue windowOp(int id, const QString& name, const QJSValue& args);
    Q_INVOKABLE void addWindowHandler(const QJSValue& handler);
    Q_INVOKABLE int pendingWindowHandlers() const;
    Q_INVOKABLE QJSValue windowsSeen();
    Q_INVOKABLE void print(const QString& text);
    Q_INVOKABLE void printError(const QString& text);
    Q_INVOKABLE void assertionFailed(const QJSValue& error);
    Q_INVOKABLE void setTimeLimit(double seconds);
    Q_INVOKABLE void collectGarbage();
    Q_INVOKABLE QJSValue enumerations();

private:
    template <typename Action>
    QJSValue guarded(const QString& source, Action&& action);
    void throwScriptError(int number, const QString& message, const QString& source);
    // Ends the script: later windows are cancelled and the script engine
    // stops at its next step.
    void stopScript(int status);
    // "file:line: message" for an error value, the line taken from the
    // innermost frame of the user's script.
    QString describeError(const QJSValue& error) const;
    void report(const QString& line);

    QString m_file;
    std::unique_ptr<QJSEngine> m_js;
    std::unique_ptr<AutomationBridge> m_bridge;
    WindowDriver* m_windows = nullptr;
    std::unique_ptr<Watchdog> m_watchdog;
    int m_stopStatus = Succeeded;
    QString m_failedAssertion;
};

// The `script` command: arguments after the command name.
int runScriptCommand(const QStringList& args);
