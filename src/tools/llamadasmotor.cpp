#include "llamadasmotor.h"

#include "engine/ravlo.h"
#include "vb/automationerror.h"

namespace llamadasmotor {

namespace {

void comprobar(bool llamado)
{
    if (!llamado)
        vb::raise(vb::ErrNoSuchMember);
}

} // namespace

std::unique_ptr<QObject> crear(QObject* engine, int tipo)
{
    QObject* entidad = nullptr;
    comprobar(QMetaObject::invokeMethod(engine, "CrearEntidad", Qt::DirectConnection, Q_RETURN_ARG(QObject*, entidad),
                                        Q_ARG(int, tipo)));
    return std::unique_ptr<QObject>(entidad);
}

std::unique_ptr<QObject> cargar(QObject* engine, int tipo, int clave)
{
    QObject* entidad = nullptr;
    comprobar(QMetaObject::invokeMethod(engine, "CargarEntidad", Qt::DirectConnection, Q_RETURN_ARG(QObject*, entidad),
                                        Q_ARG(int, tipo), Q_ARG(int, clave)));
    return std::unique_ptr<QObject>(entidad);
}

bool guardar(QObject* engine, QObject* entidad)
{
    bool guardado = false;
    comprobar(QMetaObject::invokeMethod(engine, "GuardarEntidad", Qt::DirectConnection, Q_RETURN_ARG(bool, guardado),
                                        Q_ARG(QObject*, entidad)));
    return guardado;
}

bool eliminar(QObject* engine, int tipo, int clave)
{
    bool eliminado = false;
    comprobar(QMetaObject::invokeMethod(engine, "EliminarEntidad", Qt::DirectConnection, Q_RETURN_ARG(bool, eliminado),
                                        Q_ARG(int, tipo), Q_ARG(int, clave)));
    return eliminado;
}

bool derecho(QObject* engine, const QString& codigo)
{
    auto* um = qobject_cast<Ravlo*>(engine->property("UM").value<QObject*>());
    return um && um->VerificarDerecho(codigo, true, true, QString());
}

QObject* conexion(QObject* engine)
{
    return engine->property("ADOCnn").value<QObject*>();
}

} // namespace llamadasmotor
