// A bundle is checked whole before anything is written: a file that is not
// JSON, not a bundle, of a later version, or whose entries cannot become
// entities is refused with the reason and where it was found.
#include "exportadorpaquete.h"
#include "importadorpaquete.h"

#include "model/vendimarbi.h"

#include <QJsonDocument>
#include <QRegularExpression>

namespace {

using Rechazo = ImportadorPaquete::Rechazo;

QJsonArray lista(const QJsonObject& objeto, const QString& nombre, const QString& donde)
{
    const QJsonValue valor = objeto.value(nombre);
    if (!valor.isArray())
        throw Rechazo{QStringLiteral("The bundle is damaged: %1 has no list \"%2\".").arg(donde, nombre)};
    return valor.toArray();
}

// An entry: an object with a whole-number key and an object of properties.
QJsonObject entrada(const QJsonValue& valor, const QString& donde)
{
    const QJsonObject objeto = valor.toObject();
    const QJsonValue clave = objeto.value(QStringLiteral("clave"));
    if (!valor.isObject() || !clave.isDouble() || clave.toDouble() != clave.toInt()
        || !objeto.value(QStringLiteral("propiedades")).isObject())
        throw Rechazo{QStringLiteral("The bundle is damaged: %1 needs a whole-number \"clave\" and an object "
                                     "\"propiedades\".")
                          .arg(donde)};
    return objeto;
}

void comprobarGuid(const QJsonObject& metrica, const QString& donde)
{
    static const QRegularExpression forma(QStringLiteral("^\\{[0-9A-Fa-f]{8}(-[0-9A-Fa-f]{4}){3}-[0-9A-Fa-f]{12}\\}$"));
    const QString guid = metrica.value(QStringLiteral("propiedades")).toObject().value(QStringLiteral("Sys_GUID")).toString();
    // A metric written behind the component's back may have none.
    if (!guid.isEmpty() && !forma.match(guid).hasMatch())
        throw Rechazo{QStringLiteral("The bundle is damaged: %1 has no valid Sys_GUID.").arg(donde)};
}

} // namespace

QJsonObject ImportadorPaquete::leerPaquete(const QByteArray& datos)
{
    QJsonParseError error;
    const QJsonDocument documento = QJsonDocument::fromJson(datos, &error);
    if (error.error != QJsonParseError::NoError)
        throw Rechazo{QStringLiteral("The file is not a VendimarBI bundle: %1 at offset %2.")
                          .arg(error.errorString())
                          .arg(error.offset)};
    const QJsonObject paquete = documento.object();
    if (paquete.value(QStringLiteral("formato")).toString() != ExportadorPaquete::Formato)
        throw Rechazo{QStringLiteral("The file is not a VendimarBI bundle: it lacks \"formato\": \"%1\".")
                          .arg(ExportadorPaquete::Formato)};
    const QJsonValue version = paquete.value(QStringLiteral("version"));
    if (!version.isDouble() || version.toInt() < 1 || version.toInt() > ExportadorPaquete::Version)
        throw Rechazo{QStringLiteral("The bundle's version (%1) is not one this program reads (up to %2).")
                          .arg(version.toVariant().toString())
                          .arg(ExportadorPaquete::Version)};

    comprobarLista(paquete, "perspectivas", VendimarBI::cPerspectiva);
    comprobarLista(paquete, "metricas", VendimarBI::cMetrica);
    comprobarLista(paquete, "indicadores", VendimarBI::cIndicador);
    comprobarLista(paquete, "tableros", VendimarBI::cTablero);
    return paquete;
}

// Every entry of one list becomes an entity without being saved: a value
// its property cannot hold, a repeated key or a missing part refuses the
// bundle here, before the transaction starts.
void ImportadorPaquete::comprobarLista(const QJsonObject& paquete, const char* nombre, int tipo) const
{
    QSet<int> vistas;
    const QJsonArray entradas = lista(paquete, QLatin1String(nombre), QStringLiteral("the bundle"));
    for (qsizetype i = 0; i < entradas.size(); ++i) {
        const QString donde = QStringLiteral("%1[%2]").arg(QLatin1String(nombre)).arg(i);
        const QJsonObject e = entrada(entradas.at(i), donde);
        const int clave = e.value(QStringLiteral("clave")).toInt();
        if (vistas.contains(clave))
            throw Rechazo{QStringLiteral("The bundle is damaged: %1 repeats the key %2.").arg(donde).arg(clave)};
        vistas.insert(clave);
        if (tipo == VendimarBI::cIndicador)
            prepararIndicador(e, donde);
        else
            preparar(tipo, e.value(QStringLiteral("propiedades")).toObject(), donde);
        if (tipo == VendimarBI::cMetrica)
            comprobarGuid(e, donde);
        if (tipo != VendimarBI::cTablero)
            continue;
        for (const char* hijos : {"colocaciones", "figuras"}) {
            const QJsonArray items = lista(e, QLatin1String(hijos), donde);
            for (qsizetype j = 0; j < items.size(); ++j) {
                const QString dondeItem = QStringLiteral("%1.%2[%3]").arg(donde, QLatin1String(hijos)).arg(j);
                preparar(qstrcmp(hijos, "figuras") == 0 ? VendimarBI::cFigura : VendimarBI::ctabindicador,
                         entrada(items.at(j), dondeItem).value(QStringLiteral("propiedades")).toObject(), dondeItem);
            }
        }
    }
}
