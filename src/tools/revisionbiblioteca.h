#pragma once

#include "fotobiblioteca.h"
#include "problema.h"

#include <QSet>

// Finds what the library hides from its users: perspectives the tree leaves
// out, metrics and indicators nobody can reach, indicators with a missing,
// foreign or repeated configuration row, configurations naming metrics that
// are gone, and dashboard items whose indicator or dashboard is gone. Each
// problem is reported once: rows hidden by a perspective are listed with it
// and not again on their own.
class RevisionBiblioteca {
public:
    explicit RevisionBiblioteca(FotoBiblioteca foto);

    const QList<Problema>& problemas() const { return m_problemas; }

    // An indicator kind's configuration table and its rows by indicator key.
    struct TablaConfiguracion {
        int tipo;
        QString tabla;
        QHash<int, QList<FotoBiblioteca::Fila>> porIndicador;
    };

private:
    void revisarPerspectivas();
    void reportarOculta(int clave, const QSet<int>& ocultas, const QSet<int>& visibles);
    void reportarCiclo(const QList<int>& ciclo, const QSet<int>& ocultas, const QSet<int>& visibles);
    QList<FilaProblema> loQueOcultan(const QList<int>& raices, const QSet<int>& ocultas) const;
    QList<QPair<int, QString>> padresPosibles(int clave, const QSet<int>& visibles) const;
    void revisarHojas(const QSet<int>& ocultas);
    void revisarConfiguraciones();
    void revisarConfiguracionDe(const FotoBiblioteca::Fila& indicador);
    void revisarMetricasDe(const FotoBiblioteca::Fila& indicador, const QList<FotoBiblioteca::Fila>& filas);
    void revisarConfiguracionesHuerfanas();
    void revisarTableros();

    QString ruta(int perspectiva) const;
    FilaProblema filaPerspectiva(int clave) const;

    FotoBiblioteca m_foto;
    QHash<int, const FotoBiblioteca::Fila*> m_perspectivas;
    QHash<int, const FotoBiblioteca::Fila*> m_metricas;
    QHash<int, const FotoBiblioteca::Fila*> m_indicadores;
    QList<TablaConfiguracion> m_configuraciones;
    QList<Problema> m_problemas;
};
