#include "sesionherramientas.h"

SesionHerramientas::SesionHerramientas(const QString& url)
{
    m_conexion.Open(url);
    m_usuarios.setAvisar(false);
    m_engine.SetConnection(&m_conexion, 1);
    m_engine.SetUM(&m_usuarios);
}
