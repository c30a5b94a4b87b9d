#include "terminal/chart/lines/LineDecimator.h"

#include <QPainter>

namespace Terminal {

void LineDecimator::addToNextColumn(double x, double y)
{
    if (std::isfinite(y)) {
        endColumn();
        startColumn(x, y);
    } else {
        finish();
    }
}

void LineDecimator::startColumn(double x, double y)
{
    m_x = x;
    m_columnEnd = std::floor(x) + 1;
    m_lowest = m_highest = m_last = y;
    append(x, y);
}

void LineDecimator::endColumn()
{
    if (m_columnEnd != noColumn && m_lowest != m_highest) {
        append(m_x, m_lowest);
        append(m_x, m_highest);
        append(m_x, m_last);
    }
    m_columnEnd = noColumn;
}

void LineDecimator::append(double x, double y)
{
    const int count = m_points.size();
    if (count >= 2 && m_points.at(count - 1).y() == y && m_points.at(count - 2).y() == y) {
        m_points[count - 1].setX(x);
    } else {
        m_points.append(QPointF(x, y));
    }
}

void LineDecimator::finish()
{
    endColumn();
    m_painter->drawPolyline(m_points);
    m_points.clear();
}

} // namespace Terminal
