#pragma once

#include "terminal/chart/axes/TimeTicks.h"

#include <qwt_scale_draw.h>

#include <vector>

namespace Terminal {

/// Labels without ticks: the grid shows where they belong. Of those beside what is painted anew none is
/// drawn: a crosshair has a piece of both axes painted with every move.
class AxisLabels : public QwtScaleDraw
{
public:
    AxisLabels();

protected:
    void drawLabel(QPainter *painter, double value) const override;
};

/// Labels of the price axis.
class PriceLabels : public AxisLabels
{
public:
    QwtText label(double price) const override;
};

/// Labels of the time axis: the texts that were set, each under its bar.
class TimeLabels : public AxisLabels
{
public:
    void setTicks(std::vector<TimeTick> ticks);
    QwtText label(double bar) const override;

private:
    std::vector<TimeTick> m_ticks;
};

} // namespace Terminal
