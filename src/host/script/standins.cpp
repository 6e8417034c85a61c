#include "standins.h"

#include "vb/automationerror.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>
#include <memory>

ScriptUserManagement::ScriptUserManagement(QObject* parent)
    : QObject(parent)
{
}

bool ScriptUserManagement::VerificarDerecho(const QString& codigo, bool /*flag1*/, bool /*flag2*/,
                                            const QString& /*texto*/)
{
    m_asked.append(codigo);
    if (m_refused.contains(codigo))
        return false;
    if (m_granted.contains(codigo))
        return true;
    return m_grantByDefault;
}

void ScriptUserManagement::refuse(const QString& code)
{
    m_granted.remove(code);
    m_refused.insert(code);
}

void ScriptUserManagement::grant(const QString& code)
{
    m_refused.remove(code);
    m_granted.insert(code);
}

void ScriptUserManagement::refuseAll()
{
    m_grantByDefault = false;
    m_refused.clear();
    m_granted.clear();
}

void ScriptUserManagement::grantAll()
{
    m_grantByDefault = true;
    m_refused.clear();
    m_granted.clear();
}

ScriptSearch::ScriptSearch(QObject* parent)
    : QObject(parent)
{
}

QVariant ScriptSearch::Conectar(QObject* conexion)
{
    m_connection = conexion;
    return QVariant();
}

QVariant ScriptSearch::Buscar(const QString& tipoEntidad, bool flag)
{
    m_searches.append(QVariantMap{{QStringLiteral("kind"), tipoEntidad}, {QStringLiteral("flag"), flag}});
    if (m_raiseError)
        vb::raise(m_raiseError);
    if (!m_candidates.isEmpty())
        return elegirEnVentana(tipoEntidad);
    return m_searchAnswer;
}

QString ScriptSearch::Describir(const QString& tipoEntidad, const QString& clave, const QString& separador)
{
    m_descriptions.append(QVariantMap{{QStringLiteral("kind"), tipoEntidad},
                                      {QStringLiteral("key"), clave},
                                      {QStringLiteral("separator"), separador}});
    if (m_raiseError)
        vb::raise(m_raiseError);
    return m_describeAnswer;
}

// The host's search window: the candidates in a list, the chosen one's key
// as the answer, 0 when the user cancels or chooses nothing.
QVariant ScriptSearch::elegirEnVentana(const QString& tipoEntidad)
{
    auto ventana = std::make_unique<QDialog>(QApplication::activeWindow());
    ventana->setObjectName(QStringLiteral("frmBuscar"));
    ventana->setWindowTitle(QStringLiteral("Buscar: ") + tipoEntidad);
    auto* etiqueta = new QLabel(QStringLiteral("Resultados:"), ventana.get());
    auto* lista = new QListWidget(ventana.get());
    lista->setObjectName(QStringLiteral("lstResultados"));
    for (const QVariant& candidato : std::as_const(m_candidates)) {
        const QVariantMap campos = candidato.toMap();
        const QVariant clave = campos.isEmpty() ? candidato : campos.value(QStringLiteral("key"));
        const QString texto = campos.isEmpty() ? candidato.toString() : campos.value(QStringLiteral("text")).toString();
        auto* entrada = new QListWidgetItem(texto, lista);
        entrada->setData(Qt::UserRole, clave);
    }
    auto* botones = new QDialogButtonBox(ventana.get());
    QPushButton* aceptar = botones->addButton(QStringLiteral("Aceptar"), QDialogButtonBox::AcceptRole);
    aceptar->setObjectName(QStringLiteral("cmdAceptar"));
    aceptar->setDefault(true);
    QPushButton* cancelar = botones->addButton(QStringLiteral("Cancelar"), QDialogButtonBox::RejectRole);
    cancelar->setObjectName(QStringLiteral("cmdCancelar"));
    QObject::connect(botones, &QDialogButtonBox::accepted, ventana.get(), &QDialog::accept);
    QObject::connect(botones, &QDialogButtonBox::rejected, ventana.get(), &QDialog::reject);
    QObject::connect(lista, &QListWidget::itemDoubleClicked, ventana.get(), &QDialog::accept);
    auto* layout = new QVBoxLayout(ventana.get());
    layout->addWidget(etiqueta);
    layout->addWidget(lista);
    layout->addWidget(botones);
    if (ventana->exec() != QDialog::Accepted || !lista->currentItem())
        return 0;
    return lista->currentItem()->data(Qt::UserRole);
}
