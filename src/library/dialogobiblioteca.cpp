#include "dialogobiblioteca.h"

#include "arbolclaves.h"
#include "engine/eengine.h"
#include "engine/msgbox.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <QShowEvent>
#include <QStyle>

const QString DialogoBiblioteca::SeleccioneUnElemento = QStringLiteral("Seleccione un elemento");

DialogoBiblioteca::DialogoBiblioteca(QWidget* parent)
    : Dialogo(parent)
{
    tvw = new ArbolClaves(this);
    tvw->setObjectName(QStringLiteral("tvw"));
    tvw->setSelectionMode(QAbstractItemView::SingleSelection);
    // Image 1 for perspectives, image 2 for metrics or indicators.
    tvw->setImagenes({style()->standardIcon(QStyle::SP_DirIcon), style()->standardIcon(QStyle::SP_FileIcon)});
}

void DialogoBiblioteca::showEvent(QShowEvent* event)
{
    Dialogo::showEvent(event);
    if (m_cargado)
        return;
    m_cargado = true;
    alCargar();
}

QObject* DialogoBiblioteca::conexion() const
{
    EEngine* e = engine();
    return e ? e->ADOCnn() : nullptr;
}

QTreeWidgetItem* DialogoBiblioteca::nodoSeleccionado() const
{
    const QList<QTreeWidgetItem*> seleccion = tvw->selectedItems();
    return seleccion.isEmpty() ? nullptr : seleccion.first();
}

bool DialogoBiblioteca::esPerspectiva(const QTreeWidgetItem* nodo)
{
    return ArbolClaves::tag(nodo) == QLatin1String("P");
}

int DialogoBiblioteca::claveFila(const QTreeWidgetItem* nodo)
{
    return ArbolClaves::clave(nodo).mid(3).toInt();
}

int DialogoBiblioteca::padreParaNuevo() const
{
    const QTreeWidgetItem* nodo = nodoSeleccionado();
    if (!nodo)
        return 0;
    if (esPerspectiva(nodo))
        return claveFila(nodo);
    return claveFila(nodo->parent());
}

bool DialogoBiblioteca::confirmarEliminacion()
{
    return vbui::MsgBox(QStringLiteral("¿Seguro desea eliminar este elemento?"), vbui::vbYesNo | vbui::vbDefaultButton2)
           == vbui::vbYes;
}

QPushButton* DialogoBiblioteca::boton(const char* nombre, const QString& texto)
{
    auto* b = new QPushButton(texto, this);
    b->setObjectName(QLatin1String(nombre));
    return b;
}

void DialogoBiblioteca::igualarAnchos(const QList<QPushButton*>& botones)
{
    int ancho = 96;
    for (const QPushButton* b : botones)
        ancho = qMax(ancho, b->sizeHint().width() + 24);
    for (QPushButton* b : botones)
        b->setMinimumWidth(ancho);
}

void DialogoBiblioteca::sinBotonPorDefecto()
{
    // Left alone, Qt would promote the first button after the tree to default,
    // and Enter on a selected node would then add a new item.
    for (QPushButton* b : findChildren<QPushButton*>()) {
        b->setAutoDefault(false);
        b->setDefault(false);
    }
}

void DialogoBiblioteca::disponerBiblioteca(const QList<QPushButton*>& acciones, QPushButton* cerrar)
{
    auto* botones = new QVBoxLayout;
    for (QPushButton* b : acciones)
        botones->addWidget(b);
    botones->addStretch();
    botones->addWidget(cerrar);
    igualarAnchos(acciones + QList<QPushButton*>{cerrar});
    arbol()->setMinimumSize(340, 360);
    sinBotonPorDefecto();
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(arbol(), 1);
    layout->addLayout(botones);
    // Closing unloads the library (the engine made it delete itself on close).
    connect(cerrar, &QPushButton::clicked, this, &QWidget::close);
}
