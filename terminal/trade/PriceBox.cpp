#include "terminal/trade/PriceBox.h"

#include "trading/TradingUnits.h"

namespace Terminal {

PriceBox::PriceBox()
{
    setRange(0, Trading::highestPrice.yuan());
    setRules({});
}

void PriceBox::setRules(const Trading::SecurityRules &rules)
{
    setDecimals(rules.decimals());
    setSingleStep(rules.tick.yuan());
}

QValidator::State PriceBox::validate(QString &text, int &cursor) const
{
    text.replace(QLatin1Char(','), QLatin1Char('.'));
    return TicketBox::validate(text, cursor);
}

} // namespace Terminal
