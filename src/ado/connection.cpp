#include "connection.h"

#include "adoerrors.h"
#include "vb/automationerror.h"
#include "vb/texto.h"

#include <QAtomicInt>
#include <QSqlError>
#include <QSqlRecord>

namespace ado {

namespace {

QString nextConnectionName()
{
    static QAtomicInt counter;
    return QStringLiteral("vbi_ado_%1").arg(counter.fetchAndAddRelaxed(1) + 1);
}

// A second writer on an SQLite file waits this long instead of failing at once.
constexpr auto SqliteOptions = "QSQLITE_BUSY_TIMEOUT=10000";

} // namespace

Connection::Connection(QObject* parent)
    : QObject(parent)
    , m_name(nextConnectionName())
{
}

Connection::~Connection()
{
    release();
}

void Connection::Open(const QString& url)
{
    if (m_open)
        throw vb::AutomationError(ErrObjectOpen,
                                  QStringLiteral("Operation is not allowed when the object is open."));
    const DatabaseUrl parsed = DatabaseUrl::parse(url);
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(parsed.driver, m_name);
        db.setDatabaseName(parsed.databaseName);
        if (!parsed.host.isEmpty())
            db.setHostName(parsed.host);
        if (parsed.port > 0)
            db.setPort(parsed.port);
        db.setUserName(parsed.user);
        db.setPassword(parsed.password);
        if (parsed.dialect == Dialect::SQLite)
            db.setConnectOptions(QString::fromLatin1(SqliteOptions));
        if (!db.open()) {
            const QString why = db.lastError().text();
            db = QSqlDatabase();
            QSqlDatabase::removeDatabase(m_name);
            throw vb::AutomationError(ErrProvider, why.isEmpty() ? QStringLiteral("Cannot open %1").arg(url) : why);
        }
    }
    m_url = url;
    m_dialect = parsed.dialect;
    m_open = true;
}

void Connection::Close()
{
    if (!m_open)
        throw vb::AutomationError(ErrObjectClosed,
                                  QStringLiteral("Operation is not allowed when the object is closed."));
    release();
}

void Connection::release()
{
    if (!m_open)
        return;
    m_prepared.clear();
    m_columns.clear();
    m_open = false;
    {
        QSqlDatabase db = QSqlDatabase::database(m_name, false);
        db.close();
    }
    QSqlDatabase::removeDatabase(m_name);
}

int Connection::State() const
{
    return m_open ? 1 : 0;
}

QSqlDatabase Connection::database() const
{
    return QSqlDatabase::database(m_name, false);
}

void Connection::Execute(const QString& sql)
{
    if (!m_open)
        throw vb::AutomationError(ErrObjectClosed,
                                  QStringLiteral("Operation is not allowed when the object is closed."));
    record(sql);
    QSqlQuery query(database());
    if (!query.exec(sql))
        throw vb::AutomationError(ErrProvider, query.lastError().text());
}

void Connection::BeginTrans()
{
    if (!m_open)
        throw vb::AutomationError(ErrObjectClosed,
                                  QStringLiteral("Operation is not allowed when the object is closed."));
    record(QStringLiteral("BEGIN"));
    QSqlDatabase db = database();
    if (!db.transaction())
        throw vb::AutomationError(ErrProvider, db.lastError().text());
}

void Connection::CommitTrans()
{
    record(QStringLiteral("COMMIT"));
    QSqlDatabase db = database();
    // PostgreSQL answers a commit of a transaction that already failed with a
    // rollback: the driver reports that as a failed commit.
    if (!m_open || !db.commit())
        throw vb::AutomationError(ErrProvider, db.lastError().text());
}

void Connection::RollbackTrans()
{
    record(QStringLiteral("ROLLBACK"));
    QSqlDatabase db = database();
    if (!m_open || !db.rollback())
        throw vb::AutomationError(ErrProvider, db.lastError().text());
}

void Connection::record(const QString& sql)
{
    if (m_logSql)
        m_log.append(sql);
}

QSqlQuery Connection::newQuery() const
{
    QSqlQuery query(database());
    // Results are read once, front to back: no row cache for stepping back.
    query.setForwardOnly(true);
    return query;
}

QSqlQuery& Connection::prepared(const QString& sql)
{
    auto it = m_prepared.find(sql);
    if (it != m_prepared.end())
        return *it;
    QSqlQuery query = newQuery();
    if (!query.prepare(sql))
        throw vb::AutomationError(ErrProvider, query.lastError().text());
    return *m_prepared.insert(sql, query);
}

const QStringList& Connection::columns(const QString& table)
{
    // Asked on every insert.
    const QString key = vb::minusculas(table);
    auto it = m_columns.find(key);
    if (it != m_columns.end())
        return *it;
    QSqlQuery query(database());
    if (!query.exec(QStringLiteral("SELECT * FROM %1 WHERE 1=0").arg(table)))
        throw vb::AutomationError(ErrProvider, query.lastError().text());
    QStringList names;
    const QSqlRecord record = query.record();
    for (int i = 0; i < record.count(); ++i)
        names.append(record.fieldName(i).toLower());
    return *m_columns.insert(key, names);
}

Connection* openConnection(QObject* object)
{
    auto* connection = qobject_cast<Connection*>(object);
    return connection && connection->State() == 1 ? connection : nullptr;
}

} // namespace ado
