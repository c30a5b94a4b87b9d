#include "terminal/trade/QuantityBox.h"

#include "terminal/trade/OrderDraft.h"

#include <algorithm>

namespace Terminal {

QuantityBox::QuantityBox()
{
    setRange(0, static_cast<int>(Trading::mostShares));
    setSingleStep(static_cast<int>(sharesOfLot));
    setShares(sharesOfLot);
}

void QuantityBox::setShares(qint64 shares)
{
    setValue(static_cast<int>(std::min(shares, Trading::mostShares)));
}

} // namespace Terminal
