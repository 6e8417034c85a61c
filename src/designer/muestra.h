#pragma once

#include <QLabel>

// A colour swatch: a label whose background is an OLE colour (0x00BBGGRR),
// kept as the exact integer the configuration stores so that reading it back
// never goes through a lossy QColor round trip. A clickable swatch reports
// the click so the dialog can offer the colour dialog; a lamp is not
// clickable and only changes by code.
class Muestra : public QLabel {
    Q_OBJECT
    Q_PROPERTY(int colorOle READ colorOle WRITE setColorOle)
    Q_PROPERTY(bool clicable READ clicable WRITE setClicable)

public:
    explicit Muestra(int colorOle = 0, QWidget* parent = nullptr);

    int colorOle() const { return m_colorOle; }
    void setColorOle(int value);

    bool clicable() const { return m_clicable; }
    void setClicable(bool value);

signals:
    void clicked();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    int m_colorOle = 0;
    bool m_clicable = false;
    bool m_pulsada = false;
};
