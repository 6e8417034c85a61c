#include "vb.h"

#include <QtMath>

namespace vb {

// OLE_COLOR keeps red in the low byte. The high byte (system colour and
// palette flags) is not resolved here: only plain RGB values reach this layer.
QColor oleToColor(int ole)
{
    const auto u = static_cast<unsigned>(ole);
    return QColor(int(u & 0xFFu), int((u >> 8) & 0xFFu), int((u >> 16) & 0xFFu));
}

int colorToOle(const QColor& color)
{
    return color.red() | (color.green() << 8) | (color.blue() << 16);
}

// The forms were laid out at 96 dpi, where a pixel is 15 twips.
int twipsToPixels(int twips)
{
    return qRound(twips / double(TwipsPerPixel));
}

int pixelsToTwips(int pixels)
{
    return pixels * TwipsPerPixel;
}

} // namespace vb
