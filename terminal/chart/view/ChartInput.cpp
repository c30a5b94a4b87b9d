#include "terminal/chart/view/ChartInput.h"

#include "terminal/chart/marks/PointerTarget.h"
#include "terminal/chart/view/ChartView.h"

#include <QCursor>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace Terminal {

namespace {

constexpr double wheelStep = 0.85; ///< zoom factor of one notch
constexpr double notch = 120;      ///< wheel units of one notch
constexpr double keyPanShare = 0.1;

/// Keys zoom towards the newest bar in view: it stays where it is.
double keyZoomAt(const ChartView &chart)
{
    const ChartGeometry &geometry = chart.chartGeometry();
    const double last = geometry.barToX(static_cast<int>(chart.data().bars.size()) - 1);
    return last < geometry.left ? geometry.right : std::min(last, geometry.right);
}

} // namespace

ChartInput::ChartInput(ChartView *chart, PointerTarget *target, QObject *parent)
    : QObject(parent),
      m_chart(chart),
      m_target(target),
      m_focus(chart, target)
{
    chart->canvas()->installEventFilter(this);
    chart->installEventFilter(this);
}

bool ChartInput::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        const bool taken = key(*static_cast<QKeyEvent *>(event));
        m_focus.follow();
        return taken;
    }
    if (watched != m_chart->canvas()) {
        return false;
    }
    if (event->type() == QEvent::MouseButtonPress) {
        press(*static_cast<QMouseEvent *>(event));
    } else if (event->type() == QEvent::MouseButtonRelease) {
        release(*static_cast<QMouseEvent *>(event));
    } else if (event->type() == QEvent::MouseMove) {
        move(*static_cast<QMouseEvent *>(event));
    } else if (event->type() == QEvent::Wheel) {
        wheel(*static_cast<QWheelEvent *>(event));
        return true;
    } else if (event->type() == QEvent::Leave && !m_focus.hasMark()) { // as it does when a mark's list closes
        m_chart->setCrosshair({});
    } else if (event->type() == QEvent::Resize) {
        placeCrosshairAnew();
    }
    return false;
}

/// The canvas has moved below the pointer, or away from it.
void ChartInput::placeCrosshairAnew()
{
    const QPoint pointer = m_chart->canvas()->mapFromGlobal(QCursor::pos());
    const bool isOver = m_chart->canvas()->rect().contains(pointer);
    if (m_chart->hasCrosshair() && !m_focus.hasMark()) {
        m_chart->setCrosshair(isOver ? std::optional(pointer) : std::nullopt);
    }
}

bool ChartInput::isHit(const QPointF &position) const
{
    return m_target != nullptr && m_target->isHit(position);
}

void ChartInput::press(const QMouseEvent &event)
{
    m_chart->setFocus();
    m_focus.leave();
    if (isHit(event.localPos())) {
        m_target->press(event.localPos(), event.button());
    } else if (event.button() == Qt::LeftButton) {
        m_drags = true;
        m_dragStart = event.localPos();
        m_dragSpan = m_chart->span();
        m_chart->canvas()->setCursor(Qt::ClosedHandCursor);
    }
}

void ChartInput::move(const QMouseEvent &event)
{
    m_chart->setCrosshair(event.pos());
    if (m_drags && (event.buttons() & Qt::LeftButton) == 0) {
        endDrag(); // the button was released elsewhere, over a dialog that opened meanwhile
    }
    if (m_drags) {
        const double bars = (event.localPos().x() - m_dragStart.x()) / m_chart->chartGeometry().barWidth();
        m_chart->setSpan({m_dragSpan.first - bars, m_dragSpan.last - bars});
        return;
    }
    if (m_target != nullptr) {
        m_target->move(event.localPos());
    }
    m_chart->canvas()->setCursor(isHit(event.localPos()) ? Qt::PointingHandCursor : Qt::CrossCursor);
}

void ChartInput::release(const QMouseEvent &event)
{
    if (m_drags && event.button() == Qt::LeftButton) {
        endDrag();
    } else if (isHit(event.localPos())) {
        m_target->release(event.localPos(), event.button());
    }
}

void ChartInput::endDrag()
{
    m_drags = false;
    m_chart->canvas()->setCursor(Qt::CrossCursor);
}

void ChartInput::wheel(const QWheelEvent &event)
{
    const QPoint delta = event.angleDelta();
    if (std::abs(delta.x()) > std::abs(delta.y())) {
        m_chart->pan(-delta.x() / notch * m_chart->span().width() * keyPanShare);
    } else {
        m_chart->zoom(std::pow(wheelStep, delta.y() / notch), event.position().x());
    }
}

void ChartInput::leave()
{
    m_focus.leave();
    m_chart->setCrosshair({});
}

bool ChartInput::key(const QKeyEvent &event)
{
    const double width = m_chart->span().width();
    switch (event.key()) {
    case Qt::Key_Left:
        m_chart->pan(-width * keyPanShare);
        return true;
    case Qt::Key_Right:
        m_chart->pan(width * keyPanShare);
        return true;
    case Qt::Key_PageUp:
        m_chart->pan(-width);
        return true;
    case Qt::Key_PageDown:
        m_chart->pan(width);
        return true;
    case Qt::Key_Home:
        m_chart->setSpan({-0.5, width - 0.5});
        return true;
    case Qt::Key_End:
        m_chart->showLast();
        return true;
    case Qt::Key_Up:
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        m_chart->zoom(wheelStep, keyZoomAt(*m_chart));
        return true;
    case Qt::Key_Down:
    case Qt::Key_Minus:
        m_chart->zoom(1 / wheelStep, keyZoomAt(*m_chart));
        return true;
    case Qt::Key_N:
        m_focus.step(1);
        return true;
    case Qt::Key_P:
        m_focus.step(-1);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return event.isAutoRepeat() || m_focus.press();
    case Qt::Key_Escape:
        leave();
        return true;
    default:
        return false;
    }
}

} // namespace Terminal
