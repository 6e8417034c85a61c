#pragma once

#include <QObject>
#include <QString>
#include <memory>

// The engine's operations reached by name, the way any host reaches them:
// the tools depend on what the engine offers, not on its class. Errors the
// engine raises reach the caller as vb::AutomationError.
namespace llamadasmotor {

std::unique_ptr<QObject> crear(QObject* engine, int tipo);
// The entity, or none when there is no row with that key.
std::unique_ptr<QObject> cargar(QObject* engine, int tipo, int clave);
bool guardar(QObject* engine, QObject* entidad);
// Asks the entity's delete right and deletes it with what depends on it.
bool eliminar(QObject* engine, int tipo, int clave);
// Asks the signed-in user's right through the host's user-management object
// the engine holds; false when there is none or it refuses.
bool derecho(QObject* engine, const QString& codigo);
// The host's connection the engine works on.
QObject* conexion(QObject* engine);

} // namespace llamadasmotor
