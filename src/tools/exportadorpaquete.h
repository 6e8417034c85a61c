#pragma once

#include "fotobiblioteca.h"

#include <QJsonObject>
#include <QSet>

class QObject;

// Writes a portable bundle: a versioned JSON document with everything a
// selection needs to stand on its own elsewhere. A perspective brings its
// subtree with its metrics and indicators; a dashboard brings its placed
// indicators and texts; every indicator brings the metrics its configuration
// names; every perspective brings its chain of parents. Entities are read
// through the engine, so the bundle holds what the component itself loads.
class ExportadorPaquete {
public:
    static constexpr int Version = 1;
    static const QString Formato;

    // Raises vb::AutomationError when the library cannot be read.
    ExportadorPaquete(QObject* engine, ado::Connection& conexion);

    QJsonObject todo();
    // An empty object when the perspective or dashboard does not exist.
    QJsonObject perspectiva(int clave);
    QJsonObject tablero(int clave);

private:
    void agregarSubarbol(int clave);
    void completar();
    QJsonObject escribir();
    QJsonObject entidad(int tipo, int clave);

    QObject* m_engine;
    FotoBiblioteca m_foto;
    QSet<int> m_perspectivas;
    QSet<int> m_metricas;
    QSet<int> m_indicadores;
    QSet<int> m_tableros;
};
