#pragma once

#include <QColor>
#include <QImage>

#include <vector>

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

/// The rows of pixels in column x that have exactly this colour.
inline std::vector<int> rowsOfColour(const QImage &image, int x, const QColor &colour)
{
    std::vector<int> rows;
    for (int y = 0; y < image.height(); ++y) {
        if (image.pixelColor(x, y) == colour) {
            rows.push_back(y);
        }
    }
    return rows;
}

} // namespace Terminal
