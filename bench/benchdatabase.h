#pragma once

#include "ado/connection.h"

#include <QString>
#include <functional>
#include <memory>

// A throwaway database for one group of measurements: an SQLite file in a
// temporary folder (memory-backed when the machine has /dev/shm), or a
// database of its own on the test PostgreSQL server
// (VBI_TEST_PG_URL). The nine tables are created on open; the database goes
// away with the object. Groups get separate databases so that rows written by
// one measurement never change the cost of another (the tree reads whole
// tables, the dashboard scans its child tables).
class BenchDatabase {
public:
    enum class Backend { SQLite, PostgreSQL };

    BenchDatabase(Backend backend, const QString& label);
    ~BenchDatabase();
    BenchDatabase(const BenchDatabase&) = delete;
    BenchDatabase& operator=(const BenchDatabase&) = delete;

    // Raises std::runtime_error when the database cannot be made.
    void create();

    Backend backend() const { return m_backend; }
    QString url() const { return m_url; }
    ado::Connection& connection() { return *m_connection; }

    void exec(const QString& sql);
    // Rows in batches of multi-row INSERTs inside one transaction: arranging
    // 42,000 rows one autocommit statement at a time would take minutes.
    void insertRows(const QString& header, int from, int to, const std::function<QString(int)>& row);
    // After rows were inserted with explicit keys, PostgreSQL's identity must
    // move past them, or the next insert without a key collides.
    void syncKeys(const QString& table);

    static QString backendName(Backend backend);
    // Where the SQLite files go: VBI_BENCH_TMPDIR, else /dev/shm, else the temp folder.
    static QString temporaryFolder();
    // PRAGMA synchronous for the SQLite files from VBI_BENCH_SQLITE_SYNCHRONOUS; empty: SQLite's default.
    static QString sqliteSynchronous();
    static bool postgresAvailable();

private:
    Backend m_backend;
    QString m_label;
    QString m_url;
    QString m_adminUrl;
    QString m_dbName;
    QString m_folder;
    std::unique_ptr<ado::Connection> m_connection;
};
