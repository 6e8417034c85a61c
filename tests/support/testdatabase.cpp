#include "testdatabase.h"

#include "ado/recordset.h"
#include "schemainstaller.h"
#include "vb/automationerror.h"

#include <QCoreApplication>
#include <QDir>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QUrl>

namespace {

const char* const Tables[] = {"ut_bi_Perspectiva", "ut_bi_Metrica",  "ut_bi_Indicador",
                              "ut_bi_BarraProg",   "ut_bi_Semaforo", "ut_bi_MatrizGraf",
                              "ut_bi_Tablero",     "ut_bi_TabIndicador", "ut_bi_Fig"};

} // namespace

TestDatabase::TestDatabase() = default;

TestDatabase::~TestDatabase()
{
    m_connection.reset();
    if (m_postgres)
        dropPostgres();
    else if (!m_folder.isEmpty())
        QDir(m_folder).removeRecursively();
}

QString TestDatabase::backend()
{
    const QString value = qEnvironmentVariable("VBI_TEST_BACKEND", QStringLiteral("sqlite"));
    return value.toLower();
}

bool TestDatabase::mustRun()
{
    return qEnvironmentVariable("CI") == QLatin1String("true");
}

bool TestDatabase::create()
{
    m_postgres = backend() == QLatin1String("postgresql");
    try {
        if (m_postgres) {
            m_adminUrl = qEnvironmentVariable("VBI_TEST_PG_URL");
            if (m_adminUrl.isEmpty()) {
                m_why = QStringLiteral("VBI_TEST_PG_URL is not set: no PostgreSQL test server");
                return false;
            }
            m_dbName = QStringLiteral("vbi_test_%1_%2")
                           .arg(QCoreApplication::applicationPid())
                           .arg(QRandomGenerator::global()->bounded(1000000));
            ado::Connection admin;
            admin.Open(m_adminUrl);
            admin.Execute(QStringLiteral("CREATE DATABASE %1 ENCODING 'UTF8' TEMPLATE template0").arg(m_dbName));
            QUrl url(m_adminUrl);
            url.setPath(QLatin1Char('/') + m_dbName);
            m_url = url.toString();
        } else {
            QTemporaryDir folder;
            folder.setAutoRemove(false);
            m_folder = folder.path();
            m_url = QStringLiteral("sqlite://") + QDir(m_folder).absoluteFilePath(QStringLiteral("test.db"));
        }
        m_connection = std::make_unique<ado::Connection>();
        m_connection->Open(m_url);
        SchemaInstaller::apply(*m_connection);
        return true;
    } catch (const vb::AutomationError& e) {
        m_why = QStringLiteral("cannot create the test database: %1").arg(e.description());
        return false;
    }
}

void TestDatabase::dropPostgres()
{
    try {
        ado::Connection admin;
        admin.Open(m_adminUrl);
        admin.Execute(QStringLiteral("DROP DATABASE IF EXISTS %1 WITH (FORCE)").arg(m_dbName));
    } catch (const vb::AutomationError&) {
        // the server goes away with the test run anyway
    }
}

std::unique_ptr<ado::Connection> TestDatabase::openAnother() const
{
    auto another = std::make_unique<ado::Connection>();
    another->Open(m_url);
    return another;
}

void TestDatabase::clear()
{
    for (const char* table : Tables)
        exec(QStringLiteral("DELETE FROM %1").arg(QLatin1String(table)));
    m_connection->clearLog();
}

void TestDatabase::exec(const QString& sql)
{
    const bool logging = m_connection->LogSql();
    m_connection->setLogSql(false);
    m_connection->Execute(sql);
    m_connection->setLogSql(logging);
}

QVariant TestDatabase::scalar(const QString& sql)
{
    const bool logging = m_connection->LogSql();
    m_connection->setLogSql(false);
    ado::Recordset rs;
    rs.setActiveConnection(m_connection.get());
    rs.setSource(sql);
    rs.Open();
    m_connection->setLogSql(logging);
    return rs.atEnd() ? QVariant() : rs.Fields(0);
}
