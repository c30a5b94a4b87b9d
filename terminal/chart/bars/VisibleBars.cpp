#include "terminal/chart/bars/VisibleBars.h"

#include <algorithm>
#include <cmath>

namespace Terminal {

namespace {

BarColumn columnOf(const Bar &bar, double position)
{
    return {position, bar.open, bar.high, bar.low, bar.close, bar.volume};
}

BarColumn merged(const Bar *bar, const Bar *end, double position)
{
    BarColumn column = columnOf(*bar, position);
    column.close = end[-1].close;
    for (++bar; bar != end; ++bar) {
        column.high = std::max(column.high, bar->high);
        column.low = std::min(column.low, bar->low);
        column.volume = std::max(column.volume, bar->volume);
    }
    return column;
}

} // namespace

void VisibleBars::update(const Bars &bars, const BarSpan &span, double width)
{
    m_columns.clear();
    const BarRange range = barsInView(span, bars.size());
    const double pixelsPerBar = width / span.width();
    if (pixelsPerBar >= 1) {
        takeEach(bars, range.first, range.end);
    } else if (pixelsPerBar > 0) {
        mergePerPixel(bars, range.first, range.end, span, pixelsPerBar);
    }
    measure();
}

void VisibleBars::takeEach(const Bars &bars, size_t first, size_t end)
{
    m_columns.reserve(end - first);
    for (size_t i = first; i < end; ++i) {
        m_columns.push_back(columnOf(bars[i], static_cast<double>(i)));
    }
}

void VisibleBars::mergePerPixel(const Bars &bars, size_t first, size_t end, const BarSpan &span,
                                double pixelsPerBar)
{
    while (first < end) {
        const double pixel = std::floor((static_cast<double>(first) - span.first) * pixelsPerBar);
        const double nextBar = std::ceil(span.first + (pixel + 1) / pixelsPerBar);
        const size_t next = std::clamp(static_cast<size_t>(nextBar), first + 1, end);
        m_columns.push_back(
            merged(&bars[first], bars.data() + next, span.first + (pixel + 0.5) / pixelsPerBar));
        first = next;
    }
}

void VisibleBars::measure()
{
    m_lowest = m_highest = m_highestVolume = 0;
    if (m_columns.empty()) {
        return;
    }
    m_lowest = m_columns.front().low;
    m_highest = m_columns.front().high;
    for (const BarColumn &column : m_columns) {
        m_lowest = std::min(m_lowest, column.low);
        m_highest = std::max(m_highest, column.high);
        m_highestVolume = std::max(m_highestVolume, column.volume);
    }
}

QwtOHLCSample VisibleBars::sample(size_t i) const
{
    const BarColumn &column = m_columns[i];
    return {column.position, column.open, column.high, column.low, column.close};
}

QRectF VisibleBars::boundingRect() const
{
    if (m_columns.empty()) {
        return {};
    }
    const double first = m_columns.front().position;
    return {first, m_lowest, m_columns.back().position - first, m_highest - m_lowest};
}

} // namespace Terminal
