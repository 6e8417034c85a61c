#pragma once

#include "vb/vb.h"

#include <QObject>
#include <QString>

// Settings of a traffic-light indicator: the metric it shows, whether lower
// values are the better ones, and for each period (day, week, month, year)
// the two limits between its three lights. One row of ut_bi_Semaforo, found
// by the owning indicator's key; only the indicator loads and saves it.
class ESemaforo : public QObject {
    Q_OBJECT
    Q_CLASSINFO("ClassID", "{9A5E5D32-D549-4DBE-AE90-C17DA4B9AF06}")
    Q_CLASSINFO("InterfaceID", "{2F80574A-9A78-4C88-B271-77070C6D3AF8}")
    Q_CLASSINFO("ToSuperClass", "ESemaforo")
    Q_PROPERTY(int FK_Metrica READ FK_Metrica WRITE setFK_Metrica)
    Q_PROPERTY(bool Descendente READ Descendente WRITE setDescendente)
    Q_PROPERTY(double Dia_Limite1 READ Dia_Limite1 WRITE setDia_Limite1)
    Q_PROPERTY(double Dia_Limite2 READ Dia_Limite2 WRITE setDia_Limite2)
    Q_PROPERTY(double Semana_Limite1 READ Semana_Limite1 WRITE setSemana_Limite1)
    Q_PROPERTY(double Semana_Limite2 READ Semana_Limite2 WRITE setSemana_Limite2)
    Q_PROPERTY(double Mes_Limite1 READ Mes_Limite1 WRITE setMes_Limite1)
    Q_PROPERTY(double Mes_Limite2 READ Mes_Limite2 WRITE setMes_Limite2)
    Q_PROPERTY(double Ano_Limite1 READ Ano_Limite1 WRITE setAno_Limite1)
    Q_PROPERTY(double Ano_Limite2 READ Ano_Limite2 WRITE setAno_Limite2)

public:
    Q_INVOKABLE explicit ESemaforo(QObject* parent = nullptr);

    int FK_Metrica() const { return m_fkMetrica; }
    void setFK_Metrica(int value) { m_fkMetrica = value; }
    bool Descendente() const { return m_descendente; }
    void setDescendente(bool value) { m_descendente = value; }

    double Dia_Limite1() const { return m_limites[Dia][0]; }
    void setDia_Limite1(double value) { m_limites[Dia][0] = vb::Finito(value); }
    double Dia_Limite2() const { return m_limites[Dia][1]; }
    void setDia_Limite2(double value) { m_limites[Dia][1] = vb::Finito(value); }
    double Semana_Limite1() const { return m_limites[Semana][0]; }
    void setSemana_Limite1(double value) { m_limites[Semana][0] = vb::Finito(value); }
    double Semana_Limite2() const { return m_limites[Semana][1]; }
    void setSemana_Limite2(double value) { m_limites[Semana][1] = vb::Finito(value); }
    double Mes_Limite1() const { return m_limites[Mes][0]; }
    void setMes_Limite1(double value) { m_limites[Mes][0] = vb::Finito(value); }
    double Mes_Limite2() const { return m_limites[Mes][1]; }
    void setMes_Limite2(double value) { m_limites[Mes][1] = vb::Finito(value); }
    double Ano_Limite1() const { return m_limites[Ano][0]; }
    void setAno_Limite1(double value) { m_limites[Ano][0] = vb::Finito(value); }
    double Ano_Limite2() const { return m_limites[Ano][1]; }
    void setAno_Limite2(double value) { m_limites[Ano][1] = vb::Finito(value); }

    // Fills the object from the first row of that indicator; false, untouched, when there is none.
    Q_INVOKABLE bool Load(QObject* cnx, int FK);
    // Inserts one row for that indicator; never deletes, so the indicator clears the old row first.
    Q_INVOKABLE bool Save(QObject* cnx, int FK);

private:
    // Indexes follow cPeriodosTemporales, which also orders the columns.
    enum Periodo { Dia = 0, Semana = 1, Mes = 2, Ano = 3, Periodos = 4 };

    int m_fkMetrica = 0;
    bool m_descendente = false;
    double m_limites[Periodos][2] = {};
};
