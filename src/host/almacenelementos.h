#pragma once

#include <QHash>
#include <QVariantMap>
#include <memory>

class EEngine;
class QObject;

// Which row an item of a dashboard is: its kind (cFigura or ctabindicador)
// and its key. Undoing a delete gives the item a new key, so every step
// that names the item shares one ClaveElemento and sees the new key.
struct ClaveElemento {
    int tipo = 0;
    int pk = 0;
};

// Reads and writes the items of a dashboard for undo and redo, always
// through the engine and the entities' Save: the state of an item is the
// values of its entity's own properties.
class AlmacenElementos {
public:
    explicit AlmacenElementos(EEngine* engine);

    // The one shared key of the item with this kind and key.
    std::shared_ptr<ClaveElemento> clave(int tipo, int pk);
    // The shared key of an item just deleted, forgotten here: a new row
    // that the database gives the same number is another item.
    std::shared_ptr<ClaveElemento> soltar(int tipo, int pk);
    static QVariantMap estado(const QObject* entidad);
    // The item's state as stored; empty when it is not.
    QVariantMap leer(const ClaveElemento& clave);
    // Each throws vb::AutomationError, or answers false, when the engine
    // could not do it (a right refused, a closed connection).
    bool escribir(const ClaveElemento& clave, const QVariantMap& estado);
    // Inserts the item anew and gives the shared key its new number.
    bool crear(const std::shared_ptr<ClaveElemento>& clave, const QVariantMap& estado);
    bool borrar(const ClaveElemento& clave);

private:
    static void aplicar(QObject* entidad, const QVariantMap& estado);

    EEngine* m_engine;
    QHash<QPair<int, int>, std::shared_ptr<ClaveElemento>> m_claves;
};
