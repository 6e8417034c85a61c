#include "dlgbuscarentidad.h"

#include "msgbox.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

dlgBuscarEntidad::dlgBuscarEntidad(const QString& tipoEntidad, const QList<FilasEntidad::Fila>& filas, QWidget* parent)
    : QDialog(parent)
    , m_filas(filas)
{
    vbui::instalarTraducciones();
    setObjectName(QStringLiteral("dlgBuscarEntidad"));
    setWindowTitle(QStringLiteral("Buscar %1").arg(tipoEntidad));
    auto* layout = new QVBoxLayout(this);
    auto* etiqueta = new QLabel(QStringLiteral("&Filtro:"), this);
    txtFiltro = new QLineEdit(this);
    txtFiltro->setObjectName(QStringLiteral("txtFiltro"));
    txtFiltro->setPlaceholderText(QStringLiteral("Escriba parte del nombre"));
    etiqueta->setBuddy(txtFiltro);
    lstResultados = new QListWidget(this);
    lstResultados->setObjectName(QStringLiteral("lstResultados"));
    lstResultados->setMinimumSize(420, 260);
    auto* botones = new QDialogButtonBox(this);
    cmdAceptar = botones->addButton(QStringLiteral("&Aceptar"), QDialogButtonBox::AcceptRole);
    cmdAceptar->setObjectName(QStringLiteral("cmdAceptar"));
    cmdAceptar->setDefault(true);
    cmdCancelar = botones->addButton(QStringLiteral("&Cancelar"), QDialogButtonBox::RejectRole);
    cmdCancelar->setObjectName(QStringLiteral("cmdCancelar"));
    layout->addWidget(etiqueta);
    layout->addWidget(txtFiltro);
    layout->addWidget(lstResultados);
    layout->addWidget(botones);
    connect(txtFiltro, &QLineEdit::textChanged, this, &dlgBuscarEntidad::filtrar);
    connect(cmdAceptar, &QPushButton::clicked, this, &dlgBuscarEntidad::aceptar);
    connect(cmdCancelar, &QPushButton::clicked, this, &QDialog::reject);
    connect(lstResultados, &QListWidget::itemDoubleClicked, this, &dlgBuscarEntidad::aceptar);
    filtrar(QString());
}

// The filter works on the rows already read: nothing typed here reaches SQL.
void dlgBuscarEntidad::filtrar(const QString& texto)
{
    lstResultados->clear();
    for (const FilasEntidad::Fila& fila : std::as_const(m_filas)) {
        if (!texto.trimmed().isEmpty() && !fila.texto.contains(texto.trimmed(), Qt::CaseInsensitive))
            continue;
        auto* item = new QListWidgetItem(fila.texto, lstResultados);
        item->setData(Qt::UserRole, fila.clave);
    }
    if (lstResultados->count() > 0)
        lstResultados->setCurrentRow(0);
}

void dlgBuscarEntidad::aceptar()
{
    QListWidgetItem* item = lstResultados->currentItem();
    if (!item) {
        vbui::MsgBox(QStringLiteral("Seleccione un elemento"));
        return;
    }
    m_clave = item->data(Qt::UserRole).toInt();
    accept();
}
