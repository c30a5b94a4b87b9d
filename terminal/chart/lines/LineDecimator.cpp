#include "terminal/chart/lines/LineDecimator.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace Terminal {

void LineDecimator::add(double x, double y)
{
    if (!std::isfinite(y)) {
        finish();
        return;
    }
    if (m_inColumn && std::floor(x) == std::floor(m_x)) {
        m_lowest = std::min(m_lowest, y);
        m_highest = std::max(m_highest, y);
        m_last = y;
        return;
    }
    endColumn();
    startColumn(x, y);
}

void LineDecimator::startColumn(double x, double y)
{
    m_inColumn = true;
    m_x = x;
    m_lowest = m_highest = m_last = y;
    append(x, y);
}

void LineDecimator::endColumn()
{
    if (m_inColumn && m_lowest != m_highest) {
        append(m_x, m_lowest);
        append(m_x, m_highest);
        append(m_x, m_last);
    }
    m_inColumn = false;
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
