#pragma once

#include <QWidget>

#include <functional>
#include <optional>

namespace Terminal {

class ChartView;

/// A clear sheet over the chart: the crosshair with its tags on both axes, the tag of the last price, the
/// name of the price scale where its prices are adjusted, and a ring around the mark that has the focus.
/// Moving the crosshair repaints only where it was and is.
class ChartForeground : public QWidget
{
    Q_OBJECT

public:
    explicit ChartForeground(ChartView *chart);

    /// In pixels of the canvas.
    void setCrosshair(std::optional<QPoint> position);

    /// Where a ring is to be drawn, asked at each repaint.
    void setRing(std::function<std::optional<QRectF>()> ring);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void coverTicks(QPainter *painter, int y) const;
    void paintCrosshair(QPainter *painter) const;
    void paintRing(QPainter *painter, const QRectF &box) const;
    void paintLastPrice(QPainter *painter) const;
    void paintPriceTag(QPainter *painter, double price, const QColor &colour, const QColor &textColour) const;
    QRect timeTagBox(int x) const;
    void paintTimeTag(QPainter *painter, int x) const;
    void paintPriceView(QPainter *painter) const;
    QRegion crosshairRegion() const;

    ChartView *m_chart;
    std::optional<QPoint> m_position;
    std::function<std::optional<QRectF>()> m_ring;
};

} // namespace Terminal
