#include "terminal/chart/marks/glyphs/MarkerGlyph.h"

#include <QFont>

namespace Terminal {

QString glyphText(QChar letter, int count)
{
    if (count == 1) {
        return letter;
    }
    return letter + (count > highestShownCount ? QStringLiteral("%1+").arg(highestShownCount)
                                               : QString::number(count));
}

QFont glyphFont(int pixels)
{
    QFont font;
    font.setPixelSize(pixels);
    font.setBold(true);
    return font;
}

} // namespace Terminal
