#pragma once

#include "trademodule/exchange/OrderCover.h"
#include "trademodule/ledger/OrderBook.h"

#include <functional>
#include <optional>

namespace TradeModule {

/// Orders that go on at another price. The old order is cancelled first; what is left of it is placed in the
/// same change of the ledger that ends it. So there are never both, and what became of the wish stands beside
/// them for who asks.
class OrderReplacements
{
public:
    /// What the exchange is like now.
    struct Market
    {
        TradingDate today;
        ClockTime now;
        /// True while orders of a security reach it.
        std::function<bool(const SecurityId &)> isOpen;
        /// True for an order whose price is beyond the limits of the day.
        std::function<bool(const Order &)> isBeyondLimits;
    };

    /// Both stay the caller's and outlive this object.
    OrderReplacements(OrderBook *book, OrderCover *cover) : m_book(book), m_cover(cover) {}

    /// The replacement of the same client's number, as it is now; an Error when that was for another order or
    /// price, and when another one of the order runs.
    std::optional<Replacement> askedBefore(const Replacement &asked);

    /// Writes a new wish down, before its order is cancelled; an Error says why no order could be placed in
    /// place of the rest.
    void begin(const Replacement &asked, const Order &old, const Market &market);

    /// Places what is left of those of `changed` that ended and wait for it. The new orders come back.
    Orders complete(const Orders &changed, const Market &market);

private:
    void refuse(const Order &fresh, const Orders &open, const Market &market);
    std::optional<Order> placeRest(const Order &ended, Replacement *replacement, const Market &market);

    OrderBook *const m_book;
    OrderCover *const m_cover;
};

} // namespace TradeModule
