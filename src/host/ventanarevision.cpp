#include "ventanarevision.h"

#include "ado/connection.h"
#include "tools/arreglobiblioteca.h"
#include "tools/fotobiblioteca.h"
#include "tools/informerevision.h"
#include "tools/revisionbiblioteca.h"
#include "vb/automationerror.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

VentanaRevision::VentanaRevision(QObject* engine, QWidget* parent)
    : QDialog(parent)
    , m_engine(engine)
{
    setObjectName(QStringLiteral("VentanaRevision"));
    setWindowTitle(QStringLiteral("Revisar biblioteca"));
    auto* layout = new QVBoxLayout(this);
    lblResumen = new QLabel(this);
    lblResumen->setObjectName(QStringLiteral("lblResumen"));
    lblResumen->setWordWrap(true);
    layout->addWidget(lblResumen);
    // One block per problem, its texts wrapped whole: long Spanish sentences
    // and paths are never cut short.
    auto* desplazable = new QScrollArea(this);
    desplazable->setWidgetResizable(true);
    lstProblemas = new QWidget(desplazable);
    lstProblemas->setObjectName(QStringLiteral("lstProblemas"));
    m_bloques = new QVBoxLayout(lstProblemas);
    desplazable->setWidget(lstProblemas);
    layout->addWidget(desplazable);
    auto* botones = new QDialogButtonBox(this);
    QPushButton* cmdRevisar = botones->addButton(QStringLiteral("Revisar de nuevo"), QDialogButtonBox::ActionRole);
    cmdRevisar->setObjectName(QStringLiteral("cmdRevisar"));
    QPushButton* cmdCerrar = botones->addButton(QStringLiteral("Cerrar"), QDialogButtonBox::RejectRole);
    cmdCerrar->setObjectName(QStringLiteral("cmdCerrar"));
    connect(cmdRevisar, &QPushButton::clicked, this, [this] {
        m_aviso.clear();
        revisar();
    });
    connect(botones, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(botones);
    resize(900, 560);
    revisar();
}

void VentanaRevision::revisar()
{
    ado::Connection* conexion = ado::openConnection(m_engine->property("ADOCnn").value<QObject*>());
    m_problemas.clear();
    try {
        if (!conexion)
            vb::raise(vb::ErrObjectNotSet);
        m_problemas = RevisionBiblioteca(FotoBiblioteca::leer(*conexion)).problemas();
    } catch (const vb::AutomationError& e) {
        m_aviso = QStringLiteral("No se pudo leer la biblioteca: %1").arg(e.description());
    }
    mostrar();
}

bool VentanaRevision::arreglar(int posicion, int padre)
{
    if (posicion < 0 || posicion >= m_problemas.size())
        return false;
    const bool hecho = ArregloBiblioteca::aplicar(m_engine, m_problemas.at(posicion), padre);
    m_aviso = hecho ? QStringLiteral("Arreglo hecho: %1.").arg(m_problemas.at(posicion).textoArreglo())
                    : QStringLiteral("El arreglo no se hizo: falta el permiso o la base de datos lo rechazó.");
    revisar();
    return hecho;
}

void VentanaRevision::mostrar()
{
    while (QLayoutItem* item = m_bloques->takeAt(0)) {
        // Later: a fix button may be the one whose click brought us here.
        if (QWidget* w = item->widget()) {
            w->hide();
            w->deleteLater();
        }
        delete item;
    }
    QString resumen = m_problemas.isEmpty() ? QStringLiteral("La biblioteca está sana: no se encontró ningún problema.")
        : m_problemas.size() == 1           ? QStringLiteral("Se encontró 1 problema.")
                                            : QStringLiteral("Se encontraron %1 problemas.").arg(m_problemas.size());
    if (!m_aviso.isEmpty())
        resumen = m_aviso + QLatin1Char(' ') + resumen;
    lblResumen->setText(resumen);
    for (qsizetype i = 0; i < m_problemas.size(); ++i)
        m_bloques->addWidget(bloque(int(i), m_problemas.at(i)));
    m_bloques->addStretch(1);
}

QWidget* VentanaRevision::bloque(int posicion, const Problema& p)
{
    auto* marco = new QFrame(lstProblemas);
    marco->setObjectName(QStringLiteral("problema(%1)").arg(posicion));
    marco->setFrameShape(QFrame::StyledPanel);
    auto* layout = new QVBoxLayout(marco);
    const auto etiqueta = [&](const char* nombre, const QString& texto) {
        auto* l = new QLabel(texto, marco);
        l->setObjectName(QStringLiteral("%1(%2)").arg(QLatin1String(nombre)).arg(posicion));
        l->setWordWrap(true);
        l->setTextFormat(Qt::PlainText);
        layout->addWidget(l);
        return l;
    };
    QLabel* titulo = etiqueta("lblProblema", p.descripcion);
    QFont negrita = titulo->font();
    negrita.setBold(true);
    titulo->setFont(negrita);
    titulo->setToolTip(p.tipo);
    etiqueta("lblPorque", QStringLiteral("Por qué importa: ") + p.porque);
    QStringList filas;
    for (const FilaProblema& f : p.filas)
        filas.append(QStringLiteral("• ") + InformeRevision::fila(f));
    etiqueta("lblFilas", filas.join(QLatin1Char('\n')));
    if (p.arreglo == Arreglo::Ninguno)
        return marco;
    auto* fila = new QHBoxLayout;
    fila->addStretch(1);
    QComboBox* cPadre = nullptr;
    if (p.arreglo == Arreglo::ReubicarPerspectiva) {
        fila->addWidget(new QLabel(QStringLiteral("Colocarla bajo:"), marco));
        cPadre = new QComboBox(marco);
        cPadre->setObjectName(QStringLiteral("cPadre(%1)").arg(posicion));
        cPadre->addItem(QStringLiteral("(nivel superior)"), 0);
        for (const auto& [clave, ruta] : p.padresPosibles)
            cPadre->addItem(ruta, clave);
        fila->addWidget(cPadre);
    }
    auto* boton = new QPushButton(cPadre ? QStringLiteral("Mover la perspectiva") : p.textoArreglo(), marco);
    boton->setObjectName(QStringLiteral("cmdArreglar(%1)").arg(posicion));
    connect(boton, &QPushButton::clicked, this,
            [this, posicion, cPadre] { arreglar(posicion, cPadre ? cPadre->currentData().toInt() : 0); });
    fila->addWidget(boton);
    layout->addLayout(fila);
    return marco;
}
