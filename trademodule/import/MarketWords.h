#pragma once

#include "trademodule/SharedTypes.h"

#include <optional>

namespace TradeModule {

/// How statements name markets.
namespace MarketWords {

/// The market that a text names, in Chinese or in letters: "沪A", "深圳Ａ股", "SZSE", "港股通". Letters count
/// as whole words: SHENZHEN is not SH. Nothing for bare numbers, on whose meaning brokers do not agree.
std::optional<Market> marketOf(const QString &text);

/// The market of a shareholder's code.
std::optional<Market> marketOfHolder(const QString &holder);

} // namespace MarketWords

} // namespace TradeModule
