#pragma once

#include <QWidget>

#include <optional>

namespace Terminal {

class ChartView;

/// A clear sheet over the chart: the crosshair with its tags on both axes and the tag of the last
/// price. Moving the crosshair repaints only where it was and is.
class ChartForeground : public QWidget
{
    Q_OBJECT

public:
    explicit ChartForeground(ChartView *chart);

    /// In pixels of the canvas.
    void setCrosshair(std::optional<QPoint> position);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void paintCrosshair(QPainter *painter) const;
    void paintLastPrice(QPainter *painter) const;
    void paintPriceTag(QPainter *painter, double price, const QColor &colour, const QColor &textColour) const;
    void paintTimeTag(QPainter *painter, int x) const;
    QRegion crosshairRegion() const;

    ChartView *m_chart;
    std::optional<QPoint> m_position;
};

} // namespace Terminal
