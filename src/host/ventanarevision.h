#pragma once

#include "tools/problema.h"

#include <QDialog>

class QLabel;
class QVBoxLayout;

// "Revisar biblioteca": the library's health report in the host window,
// one entry per problem with why it matters and the rows involved, and a
// button per problem that has a safe fix. Fixes go through the engine, so
// the signed-in user's rights are asked; the report is read again after each.
class VentanaRevision : public QDialog {
    Q_OBJECT

public:
    explicit VentanaRevision(QObject* engine, QWidget* parent = nullptr);

    const QList<Problema>& problemas() const { return m_problemas; }
    // Reads the library again and shows what it finds.
    void revisar();
    // Applies the fix of the problem at the position; answers whether it was
    // made. padre: where a hidden perspective goes, 0 for the top level.
    bool arreglar(int posicion, int padre = 0);

private:
    void mostrar();
    QWidget* bloque(int posicion, const Problema& p);

    QObject* m_engine;
    QList<Problema> m_problemas;
    QLabel* lblResumen = nullptr;
    QWidget* lstProblemas = nullptr;
    QVBoxLayout* m_bloques = nullptr;
    QString m_aviso;
};
