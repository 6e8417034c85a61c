#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QVariant>
#include <QVector>

namespace ado {
class Connection;
}

// The row component: the only writer of entity rows. One instance serves one
// Load or Save: it locates a row by key (or starts a new one), reads and
// assigns columns by name, and writes the row with bound parameters. New keys
// and Sys_GUID texts come from here, readable right after Guardar.
class RegistroTabla : public QObject {
    Q_OBJECT
    Q_PROPERTY(QObject* Conexion READ Conexion WRITE setConexion)
    Q_PROPERTY(QString Tabla READ Tabla WRITE setTabla)

public:
    // Kinds of a declared column.
    enum TipoCampo { cTexto = 1, cDoble = 2, cEntero = 3 };
    Q_ENUM(TipoCampo)

    Q_INVOKABLE explicit RegistroTabla(QObject* parent = nullptr);

    QObject* Conexion() const;
    void setConexion(QObject* connection);
    QString Tabla() const { return m_table; }
    void setTabla(const QString& table) { m_table = table; }

    // Declares a column the caller will write: kind, default for a new row,
    // and for text the most characters it may hold.
    Q_INVOKABLE void DefinirCampo(const QString& nombre, int tipo, const QVariant& omision, int longitud);
    // Makes the row whose Sys_PK equals the key the current row. A non-empty
    // filter is a further SQL condition; the option is accepted and unused.
    Q_INVOKABLE bool Buscar(int clave, const QString& filtro, QObject* cnx, int opcion);
    // Starts a new, unsaved row.
    Q_INVOKABLE bool NuevoRegistro();
    // Reads a column of the current row (names case-insensitive); raises 3265
    // for a column the row does not have.
    Q_INVOKABLE QVariant Campo(const QString& nombre) const;
    // Assigns a column of the current row.
    Q_INVOKABLE void Campo(const QString& nombre, const QVariant& valor);
    // Writes the current row: an update of a located row, an insert of a new
    // one. False, with nothing written, on any failure, among them a text
    // longer than its declared length.
    Q_INVOKABLE bool Guardar();
    Q_INVOKABLE int PK() const { return m_pk; }
    Q_INVOKABLE QString GUID() const;

    // A new Sys_GUID text in the Windows form, {XXXXXXXX-...} in capitals.
    static QString nuevoGuid();

private:
    struct Field {
        QString name;
        QString clave; // the name in lower case, as the row keeps it
        int kind = cEntero;
        QVariant omision;
        int length = 0;
    };
    enum class Estado { None, Located, New };
    // A column of the current row: its name in lower case, and its value.
    struct Columna {
        QString nombre;
        QVariant valor;
    };

    ado::Connection* connection() const;
    // The declared column whose lower-case name is `clave`, or nullptr.
    const Field* declared(const QString& clave) const;
    // The position in the current row of the column whose lower-case name is
    // `clave`, or of the column named `nombre` in any case; -1 when none.
    qsizetype posicion(const QString& clave) const;
    qsizetype posicionNombre(const QString& nombre) const;
    // A column's value; an invalid QVariant when the row has no such column.
    QVariant valor(const QString& clave) const;
    // Sets a column of the current row, adding it when the row lacks it.
    void poner(const QString& clave, const QVariant& valor);
    // Whether the value can be stored as it is (no text the database would
    // give back altered, none longer than its column's declared length), and the
    // value as the column's declared kind; a column nobody declared (nullptr)
    // takes any other value as it is.
    static bool fits(const Field* field, const QVariant& value);
    static QVariant typed(const Field* field, const QVariant& value);
    bool insertRow(ado::Connection& cnx);
    bool updateRow(ado::Connection& cnx);

    QPointer<QObject> m_connection;
    QString m_table;
    QVector<Field> m_fields;
    Estado m_estado = Estado::None;
    // The current row. A flat list, not a hash: a row has a few dozen
    // columns at most, and comparing short names beats hashing them.
    QVector<Columna> m_row;
    QVector<QString> m_assigned;        // assigned columns, in order, as first spelled
    int m_pk = 0;
};
