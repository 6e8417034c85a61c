#include "selectorfuente.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>
#include <QLineEdit>
#include <QRegularExpressionValidator>

namespace {

// Up to three whole digits and two decimals, with either decimal mark, and
// never zero: what a user types as a point size. ASCII digits only, as a
// number is read.
const QRegularExpression TamanoValido(QStringLiteral(R"(^(?!0*(?:[.,]0*)?$)[0-9]{1,3}(?:[.,][0-9]{0,2})?$)"));

// A typed size in points, or 0 when the text is not one.
double puntosEscritos(QString texto)
{
    if (!TamanoValido.match(texto).hasMatch())
        return 0;
    texto.replace(QLatin1Char(','), QLatin1Char('.'));
    bool ok = false;
    const double puntos = texto.toDouble(&ok);
    return ok ? puntos : 0;
}

} // namespace

SelectorFuente::SelectorFuente(QWidget* parent)
    : QFontDialog(parent)
{
    // Qt's picker names only its sample; its size box is the one line edit
    // that checks what is typed (the family and style boxes are read-only).
    m_muestra = findChild<QLineEdit*>(QStringLiteral("qt_fontDialog_sampleEdit"));
    for (QLineEdit* caja : findChildren<QLineEdit*>()) {
        if (caja->validator())
            m_tamano = caja;
    }
    if (m_tamano) {
        m_tamano->setObjectName(QStringLiteral("txtTamano"));
        m_tamano->setValidator(new QRegularExpressionValidator(TamanoValido, m_tamano));
        // Connected after Qt's own handlers, so these run last.
        connect(m_tamano, &QLineEdit::textChanged, this, [this](const QString& texto) {
            const double puntos = puntosEscritos(texto);
            m_escrito = puntos > 0 && puntos != double(int(puntos)) ? texto : QString();
            ajustarMuestra();
        });
        connect(this, &QFontDialog::currentFontChanged, this, &SelectorFuente::ajustarMuestra);
    }

    // Left to itself the picker opens on its first family, style and size
    // (a bold italic face as often as not): open on the plain application font.
    const QFontInfo aplicacion(QGuiApplication::font());
    QFont sencilla(aplicacion.family(), aplicacion.pointSize());
    sencilla.setStyleName(estiloInstalado(sencilla.family(), false, false));
    setCurrentFont(sencilla);
}

QString SelectorFuente::estiloInstalado(const QString& familia, bool negrita, bool cursiva)
{
    QString estilo;
    for (const QString& candidato : QFontDatabase::styles(familia)) {
        if (QFontDatabase::bold(familia, candidato) == negrita && QFontDatabase::italic(familia, candidato) == cursiva
            && (estilo.isEmpty() || candidato.size() < estilo.size()))
            estilo = candidato;
    }
    return estilo;
}

void SelectorFuente::ajustarMuestra()
{
    if (!m_muestra)
        return;
    // A new family or style makes Qt write its own whole size back into the
    // box, 0 while a fractional one is typed: the typed size stays.
    if (m_tamano->text() == QLatin1String("0") && !m_escrito.isEmpty()) {
        m_tamano->setText(m_escrito);
        return;
    }
    const double puntos = puntosEscritos(m_tamano->text());
    if (puntos <= 0 || puntos == m_muestra->font().pointSizeF())
        return;
    QFont font = m_muestra->font();
    font.setPointSizeF(puntos);
    m_muestra->setFont(font);
    emit currentFontChanged(font);
}
