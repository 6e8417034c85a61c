// The view mode: the dashboard shown as its user reads it, with the values
// its metrics give for a date. Values are worked out in a thread of their
// own (ValoresVivos), so the window answers while a metric runs; a tile
// shows itself busy until its figures arrive. Nothing that changes the
// layout can be done in it, so a look at the figures never moves a tile.
#include "elementotablero.h"
#include "model/emetrica.h"
#include "render/piezatablero.h"
#include "valoresvivos.h"
#include "ventanademo.h"

#include <QAction>
#include <QDateEdit>
#include <QLabel>
#include <QMenu>
#include <QStatusBar>
#include <QToolBar>
#include <QUndoStack>

namespace {

// What changes the layout, and so is no part of the view mode.
const char* const AccionesDiseno[] = {"actColocarIndicador", "actAgregarTexto", "actEditarElemento",
                                      "actEliminarElemento", "actColocarIndicadorAqui", "actAgregarTextoAqui",
                                      "actVerCajas", "actRejilla"};

} // namespace

// The mode and its date get a bar of their own, under the designer's, so
// they are in sight whichever mode the window is in.
void VentanaDemo::prepararModoVista(QMenu* ver)
{
    ver->addSeparator();
    m_modoVista = ver->addAction(QStringLiteral("&Vista con valores"));
    m_modoVista->setObjectName(QStringLiteral("actVista"));
    m_modoVista->setCheckable(true);
    m_modoVista->setShortcut(Qt::Key_F9);
    m_modoVista->setIconText(QStringLiteral("Vista"));
    QAction* recalcular = ver->addAction(QStringLiteral("&Recalcular valores"));
    recalcular->setObjectName(QStringLiteral("actRecalcular"));
    recalcular->setShortcut(Qt::Key_F5);
    recalcular->setIconText(QStringLiteral("Recalcular"));
    recalcular->setEnabled(false);
    m_fechaVista = new QDateEdit(QDate::currentDate(), this);
    m_fechaVista->setObjectName(QStringLiteral("fechaVista"));
    m_fechaVista->setCalendarPopup(true);
    m_fechaVista->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    m_fechaVista->setToolTip(QStringLiteral("Fecha de los valores que muestra la vista"));
    m_fechaVista->setEnabled(false);
    addToolBarBreak();
    QToolBar* barra = addToolBar(QStringLiteral("Vista"));
    barra->setObjectName(QStringLiteral("barraVista"));
    barra->setToolButtonStyle(Qt::ToolButtonTextOnly);
    barra->addAction(m_modoVista);
    auto* etiqueta = new QLabel(QStringLiteral(" Fecha: "), this);
    etiqueta->setBuddy(m_fechaVista);
    barra->addWidget(etiqueta);
    barra->addWidget(m_fechaVista);
    barra->addAction(recalcular);
    m_estadoVista = new QLabel(this);
    m_estadoVista->setObjectName(QStringLiteral("lblVista"));
    m_estadoVista->hide();
    statusBar()->addPermanentWidget(m_estadoVista);
    connect(m_modoVista, &QAction::toggled, this, &VentanaDemo::cambiarModo);
    connect(recalcular, &QAction::triggered, this, &VentanaDemo::recalcular);
    connect(m_modoVista, &QAction::toggled, recalcular, &QAction::setEnabled);
    connect(m_fechaVista, &QDateEdit::dateChanged, this, [this](const QDate& fecha) {
        if (!m_vivos)
            return;
        m_vivos->setFecha(fecha);
        pedirValores();
        mostrarValores();
    });
}

bool VentanaDemo::modoVista() const
{
    return m_modoVista && m_modoVista->isChecked();
}

void VentanaDemo::setModoVista(bool vista)
{
    m_modoVista->setChecked(vista);
}

void VentanaDemo::cambiarModo(bool vista)
{
    if (vista && !m_vivos) {
        m_vivos = std::make_unique<ValoresVivos>(m_url, m_limiteMetricas);
        m_vivos->setFecha(m_fechaVista->date());
        connect(m_vivos.get(), &ValoresVivos::calculados, this, &VentanaDemo::mostrarValores);
    }
    for (const char* nombre : AccionesDiseno)
        findChild<QAction*>(QLatin1String(nombre))->setEnabled(!vista);
    findChild<QAction*>(QStringLiteral("actDeshacer"))->setEnabled(!vista && m_historia->canUndo());
    findChild<QAction*>(QStringLiteral("actRehacer"))->setEnabled(!vista && m_historia->canRedo());
    m_fechaVista->setEnabled(vista);
    m_estadoVista->setVisible(vista);
    // The grid is there to lay items out; a reader has no use for its points.
    m_escena->setRejilla(!vista && m_rejilla->isChecked());
    mostrarTablero();
    mostrarValores();
}

void VentanaDemo::setLimiteMetricas(int milisegundos)
{
    m_limiteMetricas = milisegundos;
    if (m_vivos)
        m_vivos->setLimite(milisegundos);
}

QDate VentanaDemo::fechaVista() const
{
    return m_fechaVista->date();
}

void VentanaDemo::setFechaVista(const QDate& fecha)
{
    m_fechaVista->setDate(fecha);
}

void VentanaDemo::recalcular()
{
    if (!modoVista())
        return;
    m_vivos->olvidar();
    pedirValores();
    mostrarValores();
}

void VentanaDemo::prepararElemento(ElementoTablero* elemento)
{
    elemento->setEditable(!modoVista());
    connect(elemento, &ElementoTablero::periodoCambiado, this, [this](ElementoTablero* cambiado) {
        if (!modoVista())
            return;
        m_vivos->pedir(cambiado->pieza()->peticiones());
        mostrarValores();
    });
}

QList<ElementoTablero*> VentanaDemo::piezasMostradas() const
{
    QList<ElementoTablero*> result;
    for (QGraphicsItem* item : m_escena->items(Qt::AscendingOrder))
        if (auto* elemento = dynamic_cast<ElementoTablero*>(item); elemento && elemento->pieza())
            result.append(elemento);
    return result;
}

// The sources first: a metric edited since its values were worked out is worked out again.
void VentanaDemo::pedirValores()
{
    if (!modoVista())
        return;
    const QList<ElementoTablero*> elementos = piezasMostradas();
    QHash<int, QString> fuentes;
    for (ElementoTablero* elemento : elementos)
        for (const EMetrica* metrica : elemento->pieza()->datos().metricas)
            if (metrica)
                fuentes.insert(metrica->Sys_PK(), metrica->CodigoFuente());
    m_vivos->setFuentes(fuentes);
    for (ElementoTablero* elemento : elementos)
        m_vivos->pedir(elemento->pieza()->peticiones());
}

void VentanaDemo::mostrarValores()
{
    if (!modoVista())
        return;
    for (ElementoTablero* elemento : piezasMostradas()) {
        elemento->pieza()->valoresCambiados();
        elemento->update();
    }
    const int enCurso = m_vivos->enCurso();
    QString texto = QStringLiteral("Valores del %1").arg(m_vivos->fecha().toString(QStringLiteral("dd/MM/yyyy")));
    if (enCurso > 0)
        texto += enCurso == 1 ? QStringLiteral(" · calculando 1 valor…") : QStringLiteral(" · calculando %1 valores…").arg(enCurso);
    m_estadoVista->setText(texto);
}
