#pragma once

#include <QHash>
#include <QJsonArray>
#include <QJsonObject>
#include <QMap>
#include <QSet>
#include <QStringList>
#include <memory>

class QObject;
class QSqlQuery;
namespace ado {
class Connection;
}

// Reads a bundle into the library in one transaction: everything or nothing.
// Every key is remapped (parents, perspectives, metric keys in configurations,
// indicators in placements); what already exists is reused instead of made
// again: metrics by GUID, perspectives by name under the same parent,
// indicators by name and kind in the same perspective, dashboards by name
// and user. Importing one bundle twice therefore creates nothing the second
// time. Entities are created through the engine, each kind behind the right
// its editor asks.
class ImportadorPaquete {
public:
    // Why a bundle was refused; nothing has been written then.
    struct Rechazo {
        QString motivo;
    };

    struct Resumen {
        QMap<QString, int> creados;
        QMap<QString, int> reutilizados;
        QStringList avisos;
        QString texto() const;
    };

    explicit ImportadorPaquete(QObject* engine);

    // Throws Rechazo. With ensayo, the transaction is rolled back at the end:
    // the summary tells what an import would do.
    Resumen importar(const QByteArray& datos, bool ensayo);

private:
    QJsonObject leerPaquete(const QByteArray& datos);
    void comprobarLista(const QJsonObject& paquete, const char* nombre, int tipo) const;
    void importarTodo(const QJsonObject& paquete);
    int perspectiva(int clave, QSet<int>& enCamino);
    void metrica(const QJsonObject& entrada);
    void indicador(const QJsonObject& entrada);
    void tablero(const QJsonObject& entrada);
    // A new entity of the kind with the bundle's properties; refuses a value
    // its property cannot hold. Nothing is written.
    std::unique_ptr<QObject> preparar(int tipo, const QJsonObject& propiedades, const QString& donde) const;
    // An indicator with its configuration, metric keys as the bundle has them.
    std::unique_ptr<QObject> prepararIndicador(const QJsonObject& entrada, const QString& donde) const;
    // Saves a prepared entity through the engine and answers its new key.
    int guardar(int tipo, QObject* entidad, const QString& donde);
    void leerExistentes();
    // The key of what the library held before the import under that
    // identity (a kind letter and the values matched), 0 when none.
    int existente(const QStringList& identidad) const;
    void conservarGuid(int metrica, const QString& guid, const QString& donde);
    // The first key the query finds, 0 when none.
    int buscar(const QString& sql, const QVariantList& valores);
    // The rows of a query; an SQL error refuses the import.
    QSqlQuery leer(const QString& sql, const QVariantList& valores);
    // The new key of a bundle key, 0 (with a note) for one the bundle lacks.
    int remapear(const QHash<int, int>& mapa, int clave, const QString& que, const QString& donde);
    void pedirDerecho(int tipo);

    QObject* m_engine;
    ado::Connection* m_conexion = nullptr;
    QHash<int, QJsonObject> m_perspectivasPaquete;
    QHash<int, int> m_perspectivas;
    QHash<int, int> m_metricas;
    QHash<QString, int> m_existentes;
    QHash<int, int> m_indicadores;
    QSet<int> m_derechosPedidos;
    Resumen m_resumen;
};
