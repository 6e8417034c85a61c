#pragma once

#include "coleccion.h"

#include <QObject>
#include <QPointer>
#include <QString>

// A named page of one host user on which indicators and text labels are
// placed. Maps a row of ut_bi_Tablero; its children come with it on Load.
class ETablero : public QObject {
    Q_OBJECT
    Q_CLASSINFO("ClassID", "{84CF2164-E443-440C-B27B-20EDCDC53A5F}")
    Q_CLASSINFO("InterfaceID", "{FBEA10F0-BE7D-492F-852A-A9BE32FAADD0}")
    Q_CLASSINFO("ToSuperClass", "ETablero")
    Q_PROPERTY(int Sys_PK READ Sys_PK WRITE setSys_PK)
    Q_PROPERTY(QString Nombre READ Nombre WRITE setNombre)
    Q_PROPERTY(int FK_Usuario READ FK_Usuario WRITE setFK_Usuario)
    Q_PROPERTY(Coleccion* Figuras READ Figuras)
    Q_PROPERTY(Coleccion* Indicadores READ Indicadores)

public:
    Q_INVOKABLE explicit ETablero(QObject* parent = nullptr);

    int Sys_PK() const { return m_sysPK; }
    void setSys_PK(int value) { m_sysPK = value; }
    QString Nombre() const { return m_nombre; }
    void setNombre(const QString& value) { m_nombre = value; }
    int FK_Usuario() const { return m_fkUsuario; }
    void setFK_Usuario(int value) { m_fkUsuario = value; }

    // Fills the object from the row with that key, then loads its figures and
    // placed indicators into new collections; false, and nothing touched,
    // when the row is missing.
    Q_INVOKABLE bool Load(QObject* cnx, int PK);
    // Inserts (key 0) or updates the dashboard's own row only; its children
    // are saved by their own Save.
    Q_INVOKABLE bool Save(QObject* cnx);

    // The collections themselves, not copies; none until the first successful Load.
    Coleccion* Figuras() const { return m_figuras.data(); }
    Coleccion* Indicadores() const { return m_indicadores.data(); }

private:
    void CargarFiguras(QObject* cnx);
    void CargarIndicadores(QObject* cnx);

    int m_sysPK = 0;
    QString m_nombre;
    int m_fkUsuario = 0;
    // Owned as children: a collection replaced by a later Load stays alive
    // until the dashboard goes, so a caller still holding it keeps its members.
    QPointer<Coleccion> m_figuras;
    QPointer<Coleccion> m_indicadores;
};
