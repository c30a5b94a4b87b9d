#include "terminal/trade/PriceBox.h"

#include "terminal/chart/text/FigureText.h"

namespace Terminal {

namespace {

constexpr double highestPrice = 1e6;

} // namespace

PriceBox::PriceBox()
{
    setDecimals(2);
    setRange(0, highestPrice);
    setSingleStep(leastPriceStep);
}

QValidator::State PriceBox::validate(QString &text, int &cursor) const
{
    text.replace(QLatin1Char(','), QLatin1Char('.'));
    return TicketBox::validate(text, cursor);
}

} // namespace Terminal
