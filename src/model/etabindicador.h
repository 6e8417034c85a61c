#pragma once

#include "vb/vb.h"

#include <QObject>
#include <QPointer>

// An indicator placed on a dashboard: position, size, the periods it offers,
// the period it opens on and eight limit values. Maps a row of ut_bi_TabIndicador.
class ETabIndicador : public QObject {
    Q_OBJECT
    Q_CLASSINFO("ClassID", "{D8076953-DE33-46DF-A03B-1BC940C673EE}")
    Q_CLASSINFO("InterfaceID", "{42513B23-F3F8-4CCB-9202-49F5BF55A212}")
    Q_CLASSINFO("ToSuperClass", "ETabIndicador")
    Q_PROPERTY(int Sys_PK READ Sys_PK WRITE setSys_PK)
    Q_PROPERTY(int FK_Tablero READ FK_Tablero WRITE setFK_Tablero)
    Q_PROPERTY(int FK_Indicador READ FK_Indicador WRITE setFK_Indicador)
    Q_PROPERTY(int FK_Entidad READ FK_Entidad WRITE setFK_Entidad)
    Q_PROPERTY(int x READ x WRITE setx)
    Q_PROPERTY(int Y READ Y WRITE setY)
    Q_PROPERTY(int W READ W WRITE setW)
    Q_PROPERTY(int H READ H WRITE setH)
    Q_PROPERTY(bool Muestra_Dia READ Muestra_Dia WRITE setMuestra_Dia)
    Q_PROPERTY(bool Muestra_Semana READ Muestra_Semana WRITE setMuestra_Semana)
    Q_PROPERTY(bool Muestra_Mes READ Muestra_Mes WRITE setMuestra_Mes)
    Q_PROPERTY(bool Muestra_Ano READ Muestra_Ano WRITE setMuestra_Ano)
    Q_PROPERTY(int PeriodoInicio READ PeriodoInicio WRITE setPeriodoInicio)
    Q_PROPERTY(double Limite1 READ Limite1 WRITE setLimite1)
    Q_PROPERTY(double Limite2 READ Limite2 WRITE setLimite2)
    Q_PROPERTY(double Limite3 READ Limite3 WRITE setLimite3)
    Q_PROPERTY(double Limite4 READ Limite4 WRITE setLimite4)
    Q_PROPERTY(double Limite5 READ Limite5 WRITE setLimite5)
    Q_PROPERTY(double Limite6 READ Limite6 WRITE setLimite6)
    Q_PROPERTY(double Limite7 READ Limite7 WRITE setLimite7)
    Q_PROPERTY(double Limite8 READ Limite8 WRITE setLimite8)
    Q_PROPERTY(QObject* objIndicador READ objIndicador WRITE setobjIndicador)

public:
    Q_INVOKABLE explicit ETabIndicador(QObject* parent = nullptr);

    int Sys_PK() const { return m_sysPK; }
    void setSys_PK(int value) { m_sysPK = value; }
    int FK_Tablero() const { return m_fkTablero; }
    void setFK_Tablero(int value) { m_fkTablero = value; }
    int FK_Indicador() const { return m_fkIndicador; }
    void setFK_Indicador(int value) { m_fkIndicador = value; }
    int FK_Entidad() const { return m_fkEntidad; }
    void setFK_Entidad(int value) { m_fkEntidad = value; }
    int x() const { return m_x; }
    void setx(int value) { m_x = value; }
    int Y() const { return m_y; }
    void setY(int value) { m_y = value; }
    int W() const { return m_w; }
    void setW(int value) { m_w = value; }
    int H() const { return m_h; }
    void setH(int value) { m_h = value; }
    bool Muestra_Dia() const { return m_muestraDia; }
    void setMuestra_Dia(bool value) { m_muestraDia = value; }
    bool Muestra_Semana() const { return m_muestraSemana; }
    void setMuestra_Semana(bool value) { m_muestraSemana = value; }
    bool Muestra_Mes() const { return m_muestraMes; }
    void setMuestra_Mes(bool value) { m_muestraMes = value; }
    bool Muestra_Ano() const { return m_muestraAno; }
    void setMuestra_Ano(bool value) { m_muestraAno = value; }
    // A cPeriodosTemporales value: 0 day, 1 week, 2 month, 3 year.
    int PeriodoInicio() const { return m_periodoInicio; }
    void setPeriodoInicio(int value) { m_periodoInicio = value; }
    double Limite1() const { return m_limite[0]; }
    void setLimite1(double value) { m_limite[0] = vb::Finito(value); }
    double Limite2() const { return m_limite[1]; }
    void setLimite2(double value) { m_limite[1] = vb::Finito(value); }
    double Limite3() const { return m_limite[2]; }
    void setLimite3(double value) { m_limite[2] = vb::Finito(value); }
    double Limite4() const { return m_limite[3]; }
    void setLimite4(double value) { m_limite[3] = vb::Finito(value); }
    double Limite5() const { return m_limite[4]; }
    void setLimite5(double value) { m_limite[4] = vb::Finito(value); }
    double Limite6() const { return m_limite[5]; }
    void setLimite6(double value) { m_limite[5] = vb::Finito(value); }
    double Limite7() const { return m_limite[6]; }
    void setLimite7(double value) { m_limite[6] = vb::Finito(value); }
    double Limite8() const { return m_limite[7]; }
    void setLimite8(double value) { m_limite[7] = vb::Finito(value); }
    // The indicator the editors work on; a working reference only, never
    // stored and never set by Load.
    QObject* objIndicador() const { return m_objIndicador.data(); }
    void setobjIndicador(QObject* value) { m_objIndicador = value; }

    // Fills the object from the row with that key; false, untouched, when there is none.
    Q_INVOKABLE bool Load(QObject* cnx, int PK);
    // Inserts (key 0) or updates the row; on success Sys_PK holds its key.
    Q_INVOKABLE bool Save(QObject* cnx);

private:
    int m_sysPK = 0;
    int m_fkTablero = 0;
    int m_fkIndicador = 0;
    int m_fkEntidad = 0;
    int m_x = 0;
    int m_y = 0;
    int m_w = 0;
    int m_h = 0;
    bool m_muestraDia = false;
    bool m_muestraSemana = false;
    bool m_muestraMes = false;
    bool m_muestraAno = false;
    int m_periodoInicio = 0;
    double m_limite[8] = {};
    // Held without ownership: the editor that sets it owns the indicator.
    QPointer<QObject> m_objIndicador;
};
