#pragma once

#include "ado/connection.h"
#include "engine/eengine.h"
#include "gestorusuarios.h"

// What the library commands (export, import) run on: the database opened
// from its URL and an engine over it for the person at the terminal, who
// holds every right; refusals are not announced in windows.
class SesionHerramientas {
public:
    // Raises vb::AutomationError when the database cannot be opened.
    explicit SesionHerramientas(const QString& url);

    ado::Connection& conexion() { return m_conexion; }
    EEngine& engine() { return m_engine; }

private:
    ado::Connection m_conexion;
    GestorUsuarios m_usuarios;
    EEngine m_engine;
};
