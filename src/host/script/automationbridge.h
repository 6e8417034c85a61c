#pragma once
// Late binding for scripts: members found by name on an object's
// meta-object, arguments converted the way automation converts them, and
// every object handed to the script wrapped once, so that identity holds
// ("a === b" when both are the same component object).
//
// Members are reached through the object's own qt_metacall, never through
// QJSEngine's QObject wrappers: the component reports errors by throwing
// vb::AutomationError, and an exception must not cross Qt's or the script
// engine's frames. Every entry point here may throw vb::AutomationError;
// the caller (ScriptHost) catches it and turns it into a script exception.

#include <QHash>
#include <QJSValue>
#include <QList>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QVariant>

class QJSEngine;

class AutomationBridge {
public:
    explicit AutomationBridge(QJSEngine& js);
    ~AutomationBridge();
    AutomationBridge(const AutomationBridge&) = delete;
    AutomationBridge& operator=(const AutomationBridge&) = delete;

    // The prelude's pieces: the prototype that marks an object reference
    // passed in from the script, and the function that makes the script's
    // proxy for an object id.
    void setReferencePrototype(const QJSValue& prototype) { m_refPrototype = prototype; }
    void setProxyFactory(const QJSValue& factory) { m_proxyFactory = factory; }

    // A new object by programmatic name; raises 429 for a name nobody serves.
    QJSValue createObject(const QString& progId);
    static QStringList progIds();

    // "p" and the property's name, "m" and the method's name, or "" when the
    // object has no such member. Names match exactly first, then ignoring case,
    // as automation's name lookup does.
    QString memberKind(int id, const QString& name);
    QStringList propertyNames(int id);
    QStringList methodNames(int id);
    QString className(int id) const;

    QJSValue get(int id, const QString& name);
    void set(int id, const QString& name, const QJSValue& value);
    QJSValue call(int id, const QString& name, const QJSValue& args);

    // Any property of any object (the windows' own properties included),
    // read without going through the script engine's QObject wrapper.
    QJSValue readAnyProperty(QObject* object, const QString& name);

    // The script's value for a component value: numbers, text, booleans,
    // undefined for Empty, null for Null and for no object, the proxy for an object.
    QJSValue toScript(const QVariant& value);
    QJSValue proxyFor(QObject* object);
    // A script value as an automation variant: undefined is Empty, null is Null.
    QVariant toVariant(const QJSValue& value);

    // Objects the script owns, as a COM caller owns what it created or was
    // handed: released at the end, newest first, unless something else has
    // taken them over (given them a parent) or they are gone already.
    void adopt(QObject* object);
    void releaseOwned();
    // Drops every script value held here, before the engine goes.
    void clearScriptValues();

private:
    QObject* objectFor(int id, const QString& member) const;
    QString sourceOf(int id, const QString& member) const;
    QVariant readProperty(QObject* object, const QMetaProperty& property);
    void writeProperty(QObject* object, const QMetaProperty& property, const QVariant& value, const QString& what);
    QVariant convert(const QVariant& value, QMetaType target, const QString& what);

    QJSEngine& m_js;
    QJSValue m_refPrototype;
    QJSValue m_proxyFactory;
    int m_nextId = 1;
    QHash<int, QPointer<QObject>> m_objects;
    QHash<QObject*, int> m_idOf;
    QHash<int, QString> m_classOf;
    QHash<int, QJSValue> m_proxies;
    QList<QPointer<QObject>> m_owned;
    // Receives the destroyed() signals; declared last so it goes first and no
    // signal arrives while the tables above are being torn down.
    QObject m_context;
};
