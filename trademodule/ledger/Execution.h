#pragma once

#include "trademodule/SharedTypes.h"

#include <QVector>

namespace TradeModule {

/// What an entry does to the holding.
enum class Side {
    Buy,
    Sell,
    Bonus,     ///< shares received for nothing, a split included: the holding grows, its cost stays
    Merger,    ///< shares that vanish for nothing: the holding shrinks, its cost stays
    Allotment, ///< new shares or rights that the account paid for
    In,        ///< shares that came in otherwise, at a cost: transfers, conversions, what was held before
    Out,       ///< shares that left otherwise, and their part of the cost with them
};

/// True for what was dealt on an exchange: only that is a trade.
constexpr bool isTrade(Side side)
{
    return side == Side::Buy || side == Side::Sell;
}

/// True when the entry makes the holding smaller.
constexpr bool takesShares(Side side)
{
    return side == Side::Sell || side == Side::Merger || side == Side::Out;
}

/// True when the account pays for the shares.
constexpr bool costsMoney(Side side)
{
    return side == Side::Buy || side == Side::Allotment || side == Side::In;
}

/// What a trade of an order does to the holding.
constexpr Side sideOf(Direction direction)
{
    return direction == Direction::Buy ? Side::Buy : Side::Sell;
}

/// One execution of the account, or another entry that changed what it holds.
struct Execution
{
    SecurityId security;
    Side side;
    TradingDate date;
    ClockTime time; ///< midnight when the statement does not tell
    Money price{};
    qint64 quantity = 0; ///< shares, more than 0
    Money amount{};      ///< price × quantity as the broker rounded it; what shares that came in cost
    Money fee{};         ///< everything the broker and the state took
    QString orderNo{};   ///< empty when unknown
    QString dealNo{};    ///< empty when unknown
    Money stampDuty{};   ///< of the fee; nothing where the statement does not tell it apart
};

using Executions = QVector<Execution>;

} // namespace TradeModule

Q_DECLARE_TYPEINFO(TradeModule::Execution, Q_MOVABLE_TYPE); // a growing vector moves the bytes
