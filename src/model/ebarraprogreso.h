#pragma once

#include "vb/vb.h"

#include <QObject>
#include <QString>

// Settings of a progress-bar indicator: the metric it shows and, for each
// period (day, week, month, year), the bar's bounds and its three colours.
// One row of ut_bi_BarraProg, found by the owning indicator's key; only the
// indicator loads and saves it.
class EBarraProgreso : public QObject {
    Q_OBJECT
    Q_CLASSINFO("ClassID", "{6F3F76C8-ED8F-4BB0-886A-144FA6A83F4F}")
    Q_CLASSINFO("InterfaceID", "{CDF709A3-0DD7-4411-AFF4-C7898F2CAA0B}")
    Q_CLASSINFO("ToSuperClass", "EBarraProgreso")
    Q_PROPERTY(int FK_Metrica READ FK_Metrica WRITE setFK_Metrica)
    Q_PROPERTY(double Dia_Min READ Dia_Min WRITE setDia_Min)
    Q_PROPERTY(double Dia_Max READ Dia_Max WRITE setDia_Max)
    Q_PROPERTY(int Dia_Color READ Dia_Color WRITE setDia_Color)
    Q_PROPERTY(int Dia_ColorDebajo READ Dia_ColorDebajo WRITE setDia_ColorDebajo)
    Q_PROPERTY(int Dia_ColorArriba READ Dia_ColorArriba WRITE setDia_ColorArriba)
    Q_PROPERTY(double Semana_Min READ Semana_Min WRITE setSemana_Min)
    Q_PROPERTY(double Semana_Max READ Semana_Max WRITE setSemana_Max)
    Q_PROPERTY(int Semana_Color READ Semana_Color WRITE setSemana_Color)
    Q_PROPERTY(int Semana_ColorDebajo READ Semana_ColorDebajo WRITE setSemana_ColorDebajo)
    Q_PROPERTY(int Semana_ColorArriba READ Semana_ColorArriba WRITE setSemana_ColorArriba)
    Q_PROPERTY(double Mes_Min READ Mes_Min WRITE setMes_Min)
    Q_PROPERTY(double Mes_Max READ Mes_Max WRITE setMes_Max)
    Q_PROPERTY(int Mes_Color READ Mes_Color WRITE setMes_Color)
    Q_PROPERTY(int Mes_ColorDebajo READ Mes_ColorDebajo WRITE setMes_ColorDebajo)
    Q_PROPERTY(int Mes_ColorArriba READ Mes_ColorArriba WRITE setMes_ColorArriba)
    Q_PROPERTY(double Ano_Min READ Ano_Min WRITE setAno_Min)
    Q_PROPERTY(double Ano_Max READ Ano_Max WRITE setAno_Max)
    Q_PROPERTY(int Ano_Color READ Ano_Color WRITE setAno_Color)
    Q_PROPERTY(int Ano_ColorDebajo READ Ano_ColorDebajo WRITE setAno_ColorDebajo)
    Q_PROPERTY(int Ano_ColorArriba READ Ano_ColorArriba WRITE setAno_ColorArriba)

public:
    Q_INVOKABLE explicit EBarraProgreso(QObject* parent = nullptr);

    int FK_Metrica() const { return m_fkMetrica; }
    void setFK_Metrica(int value) { m_fkMetrica = value; }

    double Dia_Min() const { return m_periodos[Dia].min; }
    void setDia_Min(double value) { m_periodos[Dia].min = vb::Finito(value); }
    double Dia_Max() const { return m_periodos[Dia].max; }
    void setDia_Max(double value) { m_periodos[Dia].max = vb::Finito(value); }
    int Dia_Color() const { return m_periodos[Dia].color; }
    void setDia_Color(int value) { m_periodos[Dia].color = value; }
    int Dia_ColorDebajo() const { return m_periodos[Dia].colorDebajo; }
    void setDia_ColorDebajo(int value) { m_periodos[Dia].colorDebajo = value; }
    int Dia_ColorArriba() const { return m_periodos[Dia].colorArriba; }
    void setDia_ColorArriba(int value) { m_periodos[Dia].colorArriba = value; }

    double Semana_Min() const { return m_periodos[Semana].min; }
    void setSemana_Min(double value) { m_periodos[Semana].min = vb::Finito(value); }
    double Semana_Max() const { return m_periodos[Semana].max; }
    void setSemana_Max(double value) { m_periodos[Semana].max = vb::Finito(value); }
    int Semana_Color() const { return m_periodos[Semana].color; }
    void setSemana_Color(int value) { m_periodos[Semana].color = value; }
    int Semana_ColorDebajo() const { return m_periodos[Semana].colorDebajo; }
    void setSemana_ColorDebajo(int value) { m_periodos[Semana].colorDebajo = value; }
    int Semana_ColorArriba() const { return m_periodos[Semana].colorArriba; }
    void setSemana_ColorArriba(int value) { m_periodos[Semana].colorArriba = value; }

    double Mes_Min() const { return m_periodos[Mes].min; }
    void setMes_Min(double value) { m_periodos[Mes].min = vb::Finito(value); }
    double Mes_Max() const { return m_periodos[Mes].max; }
    void setMes_Max(double value) { m_periodos[Mes].max = vb::Finito(value); }
    int Mes_Color() const { return m_periodos[Mes].color; }
    void setMes_Color(int value) { m_periodos[Mes].color = value; }
    int Mes_ColorDebajo() const { return m_periodos[Mes].colorDebajo; }
    void setMes_ColorDebajo(int value) { m_periodos[Mes].colorDebajo = value; }
    int Mes_ColorArriba() const { return m_periodos[Mes].colorArriba; }
    void setMes_ColorArriba(int value) { m_periodos[Mes].colorArriba = value; }

    double Ano_Min() const { return m_periodos[Ano].min; }
    void setAno_Min(double value) { m_periodos[Ano].min = vb::Finito(value); }
    double Ano_Max() const { return m_periodos[Ano].max; }
    void setAno_Max(double value) { m_periodos[Ano].max = vb::Finito(value); }
    int Ano_Color() const { return m_periodos[Ano].color; }
    void setAno_Color(int value) { m_periodos[Ano].color = value; }
    int Ano_ColorDebajo() const { return m_periodos[Ano].colorDebajo; }
    void setAno_ColorDebajo(int value) { m_periodos[Ano].colorDebajo = value; }
    int Ano_ColorArriba() const { return m_periodos[Ano].colorArriba; }
    void setAno_ColorArriba(int value) { m_periodos[Ano].colorArriba = value; }

    // Fills the object from the first row of that indicator; false, untouched, when there is none.
    Q_INVOKABLE bool Load(QObject* cnx, int FK);
    // Inserts one row for that indicator; never deletes, so the indicator clears the old row first.
    Q_INVOKABLE bool Save(QObject* cnx, int FK);

private:
    // Indexes follow cPeriodosTemporales, which also orders the columns.
    enum Periodo { Dia = 0, Semana = 1, Mes = 2, Ano = 3, Periodos = 4 };

    struct Barra {
        double min = 0;
        double max = 0;
        int color = 0;
        int colorDebajo = 0;
        int colorArriba = 0;
    };

    int m_fkMetrica = 0;
    Barra m_periodos[Periodos];
};
