#include "terminal/trade/OrderSpotlight.h"

#include "terminal/chart/view/ChartView.h"

#include <QPainter>

namespace Terminal {

namespace {

constexpr double aboveOverlays = 20;
constexpr double ringMargin = 5;
constexpr double ringWidth = 2;
constexpr int glowAlpha = 60;

void paintRing(QPainter *painter, const QRectF &box, const QColor &colour)
{
    const double radius = std::max(box.width(), box.height()) / 2 + ringMargin;
    QColor glow = colour;
    glow.setAlpha(glowAlpha);
    painter->setPen(QPen(glow, 3 * ringWidth));
    painter->drawEllipse(box.center(), radius, radius);
    painter->setPen(QPen(colour, ringWidth));
    painter->drawEllipse(box.center(), radius, radius);
}

} // namespace

OrderSpotlight::OrderSpotlight(ChartView *chart, std::function<const DrawnMarks *()> marks)
    : m_chart(chart),
      m_marks(std::move(marks))
{
    setItemAttribute(QwtPlotItem::Legend, false);
    setYAxis(QwtPlot::yRight);
    setZ(aboveOverlays);
}

void OrderSpotlight::draw(QPainter *painter, const QwtScaleMap & /*xMap*/, const QwtScaleMap & /*yMap*/,
                          const QRectF & /*canvasRect*/) const
{
    const DrawnMarks *const marks = m_marks();
    if (marks == nullptr || m_orders.empty()) {
        return;
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    const OrderPlaces places(*m_chart, *marks);
    for (const OrderRecord &order : m_orders) {
        if (const DrawnMark *const mark = places.markOf(order)) {
            paintRing(painter, mark->box, m_chart->theme().accent);
        }
    }
    painter->restore();
}

} // namespace Terminal
