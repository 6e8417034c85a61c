// The dialog's controls, laid out in code, and their wiring. Every control
// carries its name as objectName (an array element as "name(i)") so that a
// host script or a test reaches it by name.
#include "dlgpropindicador.h"

#include "muestra.h"
#include "vb/vb.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>
#include <limits>

namespace {

constexpr int ColorAzul = 0x00FF0000;
constexpr int ColorRojo = 0x000000FF;
constexpr int ColorVerde = 0x0000C000;
constexpr int LamparaRoja = dlgPropIndicador::LamparaRoja;
constexpr int LamparaNaranja = 0x000080FF;
constexpr int LamparaVerde = dlgPropIndicador::LamparaVerde;

const char* const Periodos[4] = {"Día", "Semana", "Mes", "Año"};

QString nombreEnArreglo(const char* nombre, int indice)
{
    return QStringLiteral("%1(%2)").arg(QLatin1String(nombre)).arg(indice);
}

QLabel* etiqueta(const QString& texto, QWidget* parent)
{
    return new QLabel(texto, parent);
}

// The picture-only buttons: small arrows and a cross drawn in the text
// colour, so they follow the style; Qt derives the disabled look itself.
enum class Dibujo { Derecha, Izquierda, DobleDerecha, Cruz };

QIcon icono(Dibujo dibujo, const QColor& color)
{
    const qreal escala = 2;
    QPixmap pixmap(QSize(16, 16) * escala);
    pixmap.setDevicePixelRatio(escala);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(color, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(color);
    auto flecha = [&p](qreal x0, qreal x1, qreal y) {
        // Shaft from x0 towards x1, head at x1.
        const qreal sentido = x1 > x0 ? 1 : -1;
        p.drawLine(QPointF(x0, y), QPointF(x1 - 4 * sentido, y));
        QPolygonF punta;
        punta << QPointF(x1, y) << QPointF(x1 - 5 * sentido, y - 4) << QPointF(x1 - 5 * sentido, y + 4);
        p.drawPolygon(punta);
    };
    switch (dibujo) {
    case Dibujo::Derecha:
        flecha(2, 14, 8);
        break;
    case Dibujo::Izquierda:
        flecha(14, 2, 8);
        break;
    case Dibujo::DobleDerecha:
        flecha(2, 14, 4.5);
        flecha(2, 14, 11.5);
        break;
    case Dibujo::Cruz:
        p.drawLine(QPointF(3.5, 3.5), QPointF(12.5, 12.5));
        p.drawLine(QPointF(12.5, 3.5), QPointF(3.5, 12.5));
        break;
    }
    return QIcon(pixmap);
}

QToolButton* botonDibujo(const char* nombre, Dibujo dibujo, const QString& ayuda, QWidget* parent)
{
    auto* boton = new QToolButton(parent);
    boton->setObjectName(QLatin1String(nombre));
    boton->setIcon(icono(dibujo, parent->palette().color(QPalette::ButtonText)));
    boton->setIconSize(QSize(16, 16));
    boton->setToolTip(ayuda);
    boton->setAccessibleName(ayuda);
    boton->setMinimumSize(32, 28);
    return boton;
}

// The static illustration of the upper area: the three kinds of indicator
// side by side, a bar, a traffic light and a chart.
QPixmap ilustracion()
{
    const qreal escala = 2;
    const QSize tam(132, 56);
    QPixmap pixmap(tam * escala);
    pixmap.setDevicePixelRatio(escala);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);

    // Progress bar
    p.setPen(QPen(QColor(90, 90, 90), 1));
    p.setBrush(QColor(235, 235, 235));
    p.drawRoundedRect(QRectF(2, 22, 40, 12), 2, 2);
    p.setPen(Qt::NoPen);
    p.setBrush(vb::oleToColor(ColorAzul));
    p.drawRoundedRect(QRectF(3.5, 23.5, 26, 9), 1.5, 1.5);

    // Traffic light
    p.setBrush(QColor(60, 60, 60));
    p.drawRoundedRect(QRectF(54, 4, 20, 48), 5, 5);
    const int lamparas[3] = {LamparaRoja, LamparaNaranja, LamparaVerde};
    for (int i = 0; i < 3; ++i) {
        p.setBrush(vb::oleToColor(lamparas[i]));
        p.drawEllipse(QRectF(58, 7.5 + i * 14.5, 12, 12));
    }

    // Chart
    p.setPen(QPen(QColor(90, 90, 90), 1));
    p.drawLine(QPointF(88, 4), QPointF(88, 52));
    p.drawLine(QPointF(88, 52), QPointF(130, 52));
    p.setPen(Qt::NoPen);
    const qreal alturas[4] = {18, 32, 24, 42};
    const QColor colores[4] = {QColor(70, 130, 180), QColor(70, 130, 180), QColor(70, 130, 180), QColor(46, 139, 87)};
    for (int i = 0; i < 4; ++i) {
        p.setBrush(colores[i]);
        p.drawRect(QRectF(92 + i * 9.5, 52 - alturas[i], 7, alturas[i]));
    }
    return pixmap;
}

// The body of the traffic light behind the three lamps; the lamps keep the
// form's twip geometry inside it.
QPixmap cuerpoSemaforo(const QSize& tam, const QRect& lamparas)
{
    const qreal escala = 2;
    QPixmap pixmap(tam * escala);
    pixmap.setDevicePixelRatio(escala);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(QColor(30, 30, 30), 1));
    p.setBrush(QColor(64, 64, 64));
    p.drawRoundedRect(QRectF(lamparas.adjusted(-10, -10, 10, 10)), 8, 8);
    return pixmap;
}

QLineEdit* cajaNumero(const char* nombre, int indice, const QString& texto, QWidget* parent)
{
    auto* caja = new QLineEdit(texto, parent);
    caja->setObjectName(nombreEnArreglo(nombre, indice));
    caja->setMaximumWidth(140);
    caja->setMinimumWidth(90);
    return caja;
}

Muestra* muestra(const char* nombre, int indice, int color, QWidget* parent)
{
    auto* m = new Muestra(color, parent);
    m->setObjectName(nombreEnArreglo(nombre, indice));
    m->setFixedSize(64, 21);
    m->setClicable(true);
    return m;
}

} // namespace

void dlgPropIndicador::construir()
{
    setObjectName(QStringLiteral("dlgPropIndicador"));
    setWindowTitle(QStringLiteral("Propiedades de indicador"));

    auto* principal = new QVBoxLayout(this);
    principal->addWidget(construirSuperior());

    // The three kind panels share one place; exactly one is shown. The place
    // keeps the size of the largest so that switching kinds does not make the
    // window jump.
    auto* paneles = new QWidget(this);
    auto* pila = new QGridLayout(paneles);
    pila->setContentsMargins(0, 0, 0, 0);
    QWidget* barra = construirBarra();
    QWidget* matriz = construirMatriz();
    QWidget* semaforo = construirSemaforo();
    QSize mayor;
    for (QWidget* panel : {barra, matriz, semaforo}) {
        pila->addWidget(panel, 0, 0);
        mayor = mayor.expandedTo(panel->sizeHint());
        panel->hide();
    }
    paneles->setMinimumSize(mayor);
    principal->addWidget(paneles, 1);

    auto* botones = new QHBoxLayout;
    botones->addStretch(1);
    cAceptar = new QPushButton(QStringLiteral("&Aceptar"), this);
    cAceptar->setObjectName(QStringLiteral("cAceptar"));
    cAceptar->setDefault(true);
    Command17 = new QPushButton(QStringLiteral("&Cancelar"), this);
    Command17->setObjectName(QStringLiteral("Command17"));
    for (QPushButton* b : {cAceptar, Command17}) {
        b->setMinimumWidth(96);
        botones->addWidget(b);
    }
    principal->addLayout(botones);

    conectar();
}

QWidget* dlgPropIndicador::construirSuperior()
{
    // The upper picture box holds the name, the kind options and the
    // illustration.
    pic1 = new QFrame(this);
    pic1->setObjectName(QStringLiteral("pic1"));
    pic1->setFrameShape(QFrame::StyledPanel);
    auto* rejilla = new QGridLayout(pic1);

    auto* lblNombre = etiqueta(QStringLiteral("Nombre:"), pic1);
    cNombre = new QLineEdit(pic1);
    cNombre->setObjectName(QStringLiteral("cNombre"));
    // The column holds 50 characters; the box never offers more.
    vbui::limitarLongitud(cNombre, 50);
    lblNombre->setBuddy(cNombre);

    auto* lblTipo = etiqueta(QStringLiteral("Tipo:"), pic1);
    opt1 = new QRadioButton(QStringLiteral("Barra de progreso"), pic1);
    opt1->setObjectName(QStringLiteral("opt1"));
    opt2 = new QRadioButton(QStringLiteral("Matriz y gráfico"), pic1);
    opt2->setObjectName(QStringLiteral("opt2"));
    opt3 = new QRadioButton(QStringLiteral("Semáforo"), pic1);
    opt3->setObjectName(QStringLiteral("opt3"));
    auto* grupo = new QButtonGroup(pic1);
    grupo->addButton(opt1, 1);
    grupo->addButton(opt2, 2);
    grupo->addButton(opt3, 3);

    imgPreview = new QLabel(pic1);
    imgPreview->setObjectName(QStringLiteral("imgPreview"));
    imgPreview->setPixmap(ilustracion());
    imgPreview->setAlignment(Qt::AlignCenter);

    auto* opciones = new QHBoxLayout;
    opciones->addWidget(opt1);
    opciones->addWidget(opt2);
    opciones->addWidget(opt3);
    opciones->addStretch(1);

    rejilla->addWidget(lblNombre, 0, 0);
    rejilla->addWidget(cNombre, 0, 1);
    rejilla->addWidget(lblTipo, 1, 0);
    rejilla->addLayout(opciones, 1, 1);
    rejilla->addWidget(imgPreview, 0, 2, 2, 1);
    rejilla->setColumnStretch(1, 1);
    rejilla->setColumnMinimumWidth(1, 380);
    return pic1;
}

QWidget* dlgPropIndicador::construirBarra()
{
    picBarra = new QFrame(this);
    picBarra->setObjectName(QStringLiteral("picBarra"));
    auto* caja = new QVBoxLayout(picBarra);
    caja->setContentsMargins(0, 0, 0, 0);

    auto* filaMetrica = new QHBoxLayout;
    auto* lblMetrica = etiqueta(QStringLiteral("Métrica:"), picBarra);
    cMetrica = new QComboBox(picBarra);
    cMetrica->setObjectName(QStringLiteral("cMetrica"));
    cMetrica->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cMetrica->setMinimumContentsLength(30);
    lblMetrica->setBuddy(cMetrica);
    filaMetrica->addWidget(lblMetrica);
    filaMetrica->addWidget(cMetrica, 1);
    caja->addLayout(filaMetrica);

    sTabBarra = new QTabWidget(picBarra);
    sTabBarra->setObjectName(QStringLiteral("sTabBarra"));
    sTabBarra->setUsesScrollButtons(false);
    for (int p = 0; p < 4; ++p) {
        auto* pagina = new QWidget(sTabBarra);
        auto* rejilla = new QGridLayout(pagina);
        cMin[p] = cajaNumero("cMin", p, QStringLiteral("0"), pagina);
        cMax[p] = cajaNumero("cMax", p, QStringLiteral("100"), pagina);
        cColor[p] = muestra("cColor", p, ColorAzul, pagina);
        lblColorMin[p] = muestra("lblColorMin", p, ColorRojo, pagina);
        lblColorMax[p] = muestra("lblColorMax", p, ColorVerde, pagina);

        auto* lblMin = etiqueta(QStringLiteral("Mínimo:"), pagina);
        lblMin->setBuddy(cMin[p]);
        auto* lblMax = etiqueta(QStringLiteral("Máximo:"), pagina);
        lblMax->setBuddy(cMax[p]);
        rejilla->addWidget(lblMin, 0, 0);
        rejilla->addWidget(cMin[p], 0, 1, 1, 2);
        rejilla->addWidget(lblMax, 1, 0);
        rejilla->addWidget(cMax[p], 1, 1, 1, 2);

        const struct {
            Muestra* muestra;
            const char* texto;
        } colores[3] = {{cColor[p], "(Valores dentro del intervalo)"},
                        {lblColorMin[p], "(Valores debajo del intervalo)"},
                        {lblColorMax[p], "(Valores encima del intervalo)"}};
        for (int fila = 0; fila < 3; ++fila) {
            rejilla->addWidget(etiqueta(QStringLiteral("Color:"), pagina), fila + 2, 0);
            rejilla->addWidget(colores[fila].muestra, fila + 2, 1);
            rejilla->addWidget(etiqueta(QString::fromUtf8(colores[fila].texto), pagina), fila + 2, 2);
        }
        rejilla->setColumnStretch(3, 1);
        rejilla->setRowStretch(5, 1);
        sTabBarra->addTab(pagina, QString::fromUtf8(Periodos[p]));
    }
    caja->addWidget(sTabBarra, 1);
    return picBarra;
}

QWidget* dlgPropIndicador::construirSemaforo()
{
    picSemaforo = new QFrame(this);
    picSemaforo->setObjectName(QStringLiteral("picSemaforo"));
    auto* caja = new QVBoxLayout(picSemaforo);
    caja->setContentsMargins(0, 0, 0, 0);

    auto* filaMetrica = new QHBoxLayout;
    auto* lblMetrica = etiqueta(QStringLiteral("Métrica:"), picSemaforo);
    cMetrica2 = new QComboBox(picSemaforo);
    cMetrica2->setObjectName(QStringLiteral("cMetrica2"));
    cMetrica2->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cMetrica2->setMinimumContentsLength(30);
    lblMetrica->setBuddy(cMetrica2);
    filaMetrica->addWidget(lblMetrica);
    filaMetrica->addWidget(cMetrica2, 1);
    caja->addLayout(filaMetrica);

    auto* fila = new QHBoxLayout;

    // The lamps sit at the form's twip positions inside the light's housing:
    // 1515 x 645 twips each, tops 735, 1380 and 2025, left 1140.
    auto* izquierda = new QVBoxLayout;
    const int ancho = vb::twipsToPixels(1515);
    const int alto = vb::twipsToPixels(645);
    const int izquierdaLampara = vb::twipsToPixels(1140);
    const int tops[3] = {vb::twipsToPixels(735), vb::twipsToPixels(1380), vb::twipsToPixels(2025)};
    const QSize tamCarcasa(2 * izquierdaLampara + ancho, tops[2] + alto + 12);
    auto* carcasa = new QLabel(picSemaforo);
    carcasa->setFixedSize(tamCarcasa);
    carcasa->setPixmap(cuerpoSemaforo(tamCarcasa, QRect(izquierdaLampara, tops[0], ancho, tops[2] + alto - tops[0])));
    const int colores[3] = {LamparaRoja, LamparaNaranja, LamparaVerde};
    for (int i = 0; i < 3; ++i) {
        lblSemColor[i] = new Muestra(colores[i], carcasa);
        lblSemColor[i]->setObjectName(nombreEnArreglo("lblSemColor", i));
        lblSemColor[i]->setGeometry(izquierdaLampara, tops[i], ancho, alto);
    }
    izquierda->addWidget(carcasa, 0, Qt::AlignHCenter);
    cmdInvert = new QPushButton(QStringLiteral("Invertir sentido"), picSemaforo);
    cmdInvert->setObjectName(QStringLiteral("cmdInvert"));
    izquierda->addWidget(cmdInvert, 0, Qt::AlignHCenter);
    izquierda->addStretch(1);
    fila->addLayout(izquierda);

    sTabSemaforo = new QTabWidget(picSemaforo);
    sTabSemaforo->setObjectName(QStringLiteral("sTabSemaforo"));
    sTabSemaforo->setUsesScrollButtons(false);
    for (int p = 0; p < 4; ++p) {
        auto* pagina = new QWidget(sTabSemaforo);
        auto* rejilla = new QGridLayout(pagina);
        for (int k = 0; k < 2; ++k) {
            const int n = 2 * p + k;
            cL[n] = new QLineEdit(pagina);
            cL[n]->setObjectName(QStringLiteral("cL%1").arg(n + 1));
            cL[n]->setMinimumWidth(90);
            cL[n]->setMaximumWidth(140);
            auto* lbl = etiqueta(k == 0 ? QStringLiteral("Límite alto:") : QStringLiteral("Límite medio:"), pagina);
            lbl->setBuddy(cL[n]);
            rejilla->addWidget(lbl, k, 0);
            rejilla->addWidget(cL[n], k, 1);
        }
        rejilla->setColumnStretch(2, 1);
        rejilla->setRowStretch(2, 1);
        sTabSemaforo->addTab(pagina, QString::fromUtf8(Periodos[p]));
    }
    fila->addWidget(sTabSemaforo, 1);
    caja->addLayout(fila, 1);
    return picSemaforo;
}

QWidget* dlgPropIndicador::construirMatriz()
{
    picMatriz = new QFrame(this);
    picMatriz->setObjectName(QStringLiteral("picMatriz"));
    auto* rejilla = new QGridLayout(picMatriz);
    rejilla->setContentsMargins(0, 0, 0, 0);

    auto* lblDisponibles = etiqueta(QStringLiteral("Métricas disponibles"), picMatriz);
    lstMetricas = new QListWidget(picMatriz);
    lstMetricas->setObjectName(QStringLiteral("lstMetricas"));
    lstMetricas->setMinimumWidth(200);
    lblDisponibles->setBuddy(lstMetricas);

    auto* columnaBotones = new QVBoxLayout;
    cAdd = botonDibujo("cAdd", Dibujo::Derecha, QStringLiteral("Agregar la métrica seleccionada a la lista"), picMatriz);
    Command3 = botonDibujo("Command3", Dibujo::Izquierda, QStringLiteral("Quitar el elemento seleccionado de la lista"),
                           picMatriz);
    Command4 = botonDibujo("Command4", Dibujo::DobleDerecha, QStringLiteral("Sin acción"), picMatriz);
    Command5 = botonDibujo("Command5", Dibujo::Cruz, QStringLiteral("Vaciar la lista"), picMatriz);
    columnaBotones->addStretch(1);
    for (QToolButton* b : {cAdd, Command3, Command4, Command5})
        columnaBotones->addWidget(b);
    columnaBotones->addStretch(1);

    cTabM = new QTabWidget(picMatriz);
    cTabM->setObjectName(QStringLiteral("cTabM"));
    // All three tab captions stay in view: no scrolling tab bar.
    cTabM->setUsesScrollButtons(false);
    cTabM->setElideMode(Qt::ElideNone);
    for (int pestana = 0; pestana < 2; ++pestana) {
        auto* pagina = new QWidget(cTabM);
        auto* caja = new QVBoxLayout(pagina);
        auto* lista = new QListWidget(pagina);
        caja->addWidget(lista);
        if (pestana == 0) {
            lstSelMatriz = lista;
            lista->setObjectName(QStringLiteral("lstSelMatriz"));
            cTabM->addTab(pagina, QStringLiteral("Matriz de datos"));
        } else {
            lstGraf = lista;
            lista->setObjectName(QStringLiteral("lstGraf"));
            cTabM->addTab(pagina, QStringLiteral("Gráfico"));
        }
    }
    auto* preferencias = new QWidget(cTabM);
    auto* formulario = new QGridLayout(preferencias);
    auto* lblTitulo = etiqueta(QStringLiteral("Título:"), preferencias);
    cTitGraf = new QLineEdit(preferencias);
    cTitGraf->setObjectName(QStringLiteral("cTitGraf"));
    // The title column holds a text of any length: the box holds as much as
    // a line edit can, never half a character where it cuts.
    vbui::limitarLongitud(cTitGraf, std::numeric_limits<qint16>::max());
    lblTitulo->setBuddy(cTitGraf);
    auto* lblTipo = etiqueta(QStringLiteral("Tipo de gráfico:"), preferencias);
    cTipoGraf = new QComboBox(preferencias);
    cTipoGraf->setObjectName(QStringLiteral("cTipoGraf"));
    // Its entries arrive after the layout is built; the box must still show them whole.
    cTipoGraf->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cTipoGraf->setMinimumContentsLength(14);
    lblTipo->setBuddy(cTipoGraf);
    formulario->addWidget(lblTitulo, 0, 0);
    formulario->addWidget(cTitGraf, 0, 1, 1, 2);
    formulario->addWidget(lblTipo, 1, 0);
    formulario->addWidget(cTipoGraf, 1, 1);
    formulario->setColumnStretch(1, 1);
    formulario->setColumnStretch(2, 1);
    formulario->setRowStretch(2, 1);
    cTabM->addTab(preferencias, QStringLiteral("Preferencias del gráfico"));

    auto* columnaOrden = new QVBoxLayout;
    Command6 = new QPushButton(QStringLiteral("Subir"), picMatriz);
    Command6->setObjectName(QStringLiteral("Command6"));
    Command7 = new QPushButton(QStringLiteral("Bajar"), picMatriz);
    Command7->setObjectName(QStringLiteral("Command7"));
    columnaOrden->addStretch(1);
    columnaOrden->addWidget(Command6);
    columnaOrden->addWidget(Command7);
    columnaOrden->addStretch(1);

    rejilla->addWidget(lblDisponibles, 0, 0);
    rejilla->addWidget(lstMetricas, 1, 0);
    rejilla->addLayout(columnaBotones, 1, 1);
    rejilla->addWidget(cTabM, 0, 2, 2, 1);
    rejilla->addLayout(columnaOrden, 1, 3);
    rejilla->setColumnStretch(0, 1);
    rejilla->setColumnStretch(2, 1);
    rejilla->setRowStretch(1, 1);
    return picMatriz;
}

void dlgPropIndicador::conectar()
{
    for (QRadioButton* opcion : {opt1, opt2, opt3}) {
        connect(opcion, &QRadioButton::toggled, this, [this](bool marcada) {
            if (marcada)
                MostrarPanel();
        });
    }
    connect(cAceptar, &QPushButton::clicked, this, &dlgPropIndicador::cAceptar_Click);
    connect(Command17, &QPushButton::clicked, this, &dlgPropIndicador::Command17_Click);

    for (int p = 0; p < 4; ++p) {
        for (Muestra* m : {cColor[p], lblColorMin[p], lblColorMax[p]})
            connect(m, &Muestra::clicked, this, [this, m] { ElegirColor(m); });
    }
    connect(cmdInvert, &QPushButton::clicked, this, &dlgPropIndicador::cmdInvert_Click);

    connect(cTabM, &QTabWidget::currentChanged, this, &dlgPropIndicador::cTabM_Click);
    connect(cAdd, &QToolButton::clicked, this, &dlgPropIndicador::cAdd_Click);
    connect(Command3, &QToolButton::clicked, this, &dlgPropIndicador::Command3_Click);
    connect(Command5, &QToolButton::clicked, this, &dlgPropIndicador::Command5_Click);
    connect(Command6, &QPushButton::clicked, this, &dlgPropIndicador::Command6_Click);
    connect(Command7, &QPushButton::clicked, this, &dlgPropIndicador::Command7_Click);
}
