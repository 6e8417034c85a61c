#include "dialogo.h"

#include "caracteresenteros.h"
#include "engine/eengine.h"
#include "engine/msgbox.h"
#include "vb/automationerror.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextCursor>

Dialogo::Dialogo(QWidget* parent)
    : QDialog(parent)
{
    vbui::instalarTraducciones();
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setModal(true);
}

QObject* Dialogo::Engine() const
{
    return m_engine.data();
}

void Dialogo::setEngine(QObject* engine)
{
    m_engine = engine;
}

EEngine* Dialogo::engine() const
{
    return qobject_cast<EEngine*>(m_engine.data());
}

void Dialogo::reject()
{
    m_resultado = 0;
    ocultar();
}

void Dialogo::ocultar()
{
    hide();
}

bool Dialogo::guardarEntidad(QObject* entidad) const
{
    EEngine* e = engine();
    if (!e || !entidad)
        return false;
    try {
        return e->GuardarEntidad(entidad);
    } catch (const vb::AutomationError&) {
        return false;
    }
}

namespace vbui {

void limitarLongitud(QPlainTextEdit* editor, int maximo)
{
    // Line breaks count twice: they are stored as carriage return and line feed.
    QObject::connect(editor, &QPlainTextEdit::textChanged, editor, [editor, maximo] {
        const QString text = editor->toPlainText();
        if (text.size() + text.count(QLatin1Char('\n')) <= maximo)
            return;
        qsizetype kept = 0;
        for (int used = 0; kept < text.size(); ++kept) {
            used += text.at(kept) == QLatin1Char('\n') ? 2 : 1;
            if (used > maximo)
                break;
        }
        // Never keep half of a character written as a surrogate pair.
        if (kept > 0 && text.at(kept - 1).isHighSurrogate())
            --kept;
        QTextCursor cursor = editor->textCursor();
        const int position = int(qMin<qsizetype>(cursor.position(), kept));
        QSignalBlocker block(editor);
        editor->setPlainText(text.left(kept));
        cursor = editor->textCursor();
        cursor.setPosition(position);
        editor->setTextCursor(cursor);
    });
}

void limitarLongitud(QLineEdit* editor, int maximo)
{
    editor->setMaxLength(maximo);
    editor->setValidator(new CaracteresEnteros(editor));
}

QString textoMultilinea(const QPlainTextEdit* editor)
{
    return editor->toPlainText().replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
}

} // namespace vbui
