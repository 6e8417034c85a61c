// What the placed-indicator editor does: copying the placed indicator into the
// controls and back, the entity search and the accept and cancel buttons. The
// controls themselves are built in dlgconfigindi_ui.cpp.
#include "dlgconfigindi.h"

#include "engine/eengine.h"
#include "engine/msgbox.h"
#include "model/ebarraprogreso.h"
#include "model/eindicador.h"
#include "model/eperspectiva.h"
#include "model/esemaforo.h"
#include "model/etabindicador.h"
#include "model/mdl_consulta.h"
#include "model/vendimarbi.h"
#include "vb/texto.h"
#include "vb/vb.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <exception>

namespace {

// "@" is how a perspective says it is bound to no host entity.
const QString SinEntidad = QStringLiteral("@");

// An entity loaded through the engine, owned by the caller; none when the row
// is missing or the engine answers something of another class.
template <typename Entidad>
std::unique_ptr<Entidad> cargar(EEngine* engine, int tipo, int pk)
{
    std::unique_ptr<QObject> cargada(engine->CargarEntidad(tipo, pk));
    if (auto* entidad = qobject_cast<Entidad*>(cargada.get())) {
        cargada.release();
        return std::unique_ptr<Entidad>(entidad);
    }
    return nullptr;
}

} // namespace

dlgConfigIndi::dlgConfigIndi(QWidget* parent)
    : Dialogo(parent)
{
    setObjectName(QStringLiteral("dlgConfigIndi"));
    setWindowTitle(QStringLiteral("Configuración de indicador"));
    construir();
    connect(cmdBuscar, &QPushButton::clicked, this, &dlgConfigIndi::buscar);
    connect(cmdAceptar, &QPushButton::clicked, this, &dlgConfigIndi::aceptar);
    connect(cmdCancel, &QPushButton::clicked, this, &dlgConfigIndi::reject);
}

dlgConfigIndi::~dlgConfigIndi() = default;

QObject* dlgConfigIndi::TabIndicador() const
{
    return m_tabIndicador.data();
}

void dlgConfigIndi::setTabIndicador(QObject* tabIndicador)
{
    m_tabIndicador = tabIndicador;
}

ETabIndicador* dlgConfigIndi::tabIndicador() const
{
    return qobject_cast<ETabIndicador*>(m_tabIndicador.data());
}

void dlgConfigIndi::putData()
{
    // The list position is the period's cPeriodosTemporales value. "Ano" has
    // always been written without its tilde in this list, unlike the check box.
    cInicio->clear();
    cInicio->addItems({QStringLiteral("Día"), QStringLiteral("Semana"), QStringLiteral("Mes"), QStringLiteral("Ano")});
    // Nothing is chosen until the placed indicator says which period it opens on.
    cInicio->setCurrentIndex(-1);

    ETabIndicador* o = tabIndicador();
    EEngine* e = engine();
    m_indicador.reset();
    m_perspectiva.reset();
    if (!o || !e)
        return;

    // Without its indicator or its perspective the dialog stays as designed.
    try {
        m_indicador = cargar<EIndicador>(e, VendimarBI::cIndicador, o->FK_Indicador());
        if (m_indicador)
            m_perspectiva = cargar<EPerspectiva>(e, VendimarBI::cPerspectiva, m_indicador->FK_Perspectiva());
    } catch (const std::exception&) {
    }
    if (!m_indicador || !m_perspectiva)
        return;

    const QString nombre = m_indicador->Nombre();
    switch (m_indicador->Tipo()) {
    case VendimarBI::cBarraProgreso:
        lblIndicador->setText(QStringLiteral("Barra de progreso ") + nombre);
        habilitarLimites(true);
        break;
    case VendimarBI::cMatrizGrafico:
        // A matrix has no frontier values; the boxes only show what is stored.
        lblIndicador->setText(QStringLiteral("Matriz y gráfico ") + nombre);
        habilitarLimites(false);
        break;
    case VendimarBI::cSemaforo:
        lblIndicador->setText(QStringLiteral("Semáforo ") + nombre);
        habilitarLimites(true);
        break;
    default:
        break;
    }

    const QString entidad = m_perspectiva->EntidadAsociada();
    if (sinEntidad()) {
        lblInfo->setText(QStringLiteral("< No se requiere identificar una entidad de datos >"));
        cmdBuscar->setEnabled(false);
    } else {
        lblIndicador->setText(lblIndicador->text() + QStringLiteral(" de ") + entidad);
        cmdBuscar->setEnabled(true);
        lblInfo->setText(QStringLiteral("< Seleccione una entidad de datos >"));
        if (o->FK_Entidad() > 0) {
            // A search object that cannot describe the entity leaves the prompt
            // showing, but the entity stays chosen.
            try {
                lblInfo->setText(e->InfoEntidad(entidad, o->FK_Entidad()));
            } catch (const std::exception&) {
            }
            m_entidad = o->FK_Entidad();
        }
    }

    if (o->Sys_PK() < 1) {
        // Placed anew: every period shown, opening on the day, and the limits
        // proposed by the indicator's own configuration.
        for (QCheckBox* chk : chkInter)
            chk->setChecked(true);
        cInicio->setCurrentIndex(VendimarBI::cDia);
        mostrarDefectos();
        return;
    }

    // A saved placement shows what it stored, whatever the indicator's kind.
    const bool muestra[Periodos] = {o->Muestra_Dia(), o->Muestra_Semana(), o->Muestra_Mes(), o->Muestra_Ano()};
    for (int k = 0; k < Periodos; ++k)
        chkInter[k]->setChecked(muestra[k]);
    // txtVal 0 to 7: the upper row (day, week, month, year) holds the odd
    // limits, the lower row the even ones.
    mostrarLimites({o->Limite1(), o->Limite3(), o->Limite5(), o->Limite7(),
                    o->Limite2(), o->Limite4(), o->Limite6(), o->Limite8()});
    // A period outside the list chooses nothing, as an invalid list position
    // has always been refused.
    if (o->PeriodoInicio() >= 0 && o->PeriodoInicio() < cInicio->count())
        cInicio->setCurrentIndex(o->PeriodoInicio());
}

void dlgConfigIndi::mostrarDefectos()
{
    QObject* configuracion = m_indicador->Configuracion();
    switch (m_indicador->Tipo()) {
    case VendimarBI::cSemaforo:
        // Limite1 is the upper frontier, Limite2 the lower one.
        if (auto* s = qobject_cast<ESemaforo*>(configuracion)) {
            mostrarLimites({s->Dia_Limite1(), s->Semana_Limite1(), s->Mes_Limite1(), s->Ano_Limite1(),
                            s->Dia_Limite2(), s->Semana_Limite2(), s->Mes_Limite2(), s->Ano_Limite2()});
        }
        break;
    case VendimarBI::cBarraProgreso:
        // The bar's upper bound goes in the upper row, its lower bound below.
        if (auto* b = qobject_cast<EBarraProgreso*>(configuracion)) {
            mostrarLimites({b->Dia_Max(), b->Semana_Max(), b->Mes_Max(), b->Ano_Max(),
                            b->Dia_Min(), b->Semana_Min(), b->Mes_Min(), b->Ano_Min()});
        }
        break;
    default:
        // A matrix and chart proposes no limits.
        break;
    }
}

void dlgConfigIndi::mostrarLimites(const double (&valores)[Limites])
{
    // The user's locale, as every number the host shows in a text box.
    const QLocale locale;
    for (int i = 0; i < Limites; ++i)
        txtVal[i]->setText(vb::CStr(valores[i], locale));
}

void dlgConfigIndi::habilitarLimites(bool habilitar)
{
    for (QLineEdit* txt : txtVal)
        txt->setEnabled(habilitar);
}

void dlgConfigIndi::getData()
{
    ETabIndicador* o = tabIndicador();
    if (!o)
        return;
    o->setFK_Entidad(m_entidad);
    o->setMuestra_Dia(chkInter[VendimarBI::cDia]->isChecked());
    o->setMuestra_Semana(chkInter[VendimarBI::cSemana]->isChecked());
    o->setMuestra_Mes(chkInter[VendimarBI::cMes]->isChecked());
    o->setMuestra_Ano(chkInter[VendimarBI::cAno]->isChecked());
    // Whatever the user typed counts up to its first character that is not part
    // of a number; no range or order is imposed between the two rows.
    double valores[Limites];
    for (int i = 0; i < Limites; ++i)
        valores[i] = mdl_functions::ValorNumero(txtVal[i]->text());
    // Named one by one, in the rows' order (odd limits above, even below): a
    // table of member-function pointers trips the compiler's bounds checking.
    o->setLimite1(valores[0]);
    o->setLimite3(valores[1]);
    o->setLimite5(valores[2]);
    o->setLimite7(valores[3]);
    o->setLimite2(valores[4]);
    o->setLimite4(valores[5]);
    o->setLimite6(valores[6]);
    o->setLimite8(valores[7]);
    o->setPeriodoInicio(cInicio->currentIndex());
}

bool dlgConfigIndi::sinEntidad() const
{
    // Without its perspective there is no entity kind to ask for, so the
    // placement is accepted as one that needs no entity rather than leaving
    // the user in a dialog that can never close by accepting.
    if (!m_perspectiva)
        return true;
    const QString entidad = vb::Trim(m_perspectiva->EntidadAsociada());
    return entidad.isEmpty() || entidad == SinEntidad;
}

void dlgConfigIndi::buscar()
{
    EEngine* e = engine();
    if (!e || !m_perspectiva)
        return;
    const QString entidad = m_perspectiva->EntidadAsociada();
    const int k = e->BuscarEntidad(entidad);
    // No answer keeps whatever entity was chosen before.
    if (k <= 0)
        return;
    m_entidad = k;
    try {
        lblInfo->setText(e->InfoEntidad(entidad, k));
    } catch (const std::exception&) {
    }
}

void dlgConfigIndi::aceptar()
{
    if (sinEntidad() || m_entidad >= 1) {
        getData();
        m_aceptado = true;
        ocultar();
        return;
    }
    vbui::MsgBox(QStringLiteral("Debe seleccionar una entidad"));
    buscar();
}

void dlgConfigIndi::reject()
{
    m_aceptado = false;
    ocultar();
}
