#pragma once

#include "ado/connection.h"

#include <QString>
#include <memory>

// A fresh database with the nine tables for one test program: an SQLite file
// in a temporary folder, or a new PostgreSQL database on the test server
// (VBI_TEST_BACKEND=postgresql, server given by VBI_TEST_PG_URL).
class TestDatabase {
public:
    TestDatabase();
    ~TestDatabase();

    // Creates the database and opens connection(). On failure, why() says why.
    bool create();
    // Whether a missing server is a failure (in CI) rather than a skip.
    static bool mustRun();
    static QString backend();
    QString why() const { return m_why; }

    QString url() const { return m_url; }
    ado::Connection& connection() { return *m_connection; }
    // A second, independent connection to the same database.
    std::unique_ptr<ado::Connection> openAnother() const;
    // Empties the nine tables.
    void clear();
    // Runs a statement, failing loudly: for arranging test data.
    void exec(const QString& sql);
    // A single value read back, for assertions.
    QVariant scalar(const QString& sql);
    bool isPostgres() const { return m_postgres; }

private:
    void dropPostgres();

    bool m_postgres = false;
    QString m_url;
    QString m_adminUrl;
    QString m_dbName;
    QString m_folder;
    std::unique_ptr<ado::Connection> m_connection;
    QString m_why;
};

// Creates the test database in initTestCase, skipping or failing as the run requires.
#define VBI_CREATE_TEST_DATABASE(db)                                    \
    do {                                                                \
        if (!(db).create()) {                                           \
            if (TestDatabase::mustRun())                                \
                QFAIL(qPrintable((db).why()));                          \
            QSKIP(qPrintable((db).why()));                              \
        }                                                               \
    } while (false)
