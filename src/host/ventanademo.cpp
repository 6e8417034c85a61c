#include "ventanademo.h"

#include "ado/recordset.h"
#include "elementotablero.h"
#include "engine/eengine.h"
#include "engine/msgbox.h"
#include "lectorpiezas.h"
#include "model/coleccion.h"
#include "model/etabindicador.h"
#include "render/piezatablero.h"
#include "model/vendimarbi.h"
#include "runtime/evaluador.h"
#include "valoresvivos.h"
#include "vb/automationerror.h"
#include "vistatablero.h"

#include <QAction>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QSplitter>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>
#include <QUndoStack>
#include <QVBoxLayout>

using namespace VendimarBI;

namespace {

QToolButton* botonDe(QAction* action)
{
    auto* button = new QToolButton;
    button->setDefaultAction(action);
    button->setToolButtonStyle(Qt::ToolButtonTextOnly);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    return button;
}

QString nombreTipo(int tipo)
{
    switch (tipo) {
    case cBarraProgreso:
        return QStringLiteral("Barra de progreso");
    case cMatrizGrafico:
        return QStringLiteral("Matriz y gráfico");
    case cSemaforo:
        return QStringLiteral("Semáforo");
    default:
        return QStringLiteral("Indicador");
    }
}

} // namespace

VentanaDemo::VentanaDemo(EEngine* engine, int usuario, const QString& url, QWidget* parent)
    : QMainWindow(parent)
    , m_engine(engine)
    , m_usuario(usuario)
    , m_almacen(engine)
    , m_url(url)
    , m_limiteMetricas(Evaluador::LimitePorDefecto)
{
    setObjectName(QStringLiteral("VentanaDemo"));
    setWindowTitle(QStringLiteral("VendimarBI — Diseñador de tableros (usuario %1)").arg(usuario));
    auto* lateral = new QWidget(this);
    auto* lateralLayout = new QVBoxLayout(lateral);
    lateralLayout->addWidget(new QLabel(QStringLiteral("Mis tableros:"), lateral));
    lstTableros = new QListWidget(lateral);
    lstTableros->setObjectName(QStringLiteral("lstTableros"));
    lateralLayout->addWidget(lstTableros);
    m_botonesTablero = new QVBoxLayout;
    lateralLayout->addLayout(m_botonesTablero);
    m_escena = new EscenaTablero(this);
    m_vista = new VistaTablero(m_escena, this);
    m_vista->setObjectName(QStringLiteral("vistaTablero"));
    m_vista->setRenderHint(QPainter::Antialiasing);
    m_vista->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_divisor = new QSplitter(this);
    m_divisor->setObjectName(QStringLiteral("divisor"));
    m_divisor->addWidget(lateral);
    m_divisor->addWidget(m_vista);
    m_divisor->setStretchFactor(1, 1);
    m_divisor->setSizes({200, 700});
    setCentralWidget(m_divisor);
    mostrarSesion(url);
    construirAcciones();
    connect(lstTableros, &QListWidget::currentRowChanged, this, &VentanaDemo::mostrarTablero);
    resize(980, 620);
    cargarTableros();
}

VentanaDemo::~VentanaDemo()
{
    m_escena->clear();
}

void VentanaDemo::construirAcciones()
{
    struct Accion {
        const char* menu;
        const char* texto;
        const char* nombre;
        QKeySequence atajo;
        std::function<void()> hacer;
        bool enBarra = true;
    };
    const QList<Accion> acciones{
        {"&Biblioteca", "Biblioteca de &métricas", "actBibliotecaMetricas", {},
         [this] { m_engine->Biblioteca_Metricas(); mostrarTablero(); }},
        {"&Biblioteca", "Biblioteca de &indicadores", "actBibliotecaIndicadores", {},
         [this] { m_engine->Biblioteca_Indicadores(); mostrarTablero(); }},
        {"&Biblioteca", "&Revisar biblioteca…", "actRevisarBiblioteca", {}, [this] { revisarBiblioteca(); }},
        {"&Biblioteca", "&Buscar en la biblioteca…", "actBuscar", QKeySequence::Find, [this] { abrirBusqueda(); }, false},
        {"&Tablero", "&Nuevo tablero…", "actNuevoTablero", QKeySequence::New, [this] { nuevoTablero(); }},
        {"&Tablero", "&Renombrar tablero…", "actRenombrarTablero", Qt::Key_F2, [this] { renombrarTablero(); }},
        {"&Tablero", "&Eliminar tablero", "actEliminarTablero", {}, [this] { eliminarTablero(); }},
        {"&Elementos", "Colocar &indicador…", "actColocarIndicador", Qt::CTRL | Qt::Key_I, [this] { colocarIndicador(); }},
        {"&Elementos", "Agregar &texto…", "actAgregarTexto", Qt::CTRL | Qt::Key_T, [this] { agregarTexto(); }},
        {"&Elementos", "&Editar elemento…", "actEditarElemento", Qt::Key_Return, [this] { editarElemento(elementoSeleccionado()); }},
        {"&Elementos", "E&liminar elemento", "actEliminarElemento", QKeySequence::Delete, [this] { eliminarElemento(); }},
    };
    QToolBar* barra = addToolBar(QStringLiteral("Acciones"));
    barra->setObjectName(QStringLiteral("barraAcciones"));
    barra->setToolButtonStyle(Qt::ToolButtonTextOnly);
    QHash<QString, QMenu*> menus;
    for (const Accion& a : acciones) {
        const QString menuName = QString::fromUtf8(a.menu);
        if (!menus.contains(menuName))
            menus.insert(menuName, menuBar()->addMenu(menuName));
        QAction* action = menus.value(menuName)->addAction(QString::fromUtf8(a.texto));
        action->setObjectName(QString::fromLatin1(a.nombre));
        action->setShortcut(a.atajo);
        connect(action, &QAction::triggered, this, a.hacer);
        // Dashboards are managed from the buttons under their list; the tool
        // bar keeps the work on the layout and the libraries, and the search
        // is left to Ctrl+F and the menu so that the bar fits the window.
        if (menuName == QLatin1String("&Tablero"))
            m_botonesTablero->addWidget(botonDe(action));
        else if (a.enBarra)
            barra->addAction(action);
    }
    QAction* salir = menus.value(QStringLiteral("&Tablero"))->addAction(QStringLiteral("&Salir"));
    salir->setShortcut(QKeySequence::Quit);
    prepararVista();
    prepararHistoria(menus.value(QStringLiteral("&Elementos")));
    connect(salir, &QAction::triggered, this, &QWidget::close);
    QMenu* ver = menuBar()->addMenu(QStringLiteral("&Ver"));
    m_verCajas = ver->addAction(QStringLiteral("Ver como &cajas"));
    m_verCajas->setObjectName(QStringLiteral("actVerCajas"));
    m_verCajas->setCheckable(true);
    connect(m_verCajas, &QAction::toggled, this, &VentanaDemo::verComoCajas);
    m_rejilla = ver->addAction(QStringLiteral("Ajustar a la c&uadrícula"));
    m_rejilla->setObjectName(QStringLiteral("actRejilla"));
    m_rejilla->setCheckable(true);
    m_rejilla->setChecked(m_escena->pagina().rejilla());
    connect(m_rejilla, &QAction::toggled, this, &VentanaDemo::ajustarARejilla);
    prepararModoVista(ver);
}

void VentanaDemo::verComoCajas(bool cajas)
{
    if (m_verCajas->isChecked() != cajas)
        m_verCajas->setChecked(cajas);
    else
        mostrarTablero();
}

// Enter and Delete act on the selected item only while the layout has the
// focus: in the list of dashboards they keep their usual meaning.
void VentanaDemo::prepararVista()
{
    QList<QAction*> accionesElemento;
    for (const char* nombre : {"actEditarElemento", "actEliminarElemento"}) {
        auto* accion = findChild<QAction*>(QLatin1String(nombre));
        accion->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        m_vista->addAction(accion);
        accionesElemento.append(accion);
    }
    m_vista->setAccionesElemento(accionesElemento);
    auto* indicadorAqui = new QAction(QStringLiteral("Colocar indicador aquí…"), this);
    indicadorAqui->setObjectName(QStringLiteral("actColocarIndicadorAqui"));
    connect(indicadorAqui, &QAction::triggered, this, [this] { colocarIndicador(m_vista->puntoMenu()); });
    auto* textoAqui = new QAction(QStringLiteral("Agregar texto aquí…"), this);
    textoAqui->setObjectName(QStringLiteral("actAgregarTextoAqui"));
    connect(textoAqui, &QAction::triggered, this, [this] { agregarTexto(m_vista->puntoMenu()); });
    m_vista->setAccionesPagina({indicadorAqui, textoAqui});
    connect(m_vista, &VistaTablero::moverPedido, this, &VentanaDemo::moverElemento);
    connect(m_vista, &VistaTablero::redimensionarPedido, this, &VentanaDemo::redimensionarElemento);
}

void VentanaDemo::ajustarARejilla(bool activa)
{
    if (m_rejilla->isChecked() != activa)
        m_rejilla->setChecked(activa);
    else
        m_escena->setRejilla(activa);
}

void VentanaDemo::cargarTableros()
{
    const int anterior = tableroActual();
    QSignalBlocker block(lstTableros);
    lstTableros->clear();
    std::unique_ptr<QObject> abierto(m_engine->OpenRecordset(
        QStringLiteral("SELECT Sys_PK, uf_Nombre FROM ut_bi_Tablero WHERE uf_FK_Usuario=%1 ORDER BY uf_Nombre, Sys_PK")
            .arg(m_usuario),
        m_engine->ADOCnn()));
    if (auto* rs = qobject_cast<ado::Recordset*>(abierto.get())) {
        for (; !rs->atEnd(); rs->MoveNext()) {
            auto* item = new QListWidgetItem(m_engine->fieldValue(rs, QStringLiteral("uf_Nombre")).toString(), lstTableros);
            item->setData(Qt::UserRole, m_engine->fieldValue(rs, QStringLiteral("Sys_PK")).toInt());
        }
    }
    block.unblock();
    seleccionarTablero(anterior);
}

int VentanaDemo::tableroActual() const
{
    QListWidgetItem* item = lstTableros->currentItem();
    return item ? item->data(Qt::UserRole).toInt() : 0;
}

void VentanaDemo::seleccionarTablero(int clave)
{
    int fila = lstTableros->count() > 0 ? 0 : -1;
    for (int i = 0; i < lstTableros->count(); ++i) {
        if (lstTableros->item(i)->data(Qt::UserRole).toInt() == clave)
            fila = i;
    }
    lstTableros->setCurrentRow(fila);
    mostrarTablero();
}

bool VentanaDemo::indicadorExiste(int clave)
{
    try {
        return std::unique_ptr<QObject>(m_engine->CargarEntidad(cIndicador, clave)) != nullptr;
    } catch (const vb::AutomationError&) {
        return false;
    }
}

QString VentanaDemo::describirIndicador(int clave)
{
    try {
        std::unique_ptr<QObject> indicador(m_engine->CargarEntidad(cIndicador, clave));
        if (indicador)
            return nombreTipo(indicador->property("Tipo").toInt()) + QLatin1Char('\n') + indicador->property("Nombre").toString();
    } catch (const vb::AutomationError&) {
    }
    return QStringLiteral("Indicador %1\n(no encontrado)").arg(clave);
}

void VentanaDemo::mostrarTablero()
{
    m_escena->clear();
    m_tablero.reset();
    m_lector.reset();
    const int clave = tableroActual();
    if (clave != m_tableroMostrado) {
        m_historia->clear();
        m_tableroMostrado = clave;
    }
    if (clave <= 0) {
        mostrarSinTableros();
        return;
    }
    try {
        m_tablero.reset(m_engine->CargarEntidad(cTablero, clave));
    } catch (const vb::AutomationError&) {
    }
    if (!m_tablero)
        return;
    if (auto* indicadores = m_tablero->property("Indicadores").value<Coleccion*>())
        agregarIndicadores(QList<QObject*>(indicadores->begin(), indicadores->end()));
    if (auto* figuras = m_tablero->property("Figuras").value<Coleccion*>()) {
        for (QObject* figura : *figuras)
            agregarElemento(new ElementoTablero(figura, QString()));
    }
}

void VentanaDemo::agregarIndicadores(const QList<QObject*>& colocados)
{
    if (m_verCajas->isChecked() && !modoVista()) {
        for (QObject* tab : colocados)
            agregarElemento(new ElementoTablero(tab, describirIndicador(tab->property("FK_Indicador").toInt())));
        return;
    }
    QList<ETabIndicador*> tabs;
    for (QObject* tab : colocados)
        if (auto* colocado = qobject_cast<ETabIndicador*>(tab))
            tabs.append(colocado);
    m_lector = std::make_unique<LectorPiezas>(m_engine);
    const QList<DatosPieza> datos = m_lector->leer(QList<const ETabIndicador*>(tabs.cbegin(), tabs.cend()));
    const FuenteValores& fuente = modoVista() ? static_cast<const FuenteValores&>(*m_vivos) : m_muestras;
    for (qsizetype i = 0; i < tabs.size(); ++i)
        agregarElemento(new ElementoTablero(tabs[i], std::make_unique<PiezaTablero>(datos[i], fuente)));
    if (modoVista())
        pedirValores();
}

void VentanaDemo::agregarElemento(ElementoTablero* elemento)
{
    m_escena->addItem(elemento);
    prepararElemento(elemento);
    connect(elemento, &ElementoTablero::cambiado, this, &VentanaDemo::guardarElemento);
    connect(elemento, &ElementoTablero::editar, this, &VentanaDemo::editarElemento);
}

ElementoTablero* VentanaDemo::elementoSeleccionado() const
{
    return m_vista->seleccionado();
}
