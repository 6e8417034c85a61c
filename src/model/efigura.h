#pragma once

#include <QObject>
#include <QString>

// A text label on a dashboard: text, font, colours, alignment, position and
// size. Maps a row of ut_bi_Fig.
class EFigura : public QObject {
    Q_OBJECT
    Q_CLASSINFO("ClassID", "{1A1B1C44-1F57-43B6-9DF2-0D9C9FF3946A}")
    Q_CLASSINFO("InterfaceID", "{7277294E-E891-44B8-A92F-39C021D80351}")
    Q_CLASSINFO("ToSuperClass", "EFigura")
    Q_PROPERTY(int Sys_PK READ Sys_PK WRITE setSys_PK)
    Q_PROPERTY(int FK_Tablero READ FK_Tablero WRITE setFK_Tablero)
    Q_PROPERTY(QString Texto READ Texto WRITE setTexto)
    Q_PROPERTY(QString Fuente READ Fuente WRITE setFuente)
    Q_PROPERTY(short Tam_fuente READ Tam_fuente WRITE setTam_fuente)
    Q_PROPERTY(bool Negrita READ Negrita WRITE setNegrita)
    Q_PROPERTY(bool Cursiva READ Cursiva WRITE setCursiva)
    Q_PROPERTY(bool Subrayado READ Subrayado WRITE setSubrayado)
    Q_PROPERTY(int Color READ Color WRITE setColor)
    Q_PROPERTY(int ColorFondo READ ColorFondo WRITE setColorFondo)
    Q_PROPERTY(short Alineacion READ Alineacion WRITE setAlineacion)
    Q_PROPERTY(int x READ x WRITE setx)
    Q_PROPERTY(int Y READ Y WRITE setY)
    Q_PROPERTY(int W READ W WRITE setW)
    Q_PROPERTY(int H READ H WRITE setH)
    Q_PROPERTY(int Tipo READ Tipo WRITE setTipo)

public:
    Q_INVOKABLE explicit EFigura(QObject* parent = nullptr);

    int Sys_PK() const { return m_sysPK; }
    void setSys_PK(int value) { m_sysPK = value; }
    int FK_Tablero() const { return m_fkTablero; }
    void setFK_Tablero(int value) { m_fkTablero = value; }
    QString Texto() const { return m_texto; }
    void setTexto(const QString& value) { m_texto = value; }
    QString Fuente() const { return m_fuente; }
    void setFuente(const QString& value) { m_fuente = value; }
    short Tam_fuente() const { return m_tamFuente; }
    void setTam_fuente(short value) { m_tamFuente = value; }
    bool Negrita() const { return m_negrita; }
    void setNegrita(bool value) { m_negrita = value; }
    bool Cursiva() const { return m_cursiva; }
    void setCursiva(bool value) { m_cursiva = value; }
    bool Subrayado() const { return m_subrayado; }
    void setSubrayado(bool value) { m_subrayado = value; }
    // Colours are 0x00BBGGRR.
    int Color() const { return m_color; }
    void setColor(int value) { m_color = value; }
    int ColorFondo() const { return m_colorFondo; }
    void setColorFondo(int value) { m_colorFondo = value; }
    // A cAlineacion value: 0 left, 2 centre, 1 right.
    short Alineacion() const { return m_alineacion; }
    void setAlineacion(short value) { m_alineacion = value; }
    int x() const { return m_x; }
    void setx(int value) { m_x = value; }
    int Y() const { return m_y; }
    void setY(int value) { m_y = value; }
    int W() const { return m_w; }
    void setW(int value) { m_w = value; }
    int H() const { return m_h; }
    void setH(int value) { m_h = value; }
    // A cTipoFigura value: 0 text.
    int Tipo() const { return m_tipo; }
    void setTipo(int value) { m_tipo = value; }

    // Fills the object from the row with that key; false, untouched, when there is none.
    Q_INVOKABLE bool Load(QObject* cnx, int PK);
    // Inserts (key 0) or updates the row; on success Sys_PK holds its key.
    Q_INVOKABLE bool Save(QObject* cnx);

private:
    int m_sysPK = 0;
    int m_fkTablero = 0;
    QString m_texto;
    QString m_fuente;
    short m_tamFuente = 0;
    bool m_negrita = false;
    bool m_cursiva = false;
    bool m_subrayado = false;
    int m_color = 0;
    int m_colorFondo = 0;
    short m_alineacion = 0;
    int m_x = 0;
    int m_y = 0;
    int m_w = 0;
    int m_h = 0;
    int m_tipo = 0;
};
