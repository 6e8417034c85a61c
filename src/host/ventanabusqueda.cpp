#include "ventanabusqueda.h"

#include "ado/connection.h"
#include "engine/eengine.h"
#include "engine/msgbox.h"
#include "indicebiblioteca.h"
#include "model/vendimarbi.h"
#include "vb/automationerror.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

using namespace VendimarBI;

namespace {

QString nombreTipo(int tipo)
{
    switch (tipo) {
    case cPerspectiva:
        return QStringLiteral("Perspectiva");
    case cMetrica:
        return QStringLiteral("Métrica");
    default:
        return QStringLiteral("Indicador");
    }
}

QString usosDe(const IndiceBiblioteca::Resultado& r)
{
    if (r.usos.isEmpty())
        return r.tipo == cPerspectiva ? QString() : QStringLiteral("Sin usar");
    const QString quienes = r.tipo == cMetrica ? QStringLiteral("Indicadores: ") : QStringLiteral("Tableros: ");
    return quienes + r.usos.join(QStringLiteral(", "));
}

} // namespace

VentanaBusqueda::VentanaBusqueda(EEngine* engine, QWidget* parent)
    : QDialog(parent)
    , m_engine(engine)
{
    setObjectName(QStringLiteral("VentanaBusqueda"));
    setWindowTitle(QStringLiteral("Buscar en la biblioteca"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(QStringLiteral("Perspectivas, métricas e indicadores cuyo nombre contiene:"), this));
    txtBuscar = new QLineEdit(this);
    txtBuscar->setObjectName(QStringLiteral("txtBuscar"));
    txtBuscar->setClearButtonEnabled(true);
    layout->addWidget(txtBuscar);
    lstResultados = new QTreeWidget(this);
    lstResultados->setObjectName(QStringLiteral("lstResultados"));
    lstResultados->setRootIsDecorated(false);
    lstResultados->setHeaderLabels({QStringLiteral("Nombre"), QStringLiteral("Tipo"), QStringLiteral("Ruta"),
                                    QStringLiteral("Usado en")});
    lstResultados->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    layout->addWidget(lstResultados);
    cmdAbrir = new QPushButton(QStringLiteral("&Abrir"), this);
    cmdAbrir->setObjectName(QStringLiteral("cmdAbrir"));
    layout->addWidget(cmdAbrir, 0, Qt::AlignRight);
    connect(txtBuscar, &QLineEdit::textChanged, this, &VentanaBusqueda::buscar);
    connect(cmdAbrir, &QPushButton::clicked, this, &VentanaBusqueda::abrirSeleccionado);
    connect(lstResultados, &QTreeWidget::itemActivated, this, &VentanaBusqueda::abrirSeleccionado);
    resize(760, 420);
    leerBiblioteca();
    buscar();
}

VentanaBusqueda::~VentanaBusqueda() = default;

void VentanaBusqueda::leerBiblioteca()
{
    try {
        if (auto* conexion = qobject_cast<ado::Connection*>(m_engine->ADOCnn()))
            m_indice = std::make_unique<IndiceBiblioteca>(FotoBiblioteca::leer(*conexion));
    } catch (const vb::AutomationError& e) {
        m_indice.reset();
        vbui::MsgBox(e.description(), vbui::vbExclamation);
    }
}

void VentanaBusqueda::buscar()
{
    lstResultados->clear();
    if (!m_indice)
        return;
    for (const IndiceBiblioteca::Resultado& r : m_indice->buscar(txtBuscar->text())) {
        auto* item = new QTreeWidgetItem(lstResultados, {r.nombre, nombreTipo(r.tipo), r.ruta, usosDe(r)});
        item->setData(0, Qt::UserRole, r.tipo);
        item->setData(1, Qt::UserRole, r.clave);
    }
    if (lstResultados->topLevelItemCount() > 0)
        lstResultados->setCurrentItem(lstResultados->topLevelItem(0));
    cmdAbrir->setEnabled(lstResultados->topLevelItemCount() > 0);
}

void VentanaBusqueda::abrirSeleccionado()
{
    QTreeWidgetItem* item = lstResultados->currentItem();
    if (!item)
        return;
    const int tipo = item->data(0, Qt::UserRole).toInt();
    const int clave = item->data(1, Qt::UserRole).toInt();
    if (tipo == cPerspectiva)
        m_engine->Form_Editar_Perspectiva(clave);
    else if (tipo == cMetrica)
        m_engine->Form_Editar_Metrica(clave);
    else
        m_engine->Form_Editar_Indicador(clave);
    leerBiblioteca();
    buscar();
    emit editado();
}
