#include "terminal/trades/TradesInput.h"

#include "terminal/chart/view/ChartView.h"
#include "terminal/trades/OrderLines.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>

namespace Terminal {

TradesInput::TradesInput(ChartView *chart, const TradesLayer *trades, OrderLines *orders, Rules rules)
    : m_chart(chart),
      m_trades(trades),
      m_orders(orders),
      m_rules(std::move(rules))
{
    comeFirst();
}

void TradesInput::comeFirst()
{
    m_chart->canvas()->installEventFilter(this);
    m_chart->installEventFilter(this);
}

bool TradesInput::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape) {
        return escape();
    }
    if (watched != m_chart->canvas()) {
        return false;
    }
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick) {
        return press(*static_cast<QMouseEvent *>(event));
    }
    if (event->type() == QEvent::MouseMove) {
        return move(*static_cast<QMouseEvent *>(event));
    }
    return event->type() == QEvent::MouseButtonRelease && release();
}

bool TradesInput::press(const QMouseEvent &event)
{
    if (event.button() != Qt::LeftButton) {
        return m_drag.has_value();
    }
    const QPointF position = event.localPos();
    if (m_rules.isTaken(position)) {
        return false;
    }
    if (const TradeMark *const mark = m_trades->markAt(position)) {
        Q_EMIT tradesClicked(std::vector<size_t>(mark->trades)); // a copy: who hears it may change the marks
        return true;
    }
    if (const OrderRecord *const order = m_orders->orderAt(position)) {
        startDrag(*order, position);
        return true;
    }
    return false;
}

void TradesInput::startDrag(const OrderRecord &order, const QPointF &position)
{
    m_chart->setFocus();
    m_drag = Drag{order, position, m_orders->heightOf(order) - position.y()};
    m_price = order.price;
}

double TradesInput::priceAt(const QPointF &position) const
{
    const double wished = m_chart->chartGeometry().yToPrice(position.y() + m_drag->lead);
    return m_rules.allowedPrice(wished);
}

bool TradesInput::move(const QMouseEvent &event)
{
    if (m_drag && (event.buttons() & Qt::LeftButton) == 0) {
        forgetDrag(); // the button was released elsewhere, over a dialog that opened meanwhile
    }
    if (!m_drag) {
        const bool isTaken = m_rules.isTaken(event.localPos());
        const bool isOnOrder = !isTaken && m_orders->orderAt(event.localPos()) != nullptr;
        if (isOnOrder || (!isTaken && m_trades->markAt(event.localPos()) != nullptr)) {
            m_chart->setCrosshair(event.pos());
            m_chart->canvas()->setCursor(isOnOrder && m_rules.mayMove() ? Qt::SizeVerCursor
                                                                        : Qt::PointingHandCursor);
            return true;
        }
        return false;
    }
    m_chart->setCrosshair({}); // it would cross the tag
    const bool isFar =
        (event.localPos() - m_drag->start).manhattanLength() >= QApplication::startDragDistance();
    m_drag->hasMoved = m_drag->hasMoved || isFar;
    if (m_drag->hasMoved && !m_drag->isCancelled && m_rules.mayMove()) {
        m_price = priceAt(event.localPos());
        m_orders->setDragged(OrderLines::Dragged{m_drag->order.number, m_price});
    }
    return true;
}

bool TradesInput::release()
{
    if (!m_drag) {
        return false;
    }
    const Drag drag = *m_drag;
    const double price = m_price;
    forgetDrag();
    if (!drag.hasMoved && !drag.isCancelled) {
        Q_EMIT orderClicked(drag.order);
    } else if (!drag.isCancelled && price != drag.order.price) {
        Q_EMIT orderMoved({drag.order, price});
    }
    return true;
}

void TradesInput::forgetDrag()
{
    m_drag.reset();
    m_orders->setDragged({});
}

bool TradesInput::escape()
{
    if (!m_drag || m_drag->isCancelled) {
        return false;
    }
    m_drag->isCancelled = true; // until the button is released
    m_orders->setDragged({});
    return true;
}

} // namespace Terminal
