#pragma once

#include <QList>
#include <QObject>

// A one-based collection of automation objects, as VB's Collection: Count,
// Item(i) from 1, and iteration in C++. It owns the objects added to it.
class Coleccion : public QObject {
    Q_OBJECT
    Q_PROPERTY(int Count READ Count)

public:
    Q_INVOKABLE explicit Coleccion(QObject* parent = nullptr);

    int Count() const { return int(m_items.size()); }
    // Raises 5 for a position outside 1 .. Count.
    Q_INVOKABLE QObject* Item(int index) const;
    Q_INVOKABLE void Add(QObject* item);

    QList<QObject*>::const_iterator begin() const { return m_items.cbegin(); }
    QList<QObject*>::const_iterator end() const { return m_items.cend(); }

private:
    QList<QObject*> m_items;
};
