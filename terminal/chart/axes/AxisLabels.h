#pragma once

#include "terminal/chart/axes/TimeTicks.h"

#include <qwt_scale_draw.h>

#include <vector>

namespace Terminal {

/// Labels of the price axis; only labels, the grid shows where they belong.
class PriceLabels : public QwtScaleDraw
{
public:
    PriceLabels();
    QwtText label(double price) const override;
};

/// Labels of the time axis: the texts that were set, each under its bar.
class TimeLabels : public QwtScaleDraw
{
public:
    TimeLabels();
    void setTicks(std::vector<TimeTick> ticks);
    QwtText label(double bar) const override;

private:
    std::vector<TimeTick> m_ticks;
};

} // namespace Terminal
