#include "rotulo.h"

#include <QFontMetricsF>
#include <QPainter>

QFont Rotulo::fuente(qreal alto, bool negrita)
{
    // Resolving a family by name is slow, and tiles ask for many fonts.
    static const QFont Familia(QStringLiteral("DejaVu Sans"));
    QFont font(Familia);
    font.setPixelSize(qMax(1, qRound(qMax(MinimoLegible, alto * 0.8))));
    font.setBold(negrita);
    return font;
}

void Rotulo::escribir(QPainter* painter, const QRectF& caja, const QString& texto, Qt::Alignment alineacion,
                      QFont fuente)
{
    if (caja.width() < 1 || caja.height() < 1 || texto.isEmpty())
        return;
    int tamano = qMin(fuente.pixelSize(), qMax(1, qFloor(caja.height())));
    fuente.setPixelSize(tamano);
    // Text width grows with the font size, so one measurement finds the size
    // that fits; it shrinks by a quarter at most, since a long name set in a
    // tiny face is no easier to read than one cut short.
    const qreal ancho = QFontMetricsF(fuente).horizontalAdvance(texto);
    QString visible = texto;
    if (ancho > caja.width()) {
        const int menor = qMax(qRound(MinimoLegible), qCeil(tamano * 0.75));
        tamano = qMax(menor, qFloor(tamano * caja.width() / ancho));
        fuente.setPixelSize(qMin(fuente.pixelSize(), tamano));
        visible = QFontMetricsF(fuente).elidedText(texto, Qt::ElideRight, caja.width());
    }
    // No clip of its own: the text now fits its box's width, and the tile
    // clips everything it draws to its own area.
    painter->setFont(fuente);
    painter->drawText(caja, alineacion | Qt::TextSingleLine, visible);
}
