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

/// One execution of the account, or bonus shares it received.
struct Execution
{
    SecurityId security;
    Side side = Side::Buy;
    int date = 0; ///< yyyymmdd
    int time = 0; ///< hhmmsscc; 0 when the statement does not tell
    Money price;
    qint64 quantity = 0; ///< shares, more than 0
    Money amount;        ///< price × quantity as the broker rounded it
    Money fee;           ///< everything the broker and the state took
    QString orderNo;     ///< empty when unknown
    QString dealNo;      ///< empty when unknown
};

using Executions = QVector<Execution>;

} // namespace TradeModule

Q_DECLARE_TYPEINFO(TradeModule::Execution, Q_MOVABLE_TYPE); // a growing vector moves the bytes
