#include "schemainstaller.h"

#include "ado/connection.h"
#include "ado/recordset.h"
#include "tiendademo.h"
#include "vb/automationerror.h"

#include <QFile>
#include <QRegularExpression>

namespace SchemaInstaller {

namespace {

QString schemaFile(ado::Dialect dialect)
{
    switch (dialect) {
    case ado::Dialect::PostgreSQL:
        return QStringLiteral(":/schema/postgresql.sql");
    case ado::Dialect::SqlServer:
        return QStringLiteral(":/schema/sqlserver.sql");
    case ado::Dialect::SQLite:
        break;
    }
    return QStringLiteral(":/schema/sqlite.sql");
}

} // namespace

QStringList statements(const QString& ddl)
{
    QStringList result;
    QString current;
    for (const QString& line : ddl.split(QLatin1Char('\n'))) {
        if (line.trimmed().startsWith(QLatin1String("--")))
            continue;
        current += line + QLatin1Char('\n');
        if (line.trimmed().endsWith(QLatin1Char(';'))) {
            result.append(current.trimmed().chopped(1));
            current.clear();
        }
    }
    if (!current.trimmed().isEmpty())
        result.append(current.trimmed());
    return result;
}

void runFile(ado::Connection& connection, const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw vb::AutomationError(vb::ErrInvalidProcedureCall, QStringLiteral("Schema file missing: %1").arg(path));
    for (const QString& statement : statements(QString::fromUtf8(file.readAll())))
        connection.Execute(statement);
}

void apply(ado::Connection& connection)
{
    runFile(connection, schemaFile(connection.dialect()));
}

bool addDemoData(ado::Connection& connection)
{
    ado::Recordset count;
    count.setActiveConnection(&connection);
    count.setSource(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Perspectiva"));
    count.Open();
    if (count.Fields(0).toInt() > 0)
        return false;
    runFile(connection, QStringLiteral(":/schema/demo.sql"));
    TiendaDemo::crear(connection);
    return true;
}

} // namespace SchemaInstaller
