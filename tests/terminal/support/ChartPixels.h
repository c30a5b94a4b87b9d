#pragma once

#include "terminal/chart/view/ChartView.h"
#include "tests/terminal/support/Pixels.h"

#include <QImage>

#include <algorithm>

namespace Terminal {

/// What a chart shows, as a picture in the pixels of its canvas.
inline QImage pictureOf(ChartView *chart)
{
    const QImage whole = chart->grab().toImage();
    return whole.copy(QRect(chart->canvas()->mapTo(chart, QPoint()), chart->canvas()->size()));
}

/// How many pixels of a colour a chart has around the middle of a mark at a bar and a price.
inline int pixelsOfMark(ChartView *chart, int bar, double price, const QColor &colour)
{
    const ChartGeometry &geometry = chart->chartGeometry();
    const QPoint middle(static_cast<int>(geometry.barToX(bar)), static_cast<int>(geometry.priceToY(price)));
    return pixelsOf(pictureOf(chart).copy(QRect(middle - QPoint(7, 7), QSize(15, 15))), colour);
}

/// How many pixels of a colour a chart has in the row of a price: of a dotted line through it about a half.
inline int pixelsOfRow(ChartView *chart, double price, const QColor &colour)
{
    const int y = static_cast<int>(chart->chartGeometry().priceToY(price));
    int most = 0;
    for (const int row : {y - 1, y, y + 1}) {
        most = std::max(most,
                        pixelsOf(pictureOf(chart).copy(QRect(0, row, chart->canvas()->width(), 1)), colour));
    }
    return most;
}

} // namespace Terminal
