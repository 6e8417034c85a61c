#pragma once

#include "library/dialogo.h"

#include <QPointer>

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
    QPointer<QObject> m_figura;
    bool m_aceptado = false;
};
