#pragma once

#include <QObject>
#include <QPointer>
#include <QVariant>
#include <functional>

class Dialogo;

// The one object the host creates. It holds the host's connection, user and
// user-management object, answers record-access and calendar questions, and
// opens every dialog of the component after asking the user's right.
class EEngine : public QObject {
    Q_OBJECT
    Q_CLASSINFO("ClassID", "{62C7F7FB-68A6-4FB0-B34E-3DA4E76F78EC}")
    Q_CLASSINFO("InterfaceID", "{11FBA1C7-6AE1-4BBB-BA2B-3D8D72CFFD08}")
    Q_CLASSINFO("ToSuperClass", "EEngine")
    Q_PROPERTY(QObject* ADOCnn READ ADOCnn WRITE setADOCnn)
    Q_PROPERTY(int PKUser READ PKUser WRITE setPKUser)
    Q_PROPERTY(QObject* Search READ Search WRITE setSearch)
    Q_PROPERTY(QObject* UM READ UM WRITE setUM)
    Q_PROPERTY(QString chartTitle READ chartTitle WRITE setChartTitle)
    Q_PROPERTY(short chartType READ chartType WRITE setChartType)
    Q_PROPERTY(bool boMes READ boMes WRITE setBoMes)

public:
    Q_INVOKABLE explicit EEngine(QObject* parent = nullptr);
    ~EEngine() override;

    QObject* ADOCnn() const { return m_adoCnn.data(); }
    void setADOCnn(QObject* connection) { m_adoCnn = connection; }
    int PKUser() const { return m_pkUser; }
    void setPKUser(int pk) { m_pkUser = pk; }
    QObject* Search() const { return m_search.data(); }
    void setSearch(QObject* search) { m_search = search; }
    QObject* UM() const { return m_um.data(); }
    void setUM(QObject* um) { m_um = um; }
    QString chartTitle() const { return m_chartTitle; }
    void setChartTitle(const QString& title) { m_chartTitle = title; }
    short chartType() const { return m_chartType; }
    void setChartType(short type) { m_chartType = type; }
    bool boMes() const { return m_boMes; }
    void setBoMes(bool value) { m_boMes = value; }

    // Host interface
    Q_INVOKABLE void SetUM(QObject* oUserManagment);
    Q_INVOKABLE void SetConnection(QObject* o, int PKU);
    Q_INVOKABLE QString get_info(const QString& ename, int PK);
    Q_INVOKABLE QVariant get_MainArray(const QString& ename, int PK, short interval, int value);
    Q_INVOKABLE QVariant get_ChartArray(const QString& ename, int PK, short interval, int value, short wide);

    // Calendar and period arithmetic
    Q_INVOKABLE int WeekNum(double d);
    Q_INVOKABLE double IniMes(int V);
    Q_INVOKABLE double FinMes(int V);
    Q_INVOKABLE double day_ofweeknum(int W);
    Q_INVOKABLE double numtodate(int n);
    Q_INVOKABLE int daytonum(double f);

    // Record access
    Q_INVOKABLE QObject* OpenRecordset(const QString& sql, QObject* objADOCnn);
    Q_INVOKABLE QVariant getScalar(const QString& sql, QObject* objADOCnn);
    Q_INVOKABLE QVariant fieldValue(QObject* Rst, const QString& fieldname);

    // Entity factory, save and cascade delete
    Q_INVOKABLE QObject* CrearEntidad(int Tipo);
    Q_INVOKABLE QObject* CargarEntidad(int Tipo, int PK);
    Q_INVOKABLE bool GuardarEntidad(QObject* entidad);
    Q_INVOKABLE void EliminarObjetosTablero(int PK);
    Q_INVOKABLE bool EliminarTablero(int PK);
    Q_INVOKABLE bool EliminarEntidad(int Tipo, int PK);

    // Libraries and editors, each behind the user's right
    Q_INVOKABLE void Biblioteca_Metricas();
    Q_INVOKABLE void Biblioteca_Indicadores();
    Q_INVOKABLE int Form_Agregar_Perspectiva(int Padre);
    Q_INVOKABLE bool Form_Editar_Perspectiva(int PK);
    Q_INVOKABLE int Form_Agregar_Metrica(int Padre);
    Q_INVOKABLE bool Form_Editar_Metrica(int PK);
    Q_INVOKABLE int Form_Agregar_Indicador(int Padre);
    Q_INVOKABLE bool Form_Editar_Indicador(int PK);
    Q_INVOKABLE int Form_Agregar_Tablero(int PKUsuario, const QString& Nombre = QString());
    Q_INVOKABLE bool Form_Editar_Tablero(int PK);
    Q_INVOKABLE int Seleccionar_Indicador();
    Q_INVOKABLE int BuscarEntidad(const QString& sTipoEntidad);
    Q_INVOKABLE QString InfoEntidad(const QString& sTipoEntidad, int PK);
    Q_INVOKABLE bool Editar_Indicador_Tab(QObject* o);
    Q_INVOKABLE bool Editar_Figura(QObject* o);

private:
    // Asks the host whether the signed-in user holds the right; raises 91
    // when no user-management object was set.
    bool verificarDerecho(const QString& codigo);
    // The common opening steps of an editor: the right first, then the
    // dialog created, handed the engine, prepared, shown modally, its result
    // read and the dialog unloaded. A refused right opens nothing.
    int abrirEditor(const char* derecho, const std::function<Dialogo*()>& crear,
                    const std::function<void(Dialogo&)>& preparar);
    // A library dialog behind its right: shown modally and left to unload itself.
    void abrirBiblioteca(const char* derecho, const std::function<Dialogo*()>& crear);
    // Runs a statement on the host's connection; raises on failure.
    void ejecutar(const QString& sql);

    QPointer<QObject> m_adoCnn;
    int m_pkUser = 0;
    QPointer<QObject> m_search;
    QPointer<QObject> m_um;
    QString m_chartTitle;
    short m_chartType = 0;
    bool m_boMes = false;
};
