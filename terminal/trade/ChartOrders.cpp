#include "terminal/trade/ChartOrders.h"

#include "terminal/chart/view/ChartView.h"
#include "terminal/plugin/OverlayHost.h"
#include "terminal/trade/OrderSpotlight.h"

#include <QApplication>
#include <QMouseEvent>

namespace Terminal {

ChartOrders::ChartOrders(ChartView *chart)
    : m_chart(chart),
      m_spotlight(std::make_unique<OrderSpotlight>(chart, [this] { return marks(); }))
{
    m_spotlight->attach(chart);
    chart->canvas()->installEventFilter(this);
}

ChartOrders::~ChartOrders() = default;

void ChartOrders::setOverlays(OverlayHost *overlays)
{
    m_overlays = overlays;
    m_chart->canvas()->installEventFilter(this); // ahead of who opens menus at a click
}

const DrawnMarks *ChartOrders::marks() const
{
    const bool hasMinutes = m_chart->data().period == ChartPeriod::Minute;
    return m_overlays && hasMinutes ? m_overlays->drawnMarks(*findOverlayKind(QStringLiteral("orders")))
                                    : nullptr;
}

void ChartOrders::setSpotlight(const OrderRecords &orders)
{
    m_spotlight->setOrders(orders);
    m_chart->replot();
}

bool ChartOrders::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseMove) {
        point(static_cast<QMouseEvent *>(event)->localPos());
    } else if (event->type() == QEvent::MouseButtonPress) {
        m_pressed.reset();
        if (static_cast<QMouseEvent *>(event)->button() == Qt::LeftButton) {
            press(static_cast<QMouseEvent *>(event)->localPos());
        }
    } else if (event->type() == QEvent::MouseButtonRelease) {
        release(static_cast<QMouseEvent *>(event)->localPos());
    }
    return QObject::eventFilter(watched, event);
}

void ChartOrders::point(const QPointF &position)
{
    const DrawnMarks *const drawn = marks();
    const DrawnMark *const mark = drawn == nullptr ? nullptr : drawn->markAt(position);
    const auto box = mark == nullptr ? std::nullopt : std::optional<QRectF>(mark->box);
    if (box == m_pointed) {
        return; // told already
    }
    m_pointed = box;
    if (mark != nullptr) {
        Q_EMIT pointedAt(OrderPlaces(*m_chart, *drawn).ordersAt(position, m_orders));
    }
}

void ChartOrders::press(const QPointF &position)
{
    m_pointed.reset(); // a click tells again
    point(position);
    const ChartGeometry &geometry = m_chart->chartGeometry();
    const bool isOnPrices = position.y() >= geometry.top && position.y() <= geometry.bottom;
    if (geometry.hasScale() && isOnPrices && !(m_overlays && m_overlays->isHit(position))) {
        m_pressed = position;
    }
}

void ChartOrders::release(const QPointF &position)
{
    const bool isClick =
        m_pressed && (position - *m_pressed).manhattanLength() < QApplication::startDragDistance();
    m_pressed.reset();
    if (isClick) {
        Q_EMIT priceClicked(m_chart->chartGeometry().yToPrice(position.y()));
    }
}

} // namespace Terminal
