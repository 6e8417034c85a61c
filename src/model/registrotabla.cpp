#include "registrotabla.h"

#include "ado/adoerrors.h"
#include "ado/connection.h"
#include "vb/vb.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QUuid>

namespace {

const QString KeyColumn = QStringLiteral("sys_pk");
const QString GuidColumn = QStringLiteral("sys_guid");

QString placeholders(qsizetype count)
{
    QStringList marks;
    marks.fill(QStringLiteral("?"), count);
    return marks.join(QLatin1Char(','));
}

// Binds values in order and runs a statement prepared once per connection.
QSqlQuery& run(ado::Connection& cnx, const QString& sql, const QVariantList& values)
{
    cnx.record(sql);
    QSqlQuery& query = cnx.prepared(sql);
    for (int i = 0; i < values.size(); ++i)
        query.bindValue(i, values.at(i));
    if (!query.exec())
        throw vb::AutomationError(ado::ErrProvider, query.lastError().text());
    return query;
}

} // namespace

RegistroTabla::RegistroTabla(QObject* parent)
    : QObject(parent)
{
}

QObject* RegistroTabla::Conexion() const
{
    return m_connection.data();
}

void RegistroTabla::setConexion(QObject* connection)
{
    m_connection = connection;
}

ado::Connection* RegistroTabla::connection() const
{
    return ado::openConnection(m_connection.data());
}

void RegistroTabla::DefinirCampo(const QString& nombre, int tipo, const QVariant& omision, int longitud)
{
    m_fields.append(Field{nombre, tipo, omision, longitud});
}

const RegistroTabla::Field* RegistroTabla::declared(const QString& name) const
{
    for (const Field& field : m_fields) {
        if (field.name.compare(name, Qt::CaseInsensitive) == 0)
            return &field;
    }
    return nullptr;
}

bool RegistroTabla::Buscar(int clave, const QString& filtro, QObject* cnx, int /*opcion*/)
{
    if (cnx)
        m_connection = cnx;
    m_estado = Estado::None;
    m_row.clear();
    m_assigned.clear();
    m_pk = 0;
    ado::Connection* connection = this->connection();
    if (!connection)
        return false;
    try {
        QString sql = QStringLiteral("SELECT * FROM %1 WHERE Sys_PK = ?").arg(m_table);
        if (!filtro.trimmed().isEmpty())
            sql += QStringLiteral(" AND (%1)").arg(filtro);
        QSqlQuery& query = run(*connection, sql, {clave});
        const bool found = query.next();
        if (found) {
            const QSqlRecord record = query.record();
            for (int i = 0; i < record.count(); ++i) {
                const QVariant value = record.value(i);
                m_row.insert(record.fieldName(i).toLower(), value.isNull() ? vb::Null() : value);
            }
            m_pk = m_row.value(KeyColumn).toInt();
            m_estado = Estado::Located;
        }
        query.finish();
        return found;
    } catch (const vb::AutomationError&) {
        return false;
    }
}

bool RegistroTabla::NuevoRegistro()
{
    m_estado = Estado::New;
    m_row.clear();
    m_assigned.clear();
    m_pk = 0;
    return true;
}

QVariant RegistroTabla::Campo(const QString& nombre) const
{
    auto it = m_row.constFind(nombre.toLower());
    if (it == m_row.constEnd())
        throw vb::AutomationError(ado::ErrItemNotFound,
                                  QStringLiteral("Item cannot be found in the collection corresponding "
                                                 "to the requested name or ordinal."));
    return *it;
}

void RegistroTabla::Campo(const QString& nombre, const QVariant& valor)
{
    if (m_estado == Estado::None)
        throw vb::AutomationError(ado::ErrBofOrEof,
                                  QStringLiteral("Either BOF or EOF is True, or the current record has been deleted."));
    const QString key = nombre.toLower();
    if (!declared(nombre) && (m_estado == Estado::New || !m_row.contains(key)))
        throw vb::AutomationError(ado::ErrItemNotFound,
                                  QStringLiteral("Item cannot be found in the collection corresponding "
                                                 "to the requested name or ordinal."));
    if (!m_assigned.contains(key))
        m_assigned.append(key);
    m_row.insert(key, valor);
}

QString RegistroTabla::GUID() const
{
    const QVariant guid = m_row.value(GuidColumn);
    return vb::isNull(guid) ? QString() : guid.toString();
}

// A text may not exceed its declared length: refusing beats truncating silently.
bool RegistroTabla::fits(const QString& name, const QVariant& value) const
{
    const Field* field = declared(name);
    if (!field || field->kind != cTexto || field->length <= 0 || vb::isNull(value))
        return true;
    return value.toString().toUcs4().size() <= field->length;
}

// The value converted to the declared kind, as the database column expects it.
QVariant RegistroTabla::typed(const QString& name, const QVariant& value) const
{
    const Field* field = declared(name);
    if (!field)
        return value;
    switch (field->kind) {
    case cTexto: {
        if (vb::isNull(value))
            return QVariant(QMetaType::fromType<QString>());
        // An empty text is stored as an empty text: Qt would bind a null QString as SQL NULL.
        const QString text = value.toString();
        return text.isNull() ? QVariant(QStringLiteral("")) : QVariant(text);
    }
    case cDoble:
        return vb::isNull(value) ? QVariant(QMetaType::fromType<double>()) : QVariant(value.toDouble());
    default:
        if (vb::isNull(value))
            return QVariant(QMetaType::fromType<int>());
        return QVariant(vb::CLng(value.toDouble()));
    }
}

bool RegistroTabla::Guardar()
{
    ado::Connection* cnx = connection();
    if (!cnx || m_estado == Estado::None)
        return false;
    for (const QString& name : std::as_const(m_assigned)) {
        if (!fits(name, m_row.value(name)))
            return false;
    }
    try {
        return m_estado == Estado::New ? insertRow(*cnx) : updateRow(*cnx);
    } catch (const vb::AutomationError&) {
        return false;
    }
}

bool RegistroTabla::insertRow(ado::Connection& cnx)
{
    QStringList columns;
    QVariantList values;
    for (const Field& field : std::as_const(m_fields)) {
        const QString key = field.name.toLower();
        columns.append(field.name);
        values.append(typed(key, m_assigned.contains(key) ? m_row.value(key) : field.omision));
    }
    for (const QString& key : std::as_const(m_assigned)) {
        if (!declared(key)) {
            columns.append(key);
            values.append(m_row.value(key));
        }
    }
    QString guid;
    if (cnx.columns(m_table).contains(GuidColumn)) {
        guid = QUuid::createUuid().toString(QUuid::WithBraces).toUpper();
        columns.append(QStringLiteral("Sys_GUID"));
        values.append(guid);
    }
    const QString list = columns.join(QLatin1Char(','));
    const QString sql = cnx.dialect() == ado::Dialect::SqlServer
        ? QStringLiteral("INSERT INTO %1 (%2) OUTPUT INSERTED.Sys_PK VALUES (%3)")
              .arg(m_table, list, placeholders(values.size()))
        : QStringLiteral("INSERT INTO %1 (%2) VALUES (%3) RETURNING Sys_PK")
              .arg(m_table, list, placeholders(values.size()));
    QSqlQuery& query = run(cnx, sql, values);
    if (!query.next())
        return false;
    m_pk = query.value(0).toInt();
    query.finish();
    for (int i = 0; i < columns.size(); ++i)
        m_row.insert(columns.at(i).toLower(), values.at(i));
    m_row.insert(KeyColumn, m_pk);
    if (!guid.isEmpty())
        m_row.insert(GuidColumn, guid);
    m_estado = Estado::Located;
    m_assigned.clear();
    return true;
}

bool RegistroTabla::updateRow(ado::Connection& cnx)
{
    if (m_assigned.isEmpty())
        return true;
    QStringList sets;
    QVariantList values;
    for (const QString& key : std::as_const(m_assigned)) {
        sets.append(key + QStringLiteral("=?"));
        values.append(typed(key, m_row.value(key)));
    }
    values.append(m_pk);
    const QString sql = QStringLiteral("UPDATE %1 SET %2 WHERE Sys_PK=?").arg(m_table, sets.join(QLatin1Char(',')));
    QSqlQuery& query = run(cnx, sql, values);
    const int affected = query.numRowsAffected();
    query.finish();
    if (affected == 0)
        return false; // the row went away after it was located
    m_assigned.clear();
    return true;
}
