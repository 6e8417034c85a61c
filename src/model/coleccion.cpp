#include "coleccion.h"

#include "vb/automationerror.h"

Coleccion::Coleccion(QObject* parent)
    : QObject(parent)
{
}

QObject* Coleccion::Item(int index) const
{
    if (index < 1 || index > m_items.size())
        vb::raise(vb::ErrInvalidProcedureCall);
    return m_items.at(index - 1);
}

void Coleccion::Add(QObject* item)
{
    if (!item)
        vb::raise(vb::ErrObjectNotSet);
    item->setParent(this);
    m_items.append(item);
}
