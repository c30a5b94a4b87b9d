#pragma once

#include "trading/DayLimits.h"
#include "trading/TradingUnits.h"

#include <optional>

namespace Trading {

/// How far from the close before prices may go on a day, in thousandths of it. In most cases both are the
/// same.
struct LimitShare
{
    int down = 0;
    int up = 0;

    friend constexpr bool operator==(LimitShare a, LimitShare b) { return a.down == b.down && a.up == b.up; }
};

/// What an order of a security must keep to on a day. Made by MarketRules.
struct SecurityRules
{
    Money tick = priceStep;             ///< from one price to the next: prices are multiples of it
    qint64 leastQuantity = sharesOfLot; ///< the smallest order; what is held below it is sold at once
    qint64 quantityStep = sharesOfLot;  ///< an order is the smallest one and so many of these
    qint64 mostQuantity = mostShares;   ///< the largest order with a limit
    std::optional<LimitShare> limit;    ///< nothing where no limit is known
    bool areReported = false;           ///< one of the rows that these come from was reported, not checked

    /// What orders are counted in: the step, or the usual lot where shares are traded singly.
    qint64 lot() const { return quantityStep == 1 ? sharesOfLot : quantityStep; }

    /// How many decimals its prices have.
    int decimals() const;
    bool isOnTick(Money price) const { return price.steps() % tick.steps() == 0; }
    /// The price of an order nearest to this one, half a tick up.
    Money nearestTick(Money price) const;

    /// How far prices may go on the day, to the nearest tick, half a tick up; nothing without a limit.
    std::optional<DayLimits> limits(Money closeBefore) const;

    /// True for the quantity of a buy, as far as the market's steps go.
    bool isWholeQuantity(qint64 shares) const;
    /// True for the quantity of a sale out of so many shares: one of whole steps, or one that takes along, at
    /// once, what is odd of the holding.
    bool isSaleQuantity(qint64 shares, qint64 held) const;
    /// The largest such quantity that so many shares make; zero when they make none.
    qint64 wholeQuantity(qint64 shares) const;
};

} // namespace Trading
