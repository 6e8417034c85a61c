#include "benchdatabase.h"

#include "schemainstaller.h"
#include "vb/automationerror.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QStringList>
#include <QTemporaryDir>
#include <QUrl>
#include <stdexcept>

BenchDatabase::BenchDatabase(Backend backend, const QString& label)
    : m_backend(backend)
    , m_label(label)
{
}

BenchDatabase::~BenchDatabase()
{
    m_connection.reset();
    if (m_backend == Backend::PostgreSQL && !m_dbName.isEmpty()) {
        try {
            ado::Connection admin;
            admin.Open(m_adminUrl);
            admin.Execute(QStringLiteral("DROP DATABASE IF EXISTS %1 WITH (FORCE)").arg(m_dbName));
        } catch (const vb::AutomationError&) {
            // the throwaway server goes away with the run anyway
        }
    } else if (!m_folder.isEmpty()) {
        QDir(m_folder).removeRecursively();
    }
}

QString BenchDatabase::backendName(Backend backend)
{
    return backend == Backend::PostgreSQL ? QStringLiteral("postgresql") : QStringLiteral("sqlite");
}

// The test PostgreSQL server runs with fsync=off. The SQLite files get the
// same footing by living in memory-backed /dev/shm when there is one: this
// machine's disk takes anywhere from a fraction of a millisecond to tens of
// milliseconds per flush or journal file, which buried both sides of every
// write ratio. SQLite itself keeps its default settings.
// VBI_BENCH_TMPDIR names another folder (a disk, to measure with it).
QString BenchDatabase::temporaryFolder()
{
    const QString chosen = qEnvironmentVariable("VBI_BENCH_TMPDIR");
    if (!chosen.isEmpty())
        return chosen;
    const QFileInfo shm(QStringLiteral("/dev/shm"));
    if (shm.isDir() && shm.isWritable())
        return shm.absoluteFilePath();
    return QDir::tempPath();
}

// VBI_BENCH_SQLITE_SYNCHRONOUS (OFF, NORMAL, FULL or EXTRA) sets PRAGMA
// synchronous on the SQLite files; unset, SQLite's default stands.
QString BenchDatabase::sqliteSynchronous()
{
    const QString value = qEnvironmentVariable("VBI_BENCH_SQLITE_SYNCHRONOUS").toUpper();
    static const QStringList allowed{QStringLiteral("OFF"), QStringLiteral("NORMAL"), QStringLiteral("FULL"),
                                     QStringLiteral("EXTRA")};
    return allowed.contains(value) ? value : QString();
}

bool BenchDatabase::postgresAvailable()
{
    return !qEnvironmentVariableIsEmpty("VBI_TEST_PG_URL");
}

void BenchDatabase::create()
{
    try {
        if (m_backend == Backend::PostgreSQL) {
            m_adminUrl = qEnvironmentVariable("VBI_TEST_PG_URL");
            if (m_adminUrl.isEmpty())
                throw std::runtime_error("VBI_TEST_PG_URL is not set: no PostgreSQL server to measure on");
            const QString name = QStringLiteral("vbi_bench_%1_%2_%3")
                                     .arg(m_label)
                                     .arg(QCoreApplication::applicationPid())
                                     .arg(QRandomGenerator::global()->bounded(1000000));
            ado::Connection admin;
            admin.Open(m_adminUrl);
            admin.Execute(QStringLiteral("CREATE DATABASE %1 ENCODING 'UTF8' TEMPLATE template0").arg(name));
            m_dbName = name;
            QUrl url(m_adminUrl);
            url.setPath(QLatin1Char('/') + m_dbName);
            m_url = url.toString();
        } else {
            QTemporaryDir folder(temporaryFolder() + QStringLiteral("/vbi-bench-XXXXXX"));
            folder.setAutoRemove(false);
            if (!folder.isValid())
                throw std::runtime_error("cannot make a temporary folder");
            m_folder = folder.path();
            m_url = QStringLiteral("sqlite://") + QDir(m_folder).absoluteFilePath(m_label + QStringLiteral(".db"));
        }
        m_connection = std::make_unique<ado::Connection>();
        m_connection->Open(m_url);
        const QString synchronous = sqliteSynchronous();
        if (m_backend == Backend::SQLite && !synchronous.isEmpty())
            m_connection->Execute(QStringLiteral("PRAGMA synchronous=%1").arg(synchronous));
        SchemaInstaller::apply(*m_connection);
    } catch (const vb::AutomationError& e) {
        throw std::runtime_error(("cannot create the database: " + e.description()).toStdString());
    }
}

void BenchDatabase::exec(const QString& sql)
{
    try {
        m_connection->Execute(sql);
    } catch (const vb::AutomationError& e) {
        throw std::runtime_error((e.description() + QStringLiteral(" in: ") + sql.left(200)).toStdString());
    }
}

void BenchDatabase::insertRows(const QString& header, int from, int to, const std::function<QString(int)>& row)
{
    constexpr int PerStatement = 500;
    exec(QStringLiteral("BEGIN"));
    for (int start = from; start <= to; start += PerStatement) {
        QStringList values;
        for (int k = start; k <= std::min(to, start + PerStatement - 1); ++k)
            values << row(k);
        exec(header + values.join(QLatin1Char(',')));
    }
    exec(QStringLiteral("COMMIT"));
}

void BenchDatabase::syncKeys(const QString& table)
{
    if (m_backend != Backend::PostgreSQL)
        return;
    exec(QStringLiteral("SELECT setval(pg_get_serial_sequence('%1', 'sys_pk'), "
                        "(SELECT COALESCE(MAX(Sys_PK), 0) + 1 FROM %1), false)")
             .arg(table.toLower()));
}
