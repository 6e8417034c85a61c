#include "recordset.h"

#include "adoerrors.h"
#include "connection.h"
#include "consultaparametrizada.h"
#include "valorleido.h"
#include "vb/vb.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

namespace ado {

namespace {

[[noreturn]] void raise(int number, const QString& text)
{
    throw vb::AutomationError(number, text);
}

// A read by key ("… WHERE Sys_PK=12") run through the connection's prepared
// statement for its form, with the key bound; nullptr when the text has no
// such form or the database will not take it that way, and then the text runs
// as written and reports its own errors.
QSqlQuery* ejecutarPreparada(Connection& connection, const QString& sql)
{
    const auto consulta = ConsultaParametrizada::desde(sql);
    if (!consulta)
        return nullptr;
    try {
        QSqlQuery& query = connection.runPrepared(consulta->texto, {consulta->valor});
        if (query.isSelect())
            return &query;
        query.finish();
    } catch (const vb::AutomationError&) {
    }
    return nullptr;
}

} // namespace

Recordset::Recordset(QObject* parent)
    : QObject(parent)
{
}

QObject* Recordset::ActiveConnection() const
{
    return m_connection.data();
}

void Recordset::setActiveConnection(QObject* connection)
{
    m_connection = connection;
}

bool Recordset::atEnd() const
{
    requireOpen();
    return m_position >= m_rowCount;
}

bool Recordset::atBeginning() const
{
    requireOpen();
    return m_rowCount == 0 || m_position < 0;
}

int Recordset::RecordCount() const
{
    requireOpen();
    return m_rowCount;
}

void Recordset::requireOpen() const
{
    if (!m_open)
        raise(ErrObjectClosed, QStringLiteral("Operation is not allowed when the object is closed."));
}

void Recordset::Open()
{
    if (m_open)
        raise(ErrObjectOpen, QStringLiteral("Operation is not allowed when the object is open."));
    Connection* connection = openConnection(m_connection.data());
    if (!connection)
        raise(ErrConnectionUnusable, QStringLiteral("The connection cannot be used to perform this operation. "
                                                    "It is either closed or invalid in this context."));
    connection->record(m_source);
    if (QSqlQuery* preparada = ejecutarPreparada(*connection, m_source)) {
        leer(*preparada);
        preparada->finish();
        return;
    }
    QSqlQuery query = connection->runText(m_source);
    if (!query.isSelect())
        return; // the statement ran; there is nothing to hold open
    leer(query);
}

void Recordset::leer(QSqlQuery& query)
{
    const QSqlRecord record = query.record();
    const int columnas = record.count();
    m_fieldNames.clear();
    for (int i = 0; i < columnas; ++i)
        m_fieldNames.append(record.fieldName(i));
    m_values.clear();
    m_rowCount = 0;
    while (query.next()) {
        for (int i = 0; i < columnas; ++i) {
            QVariant value = valorLeido(query, i);
            m_values.append(value.isNull() ? vb::Null() : std::move(value));
        }
        ++m_rowCount;
    }
    m_position = 0;
    m_open = true;
}

void Recordset::Close()
{
    requireOpen();
    m_open = false;
    m_values.clear();
    m_rowCount = 0;
    m_fieldNames.clear();
}

void Recordset::MoveNext()
{
    if (atEnd())
        raise(ErrBofOrEof, QStringLiteral("Either BOF or EOF is True, or the current record has been deleted."));
    ++m_position;
}

void Recordset::MoveFirst()
{
    requireOpen();
    if (m_rowCount == 0)
        raise(ErrBofOrEof, QStringLiteral("Either BOF or EOF is True, or the current record has been deleted."));
    m_position = 0;
}

int Recordset::fieldIndex(const QVariant& indexOrName) const
{
    if (indexOrName.typeId() == QMetaType::QString) {
        const QString name = indexOrName.toString();
        // Loops ask for a field by name on every row, so this runs hundreds of
        // thousands of times per library tree. Case folding keeps a name's
        // UTF-16 length, so names of another length can never match and skip
        // the folding comparison; the spelling the query used matches with a
        // plain comparison. Still the first match in field order wins.
        for (int i = 0; i < m_fieldNames.size(); ++i) {
            const QString& field = m_fieldNames.at(i);
            if (field.size() != name.size())
                continue;
            if (field == name || field.compare(name, Qt::CaseInsensitive) == 0)
                return i;
        }
    } else {
        bool ok = false;
        const int index = indexOrName.toInt(&ok);
        if (ok && index >= 0 && index < m_fieldNames.size())
            return index;
    }
    raise(ErrItemNotFound,
          QStringLiteral("Item cannot be found in the collection corresponding to the requested name or ordinal."));
}

QVariant Recordset::Fields(const QVariant& indexOrName) const
{
    requireOpen();
    const int index = fieldIndex(indexOrName);
    if (m_position < 0 || m_position >= m_rowCount)
        raise(ErrBofOrEof, QStringLiteral("Either BOF or EOF is True, or the current record has been deleted."));
    return m_values.at(qsizetype(m_position) * m_fieldNames.size() + index);
}

int Recordset::FieldCount() const
{
    requireOpen();
    return int(m_fieldNames.size());
}

QString Recordset::FieldName(int index) const
{
    requireOpen();
    return m_fieldNames.value(index);
}

} // namespace ado
