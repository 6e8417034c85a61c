#pragma once

#include "databaseurl.h"

#include <QHash>
#include <QObject>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStringList>
#include <QVariantList>

namespace ado {

// The stand-in for an ADO Connection: one Qt SQL connection of its own,
// opened from a database URL. Scriptable as "ADODB.Connection".
class Connection : public QObject {
    Q_OBJECT
    Q_CLASSINFO("ProgID", "ADODB.Connection")
    Q_PROPERTY(int State READ State)
    Q_PROPERTY(QString ConnectionString READ ConnectionString)
    Q_PROPERTY(bool LogSql READ LogSql WRITE setLogSql)

public:
    Q_INVOKABLE explicit Connection(QObject* parent = nullptr);
    ~Connection() override;

    // Opens the database named by the URL; raises when it cannot.
    Q_INVOKABLE void Open(const QString& url);
    // Opens it for reading only: SQLite refuses every write on the file, and
    // PostgreSQL starts each transaction of the session read-only.
    void OpenReadOnly(const QString& url);
    // Closes it; raises 3704 when it is not open.
    Q_INVOKABLE void Close();
    // Runs a statement that returns no rows; raises on an SQL error.
    Q_INVOKABLE void Execute(const QString& sql);

    int State() const;
    QString ConnectionString() const { return m_url; }

    // A record of every SQL text run through this connection, kept while LogSql is on.
    bool LogSql() const { return m_logSql; }
    void setLogSql(bool on) { m_logSql = on; }
    Q_INVOKABLE QStringList executedSql() const { return m_log; }
    Q_INVOKABLE void clearLog() { m_log.clear(); }
    void record(const QString& sql);

    // ADO's transaction calls: what runs between BeginTrans and CommitTrans is
    // kept whole or, after RollbackTrans, not at all. Each raises when the
    // database refuses it.
    Q_INVOKABLE void BeginTrans();
    Q_INVOKABLE void CommitTrans();
    Q_INVOKABLE void RollbackTrans();

    Dialect dialect() const { return m_dialect; }
    QSqlDatabase database() const;
    // Runs an SQL text once, for a result read once, front to back; raises
    // on an SQL error.
    QSqlQuery runText(const QString& sql);
    // Runs a statement prepared once on this connection and reused
    // afterwards, with the values bound in order; raises on an SQL error.
    // A table changed by anyone since the statement was prepared (a column
    // added or widened) makes it run as if it had just been prepared.
    QSqlQuery& runPrepared(const QString& sql, const QVariantList& values);
    // The column names of a table, in lower case, read once per connection.
    const QStringList& columns(const QString& table);

private:
    void open(const QString& url, bool readOnly);
    QSqlQuery forwardQuery() const;
    QSqlQuery& prepared(const QString& sql);
    QSqlQuery& execPrepared(const QString& sql, const QVariantList& values);
    // Runs a statement that returns rows against the tables as they are now.
    template <typename Run>
    auto againstCurrentSchema(const QString& sql, Run run) -> decltype(run());
    // Forgets every kept statement and column list when the database's
    // schema changed since they were made.
    void checkSchema();
    // Runs a kept statement without rows of SQLite's (BEGIN, COMMIT).
    bool control(QSqlQuery& statement, const char* sql);
    void forgetPrepared();
    void release();

    QString m_name;
    QString m_url;
    Dialect m_dialect = Dialect::SQLite;
    bool m_open = false;
    bool m_logSql = false;
    QStringList m_log;
    QHash<QString, QSqlQuery> m_prepared;
    QHash<QString, QStringList> m_columns;
    // SQLite's schema counter, read before every statement that returns
    // rows, in one read transaction with it.
    QSqlQuery m_schemaVersion;
    QSqlQuery m_begin;
    QSqlQuery m_commit;
    qlonglong m_knownSchema = -1;
};

// The ADO connection behind an automation object, or nullptr when the object
// is none, is not a connection, or is closed.
Connection* openConnection(QObject* object);

} // namespace ado
