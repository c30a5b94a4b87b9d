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

// NOLINTBEGIN(readability-identifier-naming): these names are exported
/// Topics of the bus.
namespace Topic {
TRADECHARTOBJECT_EXPORT extern const char *const TRADENOTIFY; ///< notifications, unasked
TRADECHARTOBJECT_EXPORT extern const char *const TRADEQUERY;  ///< queries and their answers
TRADECHARTOBJECT_EXPORT extern const char
    *const ENTRUSTQUERY; ///< kept for order queries; nobody listens to it
} // namespace Topic

/// Values of the key "cmd".
namespace CmdType {
TRADECHARTOBJECT_EXPORT extern const char *const HISTORYTRADE;        ///< trades of past days
TRADECHARTOBJECT_EXPORT extern const char *const TODAYTRADE;          ///< trades of today
TRADECHARTOBJECT_EXPORT extern const char *const HOLDERCOSTPRICE;     ///< cost price of the holding
TRADECHARTOBJECT_EXPORT extern const char *const ENTRUSTTODAYTRADE;   ///< orders of today
TRADECHARTOBJECT_EXPORT extern const char *const ENTRUSTHISTORYTRADE; ///< orders of a past day
TRADECHARTOBJECT_EXPORT extern const char *const ENTRUSTCANCEL;       ///< cancel an order
} // namespace CmdType

/// Keys of the JSON objects. The names starting with RTS are fields of trade and order rows, whose values are
/// texts: prices and amounts decimal, in the currency of the security, quantities in shares, dates and times
/// in digits.
namespace TradeKeyFields {
/// In a configuration: which overlay, a number.
TRADECHARTOBJECT_EXPORT extern const char *const ALGORITHMTYPE;
/// In a configuration: seconds between two questions, a number.
TRADECHARTOBJECT_EXPORT extern const char *const AUTOREFRESHTIME;
/// Kept for nested parameters; not sent today.
TRADECHARTOBJECT_EXPORT extern const char *const PARAM;
/// What is asked, a word of CmdType; the answer returns it.
TRADECHARTOBJECT_EXPORT extern const char *const CMD;
/// Screen of the asking chart: the channel that the answer comes on.
TRADECHARTOBJECT_EXPORT extern const char *const SCREENID;
/// Security code, e.g. "600000".
TRADECHARTOBJECT_EXPORT extern const char *const STKCODE;
/// What an answer brings: an object, or an array of rows.
TRADECHARTOBJECT_EXPORT extern const char *const DATA;
/// A code of getMarketId() in questions; "1" Shanghai, "2" Shenzhen in answers.
TRADECHARTOBJECT_EXPORT extern const char *const MARKET;
/// The asking overlay; the answer to a cancellation returns it.
TRADECHARTOBJECT_EXPORT extern const char *const OBJECTID;
/// First day of a range, a text yyyymmdd.
TRADECHARTOBJECT_EXPORT extern const char *const START;
/// Last day of a range, included, a text yyyymmdd.
TRADECHARTOBJECT_EXPORT extern const char *const END;
/// True for a buy.
TRADECHARTOBJECT_EXPORT extern const char *const BUY;
/// A day, yyyymmdd: a number in a question, a text in a row.
TRADECHARTOBJECT_EXPORT extern const char *const DATE;
/// Price of a trade, in the currency of the security, a number.
TRADECHARTOBJECT_EXPORT extern const char *const PRICE;
/// Quantity of a trade, in shares, a number.
TRADECHARTOBJECT_EXPORT extern const char *const VOL;
/// Cost price of a holding, a decimal text; "nan" without a holding.
TRADECHARTOBJECT_EXPORT extern const char *const COSTPRICE;
/// Name of the security.
TRADECHARTOBJECT_EXPORT extern const char *const STKNAME;
/// Side: a word of BSFlag in a trade, a direction code of toBsFlag() in an order.
TRADECHARTOBJECT_EXPORT extern const char *const RTSBSFLAG;
/// Time of a trade, hhmmsscc.
TRADECHARTOBJECT_EXPORT extern const char *const RTSMATCHTIME;
/// Price of a trade.
TRADECHARTOBJECT_EXPORT extern const char *const RTSMATCHPRICE;
/// Dealt quantity: of this trade in the row of one, of all its trades together in the row of an order.
TRADECHARTOBJECT_EXPORT extern const char *const RTSMATCHQTY;
/// Dealt amount, the sum of price times quantity, of one or of all like the quantity.
TRADECHARTOBJECT_EXPORT extern const char *const RTSMATCHAMT;
/// Trading day of a trade, yyyymmdd.
TRADECHARTOBJECT_EXPORT extern const char *const RTSDATE;
/// Number of the order.
TRADECHARTOBJECT_EXPORT extern const char *const RTSORDERNO;
/// Day of the order, yyyymmdd; with the number it names the order to cancel.
TRADECHARTOBJECT_EXPORT extern const char *const RTSORDERDATE;
/// A code of OrderStatus.
TRADECHARTOBJECT_EXPORT extern const char *const RTSORDERSTATUS;
/// Cancelled quantity.
TRADECHARTOBJECT_EXPORT extern const char *const RTSCANCELQTY;
/// Kept to tell the row of a cancellation; "0" in the rows of our trading module, and no overlay reads it.
TRADECHARTOBJECT_EXPORT extern const char *const RTSCANCELFLAG;
/// Price that was asked for.
TRADECHARTOBJECT_EXPORT extern const char *const RTSENTRUSTPRICE;
/// Quantity that was asked for.
TRADECHARTOBJECT_EXPORT extern const char *const RTSENTRUSTQTY;
/// Fund account.
TRADECHARTOBJECT_EXPORT extern const char *const RTSFUNDID;
/// Time at which the order was placed, hhmmsscc.
TRADECHARTOBJECT_EXPORT extern const char *const RTSENTRUSTTIME;
/// Day on which the order was placed, yyyymmdd.
TRADECHARTOBJECT_EXPORT extern const char *const RTSENTRUSTDATE;
/// 0, or the number of a failure.
TRADECHARTOBJECT_EXPORT extern const char *const ERRCODE;
/// False for a failure.
TRADECHARTOBJECT_EXPORT extern const char *const SUCCESS;
/// Text of a failure for the user.
TRADECHARTOBJECT_EXPORT extern const char *const MSG;
/// Text of a success; the key ends in a blank, trading modules send it so.
TRADECHARTOBJECT_EXPORT extern const char *const MSGOK;
} // namespace TradeKeyFields

/// Sides of a trade.
namespace BSFlag {
TRADECHARTOBJECT_EXPORT extern const char *const BUY;  ///< the letter "B"
TRADECHARTOBJECT_EXPORT extern const char *const SELL; ///< the letter "S"
} // namespace BSFlag

/// Status codes of an order.
namespace OrderStatus {
/// Not sent to the exchange.
TRADECHARTOBJECT_EXPORT extern const char *const None;
/// On its way to the exchange.
TRADECHARTOBJECT_EXPORT extern const char *const Quoting;
/// At the exchange.
TRADECHARTOBJECT_EXPORT extern const char *const Quoted;
/// At the exchange, to be cancelled.
TRADECHARTOBJECT_EXPORT extern const char *const QuotedWaittingCancel;
/// Dealt in part, the rest to be cancelled.
TRADECHARTOBJECT_EXPORT extern const char *const PartDealWaittingCancel;
/// Dealt in part, the rest cancelled.
TRADECHARTOBJECT_EXPORT extern const char *const PartCanceled;
/// Cancelled before anything was dealt.
TRADECHARTOBJECT_EXPORT extern const char *const Canceled;
/// Dealt in part, the rest at the exchange.
TRADECHARTOBJECT_EXPORT extern const char *const PartDeal;
/// Dealt in full.
TRADECHARTOBJECT_EXPORT extern const char *const Dealed;
/// Refused.
TRADECHARTOBJECT_EXPORT extern const char *const AbolishedOrder;
/// Waits to be sent.
TRADECHARTOBJECT_EXPORT extern const char *const WaittingQuote;
/// On its way to the exchange, too. The letter is also BSFlag::BUY; both are in use.
TRADECHARTOBJECT_EXPORT extern const char *const QuotingB;
/// Confirmed.
TRADECHARTOBJECT_EXPORT extern const char *const Conformed;
// NOLINTEND(readability-identifier-naming)

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

using TradeChart::toBsFlag; // programs around the plug-in say it without the namespace; exported under both
                            // names
