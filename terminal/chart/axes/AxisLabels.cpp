#include "terminal/chart/axes/AxisLabels.h"

#include "terminal/chart/text/FigureText.h"

#include <QPainter>

#include <qwt_text.h>

#include <algorithm>
#include <cmath>

namespace Terminal {

namespace {

constexpr double labelGap = 8; ///< pixels between the canvas and a label

} // namespace

AxisLabels::AxisLabels()
{
    enableComponent(QwtAbstractScaleDraw::Backbone, false);
    enableComponent(QwtAbstractScaleDraw::Ticks, false);
    setSpacing(labelGap);
}

void AxisLabels::drawLabel(QPainter *painter, double value) const
{
    if (!painter->hasClipping() ||
        painter->clipBoundingRect().intersects(boundingLabelRect(painter->font(), value))) {
        QwtScaleDraw::drawLabel(painter, value);
    }
}

QwtText PriceLabels::label(double price) const
{
    return priceText(price);
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
