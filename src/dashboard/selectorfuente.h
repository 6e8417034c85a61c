#pragma once

#include <QFontDialog>

class QLineEdit;

// The font picker of the text figure editor: Qt's own picker, opening on a
// plain font (regular weight, upright, the application's family and size),
// whose size box also takes a fractional size typed by the user ("10.5" or
// "10,5"), as the platform's common font dialog does. The listed sizes stay
// as Qt lists them; the chosen font carries the typed size unrounded.
class SelectorFuente : public QFontDialog {
    Q_OBJECT

public:
    explicit SelectorFuente(QWidget* parent = nullptr);

    // The size box, named "txtTamano" for whoever drives the picker.
    QLineEdit* cajaTamano() const { return m_tamano; }

    // The family's installed style with that weight and slant, the plainest
    // (shortest named) such one, or "" when it has none: the picker matches
    // a style by its installed name ("Book", "Bold Oblique"), never by the
    // name a font gives it in the user's language.
    static QString estiloInstalado(const QString& familia, bool negrita, bool cursiva);

private:
    // Gives the sample (the font the picker hands back) the typed size
    // whenever Qt's own handlers, which know whole sizes only, redo it.
    void ajustarMuestra();

    QLineEdit* m_tamano = nullptr;
    QLineEdit* m_muestra = nullptr;
    // The fractional size last typed, kept while no other size is chosen.
    QString m_escrito;
};
