#pragma once

#include "terminal/chart/axes/ChartGeometry.h"
#include "terminal/chart/theme/ChartTheme.h"

#include <QRectF>

class QPainter;

namespace Terminal {

/// The tag of a line series at the right edge of the price pane, at the height of `price`.
QRectF seriesLabelBox(const ChartGeometry &geometry, double price, const QString &text);

void paintSeriesLabel(QPainter *painter, const ChartGeometry &geometry, const ChartTheme &theme, double price,
                      const QString &text);

} // namespace Terminal
