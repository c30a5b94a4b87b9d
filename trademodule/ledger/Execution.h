#pragma once

#include "trademodule/SharedTypes.h"

#include <QVector>

namespace TradeModule {

/// What an entry does to the holding.
enum class Side {
    Buy,
    Sell,
    Bonus, ///< shares received for nothing: no trade, but the holding grows
};

/// What a trade of an order does to the holding.
constexpr Side sideOf(Direction direction)
{
    return direction == Direction::Buy ? Side::Buy : Side::Sell;
}

/// One execution of the account, or bonus shares it received.
struct Execution
{
    SecurityId security;
    Side side;
    TradingDate date;
    ClockTime time; ///< midnight when the statement does not tell
    Money price{};
    qint64 quantity = 0; ///< shares, more than 0
    Money amount{};      ///< price × quantity as the broker rounded it
    Money fee{};         ///< everything the broker and the state took
    QString orderNo{};   ///< empty when unknown
    QString dealNo{};    ///< empty when unknown
};

using Executions = QVector<Execution>;

} // namespace TradeModule

Q_DECLARE_TYPEINFO(TradeModule::Execution, Q_MOVABLE_TYPE); // a growing vector moves the bytes
