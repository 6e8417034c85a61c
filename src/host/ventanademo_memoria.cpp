// What the window keeps between sessions and tells about the session: the
// size, splitter and dashboard each user left, in Qt's settings; the
// database and user in the status bar; and the guidance a user without
// dashboards needs.
#include "engine/msgbox.h"
#include "ventanademo.h"

#include <QCloseEvent>
#include <QGraphicsTextItem>
#include <QLabel>
#include <QListWidget>
#include <QSettings>
#include <QSplitter>
#include <QStatusBar>

namespace {
const QString SinTableros = QStringLiteral(
    "Aún no tiene tableros.\nCree el primero con «Nuevo tablero…» (Ctrl+N), debajo de «Mis tableros».");

// Each user of a shared machine finds the window as they left it.
QString grupoDe(int usuario)
{
    return QStringLiteral("VentanaDemo/usuario%1").arg(usuario);
}
} // namespace

void VentanaDemo::recordar()
{
    QSettings ajustes;
    ajustes.beginGroup(grupoDe(m_usuario));
    restoreGeometry(ajustes.value(QStringLiteral("geometria")).toByteArray());
    m_divisor->restoreState(ajustes.value(QStringLiteral("divisor")).toByteArray());
    // A dashboard deleted since is not found, and the first one is shown.
    if (ajustes.contains(QStringLiteral("tablero")))
        seleccionarTablero(ajustes.value(QStringLiteral("tablero")).toInt());
}

void VentanaDemo::guardarMemoria()
{
    QSettings ajustes;
    ajustes.beginGroup(grupoDe(m_usuario));
    ajustes.setValue(QStringLiteral("geometria"), saveGeometry());
    ajustes.setValue(QStringLiteral("divisor"), m_divisor->saveState());
    ajustes.setValue(QStringLiteral("tablero"), tableroActual());
}

void VentanaDemo::closeEvent(QCloseEvent* event)
{
    guardarMemoria();
    QMainWindow::closeEvent(event);
}

void VentanaDemo::mostrarSesion(const QString& descripcionBase)
{
    auto* base = new QLabel(QStringLiteral("Base de datos: %1").arg(descripcionBase), this);
    base->setObjectName(QStringLiteral("lblBaseDatos"));
    auto* usuario = new QLabel(QStringLiteral("Usuario: %1").arg(m_usuario), this);
    usuario->setObjectName(QStringLiteral("lblUsuario"));
    // Permanent widgets stay when a menu's hint takes the bar for a moment.
    statusBar()->addPermanentWidget(base, 1);
    statusBar()->addPermanentWidget(usuario);
}

void VentanaDemo::mostrarSinTableros()
{
    if (lstTableros->count() > 0)
        return;
    auto* aviso = m_escena->addText(SinTableros, QFont(font().family(), 12));
    aviso->setObjectName(QStringLiteral("avisoSinTableros"));
    aviso->setDefaultTextColor(QColor(70, 80, 95));
    aviso->setPos(m_escena->pagina().area().center() - aviso->boundingRect().center());
}

bool VentanaDemo::hayTablero()
{
    if (tableroActual() > 0)
        return true;
    vbui::MsgBox(lstTableros->count() > 0 ? QStringLiteral("Seleccione un tablero") : SinTableros);
    return false;
}
