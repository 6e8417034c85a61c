// Opening the dialog (Nuevo, Edit), the kind panels and the colour controls.
#include "dlgpropindicador.h"

#include "engine/eengine.h"
#include "library/mdl_functions.h"
#include "model/ebarraprogreso.h"
#include "model/eindicador.h"
#include "model/ematrizgrafico.h"
#include "model/esemaforo.h"
#include "model/vendimarbi.h"
#include "muestra.h"
#include "vb/vb.h"

#include <QColorDialog>
#include <QComboBox>
#include <QFrame>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>

namespace {

// Number to text in the user's locale, as the boxes show it.
QString comoTexto(const QObject* configuracion, const QByteArray& nombre)
{
    return vb::CStr(configuracion->property(nombre.constData()).toDouble(), QLocale());
}

} // namespace

dlgPropIndicador::dlgPropIndicador(QWidget* parent)
    : Dialogo(parent)
{
    construir();
}

dlgPropIndicador::~dlgPropIndicador() = default;

QByteArray dlgPropIndicador::propiedad(int periodo, const char* sufijo)
{
    static const char* const prefijos[4] = {"Dia", "Semana", "Mes", "Ano"};
    return QByteArray(prefijos[periodo]) + sufijo;
}

int dlgPropIndicador::indiceSeleccionado(const QListWidget* lista)
{
    const QListWidgetItem* actual = lista->currentItem();
    return actual && actual->isSelected() ? lista->row(actual) : -1;
}

void dlgPropIndicador::seleccionarIndice(QListWidget* lista, int indice)
{
    if (indice < 0 || indice >= lista->count()) {
        lista->clearSelection();
        lista->setCurrentItem(nullptr);
        return;
    }
    lista->setCurrentRow(indice, QItemSelectionModel::ClearAndSelect);
}

QString dlgPropIndicador::recortarBlancos(const QString& texto)
{
    qsizetype inicio = 0;
    qsizetype fin = texto.size();
    while (inicio < fin && texto.at(inicio) == QLatin1Char(' '))
        ++inicio;
    while (fin > inicio && texto.at(fin - 1) == QLatin1Char(' '))
        --fin;
    return texto.mid(inicio, fin - inicio);
}

void dlgPropIndicador::Nuevo(int clavePerspectiva)
{
    cNombre->setText(QString());
    seleccionarOpcion(opt1);
    // The kind is written to the indicator on "&Aceptar", not here.
    m_indicador.reset();
    if (EEngine* motor = engine()) {
        try {
            QObject* creado = motor->CrearEntidad(VendimarBI::cIndicador);
            m_indicador.reset(qobject_cast<EIndicador*>(creado));
            if (creado && !m_indicador)
                delete creado;
        } catch (const vb::AutomationError&) {
        }
    }
    if (m_indicador)
        m_indicador->setFK_Perspectiva(clavePerspectiva);
    CargarListas();
}

// Each step stands alone: an indicator that cannot be loaded leaves the
// steps that need it undone, with no message.
void dlgPropIndicador::Edit(int clave)
{
    m_indicador.reset();
    if (EEngine* motor = engine()) {
        try {
            QObject* cargado = motor->CargarEntidad(VendimarBI::cIndicador, clave);
            m_indicador.reset(qobject_cast<EIndicador*>(cargado));
            if (cargado && !m_indicador)
                delete cargado;
        } catch (const vb::AutomationError&) {
        }
    }
    CargarListas();
    if (!m_indicador)
        return;
    cNombre->setText(m_indicador->Nombre());
    if (m_indicador->Tipo() == VendimarBI::cBarraProgreso) {
        seleccionarOpcion(opt1);
        LlenarBarra(qobject_cast<EBarraProgreso*>(m_indicador->Configuracion()));
    }
    if (m_indicador->Tipo() == VendimarBI::cMatrizGrafico) {
        seleccionarOpcion(opt2);
        LlenarMatriz(qobject_cast<EMatrizGrafico*>(m_indicador->Configuracion()));
    }
    if (m_indicador->Tipo() == VendimarBI::cSemaforo) {
        seleccionarOpcion(opt3);
        LlenarSemaforo(qobject_cast<ESemaforo*>(m_indicador->Configuracion()));
    }
}

void dlgPropIndicador::CargarListas()
{
    // All three kinds draw on the metrics of the indicator's own perspective.
    if (m_indicador) {
        QObject* conexion = engine() ? engine()->ADOCnn() : nullptr;
        const int perspectiva = m_indicador->FK_Perspectiva();
        mdl_functions::LlenarListaMetricas(conexion, perspectiva, cMetrica);
        mdl_functions::LlenarListaMetricas(conexion, perspectiva, cMetrica2);
        mdl_functions::LlenarListaMetricas(conexion, perspectiva, lstMetricas);
        // A freshly filled drop-down list starts with nothing chosen, so
        // that a metric is always the user's own choice.
        cMetrica->setCurrentIndex(-1);
        cMetrica2->setCurrentIndex(-1);
    }
    for (const char* tipo : {"Líneas 2D", "Barras 2D", "Barras 3D", "Pastel"})
        cTipoGraf->addItem(QString::fromUtf8(tipo));
    cTipoGraf->setCurrentIndex(0);
}

void dlgPropIndicador::seleccionarOpcion(QRadioButton* opcion)
{
    opcion->setChecked(true);
    MostrarPanel();
}

void dlgPropIndicador::MostrarPanel()
{
    picMatriz->hide();
    picSemaforo->hide();
    picBarra->hide();
    if (opt1->isChecked())
        picBarra->show();
    if (opt2->isChecked())
        picMatriz->show();
    if (opt3->isChecked())
        picSemaforo->show();
}

void dlgPropIndicador::LlenarBarra(EBarraProgreso* configuracion)
{
    if (!configuracion)
        return;
    mdl_functions::SeleccionarPorClave(cMetrica, configuracion->FK_Metrica());
    for (int p = 0; p < 4; ++p)
        cMin[p]->setText(comoTexto(configuracion, propiedad(p, "_Min")));
    for (int p = 0; p < 4; ++p)
        cMax[p]->setText(comoTexto(configuracion, propiedad(p, "_Max")));
    for (int p = 0; p < 4; ++p)
        lblColorMin[p]->setColorOle(configuracion->property(propiedad(p, "_ColorDebajo").constData()).toInt());
    for (int p = 0; p < 4; ++p)
        lblColorMax[p]->setColorOle(configuracion->property(propiedad(p, "_ColorArriba").constData()).toInt());
    for (int p = 0; p < 4; ++p)
        cColor[p]->setColorOle(configuracion->property(propiedad(p, "_Color").constData()).toInt());
}

// The direction of the light lives only in the lamp colours: green on top
// means lower values are the better ones. The middle lamp is never touched.
void dlgPropIndicador::LlenarSemaforo(ESemaforo* configuracion)
{
    if (!configuracion)
        return;
    mdl_functions::SeleccionarPorClave(cMetrica2, configuracion->FK_Metrica());
    if (configuracion->Descendente()) {
        lblSemColor[0]->setColorOle(LamparaVerde);
        lblSemColor[2]->setColorOle(LamparaRoja);
    } else {
        lblSemColor[0]->setColorOle(LamparaRoja);
        lblSemColor[2]->setColorOle(LamparaVerde);
    }
    for (int p = 0; p < 4; ++p) {
        cL[2 * p]->setText(comoTexto(configuracion, propiedad(p, "_Limite1")));
        cL[2 * p + 1]->setText(comoTexto(configuracion, propiedad(p, "_Limite2")));
    }
}

// The colour dialog opens unset, not on the swatch's colour; cancelling it
// leaves the swatch as it was.
void dlgPropIndicador::ElegirColor(Muestra* muestra)
{
    QColorDialog CMD(this);
    CMD.setObjectName(QStringLiteral("CMD"));
    // The same dialog on every desktop, so that what users and tests see agrees.
    CMD.setOption(QColorDialog::DontUseNativeDialog);
    if (CMD.exec() != QDialog::Accepted)
        return;
    const QColor elegido = CMD.selectedColor();
    if (elegido.isValid())
        muestra->setColorOle(vb::colorToOle(elegido));
}

// Any top colour other than pure red counts as green on top.
void dlgPropIndicador::cmdInvert_Click()
{
    if (lblSemColor[0]->colorOle() == LamparaRoja) {
        lblSemColor[0]->setColorOle(LamparaVerde);
        lblSemColor[2]->setColorOle(LamparaRoja);
    } else {
        lblSemColor[0]->setColorOle(LamparaRoja);
        lblSemColor[2]->setColorOle(LamparaVerde);
    }
}
