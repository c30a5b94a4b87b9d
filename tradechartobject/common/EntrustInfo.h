#pragma once

#include <QString>

#include <cstdint>

namespace TradeChart {

/// One order of the account.
struct EntrustInfo
{
    bool isBuy;             ///< a sell otherwise
    QString orderStatus;    ///< a code of TradeChart::OrderStatus, as received
    QString fundId;         ///< fund account
    std::int64_t orderNo;   ///< with orderDate it names the order
    std::int64_t orderDate; ///< yyyymmdd
    std::int64_t orderTime; ///< hhmmss
    double orderPrice;      ///< in the currency of the security
    std::int64_t orderQty;  ///< in shares, as the other quantities
    std::int64_t matchQty;  ///< dealt
    double matchPrice;      ///< average price of what was dealt; not finite while nothing was
    std::int64_t cancelQty; ///< cancelled
};

} // namespace TradeChart

Q_DECLARE_TYPEINFO(TradeChart::EntrustInfo, Q_MOVABLE_TYPE);
