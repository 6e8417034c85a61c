#include "dlgtablero.h"

#include "engine/eengine.h"
#include "engine/msgbox.h"
#include "formulario.h"
#include "model/etablero.h"
#include "model/vendimarbi.h"
#include "vb/texto.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
constexpr int LargoNombre = 50;
}

dlgTablero::dlgTablero(QWidget* parent)
    : Dialogo(parent)
{
    setObjectName(QStringLiteral("dlgTablero"));
    setWindowTitle(QStringLiteral("Tablero"));
    auto* grid = new QGridLayout;
    txtNombre = new QLineEdit(this);
    txtNombre->setObjectName(QStringLiteral("txtNombre"));
    vbui::limitarLongitud(txtNombre, LargoNombre);
    txtNombre->setMinimumWidth(280);
    lblNombre = vbui::fila(grid, QStringLiteral("Nombre:"), txtNombre, QStringLiteral("lblNombre"));
    auto* buttons = vbui::botones(this, QStringLiteral("cmdAceptar"), QStringLiteral("cmdCancel"), &cmdAceptar, &cmdCancel);
    connect(cmdAceptar, &QPushButton::clicked, this, &dlgTablero::aceptar);
    connect(cmdCancel, &QPushButton::clicked, this, &dlgTablero::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addWidget(buttons);
}

void dlgTablero::Nuevo(int PKUsuario)
{
    txtNombre->clear();
    if (EEngine* e = engine()) {
        m_tablero = qobject_cast<ETablero*>(e->CrearEntidad(VendimarBI::cTablero));
        if (m_tablero) {
            m_tablero->setParent(this);
            m_tablero->setFK_Usuario(PKUsuario);
        }
    }
}

void dlgTablero::Edit(int PK)
{
    if (EEngine* e = engine()) {
        m_tablero = qobject_cast<ETablero*>(e->CargarEntidad(VendimarBI::cTablero, PK));
        if (m_tablero)
            m_tablero->setParent(this);
    }
    if (m_tablero)
        txtNombre->setText(m_tablero->Nombre());
}

// Unlike the perspective editor, this one leaves the focus where it is and
// uses the information and exclamation icons.
void dlgTablero::aceptar()
{
    if (vb::Trim(txtNombre->text()).isEmpty()) {
        vbui::MsgBox(QStringLiteral("Escriba el nombre del tablero."), vbui::vbInformation);
        return;
    }
    bool saved = false;
    if (m_tablero) {
        m_tablero->setNombre(txtNombre->text());
        saved = guardarEntidad(m_tablero);
    }
    if (!saved) {
        vbui::MsgBox(QStringLiteral("Error al guardar tablero. "), vbui::vbExclamation);
        return;
    }
    setResultado(m_tablero->Sys_PK());
    ocultar();
}
