#pragma once

#include "library/dialogo.h"

class ArbolClaves;
class QPushButton;
class QShowEvent;
class QTreeWidgetItem;

// What the two libraries and the indicator picker share: the keyed tree of
// perspectives (`tvw`) with its two pictures, the row key behind a node, and
// the work done when the dialog is loaded. The engine sets Engine after
// constructing the dialog and only then shows it, so "loaded" means the
// first time the dialog is shown.
class DialogoBiblioteca : public Dialogo {
    Q_OBJECT

public:
    explicit DialogoBiblioteca(QWidget* parent = nullptr);

protected:
    // Runs once, on the first show, with Engine already set.
    virtual void alCargar() = 0;
    void showEvent(QShowEvent* event) override;

    ArbolClaves* arbol() const { return tvw; }
    // The engine's ADOCnn, or none when there is no engine.
    QObject* conexion() const;
    // The node the user selected, or none. Only a selected node counts: the
    // tree giving itself a current node on getting the focus is no choice.
    QTreeWidgetItem* nodoSeleccionado() const;
    // Whether the node is a perspective (tag "P") rather than a metric or an indicator.
    static bool esPerspectiva(const QTreeWidgetItem* nodo);
    // The row key of a node: the number after the three-character prefix.
    static int claveFila(const QTreeWidgetItem* nodo);
    // Where a new item goes: under the selected perspective, beside the
    // selected metric or indicator, or at the top when nothing is selected.
    int padreParaNuevo() const;
    // The Yes/No question before any delete, No being the default.
    static bool confirmarEliminacion();
    // A push button with its objectName and caption.
    QPushButton* boton(const char* nombre, const QString& texto);
    // Gives the buttons one width, with room around the widest caption.
    static void igualarAnchos(const QList<QPushButton*>& botones);
    // Leaves the dialog without a default button, for dialogs that have none.
    void sinBotonPorDefecto();
    // The library layout: the tree on the left, the action buttons stacked on
    // the right with the close button at the bottom, which unloads the dialog.
    void disponerBiblioteca(const QList<QPushButton*>& acciones, QPushButton* cerrar);

    static const QString SeleccioneUnElemento;

private:
    ArbolClaves* tvw = nullptr;
    bool m_cargado = false;
};
