#include "terminal/chart/marks/DrawnMarks.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Terminal {

namespace {

/// Right of an order's middle. An overlay catches an order within half a glyph of its bar, and of several
/// bars takes the first from the left: at the right edge of its glyph no earlier bar is caught.
constexpr double orderTargetOffset = orderGlyphSize / 2 - 0.5;

} // namespace

void DrawnMarks::clear()
{
    m_marks.clear();
    m_places.clear();
}

QPointF DrawnMarks::targetNear(const DrawnMark &mark, const QPointF &position) const
{
    const auto distance = [&position](const QPointF &place) {
        const QPointF away = place - position;
        return std::make_pair(std::abs(away.x()), std::abs(away.y()));
    };
    const PlaceList::Range places = placesOf(mark);
    const QPointF nearest =
        *std::min_element(places.begin(), places.end(), [&distance](const QPointF &a, const QPointF &b) {
            return distance(a) < distance(b);
        });
    return isOrderGlyph(mark.glyph) ? nearest + QPointF(orderTargetOffset, 0) : nearest;
}

const DrawnMark *DrawnMarks::markAt(const QPointF &position) const
{
    const auto found = std::find_if(m_marks.rbegin(), m_marks.rend(), [&position](const DrawnMark &mark) {
        return mark.box.contains(position) && glyph(mark.glyph).outline(mark.box).contains(position);
    });
    return found == m_marks.rend() ? nullptr : &*found;
}

std::optional<QPointF> DrawnMarks::targetAt(const QPointF &position) const
{
    const DrawnMark *const mark = markAt(position);
    return mark == nullptr ? std::nullopt : std::optional<QPointF>(targetNear(*mark, position));
}

} // namespace Terminal
