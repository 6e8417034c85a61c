#pragma once
// Modal windows for scripts. The component's entry points run their dialogs
// modally inside the call, so a script cannot answer them after the call:
// it registers handlers first, and this driver hands each modal window that
// appears to the next handler, as a user would meet them one after another.
//
// A window counts as appearing whenever it is the active modal window and
// no handler is busy with it: when it first shows, and again when its
// handler returned and left it open. A window with no handler waiting is
// reported and cancelled, so a script never hangs on a dialog.
//
// Window operations act as a user: typing replaces a box's text through its
// editing functions, clicks go through the button or, for lists, trees and
// tabs, through mouse events on the entry, so the dialog's own handlers run.

#include <QHash>
#include <QJSValue>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QTimer>
#include <functional>

class AutomationBridge;
class QJSEngine;
class QWidget;

class WindowDriver : public QObject {
    Q_OBJECT

public:
    WindowDriver(QJSEngine& js, AutomationBridge& bridge, QObject* parent = nullptr);

    void setWindowFactory(const QJSValue& factory) { m_windowFactory = factory; }
    void addHandler(const QJSValue& handler) { m_handlers.append(handler); }
    int pendingHandlers() const { return int(m_handlers.size()); }
    // Every modal window seen, in order: {objectName, title, message, kind}.
    QJSValue seen();

    void start();
    void stop();
    // From now on every modal window is cancelled as soon as it shows: the
    // script is being stopped.
    void setStopping(bool stopping) { m_stopping = stopping; }

    // One operation of the window with that id; raises vb::AutomationError.
    QJSValue operation(int id, const QString& name, const QJSValueList& args);

    // A window shown with no handler waiting: the report line, after which
    // the window has been cancelled.
    std::function<void(const QString& report)> onUnexpected;
    // A handler that threw: the error and the window it was handling.
    std::function<void(const QJSValue& error, const QString& window)> onHandlerError;

    void clearScriptValues();

    // The window's name, title and, for a message box, its text, for reports.
    static QString describe(QWidget* window);
    // As the close box or Escape would: the dialog's cancel, a message box's
    // escape button.
    static void cancel(QWidget* window);

private:
    void poll();
    void runHandler(QPointer<QWidget> window, QJSValue handler);
    QJSValue windowObject(QWidget* window);

    QJSEngine& m_js;
    AutomationBridge& m_bridge;
    QTimer m_timer;
    QJSValue m_windowFactory;
    QList<QJSValue> m_handlers;
    // Windows whose handler is running; nested windows come and go above them.
    QList<QPointer<QWidget>> m_busy;
    // Windows already handed to a handler, so a report can say one was left open.
    QList<QPointer<QWidget>> m_handled;
    bool m_dispatchPending = false;
    bool m_stopping = false;
    QList<QStringList> m_seen;
    int m_nextId = 1;
    QHash<int, QPointer<QWidget>> m_windows;
    QHash<QWidget*, int> m_idOf;
    QHash<int, QJSValue> m_windowObjects;
};
