#pragma once

#include "clavenodo.h"

#include <QHash>
#include <QIcon>
#include <QList>
#include <QTreeWidget>

// A tree view with keyed nodes, as the library dialogs use it: each node has
// a text key ("KP_12"), a text, an image from the tree's own image list
// (counting from 1), and a tag ("P", "M", "I"). Nodes are found by key
// through a hash, and remembered in the order they were added.
class ArbolClaves : public QTreeWidget {
    Q_OBJECT

public:
    static constexpr int RolClave = Qt::UserRole;
    static constexpr int RolTag = Qt::UserRole + 1;
    // The image-list index the node was given (0 for none), kept because an
    // icon alone cannot tell which entry of the list it came from.
    static constexpr int RolImagen = Qt::UserRole + 2;

    explicit ArbolClaves(QWidget* parent = nullptr);
    ~ArbolClaves() override;

    // The image list: index 1 is the first icon.
    void setImagenes(const QList<QIcon>& imagenes);
    // Removes every node.
    void limpiar();
    // Adds a node at the top (parentKey empty) or as the last child of the
    // node with that key. Answers nullptr, adding nothing, when the parent
    // key is unknown or the key is already taken. An empty key is allowed
    // and never counts as taken: such a node cannot be looked up.
    QTreeWidgetItem* agregar(const QString& parentKey, const QString& key, const QString& text, int image,
                             const QString& tag);
    // The node with that key, or nullptr.
    QTreeWidgetItem* nodo(const QString& key) const;
    // The node at a position of the node collection, counting from 1 in the
    // order of adding; nullptr outside 1 .. count.
    QTreeWidgetItem* nodoEn(int position) const;
    int cuenta() const { return int(m_orden.size()); }

    static QString clave(const QTreeWidgetItem* item);
    static QString tag(const QTreeWidgetItem* item);
    static int imagen(const QTreeWidgetItem* item);

private:
    void olvidarTodo();
    void olvidarFilas(const QModelIndex& padre, int primera, int ultima);

    QList<QIcon> m_imagenes;
    QHash<ClaveNodo, QTreeWidgetItem*> m_nodos;
    QList<QTreeWidgetItem*> m_orden;
};
