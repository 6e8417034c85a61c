#pragma once

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QVariant>
#include <QVector>

class QSqlQuery;

namespace ado {

class Connection;

// ADO names the end-of-rows property EOF, which the C library defines as a
// macro; hide the macro from moc so the property keeps its ADO name.
#ifdef Q_MOC_RUN
#undef EOF
#endif

// The stand-in for an ADO Recordset with a client-side cursor: opening runs the
// query and fetches every row into memory. Scriptable as "ADODB.Recordset".
class Recordset : public QObject {
    Q_OBJECT
    Q_CLASSINFO("ProgID", "ADODB.Recordset")
    Q_PROPERTY(int CursorLocation READ CursorLocation WRITE setCursorLocation)
    Q_PROPERTY(QObject* ActiveConnection READ ActiveConnection WRITE setActiveConnection)
    Q_PROPERTY(QString Source READ Source WRITE setSource)
    Q_PROPERTY(int State READ State)
    Q_PROPERTY(bool EOF READ atEnd)
    Q_PROPERTY(bool BOF READ atBeginning)
    Q_PROPERTY(int RecordCount READ RecordCount)

public:
    Q_INVOKABLE explicit Recordset(QObject* parent = nullptr);

    int CursorLocation() const { return m_cursorLocation; }
    void setCursorLocation(int location) { m_cursorLocation = location; }
    QObject* ActiveConnection() const;
    void setActiveConnection(QObject* connection);
    QString Source() const { return m_source; }
    void setSource(const QString& sql) { m_source = sql; }
    int State() const { return m_open ? 1 : 0; }
    bool atEnd() const;
    bool atBeginning() const;
    int RecordCount() const;

    // Runs Source on ActiveConnection. A statement without a result set runs
    // and leaves the recordset closed, as ADO does.
    Q_INVOKABLE void Open();
    Q_INVOKABLE void Close();
    Q_INVOKABLE void MoveNext();
    Q_INVOKABLE void MoveFirst();
    // The value of a field of the current row, by ordinal (from 0) or by
    // name (case-insensitive). SQL NULL comes back as vb::Null().
    Q_INVOKABLE QVariant Fields(const QVariant& indexOrName) const;
    Q_INVOKABLE int FieldCount() const;
    Q_INVOKABLE QString FieldName(int index) const;

private:
    void requireOpen() const;
    // Takes every row of an executed SELECT and opens on the first.
    void leer(QSqlQuery& query);
    int fieldIndex(const QVariant& indexOrName) const;

    int m_cursorLocation = 2;
    QPointer<QObject> m_connection;
    QString m_source;
    bool m_open = false;
    QStringList m_fieldNames;
    // Every row's fields, row after row: one block for the whole result
    // instead of one per row, which large reads spent most of their time
    // allocating and freeing.
    QVector<QVariant> m_values;
    int m_rowCount = 0;
    int m_position = 0; // -1 before the first row, m_rowCount after the last
};

} // namespace ado
