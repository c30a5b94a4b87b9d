#pragma once

#include <QColor>
#include <QImage>

namespace Terminal {

/// How many pixels of a picture have a colour.
inline int pixelsOf(const QImage &picture, const QColor &colour)
{
    int count = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            count += picture.pixelColor(x, y) == colour ? 1 : 0;
        }
    }
    return count;
}

} // namespace Terminal
