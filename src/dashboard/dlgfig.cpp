#include "dlgfig.h"

#include "dashboard/selectorfuente.h"
#include "designer/muestra.h"
#include "model/efigura.h"
#include "vb/vb.h"

#include <QColorDialog>
#include <QFontInfo>
#include <QFontMetrics>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>

#include <exception>

namespace {

// The declared length of the figure's text column.
constexpr int LargoTexto = 255;

// A new figure is drawn black on white until the user picks its colours.
constexpr int BlancoOle = 0x00FFFFFF;
constexpr int NegroOle = 0x00000000;

// The alignment codes of a label, which are also the option indexes.
constexpr int Izquierda = 0;
constexpr int Derecha = 1;
constexpr int Centro = 2;

// Places a control by the twips of the original form, so the dialog keeps
// the proportions its users know.
void colocar(QWidget* control, int left, int top, int width, int height)
{
    control->setGeometry(vb::twipsToPixels(left), vb::twipsToPixels(top), vb::twipsToPixels(width),
                         vb::twipsToPixels(height));
}

// Every step of filling, reading and handling runs on its own: a step that
// fails is skipped and the next one still runs, so one bad value in a figure
// never costs the user the rest of the edit.
template <typename Paso>
void paso(Paso&& accion)
{
    try {
        accion();
    } catch (const vb::AutomationError&) {
    } catch (const std::exception&) {
    }
}

// A font's size in points, also for a font that was given in pixels.
double puntosDe(const QFont& font)
{
    const double puntos = font.pointSizeF();
    return puntos > 0 ? puntos : QFontInfo(font).pointSizeF();
}

// The form keeps its original twips, which were measured for a narrower
// system font; a caption that would not fit its control at the platform's
// font gets the same font a little smaller, so every word stays whole.
void ajustarTexto(QAbstractButton* control, int margen)
{
    QFont font = control->font();
    const QString texto = control->text().remove(QLatin1Char('&'));
    while (font.pointSizeF() > 6.5 && QFontMetrics(font).horizontalAdvance(texto) + margen > control->width())
        font.setPointSizeF(font.pointSizeF() - 0.5);
    control->setFont(font);
}

// Controls of one row or column share the size the widest caption needs.
void igualarFuentes(const QList<QAbstractButton*>& controles, int margen)
{
    double menor = controles.first()->font().pointSizeF();
    for (QAbstractButton* control : controles) {
        ajustarTexto(control, margen);
        menor = qMin(menor, control->font().pointSizeF());
    }
    for (QAbstractButton* control : controles) {
        QFont font = control->font();
        font.setPointSizeF(menor);
        control->setFont(font);
    }
}

void ajustarTexto(QLabel* control)
{
    QFont font = control->font();
    while (font.pointSizeF() > 6.5 && QFontMetrics(font).horizontalAdvance(control->text()) > control->width())
        font.setPointSizeF(font.pointSizeF() - 0.5);
    control->setFont(font);
}

Qt::Alignment alineacionQt(int codigo)
{
    // A label draws its text from the top, whatever the horizontal alignment.
    switch (codigo) {
    case Derecha:
        return Qt::AlignRight | Qt::AlignTop;
    case Centro:
        return Qt::AlignHCenter | Qt::AlignTop;
    default:
        return Qt::AlignLeft | Qt::AlignTop;
    }
}

} // namespace

dlgFig::dlgFig(QWidget* parent)
    : Dialogo(parent)
{
    setObjectName(QStringLiteral("dlgFig"));
    setWindowTitle(QStringLiteral("Propiedades de texto"));
    construir();
}

void dlgFig::construir()
{
    setFixedSize(vb::twipsToPixels(8115), vb::twipsToPixels(4770));

    Label = new QLabel(QStringLiteral("Texto:"), this);
    Label->setObjectName(QStringLiteral("Label"));
    colocar(Label, 135, 240, 450, 195);

    cTexto = new QPlainTextEdit(this);
    cTexto->setObjectName(QStringLiteral("cTexto"));
    // Tab leaves the box, as it does in every other text box of the component;
    // Enter stays in it and breaks the line.
    cTexto->setTabChangesFocus(true);
    cTexto->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    vbui::limitarLongitud(cTexto, LargoTexto);
    colocar(cTexto, 900, 240, 6330, 1065);

    lblMuestra = new Muestra(BlancoOle, this);
    lblMuestra->setObjectName(QStringLiteral("lblMuestra"));
    // The figure's text is shown as typed: markup in it is text, not formatting.
    lblMuestra->setTextFormat(Qt::PlainText);
    lblMuestra->setWordWrap(true);
    lblMuestra->setText(QStringLiteral("A"));
    colocar(lblMuestra, 870, 1515, 4200, 1860);

    cFont = new QPushButton(QStringLiteral("Fuente, tamaño y estilo"), this);
    cFont->setObjectName(QStringLiteral("cFont"));
    colocar(cFont, 5175, 1365, 2055, 435);
    cColor = new QPushButton(QStringLiteral("Color del texto"), this);
    cColor->setObjectName(QStringLiteral("cColor"));
    colocar(cColor, 5175, 2175, 2055, 435);
    cFondo = new QPushButton(QStringLiteral("Color del fondo"), this);
    cFondo->setObjectName(QStringLiteral("cFondo"));
    colocar(cFondo, 5175, 2985, 2055, 435);

    const struct {
        int indice;
        const char* titulo;
        int left;
    } opciones[] = {
        {Izquierda, "Izquierda", 900},
        {Centro, "Centro", 2437},
        {Derecha, "Derecha", 3975},
    };
    for (const auto& o : opciones) {
        auto* boton = new QRadioButton(QString::fromUtf8(o.titulo), this);
        boton->setObjectName(QStringLiteral("opt(%1)").arg(o.indice));
        colocar(boton, o.left, 3390, 1050, 285);
        opt[o.indice] = boton;
    }
    opt[Izquierda]->setChecked(true);

    cmdAceptar = new QPushButton(QStringLiteral("&Aceptar"), this);
    cmdAceptar->setObjectName(QStringLiteral("cmdAceptar"));
    cmdAceptar->setDefault(true);
    colocar(cmdAceptar, 2760, 4080, 1215, 495);
    cmdCancel = new QPushButton(QStringLiteral("&Cancelar"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    colocar(cmdCancel, 4050, 4080, 1215, 495);

    ajustarTexto(Label);
    igualarFuentes({cFont, cColor, cFondo}, 12);
    igualarFuentes({opt[0], opt[1], opt[2]}, 24);

    // The options run left to right on screen, so their indexes do not.
    setTabOrder(cTexto, opt[Izquierda]);
    setTabOrder(opt[Izquierda], opt[Centro]);
    setTabOrder(opt[Centro], opt[Derecha]);
    setTabOrder(opt[Derecha], cFont);
    setTabOrder(cFont, cColor);
    setTabOrder(cColor, cFondo);
    setTabOrder(cFondo, cmdAceptar);
    setTabOrder(cmdAceptar, cmdCancel);

    // The preview starts in the dialog's own font: a figure whose font is
    // never chosen takes this one.
    const QFont inicial = lblMuestra->font();
    m_fuente = QFontInfo(inicial).family();
    m_tamano = puntosDe(inicial);
    m_negrita = inicial.bold();
    m_cursiva = inicial.italic();
    m_alineacion = Izquierda;
    m_color = NegroOle;
    aplicarFuente();
    lblMuestra->setAlignment(alineacionQt(m_alineacion));
    setMuestraColor(NegroOle);

    connect(cTexto, &QPlainTextEdit::textChanged, this, &dlgFig::cTexto_Change);
    for (QRadioButton* boton : opt) {
        // Toggling also covers arrow keys and selection by code, as a click would.
        connect(boton, &QRadioButton::toggled, this, [this](bool activo) {
            if (activo)
                opt_Click();
        });
    }
    connect(cFont, &QPushButton::clicked, this, &dlgFig::cFont_Click);
    connect(cColor, &QPushButton::clicked, this, &dlgFig::cColor_Click);
    connect(cFondo, &QPushButton::clicked, this, &dlgFig::cFondo_Click);
    connect(cmdAceptar, &QPushButton::clicked, this, &dlgFig::cmdAceptar_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &dlgFig::reject);
}

QObject* dlgFig::Figura() const
{
    return m_figura.data();
}

void dlgFig::setFigura(QObject* figura)
{
    m_figura = figura;
}

EFigura* dlgFig::figura() const
{
    auto* f = qobject_cast<EFigura*>(m_figura.data());
    if (!f)
        vb::raise(vb::ErrObjectNotSet);
    return f;
}

// --- Preview ---------------------------------------------------------------

void dlgFig::aplicarFuente()
{
    QFont font = lblMuestra->font();
    font.setFamilies({m_fuente});
    font.setPointSizeF(m_tamano);
    font.setBold(m_negrita);
    font.setItalic(m_cursiva);
    // The figure's underline is not edited here, so the preview never shows it.
    font.setUnderline(false);
    font.setStrikeOut(false);
    lblMuestra->setFont(font);
}

// A name that names no font is refused, as a font object refuses it.
void dlgFig::setMuestraFuente(const QString& nombre)
{
    if (nombre.trimmed().isEmpty())
        throw vb::AutomationError{380, QStringLiteral("Invalid property value")};
    m_fuente = nombre;
    aplicarFuente();
}

void dlgFig::setMuestraTamano(double puntos)
{
    if (!(puntos > 0))
        throw vb::AutomationError{380, QStringLiteral("Invalid property value")};
    m_tamano = puntos;
    aplicarFuente();
}

void dlgFig::setMuestraNegrita(bool valor)
{
    m_negrita = valor;
    aplicarFuente();
}

void dlgFig::setMuestraCursiva(bool valor)
{
    m_cursiva = valor;
    aplicarFuente();
}

// Only the three codes of a label are alignments.
void dlgFig::setMuestraAlineacion(int codigo)
{
    if (codigo != Izquierda && codigo != Derecha && codigo != Centro)
        throw vb::AutomationError{380, QStringLiteral("Invalid property value")};
    m_alineacion = codigo;
    lblMuestra->setAlignment(alineacionQt(codigo));
}

void dlgFig::setMuestraColor(int colorOle)
{
    m_color = colorOle;
    QPalette paleta = lblMuestra->palette();
    const QColor color = vb::oleToColor(colorOle);
    paleta.setColor(QPalette::WindowText, color);
    paleta.setColor(QPalette::Text, color);
    lblMuestra->setPalette(paleta);
}

void dlgFig::setMuestraFondo(int colorOle)
{
    lblMuestra->setColorOle(colorOle);
}

// --- Data ------------------------------------------------------------------

// A figure never saved opens blank, whatever the object already carries.
void dlgFig::putData()
{
    bool guardada = false;
    paso([&] { guardada = figura()->Sys_PK() > 0; });
    if (!guardada)
        return;
    paso([&] {
        const QString texto = figura()->Texto();
        // Only a different text counts as a change, so an empty stored text
        // leaves the preview's "A" as it is.
        if (texto != vbui::textoMultilinea(cTexto))
            cTexto->setPlainText(texto);
    });
    paso([&] { setMuestraFuente(figura()->Fuente()); });
    paso([&] { setMuestraAlineacion(figura()->Alineacion()); });
    paso([&] { setMuestraFondo(figura()->ColorFondo()); });
    paso([&] { setMuestraColor(figura()->Color()); });
    paso([&] { setMuestraNegrita(figura()->Negrita()); });
    paso([&] { setMuestraCursiva(figura()->Cursiva()); });
    paso([&] { setMuestraTamano(figura()->Tam_fuente()); });
    paso([&] {
        const int indice = figura()->Alineacion();
        if (indice < 0 || indice > 2)
            throw vb::AutomationError{340, QStringLiteral("Control array element does not exist")};
        opt[indice]->setChecked(true);
    });
}

// The figure's underline, place, size, kind, dashboard and key are not the
// dialog's to change.
void dlgFig::getData()
{
    paso([&] {
        const QString texto = vbui::textoMultilinea(cTexto);
        // An empty label is never stored: it would be an invisible figure.
        figura()->setTexto(texto.isEmpty() ? QStringLiteral(" ") : texto);
    });
    paso([&] { figura()->setFuente(m_fuente); });
    paso([&] { figura()->setAlineacion(short(m_alineacion)); });
    paso([&] { figura()->setColorFondo(lblMuestra->colorOle()); });
    paso([&] { figura()->setColor(m_color); });
    paso([&] { figura()->setNegrita(m_negrita); });
    paso([&] { figura()->setCursiva(m_cursiva); });
    // Half to even, as the stored integer size has always been rounded.
    paso([&] { figura()->setTam_fuente(vb::CInt(m_tamano)); });
}

// --- Handlers --------------------------------------------------------------

void dlgFig::cTexto_Change()
{
    paso([&] { lblMuestra->setText(cTexto->toPlainText()); });
}

// Whichever option is selected gives the alignment, not the one clicked.
void dlgFig::opt_Click()
{
    for (int i = 0; i <= 2; ++i) {
        paso([&] {
            if (opt[i]->isChecked())
                setMuestraAlineacion(i);
        });
    }
}

// The picker opens unset, not on the current colour; cancelling it changes
// nothing.
bool dlgFig::elegirColor(int& colorOle)
{
    QColorDialog CMD(this);
    CMD.setObjectName(QStringLiteral("CMD"));
    // The same picker on every desktop, so that what users and tests see agrees.
    CMD.setOption(QColorDialog::DontUseNativeDialog);
    if (CMD.exec() != QDialog::Accepted)
        return false;
    const QColor elegido = CMD.selectedColor();
    if (!elegido.isValid())
        return false;
    colorOle = vb::colorToOle(elegido);
    return true;
}

void dlgFig::cColor_Click()
{
    paso([&] {
        int color = 0;
        if (elegirColor(color))
            setMuestraColor(color);
    });
}

void dlgFig::cFondo_Click()
{
    paso([&] {
        int color = 0;
        if (elegirColor(color))
            setMuestraFondo(color);
    });
}

// The picker opens on a plain font, not the figure's; the preview takes the
// chosen name, size (a typed fraction too), bold and italic. Underline and strikeout are not part of a figure's look here.
void dlgFig::cFont_Click()
{
    paso([&] {
        SelectorFuente CMD(this);
        CMD.setObjectName(QStringLiteral("CMD"));
        // Every font this platform lists is a screen font: there is no
        // printer-only face to leave out, so the picker offers them all.
        CMD.setOptions(QFontDialog::DontUseNativeDialog | QFontDialog::ScalableFonts
                       | QFontDialog::NonScalableFonts);
        if (CMD.exec() != QDialog::Accepted)
            return;
        const QFont elegida = CMD.selectedFont();
        paso([&] { setMuestraFuente(elegida.family()); });
        paso([&] { setMuestraTamano(puntosDe(elegida)); });
        paso([&] { setMuestraNegrita(elegida.bold()); });
        paso([&] { setMuestraCursiva(elegida.italic()); });
    });
}

void dlgFig::cmdAceptar_Click()
{
    paso([&] { getData(); });
    m_aceptado = true;
    ocultar();
}

// Cancel, Escape and the close box: the figure is left as it came.
void dlgFig::reject()
{
    m_aceptado = false;
    ocultar();
}
