#include "terminal/chart/lines/LineDecimator.h"

#include <gmock/gmock.h>

#include <QImage>
#include <QPainter>

#include <cmath>
#include <vector>

namespace Terminal {
namespace {

QImage drawn(const std::vector<QPointF> &points, bool decimated)
{
    QImage image(300, 200, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    if (decimated) {
        LineDecimator line(&painter);
        for (const QPointF &point : points) {
            line.add(point.x(), point.y());
        }
        line.finish();
    } else {
        painter.drawPolyline(points.data(), static_cast<int>(points.size()));
    }
    return image;
}

TEST(LineDecimator, DrawsAHorizontalLineWithTwoPointsAndTheSamePixels)
{
    std::vector<QPointF> points;
    for (int i = 0; i < 3000; ++i) {
        points.emplace_back(i / 10.0, 77.0);
    }
    EXPECT_EQ(drawn(points, true), drawn(points, false));
}

TEST(LineDecimator, PartsTheLineWhereThereIsNoPoint)
{
    const QImage image = drawn({{10, 50}, {100, 50}, {150, std::nan("")}, {200, 50}, {290, 50}}, true);
    EXPECT_EQ(image.pixel(50, 50), QColor(Qt::black).rgb());
    EXPECT_EQ(image.pixel(150, 50), QColor(Qt::white).rgb());
    EXPECT_EQ(image.pixel(250, 50), QColor(Qt::black).rgb());
}

TEST(LineDecimator, KeepsTheExtremesOfAPixelColumn)
{
    const QImage image =
        drawn({{10, 100}, {20.1, 100}, {20.2, 20}, {20.3, 180}, {20.4, 100}, {30, 100}}, true);
    EXPECT_EQ(image.pixel(20, 25), QColor(Qt::black).rgb());
    EXPECT_EQ(image.pixel(20, 175), QColor(Qt::black).rgb());
}

} // namespace
} // namespace Terminal
