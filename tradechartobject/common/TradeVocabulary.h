// The words that the overlays and the trading module share: topics, JSON keys, commands, sides,
// order statuses and markets.
//
// Every text here travels on the bus. Do not change one, not even the odd ones: trading modules in
// the field speak them. docs/vocabulary.md lists them with their meanings.
#pragma once

#include "tradechartobject/TradeChartExport.h"

#include <QString>

#include <cstdint>

namespace TradeChart {

/// Topics of the bus.
namespace Topic {
TRADECHARTOBJECT_EXPORT extern const char *const TRADENOTIFY; ///< notifications, unasked
TRADECHARTOBJECT_EXPORT extern const char *const TRADEQUERY;  ///< queries and their answers
TRADECHARTOBJECT_EXPORT extern const char
    *const ENTRUSTQUERY; ///< kept for order queries; nobody listens to it
} // namespace Topic

/// Values of the key "cmd".
namespace CmdType {
TRADECHARTOBJECT_EXPORT extern const char *const HISTORYTRADE;        ///< executed trades of past days
TRADECHARTOBJECT_EXPORT extern const char *const TODAYTRADE;          ///< executed trades of today
TRADECHARTOBJECT_EXPORT extern const char *const HOLDERCOSTPRICE;     ///< cost price of the holding
TRADECHARTOBJECT_EXPORT extern const char *const ENTRUSTTODAYTRADE;   ///< orders of today
TRADECHARTOBJECT_EXPORT extern const char *const ENTRUSTHISTORYTRADE; ///< orders of a past day
TRADECHARTOBJECT_EXPORT extern const char *const ENTRUSTCANCEL;       ///< cancel an order
} // namespace CmdType

/// Keys of the JSON objects. The names starting with RTS are fields of trade and order rows.
namespace TradeKeyFields {
TRADECHARTOBJECT_EXPORT extern const char *const ALGORITHMTYPE;
TRADECHARTOBJECT_EXPORT extern const char *const AUTOREFRESHTIME;
TRADECHARTOBJECT_EXPORT extern const char *const PARAM;
TRADECHARTOBJECT_EXPORT extern const char *const CMD;
TRADECHARTOBJECT_EXPORT extern const char *const SCREENID;
TRADECHARTOBJECT_EXPORT extern const char *const STKCODE;
TRADECHARTOBJECT_EXPORT extern const char *const DATA;
TRADECHARTOBJECT_EXPORT extern const char *const MARKET;
TRADECHARTOBJECT_EXPORT extern const char *const OBJECTID;
TRADECHARTOBJECT_EXPORT extern const char *const START;
TRADECHARTOBJECT_EXPORT extern const char *const END;
TRADECHARTOBJECT_EXPORT extern const char *const BUY;
TRADECHARTOBJECT_EXPORT extern const char *const DATE;
TRADECHARTOBJECT_EXPORT extern const char *const PRICE;
TRADECHARTOBJECT_EXPORT extern const char *const VOL;
TRADECHARTOBJECT_EXPORT extern const char *const COSTPRICE;
TRADECHARTOBJECT_EXPORT extern const char *const STKNAME;
TRADECHARTOBJECT_EXPORT extern const char *const RTSBSFLAG;
TRADECHARTOBJECT_EXPORT extern const char *const RTSMATCHTIME;
TRADECHARTOBJECT_EXPORT extern const char *const RTSMATCHPRICE;
TRADECHARTOBJECT_EXPORT extern const char *const RTSMATCHQTY;
TRADECHARTOBJECT_EXPORT extern const char *const RTSMATCHAMT;
TRADECHARTOBJECT_EXPORT extern const char *const RTSDATE;
TRADECHARTOBJECT_EXPORT extern const char *const RTSORDERNO;
TRADECHARTOBJECT_EXPORT extern const char *const RTSORDERDATE;
TRADECHARTOBJECT_EXPORT extern const char *const RTSORDERSTATUS;
TRADECHARTOBJECT_EXPORT extern const char *const RTSCANCELQTY;
TRADECHARTOBJECT_EXPORT extern const char *const RTSCANCELFLAG;
TRADECHARTOBJECT_EXPORT extern const char *const RTSENTRUSTPRICE;
TRADECHARTOBJECT_EXPORT extern const char *const RTSENTRUSTQTY;
TRADECHARTOBJECT_EXPORT extern const char *const RTSFUNDID;
TRADECHARTOBJECT_EXPORT extern const char *const RTSENTRUSTTIME;
TRADECHARTOBJECT_EXPORT extern const char *const RTSENTRUSTDATE;
TRADECHARTOBJECT_EXPORT extern const char *const ERRCODE;
TRADECHARTOBJECT_EXPORT extern const char *const SUCCESS;
TRADECHARTOBJECT_EXPORT extern const char *const MSG;
TRADECHARTOBJECT_EXPORT extern const char *const MSGOK; ///< ends in a blank; trading modules send it so
} // namespace TradeKeyFields

/// Sides of a trade.
namespace BSFlag {
TRADECHARTOBJECT_EXPORT extern const char *const BUY;
TRADECHARTOBJECT_EXPORT extern const char *const SELL;
} // namespace BSFlag

/// Status codes of an order.
namespace OrderStatus {
TRADECHARTOBJECT_EXPORT extern const char *const None;
TRADECHARTOBJECT_EXPORT extern const char *const Quoting;
TRADECHARTOBJECT_EXPORT extern const char *const Quoted;
TRADECHARTOBJECT_EXPORT extern const char *const QuotedWaittingCancel;
TRADECHARTOBJECT_EXPORT extern const char *const PartDealWaittingCancel;
TRADECHARTOBJECT_EXPORT extern const char *const PartCanceled;
TRADECHARTOBJECT_EXPORT extern const char *const Canceled;
TRADECHARTOBJECT_EXPORT extern const char *const PartDeal;
TRADECHARTOBJECT_EXPORT extern const char *const Dealed;
TRADECHARTOBJECT_EXPORT extern const char *const AbolishedOrder;
TRADECHARTOBJECT_EXPORT extern const char *const WaittingQuote;
TRADECHARTOBJECT_EXPORT extern const char
    *const QuotingB; ///< the letter is also BSFlag::BUY; both are in use
TRADECHARTOBJECT_EXPORT extern const char *const Conformed;

/// Chinese display text (UTF-8, static) of a status code, in either letter case; null for an unknown one.
TRADECHARTOBJECT_EXPORT const char *getOrderStatusTxt(QString code);
} // namespace OrderStatus

/// The trading module's market code for the host's market number, e.g. 0 "SZ", 1 "SH"; empty for
/// a number that has none. Answers number markets in another way: see docs/vocabulary.md.
TRADECHARTOBJECT_EXPORT QString getMarketId(short market);

/// Today's local date as yyyymmdd.
TRADECHARTOBJECT_EXPORT std::int64_t currentDate();

/// `value` rounded to `digits` decimals, as printing it with that many decimals rounds. NaN and
/// infinities are returned as they are.
template <typename T>
T round(T value, unsigned int digits);
extern template TRADECHARTOBJECT_EXPORT double round<double>(double value, unsigned int digits);

/// The side of a two-character direction code of an order: BSFlag::BUY, BSFlag::SELL, or empty for
/// anything else. Letter case matters; the single letters "B" and "S" are no such codes.
TRADECHARTOBJECT_EXPORT QString toBsFlag(QString bsflag2);

} // namespace TradeChart

using TradeChart::toBsFlag; // programs around the plug-in say it without the namespace
