#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

// A named visual built on metrics. Its kind (Tipo, a TiposIndicador value)
// decides which configuration object it carries: an EBarraProgreso, an
// EMatrizGrafico or an ESemaforo. Maps a row of ut_bi_Indicador; the
// configuration keeps its own row, keyed by this indicator's Sys_PK.
class EIndicador : public QObject {
    Q_OBJECT
    Q_CLASSINFO("ClassID", "{B8779F68-2AD2-47E2-9A5C-41161F4A182C}")
    Q_CLASSINFO("InterfaceID", "{337FE020-548E-49CA-925F-E7A4D67AACBC}")
    Q_CLASSINFO("ToSuperClass", "EIndicador")
    Q_PROPERTY(int Sys_PK READ Sys_PK WRITE setSys_PK)
    Q_PROPERTY(int FK_Perspectiva READ FK_Perspectiva WRITE setFK_Perspectiva)
    Q_PROPERTY(QString Nombre READ Nombre WRITE setNombre)
    Q_PROPERTY(QObject* Configuracion READ Configuracion WRITE setConfiguracion)
    Q_PROPERTY(int Tipo READ Tipo WRITE setTipo)

public:
    // A new indicator is a progress bar, with an empty bar configuration.
    Q_INVOKABLE explicit EIndicador(QObject* parent = nullptr);

    int Sys_PK() const { return m_sysPK; }
    void setSys_PK(int value) { m_sysPK = value; }
    int FK_Perspectiva() const { return m_fkPerspectiva; }
    void setFK_Perspectiva(int value) { m_fkPerspectiva = value; }
    QString Nombre() const { return m_nombre; }
    void setNombre(const QString& value) { m_nombre = value; }

    // The configuration object, or none. Putting it stores whatever object is
    // given, unchecked against Tipo; Load and Save reach it by name only.
    QObject* Configuracion() const { return m_configuracion.data(); }
    void setConfiguracion(QObject* value);

    int Tipo() const { return m_tipo; }
    // A new kind replaces the configuration with an empty one of that kind
    // (none outside 1 to 3); the same kind keeps it with all its settings.
    void setTipo(int value);

    // Fills the object and its configuration from the row with that key;
    // false, untouched, when there is none.
    Q_INVOKABLE bool Load(QObject* cnx, int PK);
    // Writes the row, then replaces the configuration row: on success Sys_PK
    // holds the row's key.
    Q_INVOKABLE bool Save(QObject* cnx);

private:
    void soltarConfiguracion();

    int m_sysPK = 0;
    int m_fkPerspectiva = 0;
    QString m_nombre;
    // Guarded: a configuration put from outside may be destroyed by its owner.
    QPointer<QObject> m_configuracion;
    int m_tipo = 0;
};
