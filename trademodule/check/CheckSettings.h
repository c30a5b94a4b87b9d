#pragma once

#include "trading/Money.h"
#include "trading/SecurityId.h"
#include "trading/TradingDate.h"

#include <QString>

#include <chrono>
#include <optional>

namespace TradeModule {

/// What a module is asked about, and how long it has.
struct CheckSettings
{
    Trading::SecurityId security{QStringLiteral("600000"), Trading::Market::Shanghai};
    /// The days whose trades and orders are asked for, both included.
    Trading::TradingDate from = Trading::TradingDate::today().plusDays(-365);
    Trading::TradingDate to = Trading::TradingDate::today();
    /// At this price a hundred shares are bought, and the order cancelled; without it nothing is changed.
    std::optional<Trading::Money> orderPrice;
    /// In which a question must be answered: overlays wait no longer.
    std::chrono::milliseconds patience = std::chrono::seconds(3);
    int flood = 1000;           ///< questions at once
    int longQuestion = 1000000; ///< characters
    QString mark; ///< begins the names of screens and orders of this run; no other run has the same
};

} // namespace TradeModule
