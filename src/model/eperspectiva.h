#pragma once

#include <QObject>
#include <QString>

// A folder of the library tree that groups metrics and indicators, optionally
// bound to a kind of host entity. Maps a row of ut_bi_Perspectiva.
class EPerspectiva : public QObject {
    Q_OBJECT
    Q_CLASSINFO("ClassID", "{3805C446-6BBA-4297-8753-87C6E9CC2BB7}")
    Q_CLASSINFO("InterfaceID", "{75393685-3525-47B3-8913-742DDFCD18A2}")
    Q_CLASSINFO("ToSuperClass", "EPerspectiva")
    Q_PROPERTY(int Sys_PK READ Sys_PK WRITE setSys_PK)
    Q_PROPERTY(QString Nombre READ Nombre WRITE setNombre)
    Q_PROPERTY(QString EntidadAsociada READ EntidadAsociada WRITE setEntidadAsociada)
    Q_PROPERTY(int FK_Padre READ FK_Padre WRITE setFK_Padre)
    Q_PROPERTY(QString Grupos READ Grupos WRITE setGrupos)

public:
    Q_INVOKABLE explicit EPerspectiva(QObject* parent = nullptr);

    int Sys_PK() const { return m_sysPK; }
    void setSys_PK(int value) { m_sysPK = value; }
    QString Nombre() const { return m_nombre; }
    void setNombre(const QString& value) { m_nombre = value; }
    QString EntidadAsociada() const { return m_entidadAsociada; }
    void setEntidadAsociada(const QString& value) { m_entidadAsociada = value; }
    int FK_Padre() const { return m_fkPadre; }
    void setFK_Padre(int value) { m_fkPadre = value; }
    QString Grupos() const { return m_grupos; }
    void setGrupos(const QString& value) { m_grupos = value; }

    // Fills the object from the row with that key; false, untouched, when there is none.
    Q_INVOKABLE bool Load(QObject* cnx, int PK);
    // Inserts (key 0) or updates the row; on success Sys_PK holds its key.
    Q_INVOKABLE bool Save(QObject* cnx);

private:
    int m_sysPK = 0;
    QString m_nombre;
    QString m_entidadAsociada;
    int m_fkPadre = 0;
    QString m_grupos;
};
