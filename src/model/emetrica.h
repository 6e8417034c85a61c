#pragma once

#include <QObject>
#include <QString>

// A named formula whose JavaScript source is stored with it; the component
// stores and edits the source and never runs it. Maps a row of ut_bi_Metrica.
class EMetrica : public QObject {
    Q_OBJECT
    Q_CLASSINFO("ClassID", "{A795E23C-EA2A-4724-B2F1-5ABE626805CF}")
    Q_CLASSINFO("InterfaceID", "{591322AB-365C-4540-A2B3-7373E6BBF616}")
    Q_CLASSINFO("ToSuperClass", "EMetrica")
    Q_PROPERTY(int Sys_PK READ Sys_PK WRITE setSys_PK)
    Q_PROPERTY(QString Sys_GUID READ Sys_GUID WRITE setSys_GUID)
    Q_PROPERTY(QString Nombre READ Nombre WRITE setNombre)
    Q_PROPERTY(QString Descripcion READ Descripcion WRITE setDescripcion)
    Q_PROPERTY(QString Titulo READ Titulo WRITE setTitulo)
    Q_PROPERTY(short Decimales READ Decimales WRITE setDecimales)
    Q_PROPERTY(QString Formato READ Formato WRITE setFormato)
    Q_PROPERTY(QString CodigoFuente READ CodigoFuente WRITE setCodigoFuente)
    Q_PROPERTY(int FK_Perspectiva READ FK_Perspectiva WRITE setFK_Perspectiva)

public:
    Q_INVOKABLE explicit EMetrica(QObject* parent = nullptr);

    int Sys_PK() const { return m_sysPK; }
    void setSys_PK(int value) { m_sysPK = value; }
    QString Sys_GUID() const { return m_sysGUID; }
    void setSys_GUID(const QString& value) { m_sysGUID = value; }
    QString Nombre() const { return m_nombre; }
    void setNombre(const QString& value) { m_nombre = value; }
    QString Descripcion() const { return m_descripcion; }
    void setDescripcion(const QString& value) { m_descripcion = value; }
    QString Titulo() const { return m_titulo; }
    void setTitulo(const QString& value) { m_titulo = value; }
    short Decimales() const { return m_decimales; }
    void setDecimales(short value) { m_decimales = value; }
    QString Formato() const { return m_formato; }
    void setFormato(const QString& value) { m_formato = value; }
    QString CodigoFuente() const { return m_codigoFuente; }
    void setCodigoFuente(const QString& value) { m_codigoFuente = value; }
    int FK_Perspectiva() const { return m_fkPerspectiva; }
    void setFK_Perspectiva(int value) { m_fkPerspectiva = value; }

    // Fills the object from the row with that key; false, untouched, when there is none.
    Q_INVOKABLE bool Load(QObject* cnx, int PK);
    // Inserts (key 0) or updates the row; on success Sys_PK holds its key.
    // Sys_GUID is never written: the row component gives it on insert.
    Q_INVOKABLE bool Save(QObject* cnx);

private:
    int m_sysPK = 0;
    QString m_sysGUID;
    QString m_nombre;
    QString m_descripcion;
    QString m_titulo;
    short m_decimales = 0;
    QString m_formato;
    QString m_codigoFuente;
    int m_fkPerspectiva = 0;
};
