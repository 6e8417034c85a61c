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

constexpr auto SqliteReadOnlyOptions = "QSQLITE_BUSY_TIMEOUT=10000;QSQLITE_OPEN_READONLY";

// Every later transaction of a PostgreSQL session reads only; SQLite's file
// was opened so already.
bool startsReadOnly(const QSqlDatabase& db, Dialect dialect)
{
    if (dialect != Dialect::PostgreSQL)
        return true;
    QSqlQuery query(db);
    return query.exec(QStringLiteral("SET SESSION CHARACTERISTICS AS TRANSACTION READ ONLY"));
}

// PostgreSQL refuses to run a kept plan whose result changed shape ("cached
// plan must not change result type") after another session altered its table.
// Nothing ran, so preparing the statement afresh and running it again is safe.
bool planOutdated(Dialect dialect, const QSqlError& error)
{
    return dialect == Dialect::PostgreSQL && error.nativeErrorCode() == QLatin1String("0A000");
}

// Only a statement that returns rows can change shape when its table does:
// an INSERT or UPDATE that SQLite prepares again keeps its result as it was.
bool returnsRows(const QString& sql)
{
    return QStringView(sql).trimmed().startsWith(QLatin1String("select"), Qt::CaseInsensitive);
}

void bind(QSqlQuery& query, const QVariantList& values)
{
    for (int i = 0; i < values.size(); ++i)
        query.bindValue(i, values.at(i));
}

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
    open(url, false);
}

void Connection::OpenReadOnly(const QString& url)
{
    open(url, true);
}

void Connection::open(const QString& url, bool readOnly)
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
            db.setConnectOptions(QString::fromLatin1(readOnly ? SqliteReadOnlyOptions : SqliteOptions));
        if (!db.open() || (readOnly && !startsReadOnly(db, parsed.dialect))) {
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
    forgetPrepared();
    m_schemaVersion = QSqlQuery();
    m_begin = QSqlQuery();
    m_commit = QSqlQuery();
    m_knownSchema = -1;
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

// Qt's SQLite driver sizes a statement's row when it runs, from the columns
// the statement had before SQLite prepared it again for a changed table, and
// then writes past that row. So no statement that returns rows may run as
// prepared from an outdated schema: neither a kept one nor a new one prepared
// from the connection's outdated copy. The schema's counter is read in one
// read transaction with the statement, so that no other program can change a
// table in between, and so that the statement needs no second read of the
// database file. A transaction the host opened serves as that one already.
template <typename Run>
auto Connection::againstCurrentSchema(const QString& sql, Run run) -> decltype(run())
{
    if (m_dialect != Dialect::SQLite || !returnsRows(sql))
        return run();
    const bool own = control(m_begin, "BEGIN");
    try {
        checkSchema();
        decltype(run()) result = run();
        // The rows still to be read stay readable after the commit.
        if (own)
            control(m_commit, "COMMIT");
        return result;
    } catch (...) {
        if (own)
            control(m_commit, "COMMIT");
        throw;
    }
}

QSqlQuery Connection::runText(const QString& sql)
{
    return againstCurrentSchema(sql, [&] {
        QSqlQuery query = forwardQuery();
        if (!query.exec(sql))
            throw vb::AutomationError(ErrProvider, query.lastError().text());
        return query;
    });
}

QSqlQuery Connection::forwardQuery() const
{
    QSqlQuery query(database());
    // Results are read once, front to back: no row cache for stepping back.
    query.setForwardOnly(true);
    return query;
}

QSqlQuery& Connection::runPrepared(const QString& sql, const QVariantList& values)
{
    return againstCurrentSchema(sql, [&]() -> QSqlQuery& { return execPrepared(sql, values); });
}

QSqlQuery& Connection::execPrepared(const QString& sql, const QVariantList& values)
{
    QSqlQuery* query = &prepared(sql);
    bind(*query, values);
    if (query->exec())
        return *query;
    if (!planOutdated(m_dialect, query->lastError()))
        throw vb::AutomationError(ErrProvider, query->lastError().text());
    forgetPrepared();
    query = &prepared(sql);
    bind(*query, values);
    if (!query->exec())
        throw vb::AutomationError(ErrProvider, query->lastError().text());
    return *query;
}

bool Connection::control(QSqlQuery& statement, const char* sql)
{
    if (statement.lastQuery().isEmpty()) {
        statement = QSqlQuery(database());
        if (!statement.prepare(QLatin1String(sql)))
            return false;
    }
    const bool ran = statement.exec();
    statement.finish();
    return ran;
}

void Connection::checkSchema()
{
    if (m_schemaVersion.lastQuery().isEmpty()) {
        m_schemaVersion = forwardQuery();
        if (!m_schemaVersion.prepare(QStringLiteral("PRAGMA schema_version")))
            throw vb::AutomationError(ErrProvider, m_schemaVersion.lastError().text());
    }
    if (!m_schemaVersion.exec() || !m_schemaVersion.next())
        throw vb::AutomationError(ErrProvider, m_schemaVersion.lastError().text());
    const qlonglong version = m_schemaVersion.value(0).toLongLong();
    m_schemaVersion.finish();
    if (version == m_knownSchema)
        return;
    forgetPrepared();
    // SQLite prepares from the connection's copy of the schema, which it only
    // reads again when a statement runs into the change: a read of the schema
    // table does, so that the statements prepared next see the new columns.
    QSqlQuery reload(database());
    reload.exec(QStringLiteral("SELECT COUNT(*) FROM sqlite_master"));
    m_knownSchema = version;
}

void Connection::forgetPrepared()
{
    m_prepared.clear();
    m_columns.clear();
}

QSqlQuery& Connection::prepared(const QString& sql)
{
    auto it = m_prepared.find(sql);
    if (it != m_prepared.end())
        return *it;
    QSqlQuery query = forwardQuery();
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
