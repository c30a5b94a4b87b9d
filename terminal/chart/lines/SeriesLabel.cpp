#include "terminal/chart/lines/SeriesLabel.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace Terminal {

namespace {

constexpr double height = 20;
constexpr double padding = 8;
constexpr double radius = 3;
constexpr int fontPixels = 12;

QFont labelFont()
{
    QFont font;
    font.setPixelSize(fontPixels);
    return font;
}

} // namespace

QRectF seriesLabelBox(const ChartGeometry &geometry, double price, const QString &text)
{
    const double width = std::ceil(QFontMetricsF(labelFont()).horizontalAdvance(text)) + 2 * padding;
    const double top = std::floor(geometry.priceToY(price) - height / 2);
    const double held = std::clamp(top, geometry.top, std::max(geometry.top, geometry.bottom - height));
    return {std::floor(geometry.right - width), held, width, height};
}

void paintSeriesLabel(QPainter *painter, const ChartGeometry &geometry, const ChartTheme &theme, double price,
                      const QString &text)
{
    const QRectF box = seriesLabelBox(geometry, price, text);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(theme.line);
    painter->drawRoundedRect(box, radius, radius);
    painter->setPen(theme.lineText);
    painter->setFont(labelFont());
    painter->drawText(box, Qt::AlignCenter | Qt::TextDontClip, text);
    painter->restore();
}

} // namespace Terminal
