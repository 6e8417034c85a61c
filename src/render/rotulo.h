#pragma once

#include <QFont>
#include <Qt>

class QPainter;
class QRectF;
class QString;

// One line of text inside a tile. Tiles are drawn at any size the user drags
// them to, so the text first shrinks to fit its box and is elided when even
// the smallest readable size does not fit: it never spills out of the tile.
class Rotulo {
public:
    static constexpr qreal MinimoLegible = 6.0;

    // A font whose line is about `alto` pixels.
    static QFont fuente(qreal alto, bool negrita = false);
    static void escribir(QPainter* painter, const QRectF& caja, const QString& texto, Qt::Alignment alineacion,
                         QFont fuente);
};
