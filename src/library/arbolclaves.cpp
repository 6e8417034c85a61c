#include "arbolclaves.h"

#include <QSet>

ArbolClaves::ArbolClaves(QWidget* parent)
    : QTreeWidget(parent)
{
    setColumnCount(1);
    setHeaderHidden(true);

    // The hash and the ordered list hold raw item pointers. Whoever removes
    // nodes behind our back (QTreeWidget::clear, deleting or taking an item)
    // must not leave them dangling, so the bookkeeping follows the model.
    connect(model(), &QAbstractItemModel::modelAboutToBeReset, this, [this] { olvidarTodo(); });
    connect(model(), &QAbstractItemModel::rowsAboutToBeRemoved, this,
            [this](const QModelIndex& padre, int primera, int ultima) { olvidarFilas(padre, primera, ultima); });
}

ArbolClaves::~ArbolClaves()
{
    // The model outlives this class's members (QWidget deletes it later, as a
    // child) and resets itself on the way out: stop listening first.
    disconnect(model(), nullptr, this, nullptr);
}

void ArbolClaves::setImagenes(const QList<QIcon>& imagenes)
{
    m_imagenes = imagenes;
}

void ArbolClaves::limpiar()
{
    olvidarTodo();
    clear();
}

QTreeWidgetItem* ArbolClaves::agregar(const QString& parentKey, const QString& key, const QString& text, int image,
                                      const QString& tag)
{
    // An empty key means a node nobody looks up, as in a classic tree view:
    // it is never "taken".
    if (!key.isEmpty() && m_nodos.contains({key}))
        return nullptr;
    QTreeWidgetItem* padre = nullptr;
    if (!parentKey.isEmpty()) {
        padre = m_nodos.value({parentKey});
        if (!padre)
            return nullptr;
    }

    // Everything is set before the item joins the tree, so the model reports
    // one insertion instead of an insertion followed by a change per role.
    auto* item = new QTreeWidgetItem;
    item->setText(0, text);
    item->setData(0, RolClave, key);
    item->setData(0, RolTag, tag);
    item->setData(0, RolImagen, image);
    if (image >= 1 && image <= m_imagenes.size())
        item->setIcon(0, m_imagenes.at(image - 1));

    if (padre)
        padre->addChild(item);
    else
        addTopLevelItem(item);

    if (!key.isEmpty())
        m_nodos.insert({key}, item);
    m_orden.append(item);
    return item;
}

QTreeWidgetItem* ArbolClaves::nodo(const QString& key) const
{
    return m_nodos.value({key});
}

QTreeWidgetItem* ArbolClaves::nodoEn(int position) const
{
    if (position < 1 || position > m_orden.size())
        return nullptr;
    return m_orden.at(position - 1);
}

QString ArbolClaves::clave(const QTreeWidgetItem* item)
{
    return item ? item->data(0, RolClave).toString() : QString();
}

QString ArbolClaves::tag(const QTreeWidgetItem* item)
{
    return item ? item->data(0, RolTag).toString() : QString();
}

int ArbolClaves::imagen(const QTreeWidgetItem* item)
{
    return item ? item->data(0, RolImagen).toInt() : 0;
}

void ArbolClaves::olvidarTodo()
{
    m_nodos.clear();
    m_orden.clear();
}

void ArbolClaves::olvidarFilas(const QModelIndex& padre, int primera, int ultima)
{
    if (m_orden.isEmpty())
        return;

    // The rows are still in the tree while this runs, subtrees included.
    QTreeWidgetItem* itemPadre = padre.isValid() ? itemFromIndex(padre) : nullptr;
    QSet<QTreeWidgetItem*> quitados;
    QList<QTreeWidgetItem*> pendientes;
    for (int fila = primera; fila <= ultima; ++fila) {
        QTreeWidgetItem* item = itemPadre ? itemPadre->child(fila) : topLevelItem(fila);
        if (item)
            pendientes.append(item);
    }
    while (!pendientes.isEmpty()) {
        QTreeWidgetItem* item = pendientes.takeLast();
        quitados.insert(item);
        const ClaveNodo key{clave(item)};
        if (m_nodos.value(key) == item)
            m_nodos.remove(key);
        for (int i = 0; i < item->childCount(); ++i)
            pendientes.append(item->child(i));
    }
    if (!quitados.isEmpty())
        m_orden.removeIf([&quitados](QTreeWidgetItem* item) { return quitados.contains(item); });
}
