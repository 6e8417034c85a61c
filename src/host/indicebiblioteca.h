#pragma once

#include "tools/fotobiblioteca.h"

#include <QList>
#include <QStringList>

// The library searched by name: perspectives, metrics and indicators, each
// with the path of perspectives above it and where it is used (the
// indicators that read a metric, the dashboards that place an indicator).
class IndiceBiblioteca {
public:
    struct Resultado {
        int tipo = 0; // cPerspectiva, cMetrica or cIndicador
        int clave = 0;
        QString nombre;
        QString ruta;
        QStringList usos;
    };

    explicit IndiceBiblioteca(const FotoBiblioteca& foto);

    // Everything whose name holds texto, ignoring case and accents; nothing for a blank texto.
    QList<Resultado> buscar(const QString& texto) const;

private:
    QString rutaDe(int perspectiva) const;
    void agregar(int tipo, const QList<FotoBiblioteca::Fila>& filas, const QString& columnaPerspectiva);
    void anotarUsos(const FotoBiblioteca& foto);

    QHash<int, const FotoBiblioteca::Fila*> m_perspectivas;
    QList<Resultado> m_todos;
    QHash<int, QStringList> m_usosMetrica;
    QHash<int, QStringList> m_usosIndicador;
};
