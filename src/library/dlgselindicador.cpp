#include "dlgselindicador.h"

#include "arbolclaves.h"
#include "engine/eengine.h"
#include "engine/msgbox.h"
#include "mdl_functions.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>

namespace {
// Perspectives only: neither metrics nor indicators hang in this tree.
constexpr short ImagenPerspectiva = 1;
constexpr short SinMetricas = 0;
constexpr short SinIndicadores = 0;
} // namespace

dlgSelIndicador::dlgSelIndicador(QWidget* parent)
    : DialogoBiblioteca(parent)
{
    setObjectName(QStringLiteral("dlgSelIndicador"));
    setWindowTitle(QStringLiteral("Seleccionar indicador"));

    lst = new QListWidget(this);
    lst->setObjectName(QStringLiteral("lst"));
    lst->setSelectionMode(QAbstractItemView::SingleSelection);
    Command2 = boton("Command2", QStringLiteral("Crear y administrar  indicadores"));
    cmdAceptar = boton("cmdAceptar", QStringLiteral("&Aceptar"));
    cmdAceptar->setDefault(true);
    Command1 = boton("Command1", QStringLiteral("&Cancelar"));

    igualarAnchos({Command2});
    igualarAnchos({cmdAceptar, Command1});
    arbol()->setMinimumSize(260, 320);
    lst->setMinimumSize(260, 320);
    auto* botones = new QHBoxLayout;
    botones->addWidget(Command2);
    botones->addStretch();
    botones->addWidget(cmdAceptar);
    botones->addWidget(Command1);
    auto* layout = new QGridLayout(this);
    layout->addWidget(arbol(), 0, 0);
    layout->addWidget(lst, 0, 1);
    layout->addLayout(botones, 1, 0, 1, 2);

    // The lists first, then the buttons as they read from left to right.
    setTabOrder(arbol(), lst);
    setTabOrder(lst, Command2);
    setTabOrder(Command2, cmdAceptar);
    setTabOrder(cmdAceptar, Command1);

    connect(arbol(), &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* nodo) { clicNodo(nodo); });
    connect(lst, &QListWidget::itemDoubleClicked, this, &dlgSelIndicador::aceptar);
    connect(cmdAceptar, &QPushButton::clicked, this, &dlgSelIndicador::aceptar);
    connect(Command1, &QPushButton::clicked, this, &dlgSelIndicador::reject);
    connect(Command2, &QPushButton::clicked, this, &dlgSelIndicador::administrar);
}

void dlgSelIndicador::alCargar()
{
    preparar();
}

void dlgSelIndicador::preparar()
{
    m_conexion = conexion();
    mdl_functions::LlenarArbol(m_conexion, arbol(), ImagenPerspectiva, SinMetricas, SinIndicadores);
    // With no perspective at all the list keeps whatever it showed.
    QTreeWidgetItem* primero = arbol()->nodoEn(1);
    if (!primero)
        return;
    arbol()->setCurrentItem(primero);
    clicNodo(primero);
}

void dlgSelIndicador::clicNodo(const QTreeWidgetItem* nodo)
{
    mdl_functions::LlenarListaIndicadores(m_conexion, lst, claveFila(nodo));
    if (lst->count() > 0)
        lst->setCurrentRow(0);
}

void dlgSelIndicador::aceptar()
{
    const QListWidgetItem* entrada = lst->currentItem();
    if (!entrada || !entrada->isSelected()) {
        vbui::MsgBox(QStringLiteral("Debe seleccionar un indicador de la lista a la derecha"));
        lst->setFocus();
        return;
    }
    setResultado(entrada->data(Qt::UserRole).toInt());
    ocultar();
}

void dlgSelIndicador::administrar()
{
    if (EEngine* e = engine())
        e->Biblioteca_Indicadores();
    preparar();
}
