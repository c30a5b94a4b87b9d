#pragma once

#include "trading/Money.h"

namespace Trading {

/// The lot of most securities. MarketRules knows which have another one.
constexpr qint64 sharesOfLot = 100;

/// The lot of bonds, in bonds of 100 yuan face value.
constexpr qint64 bondsOfLot = 10;
constexpr qint64 faceValueOfBond = 100; ///< yuan

/// From one price to the next for most securities. MarketRules knows which have another one.
constexpr Money priceStep = Money::ofCents(1);

// No security comes near them; with them, no sum of the trading module overflows.
constexpr Money highestPrice = Money::ofCents(100000000); ///< a million yuan
constexpr qint64 mostShares = 1000000000;                 ///< of an order
constexpr qint64 mostHeldShares = 1000000000000;          ///< of a holding, or in a row of a statement

} // namespace Trading
