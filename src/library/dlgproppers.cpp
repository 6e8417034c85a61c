#include "dlgproppers.h"

#include "engine/eengine.h"
#include "engine/msgbox.h"
#include "formulario.h"
#include "model/eperspectiva.h"
#include "model/vendimarbi.h"
#include "vb/texto.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
// "@" stands for "no host entity"; "*" is every new perspective's groups text.
const QString SinEntidad = QStringLiteral("@");
const QString TodosLosGrupos = QStringLiteral("*");
constexpr int LargoTexto = 50;
} // namespace

dlgPropPers::dlgPropPers(QWidget* parent)
    : Dialogo(parent)
{
    setObjectName(QStringLiteral("dlgPropPers"));
    setWindowTitle(QStringLiteral("Propiedades de perspectiva"));
    auto* grid = new QGridLayout;
    cNombre = vbui::campo<QLineEdit>(grid, QStringLiteral("Nombre de perspectiva:"), QStringLiteral("cNombre"), this);
    vbui::limitarLongitud(cNombre, LargoTexto);
    cNombre->setMinimumWidth(260);
    cEntidad = vbui::campo<QLineEdit>(grid, QStringLiteral("Entidad de datos asociada:"), QStringLiteral("cEntidad"), this);
    vbui::limitarLongitud(cEntidad, LargoTexto);
    auto* buttons = vbui::botones(this, QStringLiteral("cAceptar"), QStringLiteral("cCancelar"), &cAceptar, &cCancelar);
    connect(cAceptar, &QPushButton::clicked, this, &dlgPropPers::aceptar);
    connect(cCancelar, &QPushButton::clicked, this, &dlgPropPers::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addWidget(buttons);
}

void dlgPropPers::Nuevo(int Padre)
{
    cNombre->clear();
    cEntidad->clear();
    if (EEngine* e = engine()) {
        m_perspectiva = qobject_cast<EPerspectiva*>(e->CrearEntidad(VendimarBI::cPerspectiva));
        if (m_perspectiva) {
            m_perspectiva->setParent(this);
            m_perspectiva->setFK_Padre(Padre);
            m_perspectiva->setGrupos(TodosLosGrupos);
        }
    }
}

void dlgPropPers::Edit(int PK)
{
    if (EEngine* e = engine()) {
        m_perspectiva = qobject_cast<EPerspectiva*>(e->CargarEntidad(VendimarBI::cPerspectiva, PK));
        if (m_perspectiva)
            m_perspectiva->setParent(this);
    }
    if (!m_perspectiva)
        return;
    cNombre->setText(m_perspectiva->Nombre());
    cEntidad->setText(m_perspectiva->EntidadAsociada());
}

void dlgPropPers::aceptar()
{
    if (vb::Trim(cNombre->text()).isEmpty()) {
        vbui::MsgBox(QStringLiteral("Indique el nombre de la perspectiva"));
        cNombre->setFocus();
        return;
    }
    bool saved = false;
    if (m_perspectiva) {
        m_perspectiva->setNombre(cNombre->text());
        m_perspectiva->setEntidadAsociada(cEntidad->text());
        if (vb::Trim(cEntidad->text()).isEmpty())
            m_perspectiva->setEntidadAsociada(SinEntidad);
        saved = guardarEntidad(m_perspectiva);
    }
    if (!saved) {
        vbui::MsgBox(QStringLiteral("Error al guardar datos"));
        return;
    }
    setResultado(m_perspectiva->Sys_PK());
    ocultar();
}
