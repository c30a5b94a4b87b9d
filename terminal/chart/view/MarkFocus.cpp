#include "terminal/chart/view/MarkFocus.h"

#include "terminal/chart/marks/PointerTarget.h"
#include "terminal/chart/view/ChartSummary.h"
#include "terminal/chart/view/ChartView.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace Terminal {

namespace {

constexpr int mostPages = 50; ///< that are looked through for the next mark
constexpr double pageShare = 0.9;

bool isBefore(const ClickableMark &one, const ClickableMark &other)
{
    const auto order = [](const ClickableMark &mark) {
        return std::make_tuple(mark.box.center().x(), mark.box.center().y(), mark.layer, mark.glyph);
    };
    return order(one) < order(other);
}

} // namespace

MarkFocus::MarkFocus(ChartView *chart, PointerTarget *target)
    : m_chart(chart),
      m_target(target),
      m_viewChange(QObject::connect(chart, &ChartView::viewChanged, chart, [this] { m_isRingKnown = false; }))
{
}

MarkFocus::~MarkFocus()
{
    QObject::disconnect(m_viewChange);
    leave();
}

MarkFocus::Marks MarkFocus::marks() const
{
    Marks marks = m_target == nullptr ? Marks() : m_target->marks();
    std::sort(marks.begin(), marks.end(), isBefore);
    return marks;
}

/// A key may be quicker than the repaint that puts the marks where the view has moved them.
MarkFocus::Marks MarkFocus::paintedMarks() const
{
    m_chart->paintAside();
    return marks();
}

/// Of the marks that stand over the bar the one nearest to where it was, since marks move a little with the
/// scale; of several at one place the one that it was.
MarkFocus::Marks::const_iterator MarkFocus::find(const Marks &marks) const
{
    if (!m_place) {
        return marks.end();
    }
    const double x = m_chart->chartGeometry().barToX(m_place->bar);
    const double y = m_chart->chartGeometry().priceToY(m_place->price);
    const auto distance = [this, x, y](const ClickableMark &one) {
        const QPointF away = one.box.center() - QPointF(x, y);
        return std::make_tuple(std::hypot(away.x(), away.y()), one.layer != m_place->layer,
                               one.glyph != m_place->glyph);
    };
    auto nearest = marks.end();
    for (auto mark = marks.begin(); mark != marks.end(); ++mark) {
        const bool isOver = mark->box.left() <= x && x <= mark->box.right();
        if (isOver && (nearest == marks.end() || distance(*mark) < distance(*nearest))) {
            nearest = mark;
        }
    }
    return nearest;
}

/// The mark that follows in a direction on where the focus is; the end for none in view.
MarkFocus::Marks::const_iterator MarkFocus::next(const Marks &marks, int direction) const
{
    auto after = direction > 0 ? marks.begin() : marks.end();
    const auto here = find(marks);
    if (here != marks.end()) {
        after = direction > 0 ? std::next(here) : here;
    } else if (m_place) {
        const double x = m_chart->chartGeometry().barToX(m_place->bar);
        after = std::find_if(marks.begin(), marks.end(),
                             [x](const ClickableMark &mark) { return mark.box.center().x() > x; });
    }
    if (direction > 0) {
        return after;
    }
    return after == marks.begin() ? marks.end() : std::prev(after);
}

void MarkFocus::step(int direction)
{
    const BarSpan before = m_chart->span();
    for (int page = 0; page < mostPages; ++page) {
        const Marks all = paintedMarks();
        const auto mark = next(all, direction);
        if (mark != all.end()) {
            goTo(*mark);
            return;
        }
        const BarSpan shown = m_chart->span();
        m_chart->pan(direction * shown.width() * pageShare);
        if (m_chart->span().first == shown.first) {
            break; // there are no more bars
        }
    }
    m_chart->setSpan(before);
    follow();
}

void MarkFocus::goTo(const ClickableMark &mark)
{
    const QPointF middle = mark.box.center();
    const ChartGeometry &geometry = m_chart->chartGeometry();
    m_place = Place{geometry.xToBar(middle.x()), geometry.yToPrice(middle.y()), mark.glyph, mark.layer};
    m_isRingKnown = false;
    m_chart->setRing([this] { return ring(); });
    follow();
    m_chart->announce(markText(mark, *m_chart));
}

void MarkFocus::follow()
{
    if (!m_place) {
        return;
    }
    const ChartGeometry &geometry = m_chart->chartGeometry();
    if (m_place->bar < geometry.span.first - 0.5 || m_place->bar > geometry.span.last + 0.5) {
        m_chart->setCrosshair({});
        return;
    }
    const double x = std::clamp(geometry.barToX(m_place->bar), geometry.left, geometry.right);
    m_chart->setCrosshair(QPointF(x, geometry.priceToY(m_place->price)).toPoint());
}

bool MarkFocus::press()
{
    const Marks all = paintedMarks();
    const auto mark = find(all);
    if (mark == all.end()) {
        return false;
    }
    mark->press();
    return true;
}

void MarkFocus::leave()
{
    if (m_place) {
        m_place.reset();
        m_chart->setRing({});
        m_chart->announce({});
    }
}

std::optional<QRectF> MarkFocus::ring() const
{
    if (!m_isRingKnown) {
        const Marks all = m_place ? marks() : Marks();
        const auto mark = find(all);
        m_ring = mark == all.end() ? std::nullopt : std::make_optional(mark->box);
        m_isRingKnown = true;
    }
    return m_ring;
}

} // namespace Terminal
