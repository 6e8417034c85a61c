#include "dlgdato.h"

#include "engine/eengine.h"
#include "engine/msgbox.h"
#include "formulario.h"
#include "model/emetrica.h"
#include "model/vendimarbi.h"
#include "vb/texto.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

// The declared lengths of the metric's columns.
constexpr int LargoNombre = 50;
constexpr int LargoDescripcion = 255;
constexpr int LargoTitulo = 100;
constexpr int LargoFormato = 50;
constexpr int LargoCodigo = 16000;

} // namespace

dlgDato::dlgDato(QWidget* parent)
    : Dialogo(parent)
{
    construir();
}

QString dlgDato::plantillaCodigo()
{
    const QString crlf = QStringLiteral("\r\n");
    return QStringLiteral("//Lenguaje: javascript") + crlf
        + QStringLiteral("//Objetos disponibles: ADOCnn, StatsEngine, _ejecutar y _fecha") + crlf
        + QStringLiteral("//Parámetros: sys_pk, inicio, final  [function_ClaveMetrica(sys_pk,inicio,final){}] ") + crlf
        + QStringLiteral("//El valor debe ser devuelto mediante una sentencia return") + crlf;
}

void dlgDato::construir()
{
    setObjectName(QStringLiteral("dlgDato"));
    setWindowTitle(QStringLiteral("Propiedades de métrica"));
    auto* grid = new QGridLayout;
    cNombre = vbui::campo<QLineEdit>(grid, QStringLiteral("Nombre:"), QStringLiteral("cNombre"), this);
    vbui::limitarLongitud(cNombre, LargoNombre);
    cDescrip = vbui::campo<QPlainTextEdit>(grid, QStringLiteral("Descripción:"), QStringLiteral("cDescrip"), this);
    cDescrip->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    cDescrip->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    cDescrip->setTabChangesFocus(true);
    cDescrip->setFixedHeight(60);
    vbui::limitarLongitud(cDescrip, LargoDescripcion);
    cTitulo = vbui::campo<QLineEdit>(grid, QStringLiteral("Título:"), QStringLiteral("cTitulo"), this);
    vbui::limitarLongitud(cTitulo, LargoTitulo);
    cDecs = vbui::campo<QComboBox>(grid, QStringLiteral("Decimales:"), QStringLiteral("cDecs"), this);
    cFormat = vbui::campo<QComboBox>(grid, QStringLiteral("Formato de presentación:"), QStringLiteral("cFormat"), this);
    cFormat->setEditable(true);
    cFormat->setInsertPolicy(QComboBox::NoInsert);
    vbui::limitarLongitud(cFormat->lineEdit(), LargoFormato);
    cCode = vbui::campo<QPlainTextEdit>(grid, QStringLiteral("Código fuente:"), QStringLiteral("cCode"), this);
    QFont courier(QStringLiteral("Courier New"));
    courier.setStyleHint(QFont::Monospace);
    cCode->setFont(courier);
    cCode->setLineWrapMode(QPlainTextEdit::NoWrap);
    cCode->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    cCode->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    cCode->setTabChangesFocus(true);
    cCode->setMinimumSize(560, 200);
    vbui::limitarLongitud(cCode, LargoCodigo);
    cGUID = new QLineEdit(this);
    cGUID->setObjectName(QStringLiteral("cGUID"));
    lblguid = vbui::fila(grid, QStringLiteral("Clave:"), cGUID, QStringLiteral("lblguid"));
    grid->setRowStretch(5, 1);

    auto* buttons = vbui::botones(this, QStringLiteral("cAceptar"), QStringLiteral("cCancelar"), &cAceptar, &cCancelar);
    connect(cAceptar, &QPushButton::clicked, this, &dlgDato::aceptar);
    connect(cCancelar, &QPushButton::clicked, this, &dlgDato::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addWidget(buttons);
}

void dlgDato::llenarListas()
{
    cDecs->clear();
    cFormat->clear();
    for (int i = 0; i <= 10; ++i)
        cDecs->addItem(QString::number(i));
    cFormat->addItems({QStringLiteral("#"), QStringLiteral("#,#.0"), QStringLiteral("#,#.00")});
}

void dlgDato::Nuevo(int Padre)
{
    llenarListas();
    cNombre->clear();
    cTitulo->clear();
    cDescrip->clear();
    cDecs->setCurrentIndex(0);
    cFormat->setCurrentText(QStringLiteral("#"));
    cCode->setPlainText(plantillaCodigo());
    if (EEngine* e = engine()) {
        m_metrica = qobject_cast<EMetrica*>(e->CrearEntidad(VendimarBI::cMetrica));
        if (m_metrica) {
            m_metrica->setParent(this);
            m_metrica->setFK_Perspectiva(Padre);
        }
    }
    cGUID->setEnabled(false);
}

void dlgDato::Edit(int PK)
{
    llenarListas();
    if (EEngine* e = engine()) {
        m_metrica = qobject_cast<EMetrica*>(e->CargarEntidad(VendimarBI::cMetrica, PK));
        if (m_metrica)
            m_metrica->setParent(this);
    }
    if (!m_metrica)
        return;
    cNombre->setText(m_metrica->Nombre());
    cTitulo->setText(m_metrica->Titulo());
    cDescrip->setPlainText(m_metrica->Descripcion());
    cDecs->setCurrentIndex(m_metrica->Decimales());
    cFormat->setCurrentText(m_metrica->Formato());
    cCode->setPlainText(m_metrica->CodigoFuente());
    cGUID->setText(m_metrica->Sys_GUID());
    cGUID->setReadOnly(true);
    cGUID->setEnabled(true);
}

// Checks in order; the first empty field gets its message and the focus.
bool dlgDato::validar()
{
    const struct {
        QString texto;
        const char* mensaje;
        QWidget* foco;
    } checks[] = {
        {cNombre->text(), "Indique el nombre de la métrica", cNombre},
        {cTitulo->text(), "Indique el título", cTitulo},
        {vbui::textoMultilinea(cDescrip), "Indique una descripción", cDescrip},
        {vbui::textoMultilinea(cCode), "Escriba el código JavaScript de la métrica", cCode},
    };
    for (const auto& check : checks) {
        if (vb::Trim(check.texto).isEmpty()) {
            vbui::MsgBox(QString::fromUtf8(check.mensaje));
            check.foco->setFocus();
            return false;
        }
    }
    return true;
}

void dlgDato::aceptar()
{
    if (!validar())
        return;
    bool saved = false;
    if (m_metrica) {
        m_metrica->setNombre(cNombre->text());
        m_metrica->setTitulo(cTitulo->text());
        m_metrica->setDescripcion(vbui::textoMultilinea(cDescrip));
        m_metrica->setDecimales(short(cDecs->currentIndex()));
        m_metrica->setFormato(cFormat->currentText());
        m_metrica->setCodigoFuente(vbui::textoMultilinea(cCode));
        saved = guardarEntidad(m_metrica);
    }
    if (!saved) {
        vbui::MsgBox(QStringLiteral("Error al guardar datos"));
        return;
    }
    setResultado(m_metrica->Sys_PK());
    ocultar();
}
