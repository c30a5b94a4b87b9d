#include "terminal/plugin/OverlayPointer.h"

#include "terminal/chart/view/ChartView.h"
#include "terminal/plugin/HostAxis.h"

#include <optional>

namespace Terminal {

OverlayPointer::OverlayPointer(const ChartView *chart, const OverlaySet *overlays, HostAxis *axis)
    : m_chart(chart),
      m_overlays(overlays),
      m_axis(axis)
{
}

bool OverlayPointer::isOnPricePane(const QPointF &position) const
{
    const ChartGeometry &geometry = m_chart->chartGeometry();
    return geometry.hasScale() && position.y() >= geometry.top && position.y() <= geometry.bottom &&
           position.x() >= geometry.left && position.x() <= geometry.right;
}

bool OverlayPointer::takesClicks(const ShownOverlay &overlay) const
{
    const Bars &bars = m_chart->data().bars;
    return !bars.empty() && static_cast<size_t>(overlay.handle->readableBars()) == bars.size();
}

OverlayPointer::Hit OverlayPointer::hitAt(const QPointF &position) const
{
    if (!isOnPricePane(position)) {
        return {};
    }
    const auto &overlays = m_overlays->all();
    for (auto overlay = overlays.rbegin(); overlay != overlays.rend(); ++overlay) {
        if (!takesClicks(*overlay)) {
            continue;
        }
        const std::optional<QPointF> mark = overlay->item->marks().targetAt(position);
        if (mark || overlay->handle->object()->hitTest(position.x(), position.y()) == 0) {
            return {overlay->handle, mark.value_or(position)};
        }
    }
    return {};
}

bool OverlayPointer::isHit(const QPointF &position)
{
    return hitAt(position).handle != nullptr;
}

void OverlayPointer::press(const QPointF &position, Qt::MouseButton button)
{
    const Hit hit = hitAt(position);
    if (!hit.handle) {
        return;
    }
    m_axis->setListPlace(position);
    if (button == Qt::LeftButton) {
        hit.handle->object()->handleMousePress(hit.place.x(), hit.place.y());
    } else if (button == Qt::RightButton) {
        hit.handle->object()->handleMousePressR(hit.place.x(), hit.place.y());
    }
}

void OverlayPointer::release(const QPointF &position, Qt::MouseButton button)
{
    const Hit hit = hitAt(position);
    if (!hit.handle) {
        return;
    }
    if (button == Qt::LeftButton) {
        hit.handle->object()->handleMouseRelease(hit.place.x(), hit.place.y());
    } else if (button == Qt::RightButton) {
        hit.handle->object()->handleMouseReleaseR(hit.place.x(), hit.place.y());
    }
}

void OverlayPointer::move(const QPointF &position)
{
    for (const ShownOverlay &overlay : m_overlays->all()) {
        const std::shared_ptr<OverlayHandle> handle = overlay.handle;
        handle->object()->handleMouseMove(position.x(), position.y());
    }
}

std::vector<ClickableMark> OverlayPointer::marks()
{
    std::vector<ClickableMark> marks;
    int layer = 0;
    for (const ShownOverlay &overlay : m_overlays->all()) {
        if (takesClicks(overlay)) {
            for (const DrawnMark &mark : overlay.item->marks().all()) {
                marks.push_back(clickable(overlay, layer, mark));
            }
        }
        ++layer;
    }
    return marks;
}

ClickableMark OverlayPointer::clickable(const ShownOverlay &overlay, int layer, const DrawnMark &mark) const
{
    const QPointF target = overlay.item->marks().targetNear(mark, mark.box.center());
    const QPointF listPlace(mark.box.center().x(), mark.box.bottom());
    return {mark.glyph, mark.count, layer, mark.box,
            [axis = m_axis, weak = std::weak_ptr<OverlayHandle>(overlay.handle), target, listPlace] {
                if (const std::shared_ptr<OverlayHandle> handle = weak.lock()) {
                    axis->setListPlace(listPlace);
                    handle->object()->handleMousePress(target.x(), target.y());
                }
            }};
}

} // namespace Terminal
