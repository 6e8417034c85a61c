#include "importadorpaquete.h"

#include "ado/connection.h"
#include "fotobiblioteca.h"
#include "llamadasmotor.h"
#include "model/vendimarbi.h"
#include "propiedadesjson.h"
#include "vb/automationerror.h"

#include <QMetaProperty>
#include <QSqlQuery>
#include <QSqlRecord>

namespace {

const QString Propiedades = QStringLiteral("propiedades");
// Between the parts of an identity: a control character, not one a name is typed with.
const QChar Separador(0x1E);

// Each kind's name in the summary and the right the editor that creates
// one asks, by kind (1 to 6).
struct Clase {
    const char* nombre;
    const char* derecho;
};
constexpr Clase Clases[] = {{"perspectives", "KZ4-TBL-05-001"},      {"metrics", "KZ4-TBL-05-004"},
                            {"indicators", "KZ4-TBL-06-001"},        {"dashboards", "KZ4-TBL-01-000"},
                            {"placed indicators", "KZ4-TBL-03-000"}, {"texts", "KZ4-TBL-03-000"}};

QString nombreDe(int tipo)
{
    return QLatin1String(Clases[tipo - VendimarBI::cPerspectiva].nombre);
}

QString derechoDe(int tipo)
{
    return QLatin1String(Clases[tipo - VendimarBI::cPerspectiva].derecho);
}

int propiedad(const QJsonObject& entrada, const char* nombre)
{
    return entrada.value(Propiedades).toObject().value(QLatin1String(nombre)).toInt();
}

QString texto(const QJsonObject& entrada, const char* nombre)
{
    return entrada.value(Propiedades).toObject().value(QLatin1String(nombre)).toString();
}

} // namespace

QString ImportadorPaquete::Resumen::texto() const
{
    QString resumen;
    for (int tipo = VendimarBI::cPerspectiva; tipo <= VendimarBI::cFigura; ++tipo) {
        const QString nombre = nombreDe(tipo);
        resumen += QStringLiteral("%1: %2 created, %3 reused\n")
                       .arg(nombre)
                       .arg(creados.value(nombre))
                       .arg(reutilizados.value(nombre));
    }
    for (const QString& aviso : avisos)
        resumen += QStringLiteral("note: ") + aviso + QLatin1Char('\n');
    return resumen;
}

ImportadorPaquete::ImportadorPaquete(QObject* engine)
    : m_engine(engine)
{
}

ImportadorPaquete::Resumen ImportadorPaquete::importar(const QByteArray& datos, bool ensayo)
{
    m_conexion = ado::openConnection(llamadasmotor::conexion(m_engine));
    if (!m_conexion)
        throw Rechazo{QStringLiteral("The engine has no open connection.")};
    const QJsonObject paquete = leerPaquete(datos);
    try {
        m_conexion->BeginTrans();
    } catch (const vb::AutomationError& e) {
        throw Rechazo{QStringLiteral("The import could not start a transaction: %1").arg(e.description())};
    }
    try {
        importarTodo(paquete);
        if (ensayo)
            m_conexion->RollbackTrans();
        else
            m_conexion->CommitTrans();
    } catch (const vb::AutomationError& e) {
        m_conexion->RollbackTrans();
        throw Rechazo{QStringLiteral("The import failed and nothing was written: %1").arg(e.description())};
    } catch (const Rechazo& r) {
        m_conexion->RollbackTrans();
        throw Rechazo{r.motivo + QStringLiteral(" Nothing was written.")};
    }
    return m_resumen;
}

void ImportadorPaquete::importarTodo(const QJsonObject& paquete)
{
    leerExistentes();
    for (const QJsonValue& valor : paquete.value(QStringLiteral("perspectivas")).toArray())
        m_perspectivasPaquete.insert(valor.toObject().value(QStringLiteral("clave")).toInt(), valor.toObject());
    for (auto it = m_perspectivasPaquete.cbegin(); it != m_perspectivasPaquete.cend(); ++it) {
        QSet<int> enCamino;
        perspectiva(it.key(), enCamino);
    }
    for (const QJsonValue& valor : paquete.value(QStringLiteral("metricas")).toArray())
        metrica(valor.toObject());
    for (const QJsonValue& valor : paquete.value(QStringLiteral("indicadores")).toArray())
        indicador(valor.toObject());
    for (const QJsonValue& valor : paquete.value(QStringLiteral("tableros")).toArray())
        tablero(valor.toObject());
}

// Parents first, so that a perspective is looked for (and made) under its
// new parent. A chain that turns in a circle is cut where it closes: that
// perspective goes to the top level.
int ImportadorPaquete::perspectiva(int clave, QSet<int>& enCamino)
{
    if (m_perspectivas.contains(clave))
        return m_perspectivas.value(clave);
    const QJsonObject entrada = m_perspectivasPaquete.value(clave);
    const QString donde = QStringLiteral("perspective «%1»").arg(texto(entrada, "Nombre"));
    enCamino.insert(clave);
    const int padrePaquete = propiedad(entrada, "FK_Padre");
    int padre = 0;
    if (enCamino.contains(padrePaquete))
        m_resumen.avisos.append(QStringLiteral("%1 closed a cycle of parents: placed at the top level").arg(donde));
    else if (m_perspectivasPaquete.contains(padrePaquete))
        padre = perspectiva(padrePaquete, enCamino);
    else if (padrePaquete != 0)
        m_resumen.avisos.append(QStringLiteral("%1: its parent %2 is not in the bundle: placed at the top level")
                                    .arg(donde)
                                    .arg(padrePaquete));
    int nueva = existente({QStringLiteral("P"), texto(entrada, "Nombre"), QString::number(padre)});
    if (nueva != 0) {
        ++m_resumen.reutilizados[nombreDe(VendimarBI::cPerspectiva)];
    } else {
        const auto entidad = preparar(VendimarBI::cPerspectiva, entrada.value(Propiedades).toObject(), donde);
        entidad->setProperty("FK_Padre", padre);
        nueva = guardar(VendimarBI::cPerspectiva, entidad.get(), donde);
    }
    m_perspectivas.insert(clave, nueva);
    return nueva;
}

// A metric is the same metric wherever it lives: it keeps its GUID, which
// the row component would otherwise make anew on insert. One without a GUID
// is known by its name in its perspective.
void ImportadorPaquete::metrica(const QJsonObject& entrada)
{
    const QString guid = texto(entrada, "Sys_GUID");
    const QString donde = QStringLiteral("metric «%1»").arg(texto(entrada, "Nombre"));
    const int perspectiva =
        remapear(m_perspectivas, propiedad(entrada, "FK_Perspectiva"), QStringLiteral("perspective"), donde);
    int nueva = guid.isEmpty() ? existente({QStringLiteral("M"), texto(entrada, "Nombre"), QString::number(perspectiva)})
                               : existente({QStringLiteral("G"), guid.toUpper()});
    if (nueva != 0) {
        ++m_resumen.reutilizados[nombreDe(VendimarBI::cMetrica)];
    } else {
        const auto entidad = preparar(VendimarBI::cMetrica, entrada.value(Propiedades).toObject(), donde);
        entidad->setProperty("FK_Perspectiva", perspectiva);
        nueva = guardar(VendimarBI::cMetrica, entidad.get(), donde);
        if (!guid.isEmpty()) {
            conservarGuid(nueva, guid, donde);
            m_existentes.insert(QStringList{QStringLiteral("G"), guid.toUpper()}.join(Separador), nueva);
        }
    }
    m_metricas.insert(entrada.value(QStringLiteral("clave")).toInt(), nueva);
}

// The configuration's metric keys are the bundle's; each becomes the key
// the metric has here. An indicator whose configuration row could not be
// stored (a database that refuses the bounds, say) stops the import.
void ImportadorPaquete::indicador(const QJsonObject& entrada)
{
    const QString donde = QStringLiteral("indicator «%1»").arg(texto(entrada, "Nombre"));
    const int tipo = propiedad(entrada, "Tipo");
    const int perspectiva =
        remapear(m_perspectivas, propiedad(entrada, "FK_Perspectiva"), QStringLiteral("perspective"), donde);
    int nueva = existente(
        {QStringLiteral("I"), texto(entrada, "Nombre"), QString::number(tipo), QString::number(perspectiva)});
    if (nueva != 0) {
        ++m_resumen.reutilizados[nombreDe(VendimarBI::cIndicador)];
    } else {
        const auto entidad = prepararIndicador(entrada, donde);
        entidad->setProperty("FK_Perspectiva", perspectiva);
        if (QObject* configuracion = entidad->property("Configuracion").value<QObject*>()) {
            const QMetaObject* meta = configuracion->metaObject();
            for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i) {
                const QMetaProperty p = meta->property(i);
                if (QByteArray(p.name()).contains("Metrica") && p.read(configuracion).toInt() != 0)
                    p.write(configuracion, remapear(m_metricas, p.read(configuracion).toInt(), QStringLiteral("metric"), donde));
            }
        }
        nueva = guardar(VendimarBI::cIndicador, entidad.get(), donde);
        const QString tabla = tablaConfiguracion(tipo);
        bool guardada = tabla.isEmpty();
        try {
            guardada = guardada
                || buscar(QStringLiteral("SELECT COUNT(*) FROM %1 WHERE uf_FK_Indicador=?").arg(tabla), {nueva}) == 1;
        } catch (const Rechazo&) {
            // PostgreSQL: the refused insert has failed the whole transaction.
        }
        if (!guardada)
            throw Rechazo{QStringLiteral("The configuration of %1 could not be stored.").arg(donde)};
    }
    m_indicadores.insert(entrada.value(QStringLiteral("clave")).toInt(), nueva);
}

// A dashboard already here (same name, same user) is left as it is, items
// included; a new one gets its texts and the placements of indicators the
// bundle brings.
void ImportadorPaquete::tablero(const QJsonObject& entrada)
{
    const QString donde = QStringLiteral("dashboard «%1»").arg(texto(entrada, "Nombre"));
    if (existente({QStringLiteral("T"), texto(entrada, "Nombre"), QString::number(propiedad(entrada, "FK_Usuario"))}) != 0) {
        ++m_resumen.reutilizados[nombreDe(VendimarBI::cTablero)];
        return;
    }
    const auto entidad = preparar(VendimarBI::cTablero, entrada.value(Propiedades).toObject(), donde);
    const int nuevo = guardar(VendimarBI::cTablero, entidad.get(), donde);
    for (const QJsonValue& valor : entrada.value(QStringLiteral("colocaciones")).toArray()) {
        const auto colocacion = preparar(VendimarBI::ctabindicador, valor.toObject().value(Propiedades).toObject(), donde);
        const int indicador =
            remapear(m_indicadores, propiedad(valor.toObject(), "FK_Indicador"), QStringLiteral("indicator"), donde);
        if (indicador == 0)
            continue;
        colocacion->setProperty("FK_Tablero", nuevo);
        colocacion->setProperty("FK_Indicador", indicador);
        guardar(VendimarBI::ctabindicador, colocacion.get(), donde);
    }
    for (const QJsonValue& valor : entrada.value(QStringLiteral("figuras")).toArray()) {
        const auto figura = preparar(VendimarBI::cFigura, valor.toObject().value(Propiedades).toObject(), donde);
        figura->setProperty("FK_Tablero", nuevo);
        guardar(VendimarBI::cFigura, figura.get(), donde);
    }
}

std::unique_ptr<QObject> ImportadorPaquete::preparar(int tipo, const QJsonObject& propiedades, const QString& donde) const
{
    auto entidad = llamadasmotor::crear(m_engine, tipo);
    if (!entidad || !propiedadesjson::escribir(entidad.get(), propiedades))
        throw Rechazo{QStringLiteral("The bundle is damaged: %1 has a value of the wrong kind.").arg(donde)};
    return entidad;
}

std::unique_ptr<QObject> ImportadorPaquete::prepararIndicador(const QJsonObject& entrada, const QString& donde) const
{
    auto entidad = preparar(VendimarBI::cIndicador, entrada.value(Propiedades).toObject(), donde);
    QObject* configuracion = entidad->property("Configuracion").value<QObject*>();
    const QJsonValue valores = entrada.value(QStringLiteral("configuracion"));
    if (configuracion && valores.isObject() && !propiedadesjson::escribir(configuracion, valores.toObject()))
        throw Rechazo{QStringLiteral("The bundle is damaged: the configuration of %1 has a value of the wrong kind.").arg(donde)};
    return entidad;
}

int ImportadorPaquete::guardar(int tipo, QObject* entidad, const QString& donde)
{
    pedirDerecho(tipo);
    entidad->setProperty("Sys_PK", 0);
    if (!llamadasmotor::guardar(m_engine, entidad))
        throw Rechazo{QStringLiteral("The database refused %1 (a text too long for its column?).").arg(donde)};
    ++m_resumen.creados[nombreDe(tipo)];
    return entidad->property("Sys_PK").toInt();
}

// What the library holds already, by the identity an import matches on,
// read once before anything is made: a bundle's own rows are never taken for
// one another (two perspectives of one name under one parent stay two), and
// no query is run per row. Rows are read newest first, so that of two with
// one identity the oldest is the one found.
void ImportadorPaquete::leerExistentes()
{
    const struct {
        const char* prefijo;
        const char* sql;
    } consultas[] = {
        {"P", "SELECT Sys_PK, COALESCE(uf_Nombre, ''), uf_padre FROM ut_bi_Perspectiva ORDER BY Sys_PK DESC"},
        {"M", "SELECT Sys_PK, COALESCE(uf_Nombre, ''), uf_FK_Perspectiva FROM ut_bi_Metrica ORDER BY Sys_PK DESC"},
        {"G", "SELECT Sys_PK, UPPER(Sys_GUID) FROM ut_bi_Metrica WHERE Sys_GUID IS NOT NULL ORDER BY Sys_PK DESC"},
        {"I", "SELECT Sys_PK, COALESCE(uf_Nombre, ''), uf_Tipo, uf_FK_Perspectiva FROM ut_bi_Indicador ORDER BY Sys_PK DESC"},
        {"T", "SELECT Sys_PK, COALESCE(uf_Nombre, ''), uf_FK_Usuario FROM ut_bi_Tablero ORDER BY Sys_PK DESC"}};
    for (const auto& consulta : consultas) {
        QSqlQuery query = leer(QLatin1String(consulta.sql), {});
        while (query.next()) {
            QStringList partes{QLatin1String(consulta.prefijo)};
            for (int i = 1; i < query.record().count(); ++i)
                partes.append(query.value(i).isNull() ? QStringLiteral("NULL") : query.value(i).toString());
            m_existentes.insert(partes.join(Separador), query.value(0).toInt());
        }
    }
}

int ImportadorPaquete::existente(const QStringList& identidad) const
{
    return m_existentes.value(identidad.join(Separador));
}

void ImportadorPaquete::conservarGuid(int metrica, const QString& guid, const QString& donde)
{
    try {
        m_conexion->runPrepared(QStringLiteral("UPDATE ut_bi_Metrica SET Sys_GUID=? WHERE Sys_PK=?"),
                                {guid, metrica});
    } catch (const vb::AutomationError&) {
        throw Rechazo{QStringLiteral("The GUID of %1 could not be kept.").arg(donde)};
    }
}

int ImportadorPaquete::buscar(const QString& sql, const QVariantList& valores)
{
    QSqlQuery query = leer(sql, valores);
    return query.next() ? query.value(0).toInt() : 0;
}

QSqlQuery ImportadorPaquete::leer(const QString& sql, const QVariantList& valores)
{
    try {
        return valores.isEmpty() ? m_conexion->runText(sql) : m_conexion->runPrepared(sql, valores);
    } catch (const vb::AutomationError& error) {
        throw Rechazo{QStringLiteral("The library could not be read: %1").arg(error.description())};
    }
}

int ImportadorPaquete::remapear(const QHash<int, int>& mapa, int clave, const QString& que, const QString& donde)
{
    if (mapa.contains(clave))
        return mapa.value(clave);
    if (clave != 0)
        m_resumen.avisos.append(QStringLiteral("%1 names %2 %3, which the bundle lacks: left empty").arg(donde, que).arg(clave));
    return 0;
}

void ImportadorPaquete::pedirDerecho(int tipo)
{
    if (m_derechosPedidos.contains(tipo))
        return;
    if (!llamadasmotor::derecho(m_engine, derechoDe(tipo)))
        throw Rechazo{QStringLiteral("The right %1 to create %2 was refused.").arg(derechoDe(tipo), nombreDe(tipo))};
    m_derechosPedidos.insert(tipo);
}
