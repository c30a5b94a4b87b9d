#include "terminal/trades/TradesPointer.h"

#include "terminal/trades/TradesLayer.h"

#include <utility>

namespace Terminal {

namespace {

constexpr int ownLayer = 1000; ///< no overlay has so high a number

} // namespace

TradesPointer::TradesPointer(const TradesLayer *layer, Parts parts)
    : m_layer(layer),
      m_parts(std::move(parts))
{
}

bool TradesPointer::isHit(const QPointF &position)
{
    PointerTarget *const overlays = m_parts.overlays();
    return overlays != nullptr && overlays->isHit(position);
}

void TradesPointer::press(const QPointF &position, Qt::MouseButton button)
{
    if (PointerTarget *const overlays = m_parts.overlays()) {
        overlays->press(position, button);
    }
}

void TradesPointer::release(const QPointF &position, Qt::MouseButton button)
{
    if (PointerTarget *const overlays = m_parts.overlays()) {
        overlays->release(position, button);
    }
}

void TradesPointer::move(const QPointF &position)
{
    if (PointerTarget *const overlays = m_parts.overlays()) {
        overlays->move(position);
    }
}

std::vector<ClickableMark> TradesPointer::marks()
{
    PointerTarget *const overlays = m_parts.overlays();
    std::vector<ClickableMark> all = overlays == nullptr ? std::vector<ClickableMark>() : overlays->marks();
    if (!m_parts.showsTrades()) {
        return all;
    }
    for (const TradeMark &mark : m_layer->marks()) {
        const auto choose = [choose = m_parts.choose, trades = mark.trades] { choose(trades); };
        all.push_back({seriesGlyph(mark.kind, MarkSide::Above), mark.count(), ownLayer, mark.box(), choose});
    }
    return all;
}

} // namespace Terminal
