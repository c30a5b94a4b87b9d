#include "terminal/trade/QuantityBox.h"

#include "terminal/trade/OrderDraft.h"

#include <algorithm>

namespace Terminal {

namespace {

constexpr int mostShares = 1000000000;

} // namespace

QuantityBox::QuantityBox()
{
    setRange(0, mostShares);
    setSingleStep(static_cast<int>(sharesOfLot));
    setShares(sharesOfLot);
}

void QuantityBox::setShares(qint64 shares)
{
    setValue(static_cast<int>(std::min<qint64>(shares, mostShares)));
}

} // namespace Terminal
