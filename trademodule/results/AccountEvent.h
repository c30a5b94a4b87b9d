#pragma once

#include "trademodule/SharedTypes.h"

namespace TradeModule {

/// What happened to an account's shares of one security, or to its money because of them.
enum class EventKind {
    Buy,      ///< shares that were paid for: bought, subscribed or allotted
    Sell,     ///< shares that money was received for
    Bonus,    ///< shares received for nothing; a split, too
    Merger,   ///< shares that vanish for nothing: the rest costs as much as all did
    In,       ///< shares that came otherwise, at the cost that they are said to have
    Out,      ///< shares that left otherwise: their cost goes with them, nothing is earned
    Dividend, ///< money received for what is held
    Tax,      ///< money taken on dividends
    Interest, ///< money received on cash
};

constexpr bool bringsShares(EventKind kind)
{
    return kind == EventKind::Buy || kind == EventKind::Bonus || kind == EventKind::In;
}

constexpr bool takesShares(EventKind kind)
{
    return kind == EventKind::Sell || kind == EventKind::Merger || kind == EventKind::Out;
}

/// One event of a security. Which fields mean something depends on the kind.
struct AccountEvent
{
    EventKind kind;
    TradingDate date;
    ClockTime time{};    ///< midnight when it is unknown
    qint64 quantity = 0; ///< shares; 0 where only money moved
    Money price{};       ///< of a share, in trades
    Money amount{};      ///< without the fee; negative for money the other way, such as a tax given back
    Money fee{};         ///< everything that broker and state took of a trade, stamp duty included
    Money stampDuty{};   ///< of the fee; nothing where nobody tells it apart
};

} // namespace TradeModule
