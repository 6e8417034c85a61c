#include "almacenelementos.h"

#include "engine/eengine.h"

#include <QMetaProperty>

namespace {
// The key names the row and is never part of an item's state.
const char* const Clave = "Sys_PK";
} // namespace

AlmacenElementos::AlmacenElementos(EEngine* engine)
    : m_engine(engine)
{
}

std::shared_ptr<ClaveElemento> AlmacenElementos::clave(int tipo, int pk)
{
    std::shared_ptr<ClaveElemento>& compartida = m_claves[qMakePair(tipo, pk)];
    if (!compartida)
        compartida = std::make_shared<ClaveElemento>(ClaveElemento{tipo, pk});
    return compartida;
}

std::shared_ptr<ClaveElemento> AlmacenElementos::soltar(int tipo, int pk)
{
    std::shared_ptr<ClaveElemento> compartida = clave(tipo, pk);
    m_claves.remove(qMakePair(tipo, pk));
    return compartida;
}

QVariantMap AlmacenElementos::estado(const QObject* entidad)
{
    QVariantMap result;
    const QMetaObject* meta = entidad->metaObject();
    for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i) {
        const QMetaProperty propiedad = meta->property(i);
        const bool objeto = propiedad.metaType().flags().testFlag(QMetaType::PointerToQObject);
        if (propiedad.isWritable() && !objeto && qstrcmp(propiedad.name(), Clave) != 0)
            result.insert(QString::fromLatin1(propiedad.name()), propiedad.read(entidad));
    }
    return result;
}

void AlmacenElementos::aplicar(QObject* entidad, const QVariantMap& estado)
{
    for (auto it = estado.cbegin(); it != estado.cend(); ++it)
        entidad->setProperty(it.key().toLatin1().constData(), it.value());
}

QVariantMap AlmacenElementos::leer(const ClaveElemento& clave)
{
    std::unique_ptr<QObject> entidad(m_engine->CargarEntidad(clave.tipo, clave.pk));
    return entidad ? estado(entidad.get()) : QVariantMap();
}

bool AlmacenElementos::escribir(const ClaveElemento& clave, const QVariantMap& estado)
{
    std::unique_ptr<QObject> entidad(m_engine->CargarEntidad(clave.tipo, clave.pk));
    if (!entidad)
        return false;
    aplicar(entidad.get(), estado);
    return m_engine->GuardarEntidad(entidad.get());
}

bool AlmacenElementos::crear(const std::shared_ptr<ClaveElemento>& clave, const QVariantMap& estado)
{
    std::unique_ptr<QObject> entidad(m_engine->CrearEntidad(clave->tipo));
    aplicar(entidad.get(), estado);
    if (!m_engine->GuardarEntidad(entidad.get()))
        return false;
    // The item is found again by its new key.
    m_claves.remove(qMakePair(clave->tipo, clave->pk));
    clave->pk = entidad->property(Clave).toInt();
    m_claves.insert(qMakePair(clave->tipo, clave->pk), clave);
    return true;
}

bool AlmacenElementos::borrar(const ClaveElemento& clave)
{
    if (!m_engine->EliminarEntidad(clave.tipo, clave.pk))
        return false;
    soltar(clave.tipo, clave.pk);
    return true;
}
