// The controls of the placed-indicator editor and their layout.
#include "dlgconfigindi.h"

#include "library/formulario.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

QString nombreIndice(const char* control, int indice)
{
    return QStringLiteral("%1(%2)").arg(QLatin1String(control)).arg(indice);
}

// Kind, name and entity kind together can run past a hundred characters, and
// a description is as long as the search object makes it: the labels that show
// them wrap to the width the fixed controls give the dialog instead of widening it.
QLabel* etiquetaVariable(const QString& texto, const QString& nombre, QWidget* parent)
{
    auto* label = new QLabel(texto, parent);
    label->setObjectName(nombre);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    QSizePolicy policy(QSizePolicy::Ignored, QSizePolicy::Preferred, QSizePolicy::Label);
    policy.setHeightForWidth(true);
    label->setSizePolicy(policy);
    return label;
}

} // namespace

void dlgConfigIndi::construir()
{
    lblIndicador = etiquetaVariable(QStringLiteral("<Tipo de indicador y entidad asociada >"),
                                    QStringLiteral("lblIndicador"), this);
    QFont titulo = lblIndicador->font();
    titulo.setBold(true);
    lblIndicador->setFont(titulo);

    // The chosen entity reads like a field that only the search can fill.
    lblInfo = etiquetaVariable(QStringLiteral("<No hay ninguna entidad de datos asociada>"), QStringLiteral("lblInfo"),
                               this);
    lblInfo->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    // The dialog's own messages always fit on one line.
    lblInfo->setMinimumWidth(
        lblInfo->fontMetrics().horizontalAdvance(QStringLiteral("< No se requiere identificar una entidad de datos >"))
        + 2 * lblInfo->frameWidth() + 2 * lblInfo->margin() + 8);
    cmdBuscar = new QPushButton(QStringLiteral("Buscar"), this);
    cmdBuscar->setObjectName(QStringLiteral("cmdBuscar"));
    cmdBuscar->setAutoDefault(false);

    auto* entidad = new QGridLayout;
    auto* lblEntidad = new QLabel(QStringLiteral("Entidad de datos:"), this);
    entidad->addWidget(lblEntidad, 0, 0);
    entidad->addWidget(lblInfo, 0, 1);
    entidad->addWidget(cmdBuscar, 0, 2, Qt::AlignTop);
    entidad->setColumnStretch(1, 1);

    const QString periodos[Periodos] = {QStringLiteral("Día"), QStringLiteral("Semana"), QStringLiteral("Mes"),
                                        QStringLiteral("Año")};
    auto* checks = new QHBoxLayout;
    for (int k = 0; k < Periodos; ++k) {
        chkInter[k] = new QCheckBox(periodos[k], this);
        chkInter[k]->setObjectName(nombreIndice("chkInter", k));
        checks->addWidget(chkInter[k]);
    }
    checks->addStretch();
    entidad->addWidget(new QLabel(QStringLiteral("Mostrar información de:"), this), 1, 0);
    entidad->addLayout(checks, 1, 1, 1, 2);

    cInicio = new QComboBox(this);
    cInicio->setObjectName(QStringLiteral("cInicio"));
    cInicio->setEditable(false);
    cInicio->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    auto* lblInicio = new QLabel(QStringLiteral("Al iniciar el indicador presentar información del:"), this);
    lblInicio->setBuddy(cInicio);
    auto* inicio = new QHBoxLayout;
    inicio->addWidget(lblInicio);
    inicio->addWidget(cInicio);
    inicio->addStretch();

    auto* frontera = new QGroupBox(QStringLiteral("Valores de frontera"), this);
    auto* limites = new QGridLayout(frontera);
    const QString columnas[Periodos] = {QStringLiteral("Diario"), QStringLiteral("Semanal"), QStringLiteral("Mensual"),
                                        QStringLiteral("Anual")};
    for (int k = 0; k < Periodos; ++k)
        limites->addWidget(new QLabel(columnas[k], frontera), 0, k + 1, Qt::AlignHCenter);
    auto* superior = new QLabel(QStringLiteral("Límite superior:"), frontera);
    auto* inferior = new QLabel(QStringLiteral("Límite inferior:"), frontera);
    limites->addWidget(superior, 1, 0);
    limites->addWidget(inferior, 2, 0);
    for (int i = 0; i < Limites; ++i) {
        txtVal[i] = new QLineEdit(frontera);
        txtVal[i]->setObjectName(nombreIndice("txtVal", i));
        // Room for a limit in the thousands of millions with its cents; longer
        // numbers scroll inside the box.
        txtVal[i]->setFixedWidth(txtVal[i]->fontMetrics().horizontalAdvance(QStringLiteral("-1234567890.25")) + 14);
        limites->addWidget(txtVal[i], 1 + i / Periodos, 1 + i % Periodos);
    }
    superior->setBuddy(txtVal[0]);
    inferior->setBuddy(txtVal[Periodos]);

    auto* botones = vbui::botones(this, QStringLiteral("cmdAceptar"), QStringLiteral("cmdCancel"), &cmdAceptar,
                                  &cmdCancel);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblIndicador);
    layout->addSpacing(4);
    layout->addLayout(entidad);
    layout->addLayout(inicio);
    layout->addWidget(frontera);
    layout->addWidget(botones);
    // A fixed dialog, as it has always been; it grows to hold a wrapped text,
    // also one that the search puts there while the dialog is open.
    layout->setSizeConstraint(QLayout::SetFixedSize);

    ordenarTabulacion();
}

// Top to bottom, left to right: the search, the periods, the opening period,
// the upper row of limits, the lower row, then accept and cancel.
void dlgConfigIndi::ordenarTabulacion()
{
    QList<QWidget*> orden{cmdBuscar};
    for (QCheckBox* chk : chkInter)
        orden.append(chk);
    orden.append(cInicio);
    for (QLineEdit* txt : txtVal)
        orden.append(txt);
    orden.append(cmdAceptar);
    orden.append(cmdCancel);
    for (int i = 1; i < orden.size(); ++i)
        setTabOrder(orden.at(i - 1), orden.at(i));
}
