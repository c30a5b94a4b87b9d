#pragma once

#include <QPolygonF>

class QPainter;

namespace Terminal {

/// Draws a line through points of growing x with no more points than the screen can show: of those in
/// one pixel column the first, highest, lowest and last, and none between equal heights.
class LineDecimator
{
public:
    explicit LineDecimator(QPainter *painter) : m_painter(painter) {}

    /// A point whose y is not finite parts the line.
    void add(double x, double y);
    /// Draws what is left.
    void finish();

private:
    void startColumn(double x, double y);
    void endColumn();
    void append(double x, double y);

    QPainter *m_painter;
    QPolygonF m_points;
    bool m_inColumn = false;
    double m_x = 0;
    double m_lowest = 0;
    double m_highest = 0;
    double m_last = 0;
};

} // namespace Terminal
