#include "terminal/chart/axes/AxisLabels.h"

#include "terminal/chart/text/FigureText.h"

#include <qwt_text.h>

#include <algorithm>
#include <cmath>

namespace Terminal {

namespace {

constexpr double labelGap = 8; ///< pixels between the canvas and a label

void showLabelsOnly(QwtScaleDraw *labels)
{
    labels->enableComponent(QwtAbstractScaleDraw::Backbone, false);
    labels->enableComponent(QwtAbstractScaleDraw::Ticks, false);
    labels->setSpacing(labelGap);
}

} // namespace

PriceLabels::PriceLabels()
{
    showLabelsOnly(this);
}

QwtText PriceLabels::label(double price) const
{
    return priceText(price);
}

TimeLabels::TimeLabels()
{
    showLabelsOnly(this);
}

void TimeLabels::setTicks(std::vector<TimeTick> ticks)
{
    m_ticks = std::move(ticks);
    invalidateCache();
}

QwtText TimeLabels::label(double bar) const
{
    const auto tick = std::find_if(m_ticks.begin(), m_ticks.end(), [bar](const TimeTick &candidate) {
        return std::abs(static_cast<double>(candidate.bar) - bar) < 0.5;
    });
    return tick == m_ticks.end() ? QwtText() : QwtText(tick->label);
}

} // namespace Terminal
