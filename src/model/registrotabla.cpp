#include "registrotabla.h"

#include "ado/adoerrors.h"
#include "ado/connection.h"
#include "ado/valorleido.h"
#include "vb/texto.h"
#include "vb/vb.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QUuid>
#include <algorithm>

namespace {

const QString KeyColumn = QStringLiteral("sys_pk");
const QString GuidColumn = QStringLiteral("sys_guid");

// Whether `nombre` lower-cased is `clave`. Column names are ASCII, and for
// those the answer needs no lower-cased copy; anything else takes the long way.
bool mismaClave(const QString& clave, const QString& nombre)
{
    if (clave.size() == nombre.size()) {
        const char16_t* a = reinterpret_cast<const char16_t*>(clave.constData());
        const char16_t* b = reinterpret_cast<const char16_t*>(nombre.constData());
        qsizetype i = 0;
        for (; i < nombre.size(); ++i) {
            char16_t c = b[i];
            if (c >= 0x80)
                break;
            if (c >= u'A' && c <= u'Z')
                c = char16_t(c + (u'a' - u'A'));
            if (c != a[i])
                return false;
        }
        if (i == nombre.size())
            return true;
    } else {
        bool ascii = true;
        for (const QChar c : nombre)
            ascii = ascii && c.unicode() < 0x80;
        if (ascii)
            return false; // lower-casing ASCII keeps the length
    }
    return nombre.toLower() == clave;
}

// SQLite takes a leading U+FEFF or U+FFFE of a text bound as UTF-16, the way
// Qt binds every text, for a byte-order mark: it drops the character or reads
// the rest byte-swapped. So on SQLite a text goes in as its UTF-8 bytes, made
// text again by the statement, which keeps every character as it was.
bool comoBytes(ado::Dialect dialect, const QVariant& value)
{
    return dialect == ado::Dialect::SQLite && value.typeId() == QMetaType::QString;
}

// The placeholder for a value.
QString marca(ado::Dialect dialect, const QVariant& value)
{
    return comoBytes(dialect, value) ? QStringLiteral("CAST(? AS TEXT)") : QStringLiteral("?");
}

// The values as they are bound to their placeholders.
QVariantList enlazables(ado::Dialect dialect, QVariantList values)
{
    for (QVariant& value : values) {
        if (comoBytes(dialect, value) && !value.isNull()) {
            const QString text = value.toString();
            // An empty text stays an empty text, never a NULL.
            value = text.isEmpty() ? QByteArray("") : text.toUtf8();
        }
    }
    return values;
}

// Binds values in order and runs a statement prepared once per connection.
QSqlQuery& run(ado::Connection& cnx, const QString& sql, const QVariantList& values)
{
    cnx.record(sql);
    return cnx.runPrepared(sql, enlazables(cnx.dialect(), values));
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
    m_fields.append(Field{nombre, vb::minusculas(nombre), tipo, omision, longitud});
}

const RegistroTabla::Field* RegistroTabla::declared(const QString& clave) const
{
    // Every assignment and every write asks this once per column.
    for (const Field& field : m_fields) {
        if (field.clave == clave)
            return &field;
    }
    return nullptr;
}

qsizetype RegistroTabla::posicion(const QString& clave) const
{
    for (qsizetype i = 0; i < m_row.size(); ++i) {
        if (m_row.at(i).nombre == clave)
            return i;
    }
    return -1;
}

qsizetype RegistroTabla::posicionNombre(const QString& nombre) const
{
    for (qsizetype i = 0; i < m_row.size(); ++i) {
        if (mismaClave(m_row.at(i).nombre, nombre))
            return i;
    }
    return -1;
}

QVariant RegistroTabla::valor(const QString& clave) const
{
    const qsizetype i = posicion(clave);
    return i < 0 ? QVariant() : m_row.at(i).valor;
}

void RegistroTabla::poner(const QString& clave, const QVariant& valor)
{
    const qsizetype i = posicion(clave);
    if (i < 0)
        m_row.append(Columna{clave, valor});
    else
        m_row[i].valor = valor;
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
            m_row.reserve(record.count());
            for (int i = 0; i < record.count(); ++i) {
                const QVariant value = ado::valorLeido(query, i);
                poner(vb::minusculas(record.fieldName(i)), value.isNull() ? vb::Null() : value);
            }
            m_pk = valor(KeyColumn).toInt();
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
    // Room for every declared column, the key and the GUID, so that filling
    // the row does not grow it a step at a time.
    m_row.reserve(m_fields.size() + 2);
    m_assigned.reserve(m_fields.size());
    m_pk = 0;
    return true;
}

QVariant RegistroTabla::Campo(const QString& nombre) const
{
    const qsizetype i = posicionNombre(nombre);
    if (i < 0)
        throw vb::AutomationError(ado::ErrItemNotFound,
                                  QStringLiteral("Item cannot be found in the collection corresponding "
                                                 "to the requested name or ordinal."));
    return m_row.at(i).valor;
}

void RegistroTabla::Campo(const QString& nombre, const QVariant& valor)
{
    if (m_estado == Estado::None)
        throw vb::AutomationError(ado::ErrBofOrEof,
                                  QStringLiteral("Either BOF or EOF is True, or the current record has been deleted."));
    const QString key = vb::minusculas(nombre);
    if (!declared(key) && (m_estado == Estado::New || posicion(key) < 0))
        throw vb::AutomationError(ado::ErrItemNotFound,
                                  QStringLiteral("Item cannot be found in the collection corresponding "
                                                 "to the requested name or ordinal."));
    // Keys are lower case already: a plain comparison, not QStringList's.
    if (std::find(m_assigned.cbegin(), m_assigned.cend(), key) == m_assigned.cend())
        m_assigned.append(key);
    poner(key, valor);
}

// The text is braces, dashes and hex digits, so capitals need no Unicode tables.
QString RegistroTabla::nuevoGuid()
{
    QString guid = QUuid::createUuid().toString(QUuid::WithBraces);
    char16_t* c = reinterpret_cast<char16_t*>(guid.data());
    for (qsizetype i = 0; i < guid.size(); ++i) {
        if (c[i] >= u'a' && c[i] <= u'f')
            c[i] = char16_t(c[i] - (u'a' - u'A'));
    }
    return guid;
}

QString RegistroTabla::GUID() const
{
    const QVariant guid = valor(GuidColumn);
    return vb::isNull(guid) ? QString() : guid.toString();
}

// A text may not exceed its declared length: refusing beats truncating silently.
// Nor may it hold what the database would give back altered.
bool RegistroTabla::fits(const Field* field, const QVariant& value)
{
    if (value.typeId() == QMetaType::QString && !vb::almacenable(value.toString()))
        return false;
    if (!field || field->kind != cTexto || field->length <= 0 || vb::isNull(value))
        return true;
    // A text has no more characters than UTF-16 units: only a text longer in
    // units than allowed needs its characters counted.
    const QString text = value.toString();
    if (text.size() <= field->length)
        return true;
    return text.toUcs4().size() <= field->length;
}

// The value converted to the declared kind, as the database column expects it.
QVariant RegistroTabla::typed(const Field* field, const QVariant& value)
{
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
        if (!fits(declared(name), valor(name)))
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
    // The columns as the statement spells them, as the row keeps them (lower
    // case), and their values, in the same order.
    QStringList columns;
    QStringList keys;
    QVariantList values;
    const qsizetype most = m_fields.size() + m_assigned.size() + 1;
    columns.reserve(most);
    keys.reserve(most);
    values.reserve(most);
    // A new row holds exactly the columns assigned since NuevoRegistro.
    for (const Field& field : std::as_const(m_fields)) {
        const qsizetype asignada = posicion(field.clave);
        columns.append(field.name);
        keys.append(field.clave);
        values.append(typed(&field, asignada >= 0 ? m_row.at(asignada).valor : field.omision));
    }
    for (const QString& key : std::as_const(m_assigned)) {
        if (!declared(key)) {
            columns.append(key);
            keys.append(key);
            values.append(valor(key));
        }
    }
    if (cnx.columns(m_table).contains(GuidColumn)) {
        columns.append(QStringLiteral("Sys_GUID"));
        keys.append(GuidColumn);
        values.append(nuevoGuid());
    }
    QStringList marks;
    marks.reserve(values.size());
    for (const QVariant& value : std::as_const(values))
        marks.append(marca(cnx.dialect(), value));
    const QString list = columns.join(QLatin1Char(','));
    const QString sql = cnx.dialect() == ado::Dialect::SqlServer
        ? QStringLiteral("INSERT INTO %1 (%2) OUTPUT INSERTED.Sys_PK VALUES (%3)")
              .arg(m_table, list, marks.join(QLatin1Char(',')))
        : QStringLiteral("INSERT INTO %1 (%2) VALUES (%3) RETURNING Sys_PK")
              .arg(m_table, list, marks.join(QLatin1Char(',')));
    QSqlQuery& query = run(cnx, sql, values);
    if (!query.next())
        return false;
    m_pk = query.value(0).toInt();
    query.finish();
    // The row becomes what was written: a new row holds only its assigned
    // columns, and every one of them was written, as was the GUID.
    m_row.clear();
    m_row.reserve(keys.size() + 1);
    for (qsizetype i = 0; i < keys.size(); ++i)
        m_row.append(Columna{keys.at(i), values.at(i)});
    poner(KeyColumn, m_pk);
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
        values.append(typed(declared(key), valor(key)));
        sets.append(key + QLatin1Char('=') + marca(cnx.dialect(), values.constLast()));
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
