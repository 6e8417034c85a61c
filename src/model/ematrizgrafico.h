#pragma once

#include <QObject>
#include <QString>

// Settings of a matrix-and-chart indicator: up to ten metrics shown in the
// matrix, up to five drawn in the chart, the chart's title and its kind
// (TipoGrafico). One row of ut_bi_MatrizGraf, found by the owning indicator's
// key; only the indicator loads and saves it.
class EMatrizGrafico : public QObject {
    Q_OBJECT
    Q_CLASSINFO("ClassID", "{93B73313-1D03-42C0-ACF3-DA89714B191B}")
    Q_CLASSINFO("InterfaceID", "{A4FD6D07-27C0-4B88-9145-0710EFF8B3E3}")
    Q_CLASSINFO("ToSuperClass", "EMatrizGrafico")
    Q_PROPERTY(int Matriz_Metrica1 READ Matriz_Metrica1 WRITE setMatriz_Metrica1)
    Q_PROPERTY(int Matriz_Metrica2 READ Matriz_Metrica2 WRITE setMatriz_Metrica2)
    Q_PROPERTY(int Matriz_Metrica3 READ Matriz_Metrica3 WRITE setMatriz_Metrica3)
    Q_PROPERTY(int Matriz_Metrica4 READ Matriz_Metrica4 WRITE setMatriz_Metrica4)
    Q_PROPERTY(int Matriz_Metrica5 READ Matriz_Metrica5 WRITE setMatriz_Metrica5)
    Q_PROPERTY(int Matriz_Metrica6 READ Matriz_Metrica6 WRITE setMatriz_Metrica6)
    Q_PROPERTY(int Matriz_Metrica7 READ Matriz_Metrica7 WRITE setMatriz_Metrica7)
    Q_PROPERTY(int Matriz_Metrica8 READ Matriz_Metrica8 WRITE setMatriz_Metrica8)
    Q_PROPERTY(int Matriz_Metrica9 READ Matriz_Metrica9 WRITE setMatriz_Metrica9)
    Q_PROPERTY(int Matriz_Metrica10 READ Matriz_Metrica10 WRITE setMatriz_Metrica10)
    Q_PROPERTY(int Grafico_Metrica1 READ Grafico_Metrica1 WRITE setGrafico_Metrica1)
    Q_PROPERTY(int Grafico_Metrica2 READ Grafico_Metrica2 WRITE setGrafico_Metrica2)
    Q_PROPERTY(int Grafico_Metrica3 READ Grafico_Metrica3 WRITE setGrafico_Metrica3)
    Q_PROPERTY(int Grafico_Metrica4 READ Grafico_Metrica4 WRITE setGrafico_Metrica4)
    Q_PROPERTY(int Grafico_Metrica5 READ Grafico_Metrica5 WRITE setGrafico_Metrica5)
    Q_PROPERTY(QString Grafico_Titulo READ Grafico_Titulo WRITE setGrafico_Titulo)
    Q_PROPERTY(int Grafico_Tipo READ Grafico_Tipo WRITE setGrafico_Tipo)

public:
    static constexpr int MetricasMatriz = 10;
    static constexpr int MetricasGrafico = 5;

    Q_INVOKABLE explicit EMatrizGrafico(QObject* parent = nullptr);

    int Matriz_Metrica1() const { return m_matriz[0]; }
    void setMatriz_Metrica1(int value) { m_matriz[0] = value; }
    int Matriz_Metrica2() const { return m_matriz[1]; }
    void setMatriz_Metrica2(int value) { m_matriz[1] = value; }
    int Matriz_Metrica3() const { return m_matriz[2]; }
    void setMatriz_Metrica3(int value) { m_matriz[2] = value; }
    int Matriz_Metrica4() const { return m_matriz[3]; }
    void setMatriz_Metrica4(int value) { m_matriz[3] = value; }
    int Matriz_Metrica5() const { return m_matriz[4]; }
    void setMatriz_Metrica5(int value) { m_matriz[4] = value; }
    int Matriz_Metrica6() const { return m_matriz[5]; }
    void setMatriz_Metrica6(int value) { m_matriz[5] = value; }
    int Matriz_Metrica7() const { return m_matriz[6]; }
    void setMatriz_Metrica7(int value) { m_matriz[6] = value; }
    int Matriz_Metrica8() const { return m_matriz[7]; }
    void setMatriz_Metrica8(int value) { m_matriz[7] = value; }
    int Matriz_Metrica9() const { return m_matriz[8]; }
    void setMatriz_Metrica9(int value) { m_matriz[8] = value; }
    int Matriz_Metrica10() const { return m_matriz[9]; }
    void setMatriz_Metrica10(int value) { m_matriz[9] = value; }
    int Grafico_Metrica1() const { return m_grafico[0]; }
    void setGrafico_Metrica1(int value) { m_grafico[0] = value; }
    int Grafico_Metrica2() const { return m_grafico[1]; }
    void setGrafico_Metrica2(int value) { m_grafico[1] = value; }
    int Grafico_Metrica3() const { return m_grafico[2]; }
    void setGrafico_Metrica3(int value) { m_grafico[2] = value; }
    int Grafico_Metrica4() const { return m_grafico[3]; }
    void setGrafico_Metrica4(int value) { m_grafico[3] = value; }
    int Grafico_Metrica5() const { return m_grafico[4]; }
    void setGrafico_Metrica5(int value) { m_grafico[4] = value; }
    QString Grafico_Titulo() const { return m_titulo; }
    void setGrafico_Titulo(const QString& value) { m_titulo = value; }
    // A TipoGrafico value: 0 3-D bars, 1 2-D lines, 3 2-D bars, 14 pie.
    int Grafico_Tipo() const { return m_tipo; }
    void setGrafico_Tipo(int value) { m_tipo = value; }

    // Fills the object from the first row of that indicator; false, untouched, when there is none.
    Q_INVOKABLE bool Load(QObject* cnx, int FK);
    // Inserts one row for that indicator; never deletes, so the indicator clears the old row first.
    Q_INVOKABLE bool Save(QObject* cnx, int FK);

private:
    int m_matriz[MetricasMatriz] = {};
    int m_grafico[MetricasGrafico] = {};
    QString m_titulo;
    int m_tipo = 0;
};
