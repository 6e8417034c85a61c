// Accepting and cancelling: each kind's settings are written into the
// configuration first and checked afterwards, so after a refused accept the
// configuration already holds what the user typed.
#include "dlgpropindicador.h"

#include "engine/eengine.h"
#include "engine/msgbox.h"
#include "model/ebarraprogreso.h"
#include "model/eindicador.h"
#include "model/ematrizgrafico.h"
#include "model/esemaforo.h"
#include "model/vendimarbi.h"
#include "muestra.h"
#include "vb/vb.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QTabWidget>

namespace {

// One typed-in number into one property. Text that is not a number in the
// user's locale makes only this assignment fail: the property keeps the
// value it had, and only the ordering checks can notice.
void asignarNumero(QObject* configuracion, const QByteArray& nombre, const QString& texto)
{
    try {
        const double valor = vb::CDbl(texto, QLocale());
        configuracion->setProperty(nombre.constData(), valor);
    } catch (const vb::AutomationError&) {
    }
}

double leer(const QObject* configuracion, const QByteArray& nombre)
{
    return configuracion->property(nombre.constData()).toDouble();
}

// The chart kinds in the order cTipoGraf lists them; deliberately not the
// order of their TipoGrafico values.
constexpr int TiposGrafico[4] = {VendimarBI::cLineas2D, VendimarBI::cBarras2D, VendimarBI::cBarras3D,
                                 VendimarBI::cPie2D};

} // namespace

void dlgPropIndicador::cAceptar_Click()
{
    if (recortarBlancos(cNombre->text()).isEmpty()) {
        vbui::MsgBox(QStringLiteral("Indique el nombre del indicador"));
        cNombre->setFocus();
        return;
    }
    // Without an indicator (an Edit whose key had no row) there is nothing
    // to write into; storing then simply fails below.
    if (m_indicador) {
        // Only the test trims: the name is stored as typed.
        m_indicador->setNombre(cNombre->text());
        // The kind is written first, so the configuration fetched next is
        // the one that belongs to it.
        if (opt1->isChecked()) {
            m_indicador->setTipo(VendimarBI::cBarraProgreso);
            if (!GuardarBarra(qobject_cast<EBarraProgreso*>(m_indicador->Configuracion())))
                return;
        } else if (opt2->isChecked()) {
            m_indicador->setTipo(VendimarBI::cMatrizGrafico);
            if (!GuardarMatriz(qobject_cast<EMatrizGrafico*>(m_indicador->Configuracion())))
                return;
        } else if (opt3->isChecked()) {
            m_indicador->setTipo(VendimarBI::cSemaforo);
            if (!GuardarSemaforo(qobject_cast<ESemaforo*>(m_indicador->Configuracion())))
                return;
        }
    }

    bool ok = false;
    EEngine* motor = engine();
    if (motor && m_indicador) {
        try {
            ok = motor->GuardarEntidad(m_indicador.get());
        } catch (const vb::AutomationError&) {
            ok = false;
        }
    }
    if (!ok) {
        // The dialog stays open so the user can try again or cancel.
        vbui::MsgBox(QStringLiteral("Error al guardar datos"));
        return;
    }
    setResultado(m_indicador->Sys_PK());
    ocultar();
}

void dlgPropIndicador::Command17_Click()
{
    // Whatever a failed accept wrote into the indicator is dropped with it.
    setResultado(0);
    ocultar();
}

bool dlgPropIndicador::GuardarBarra(EBarraProgreso* configuracion)
{
    if (cMetrica->currentIndex() < 0) {
        vbui::MsgBox(QStringLiteral("Debe seleccionar una métrica para el indicador"));
        cMetrica->setFocus();
        return false;
    }
    if (!configuracion)
        return false;
    configuracion->setFK_Metrica(cMetrica->itemData(cMetrica->currentIndex(), Qt::UserRole).toInt());

    for (int p = 0; p < 4; ++p)
        asignarNumero(configuracion, propiedad(p, "_Min"), cMin[p]->text());
    for (int p = 0; p < 4; ++p)
        asignarNumero(configuracion, propiedad(p, "_Max"), cMax[p]->text());
    for (int p = 0; p < 4; ++p)
        configuracion->setProperty(propiedad(p, "_ColorDebajo").constData(), lblColorMin[p]->colorOle());
    for (int p = 0; p < 4; ++p)
        configuracion->setProperty(propiedad(p, "_ColorArriba").constData(), lblColorMax[p]->colorOle());
    for (int p = 0; p < 4; ++p)
        configuracion->setProperty(propiedad(p, "_Color").constData(), cColor[p]->colorOle());

    // Checked on what was stored, not on the boxes: equal bounds are refused.
    for (int p = 0; p < 4; ++p) {
        if (leer(configuracion, propiedad(p, "_Max")) <= leer(configuracion, propiedad(p, "_Min"))) {
            vbui::MsgBox(QStringLiteral("El máximo debe ser mayor al mínimo"));
            sTabBarra->setCurrentIndex(p);
            return false;
        }
    }
    return true;
}

bool dlgPropIndicador::GuardarSemaforo(ESemaforo* configuracion)
{
    if (cMetrica2->currentIndex() < 0) {
        vbui::MsgBox(QStringLiteral("Debe seleccionar una métrica para el semáforo"));
        cMetrica2->setFocus();
        return false;
    }
    if (!configuracion)
        return false;
    configuracion->setFK_Metrica(cMetrica2->itemData(cMetrica2->currentIndex(), Qt::UserRole).toInt());
    configuracion->setDescendente(lblSemColor[0]->colorOle() != LamparaRoja);
    for (int p = 0; p < 4; ++p) {
        asignarNumero(configuracion, propiedad(p, "_Limite1"), cL[2 * p]->text());
        asignarNumero(configuracion, propiedad(p, "_Limite2"), cL[2 * p + 1]->text());
    }
    // The high limit must lie strictly above the medium one whichever way
    // the light runs.
    for (int p = 0; p < 4; ++p) {
        if (leer(configuracion, propiedad(p, "_Limite1")) <= leer(configuracion, propiedad(p, "_Limite2"))) {
            vbui::MsgBox(QStringLiteral("El límite alto no puede ser menor o igual al límite medio"));
            sTabSemaforo->setCurrentIndex(p);
            return false;
        }
    }
    return true;
}

// Here every check comes before any write.
bool dlgPropIndicador::GuardarMatriz(EMatrizGrafico* configuracion)
{
    if (recortarBlancos(cTitGraf->text()).isEmpty()) {
        vbui::MsgBox(QStringLiteral("Debe asignar un título a la gráfica"));
        cTabM->setCurrentIndex(2);
        cTitGraf->setFocus();
        return false;
    }
    if (cTipoGraf->currentIndex() < 0) {
        vbui::MsgBox(QStringLiteral("Debe asignar un tipo de gráfico"));
        cTabM->setCurrentIndex(2);
        cTipoGraf->setFocus();
        return false;
    }
    if (lstSelMatriz->count() == 0) {
        vbui::MsgBox(QStringLiteral("Debe seleccionar al menos una métrica"));
        cTabM->setCurrentIndex(0);
        return false;
    }
    if (lstGraf->count() == 0) {
        vbui::MsgBox(QStringLiteral("Debe seleccionar al menos una métrica"));
        cTabM->setCurrentIndex(1);
        return false;
    }
    if (!configuracion)
        return false;

    configuracion->setGrafico_Titulo(cTitGraf->text());
    const int posicion = cTipoGraf->currentIndex();
    if (posicion < 4)
        configuracion->setGrafico_Tipo(TiposGrafico[posicion]);

    // Empty slots hold 0; the lists fill the slots in their order.
    for (int i = 1; i <= EMatrizGrafico::MetricasMatriz; ++i) {
        const QByteArray nombre = "Matriz_Metrica" + QByteArray::number(i);
        configuracion->setProperty(nombre.constData(), 0);
    }
    for (int i = 1; i <= EMatrizGrafico::MetricasMatriz; ++i) {
        if (lstSelMatriz->count() >= i) {
            const QByteArray nombre = "Matriz_Metrica" + QByteArray::number(i);
            configuracion->setProperty(nombre.constData(), lstSelMatriz->item(i - 1)->data(Qt::UserRole).toInt());
        }
    }
    for (int i = 1; i <= EMatrizGrafico::MetricasGrafico; ++i) {
        const QByteArray nombre = "Grafico_Metrica" + QByteArray::number(i);
        configuracion->setProperty(nombre.constData(), 0);
    }
    for (int i = 1; i <= EMatrizGrafico::MetricasGrafico; ++i) {
        if (lstGraf->count() >= i) {
            const QByteArray nombre = "Grafico_Metrica" + QByteArray::number(i);
            configuracion->setProperty(nombre.constData(), lstGraf->item(i - 1)->data(Qt::UserRole).toInt());
        }
    }
    return true;
}
