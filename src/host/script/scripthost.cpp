#include "scripthost.h"

#include "automationbridge.h"
#include "engine/msgbox.h"
#include "model/vendimarbi.h"
#include "prelude.h"
#include "vb/automationerror.h"
#include "watchdog.h"
#include "windowdriver.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFile>
#include <QFileInfo>
#include <QJSEngine>
#include <QMetaEnum>
#include <QTextStream>
#include <cstdio>

namespace {

constexpr int ErrInternal = 51;

void writeLine(FILE* stream, const QString& text)
{
    const QByteArray bytes = text.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stream);
    std::fflush(stream);
}

int usage()
{
    writeLine(stderr, QStringLiteral("Usage: vbi script FILE.js [URL] [--time-limit SECONDS]"));
    return ScriptHost::UsageError;
}

} // namespace

ScriptHost::ScriptHost(QObject* parent)
    : QObject(parent)
{
}

ScriptHost::~ScriptHost() = default;

int ScriptHost::run(const QString& file, const QString& databaseUrl, double timeLimitSeconds)
{
    QFile input(file);
    if (!input.open(QIODevice::ReadOnly)) {
        report(QStringLiteral("cannot read %1: %2").arg(file, input.errorString()));
        return UsageError;
    }
    const QString source = QString::fromUtf8(input.readAll());
    m_file = QFileInfo(file).absoluteFilePath();

    // Pickers must be Qt's own widgets, which the window handlers can drive;
    // a desktop's native picker would be out of reach.
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    vbui::instalarTraducciones();

    m_js = std::make_unique<QJSEngine>();
    m_bridge = std::make_unique<AutomationBridge>(*m_js);
    m_windows = new WindowDriver(*m_js, *m_bridge, this);
    m_windows->onUnexpected = [this](const QString& window) {
        report(QStringLiteral("unexpected window with no handler waiting: %1; it was cancelled and the script stopped")
                   .arg(window));
        stopScript(UnexpectedWindow);
    };
    m_windows->onHandlerError = [this](const QJSValue& error, const QString& window) {
        // A handler cut short by the time limit is that limit's doing, reported as such.
        if (m_watchdog->expired()) {
            stopScript(TimeLimitReached);
            return;
        }
        report(QStringLiteral("the handler of window %1 failed: %2; the window was cancelled and the script stopped")
                   .arg(window, describeError(error)));
        stopScript(ScriptFailed);
    };
    m_watchdog = std::make_unique<Watchdog>([this] {
        // On the watchdog's thread: interrupting is safe from here; the
        // windows are cancelled on the main thread as soon as it gets there.
        m_js->setInterrupted(true);
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (m_windows)
                    m_windows->setStopping(true);
            },
            Qt::QueuedConnection);
    });

    QJSEngine::setObjectOwnership(this, QJSEngine::CppOwnership);
    const QJSValue prelude = m_js->evaluate(preludeSource(), QStringLiteral("vbi-prelude.js"));
    const QJSValue installed =
        prelude.isError() ? prelude : prelude.call({m_js->newQObject(this), m_js->globalObject(), QJSValue(databaseUrl)});
    int status = Succeeded;
    if (installed.isError()) {
        report(QStringLiteral("the script host could not start: %1").arg(describeError(installed)));
        status = ScriptFailed;
    } else {
        m_watchdog->start(timeLimitSeconds);
        m_windows->start();
        const QJSValue result = m_js->evaluate(source, m_file, 1);
        m_windows->stop();
        m_watchdog->stop();

        if (m_watchdog->expired()) {
            report(QStringLiteral("time limit of %1 s reached; the script was stopped "
                                  "(give more with --time-limit SECONDS or setTimeLimit(seconds))")
                       .arg(m_watchdog->seconds()));
            status = TimeLimitReached;
        } else if (m_stopStatus != Succeeded) {
            status = m_stopStatus; // reported when it happened
        } else if (result.isError()) {
            report(QStringLiteral("uncaught exception: %1").arg(describeError(result)));
            status = ScriptFailed;
        } else if (!m_failedAssertion.isEmpty()) {
            report(QStringLiteral("an assertion failed (the script caught it and went on): %1").arg(m_failedAssertion));
            status = ScriptFailed;
        } else if (m_windows->pendingHandlers() > 0) {
            report(QStringLiteral("%1 window handler(s) registered with onNextWindow were never used: "
                                  "no window appeared for them")
                       .arg(m_windows->pendingHandlers()));
            status = ScriptFailed;
        }
    }

    // The script's objects go as a COM host's references would at the end,
    // then the script values, then the engine itself.
    m_windows->clearScriptValues();
    m_bridge->clearScriptValues();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    m_bridge->releaseOwned();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    delete m_windows;
    m_windows = nullptr;
    m_bridge.reset();
    m_js.reset();
    return status;
}

void ScriptHost::report(const QString& line)
{
    writeLine(stderr, QStringLiteral("vbi script: ") + line);
}

void ScriptHost::stopScript(int status)
{
    if (m_stopStatus != Succeeded)
        return;
    m_stopStatus = status;
    m_windows->setStopping(true);
    m_js->setInterrupted(true);
}

QString ScriptHost::describeError(const QJSValue& error) const
{
    if (!error.isObject())
        return QStringLiteral("%1 (a thrown value, not an Error)").arg(error.toString());
    QString location;
    // The innermost frame in the user's file: errors raised by the host's
    // own functions (assert, the proxies) carry the prelude's line otherwise.
    const QStringList frames = error.property(QStringLiteral("stack")).toString().split(QLatin1Char('\n'));
    const QString fileName = QFileInfo(m_file).fileName();
    for (const QString& frame : frames) {
        const int at = frame.lastIndexOf(m_file);
        if (at < 0)
            continue;
        const QString line = frame.mid(at + m_file.size()).section(QLatin1Char(':'), 1, 1);
        location = fileName + QLatin1Char(':') + line;
        break;
    }
    if (location.isEmpty() && error.property(QStringLiteral("fileName")).toString().endsWith(m_file))
        location = fileName + QLatin1Char(':') + error.property(QStringLiteral("lineNumber")).toString();

    QString text;
    const QJSValue number = error.property(QStringLiteral("number"));
    const QString source = error.property(QStringLiteral("source")).toString();
    if (number.isNumber()) {
        text = QStringLiteral("error %1").arg(number.toInt());
        if (!error.property(QStringLiteral("source")).isUndefined() && !source.isEmpty())
            text += QStringLiteral(" in ") + source;
        const QJSValue description = error.property(QStringLiteral("description"));
        text += QStringLiteral(": ")
            + (description.isString() ? description.toString() : error.property(QStringLiteral("message")).toString());
    } else {
        text = error.toString();
    }
    return location.isEmpty() ? text : location + QStringLiteral(": ") + text;
}

template <typename Action>
QJSValue ScriptHost::guarded(const QString& source, Action&& action)
{
    try {
        return action();
    } catch (const vb::AutomationError& e) {
        throwScriptError(e.number(), e.description(), source);
    } catch (const std::exception& e) {
        throwScriptError(ErrInternal, QStringLiteral("Internal error: %1").arg(QString::fromLocal8Bit(e.what())), source);
    } catch (...) {
        throwScriptError(ErrInternal, QStringLiteral("Internal error"), source);
    }
    return QJSValue();
}

void ScriptHost::throwScriptError(int number, const QString& message, const QString& source)
{
    QJSValue error = m_js->newErrorObject(QJSValue::GenericError, message);
    error.setProperty(QStringLiteral("number"), number);
    error.setProperty(QStringLiteral("description"), message);
    error.setProperty(QStringLiteral("source"), source);
    m_js->throwError(error);
}

void ScriptHost::setup(const QJSValue& referencePrototype, const QJSValue& proxyFactory, const QJSValue& windowFactory)
{
    m_bridge->setReferencePrototype(referencePrototype);
    m_bridge->setProxyFactory(proxyFactory);
    m_windows->setWindowFactory(windowFactory);
}

QJSValue ScriptHost::createObject(const QString& progId)
{
    return guarded(QStringLiteral("CreateObject"), [&] { return m_bridge->createObject(progId); });
}

QString ScriptHost::memberKind(int id, const QString& name)
{
    return m_bridge->memberKind(id, name);
}

QStringList ScriptHost::propertyNames(int id)
{
    return m_bridge->propertyNames(id);
}

QStringList ScriptHost::methodNames(int id)
{
    return m_bridge->methodNames(id);
}

QJSValue ScriptHost::get(int id, const QString& name)
{
    return guarded(m_bridge->className(id) + QLatin1Char('.') + name, [&] { return m_bridge->get(id, name); });
}

void ScriptHost::set(int id, const QString& name, const QJSValue& value)
{
    guarded(m_bridge->className(id) + QLatin1Char('.') + name, [&] {
        m_bridge->set(id, name, value);
        return QJSValue();
    });
}

QJSValue ScriptHost::call(int id, const QString& name, const QJSValue& args)
{
    return guarded(m_bridge->className(id) + QLatin1Char('.') + name, [&] { return m_bridge->call(id, name, args); });
}

QJSValue ScriptHost::windowOp(int id, const QString& name, const QJSValue& args)
{
    return guarded(QStringLiteral("Window.") + name, [&] {
        QJSValueList list;
        const int length = args.property(QStringLiteral("length")).toInt();
        for (int i = 0; i < length; ++i)
            list.append(args.property(quint32(i)));
        return m_windows->operation(id, name, list);
    });
}

void ScriptHost::addWindowHandler(const QJSValue& handler)
{
    m_windows->addHandler(handler);
}

int ScriptHost::pendingWindowHandlers() const
{
    return m_windows->pendingHandlers();
}

QJSValue ScriptHost::windowsSeen()
{
    return m_windows->seen();
}

void ScriptHost::print(const QString& text)
{
    writeLine(stdout, text);
}

void ScriptHost::printError(const QString& text)
{
    writeLine(stderr, text);
}

// A failed assertion fails the run even when the script catches it.
void ScriptHost::assertionFailed(const QJSValue& error)
{
    if (m_failedAssertion.isEmpty())
        m_failedAssertion = describeError(error);
}

void ScriptHost::setTimeLimit(double seconds)
{
    m_watchdog->restart(seconds);
}

void ScriptHost::collectGarbage()
{
    m_js->collectGarbage();
}

QJSValue ScriptHost::enumerations()
{
    // The type library's constants, by name (VendimarBI.cMetrica) and by
    // enumeration (VendimarBI.TiposEntidades.cMetrica).
    QJSValue all = m_js->newObject();
    const QMetaObject& mo = VendimarBI::staticMetaObject;
    for (int e = 0; e < mo.enumeratorCount(); ++e) {
        const QMetaEnum enumeration = mo.enumerator(e);
        QJSValue group = m_js->newObject();
        for (int k = 0; k < enumeration.keyCount(); ++k) {
            const QString key = QString::fromLatin1(enumeration.key(k));
            group.setProperty(key, enumeration.value(k));
            all.setProperty(key, enumeration.value(k));
        }
        all.setProperty(QString::fromLatin1(enumeration.name()), group);
    }
    return all;
}

int runScriptCommand(const QStringList& args)
{
    QStringList positional;
    double timeLimit = ScriptHost::DefaultTimeLimit;
    for (int i = 0; i < args.size(); ++i) {
        const QString& arg = args.at(i);
        QString value;
        if (arg == QLatin1String("--time-limit")) {
            if (i + 1 >= args.size())
                return usage();
            value = args.at(++i);
        } else if (arg.startsWith(QLatin1String("--time-limit="))) {
            value = arg.section(QLatin1Char('='), 1);
        } else if (arg.startsWith(QLatin1String("--"))) {
            return usage();
        } else {
            positional.append(arg);
            continue;
        }
        bool ok = false;
        timeLimit = value.toDouble(&ok);
        if (!ok || !(timeLimit > 0))
            return usage();
    }
    if (positional.isEmpty() || positional.size() > 2)
        return usage();
    ScriptHost host;
    return host.run(positional.at(0), positional.value(1), timeLimit);
}
