#pragma once

#include "library/dialogo.h"

#include <QPointer>
#include <QString>

class EFigura;
class Muestra;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;

// The text figure editor, "Propiedades de texto": text, font, colours and
// alignment of one figure, with a live preview. It edits the figure object in
// memory; saving it is up to the caller.
class dlgFig : public Dialogo {
    Q_OBJECT
    Q_PROPERTY(QObject* Figura READ Figura WRITE setFigura)
    Q_PROPERTY(bool Aceptado READ Aceptado)

public:
    explicit dlgFig(QWidget* parent = nullptr);

    QObject* Figura() const;
    void setFigura(QObject* figura);
    bool Aceptado() const { return m_aceptado; }

    // Copies a saved figure into the controls.
    Q_INVOKABLE void putData();
    // Copies the controls back into the figure.
    Q_INVOKABLE void getData();

    void reject() override;

private:
    void construir();
    EFigura* figura() const;

    // The preview is the working copy of the figure's look between opening
    // and accepting; each setter repaints it.
    void setMuestraFuente(const QString& nombre);
    void setMuestraTamano(double puntos);
    void setMuestraNegrita(bool valor);
    void setMuestraCursiva(bool valor);
    void setMuestraAlineacion(int codigo);
    void setMuestraColor(int colorOle);
    void setMuestraFondo(int colorOle);
    void aplicarFuente();

    void cTexto_Change();
    void opt_Click();
    void cColor_Click();
    void cFondo_Click();
    void cFont_Click();
    void cmdAceptar_Click();

    // The colour picker, unset; false when the user cancels it.
    bool elegirColor(int& colorOle);

    QLabel* Label = nullptr;
    QPlainTextEdit* cTexto = nullptr;
    Muestra* lblMuestra = nullptr;
    QPushButton* cFont = nullptr;
    QPushButton* cColor = nullptr;
    QPushButton* cFondo = nullptr;
    QRadioButton* opt[3] = {};
    QPushButton* cmdAceptar = nullptr;
    QPushButton* cmdCancel = nullptr;

    // The preview's font and colours as the figure stores them: the name as
    // given (even one this machine lacks), the size unrounded, the colours as
    // the exact OLE values.
    QString m_fuente;
    double m_tamano = 0;
    bool m_negrita = false;
    bool m_cursiva = false;
    int m_alineacion = 0;
    int m_color = 0;

    QPointer<QObject> m_figura;
    bool m_aceptado = false;
};
