#include "databaseurl.h"

#include "vb/automationerror.h"

#include <QUrl>

namespace ado {

namespace {

constexpr int ErrBadConnectionString = 3706; // ADO: provider cannot be found

[[noreturn]] void refuse(const QString& url)
{
    throw vb::AutomationError(ErrBadConnectionString,
                              QStringLiteral("Unknown database URL: %1").arg(url));
}

DatabaseUrl parseSqlite(const QString& rest, const QString& url)
{
    DatabaseUrl u;
    u.dialect = Dialect::SQLite;
    u.driver = QStringLiteral("QSQLITE");
    if (rest == QLatin1String(":memory:"))
        u.databaseName = rest;
    else if (rest.startsWith(QLatin1String("//")))
        u.databaseName = rest.mid(2); // "sqlite:///abs" leaves "/abs"
    else
        u.databaseName = rest;
    if (u.databaseName.isEmpty())
        refuse(url);
    return u;
}

DatabaseUrl parsePostgres(const QString& url)
{
    const QUrl q(url, QUrl::StrictMode);
    if (!q.isValid() || q.host().isEmpty())
        refuse(url);
    DatabaseUrl u;
    u.dialect = Dialect::PostgreSQL;
    u.driver = QStringLiteral("QPSQL");
    u.host = q.host();
    u.port = q.port(5432);
    u.user = q.userName(QUrl::FullyDecoded);
    u.password = q.password(QUrl::FullyDecoded);
    u.databaseName = q.path(QUrl::FullyDecoded).mid(1);
    if (u.databaseName.isEmpty())
        refuse(url);
    return u;
}

} // namespace

DatabaseUrl DatabaseUrl::parse(const QString& url)
{
    const QString trimmed = url.trimmed();
    if (trimmed.startsWith(QLatin1String("sqlite:"), Qt::CaseInsensitive))
        return parseSqlite(trimmed.mid(7), url);
    if (trimmed.startsWith(QLatin1String("postgresql://"), Qt::CaseInsensitive)
        || trimmed.startsWith(QLatin1String("postgres://"), Qt::CaseInsensitive))
        return parsePostgres(trimmed);
    if (trimmed.startsWith(QLatin1String("odbc:"), Qt::CaseInsensitive)) {
        DatabaseUrl u;
        u.dialect = Dialect::SqlServer;
        u.driver = QStringLiteral("QODBC");
        u.databaseName = trimmed.mid(5);
        if (u.databaseName.isEmpty())
            refuse(url);
        return u;
    }
    refuse(url);
}

} // namespace ado
