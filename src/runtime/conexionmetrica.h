#pragma once

#include <QJSValue>
#include <QObject>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <deque>

// ADOCnn as metrics see it: the host's database for reading only. Every
// statement is one SELECT (or WITH ... SELECT) prepared on its own, so a
// metric can neither chain a second statement nor end the read-only
// transaction it runs in.
class ConexionMetrica : public QObject {
    Q_OBJECT
    // "sqlite" or "postgresql", for a metric whose SQL differs between them.
    Q_PROPERTY(QString Dialecto READ Dialecto CONSTANT)

public:
    ConexionMetrica(const QSqlDatabase& base, const QString& dialecto, QObject* parent = nullptr);

    QString Dialecto() const { return m_dialecto; }
    // Every row, each an object by column name (names in lower case).
    Q_INVOKABLE QJSValue Execute(const QString& sql);
    // The first column of the first row; 0 when there is no row or it is NULL.
    Q_INVOKABLE QJSValue Escalar(const QString& sql);

    // Whether the run sent any statement, which may have left its mark on
    // the transaction.
    bool leyo() const { return !m_consultas.empty(); }
    // The statements of a run stay until its transaction is back in order:
    // PostgreSQL refuses to free a statement in a failed transaction.
    void cerrarConsultas() { m_consultas.clear(); }

private:
    // A query run, or an Error thrown into the script and nullptr.
    QSqlQuery* ejecutar(const QString& sql);

    QSqlDatabase m_base;
    QString m_dialecto;
    std::deque<QSqlQuery> m_consultas;
};
