#pragma once
// Checks shared by the entity tests: automation identity and member order.

#include <QMetaObject>
#include <QMetaProperty>
#include <QStringList>
#include <QTest>

inline QString classInfo(const QMetaObject& meta, const char* name)
{
    const int index = meta.indexOfClassInfo(name);
    return index < 0 ? QString() : QString::fromLatin1(meta.classInfo(index).value());
}

inline QStringList propertyNames(const QMetaObject& meta)
{
    QStringList names;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        names.append(QString::fromLatin1(meta.property(i).name()));
    return names;
}

inline QStringList invokableNames(const QMetaObject& meta)
{
    QStringList names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        if (meta.method(i).methodType() == QMetaMethod::Method)
            names.append(QString::fromLatin1(meta.method(i).name()));
    }
    return names;
}

// The class is creatable by name and carries its fixed identifiers.
inline void verifyAutomationIdentity(const QMetaObject& meta, const QString& classId, const QString& interfaceId)
{
    QCOMPARE(classInfo(meta, "ClassID"), classId);
    QCOMPARE(classInfo(meta, "InterfaceID"), interfaceId);
    QCOMPARE(classInfo(meta, "ToSuperClass"), QString::fromLatin1(meta.className()));
    QVERIFY(meta.constructorCount() >= 1);
    QObject* created = meta.newInstance();
    QVERIFY(created);
    delete created;
}
