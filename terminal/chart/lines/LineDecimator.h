#pragma once

#include <QPolygonF>

#include <algorithm>
#include <cmath>
#include <limits>

class QPainter;

namespace Terminal {

/// Draws a line through points of growing x with no more points than the screen can show: of those in
/// one pixel column the first, highest, lowest and last, and none between equal heights.
class LineDecimator
{
public:
    explicit LineDecimator(QPainter *painter) : m_painter(painter) {}

    /// A point whose y is not finite parts the line.
    void add(double x, double y)
    {
        if (x < m_columnEnd &&
            std::isfinite(y)) { // most points of a line that is far longer than the screen is wide
            m_lowest = std::min(m_lowest, y);
            m_highest = std::max(m_highest, y);
            m_last = y;
        } else {
            addToNextColumn(x, y);
        }
    }
    /// Draws what is left.
    void finish();

private:
    static constexpr double noColumn = -std::numeric_limits<double>::infinity();

    void addToNextColumn(double x, double y);
    void startColumn(double x, double y);
    void endColumn();
    void append(double x, double y);

    QPainter *m_painter;
    QPolygonF m_points;
    double m_x = 0;
    double m_columnEnd = noColumn; ///< where the pixel column of the last point ends
    double m_lowest = 0;
    double m_highest = 0;
    double m_last = 0;
};

} // namespace Terminal
