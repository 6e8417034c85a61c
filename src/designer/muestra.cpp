#include "muestra.h"

#include "vb/vb.h"

#include <QMouseEvent>
#include <QPainter>

Muestra::Muestra(int colorOle, QWidget* parent)
    : QLabel(parent)
    , m_colorOle(colorOle)
{
    setFrameShape(QFrame::Panel);
    setFrameShadow(QFrame::Sunken);
}

void Muestra::setColorOle(int value)
{
    if (value == m_colorOle)
        return;
    m_colorOle = value;
    update();
}

void Muestra::setClicable(bool value)
{
    m_clicable = value;
    if (value)
        setCursor(Qt::PointingHandCursor);
    else
        unsetCursor();
}

void Muestra::paintEvent(QPaintEvent* event)
{
    {
        QPainter painter(this);
        painter.fillRect(contentsRect(), vb::oleToColor(m_colorOle));
    }
    // The frame and any text are drawn by the label itself, over the colour.
    QLabel::paintEvent(event);
}

// A click is a press and a release over the swatch, as with a button, so
// dragging off the swatch cancels it.
void Muestra::mousePressEvent(QMouseEvent* event)
{
    if (m_clicable && event->button() == Qt::LeftButton) {
        m_pulsada = true;
        event->accept();
        return;
    }
    QLabel::mousePressEvent(event);
}

void Muestra::mouseReleaseEvent(QMouseEvent* event)
{
    const bool click = m_pulsada && event->button() == Qt::LeftButton && rect().contains(event->position().toPoint());
    m_pulsada = false;
    if (click) {
        event->accept();
        emit clicked();
        return;
    }
    QLabel::mouseReleaseEvent(event);
}
