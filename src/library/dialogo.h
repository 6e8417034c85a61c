#pragma once

#include <QApplication>
#include <QDialog>
#include <QPointer>

class EEngine;
class QLineEdit;
class QPlainTextEdit;

// What every dialog of the component shares: the engine that opened it (set
// before anything else), the public result the engine reads after the modal
// show, and hiding as the way a dialog ends its modal show. The close box and
// Escape act as cancel.
class Dialogo : public QDialog {
    Q_OBJECT
    Q_PROPERTY(QObject* Engine READ Engine WRITE setEngine)
    Q_PROPERTY(int Resultado READ Resultado WRITE setResultado)

public:
    explicit Dialogo(QWidget* parent = nullptr);

    QObject* Engine() const;
    void setEngine(QObject* engine);
    int Resultado() const { return m_resultado; }
    void setResultado(int value) { m_resultado = value; }

    // Cancel: the result goes back to 0 and the dialog hides.
    void reject() override;

protected:
    EEngine* engine() const;
    // Ends the modal show, keeping the public result.
    void ocultar();
    // Saves through the engine's GuardarEntidad; any failure, a raised error
    // included, answers false.
    bool guardarEntidad(QObject* entidad) const;

private:
    QPointer<QObject> m_engine;
    int m_resultado = 0;
};

// A new dialog over the host's active window, as the engine opens them.
template <typename Dialog>
Dialogo* nuevoDialogo()
{
    return new Dialog(QApplication::activeWindow());
}

namespace vbui {

// A multi-line box holds at most its column's declared length, as a
// single-line box does with setMaxLength.
void limitarLongitud(QPlainTextEdit* editor, int maximo);
// A single-line box holds at most its column's declared length, and never
// half of a character written as a surrogate pair.
void limitarLongitud(QLineEdit* editor, int maximo);

// The text of a multi-line box with its line breaks as carriage return and
// line feed, the way the host's text boxes have always stored them.
QString textoMultilinea(const QPlainTextEdit* editor);

} // namespace vbui
