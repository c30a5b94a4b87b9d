#include "terminal/trade/QuantityBox.h"

#include "trading/TradingUnits.h"

#include <algorithm>

namespace Terminal {

QuantityBox::QuantityBox()
{
    setRange(0, static_cast<int>(Trading::mostShares));
    setRules({});
    setShares(Trading::sharesOfLot);
}

void QuantityBox::setRules(const Trading::SecurityRules &rules)
{
    setSingleStep(static_cast<int>(rules.lot()));
}

void QuantityBox::setShares(qint64 shares)
{
    setValue(static_cast<int>(std::min(shares, Trading::mostShares)));
}

} // namespace Terminal
