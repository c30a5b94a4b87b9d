#include "terminal/trade/PriceBox.h"

#include "trading/TradingUnits.h"

namespace Terminal {

PriceBox::PriceBox()
{
    setDecimals(2);
    setRange(0, Trading::highestPrice.yuan());
    setSingleStep(Trading::priceStep.yuan());
}

QValidator::State PriceBox::validate(QString &text, int &cursor) const
{
    text.replace(QLatin1Char(','), QLatin1Char('.'));
    return TicketBox::validate(text, cursor);
}

} // namespace Terminal
