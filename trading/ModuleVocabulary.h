// The words of our own trading module, for the module and the terminal: what they speak beyond the
// vocabulary that every trading module shares. The overlays use none of them.
//
// Every text here travels on the bus. Do not change one. docs/trading-module.md tells what they mean.
#pragma once

namespace Trading {

// NOLINTBEGIN(readability-identifier-naming): written like the words that every trading module shares
/// Channels of the bus.
namespace Channel {
inline constexpr const char *GLOBAL = "Global"; ///< questions, and notifications to everybody
inline constexpr const char *MARKET = "Market"; ///< what the market does
} // namespace Channel

/// Topics of the bus.
namespace Topic {
inline constexpr const char *QUOTE = "Quote"; ///< on channel MARKET: a bar, while it is made
/// On channel GLOBAL, retained: what the serving module says of itself, see Presence.h.
inline constexpr const char *TRADEPRESENCE = "TradePresence";
} // namespace Topic

/// Values of the key "cmd".
namespace CmdType {
inline constexpr const char *ENTRUSTPLACE = "EntrustPlace"; ///< place an order
inline constexpr const char *ACCOUNTINFO = "AccountInfo";   ///< the account's cash and what it holds
inline constexpr const char *OPENORDERS = "OpenOrders"; ///< orders of all securities that may still be dealt
inline constexpr const char *RESULTS = "Results";       ///< what sales earned, a part of a list
inline constexpr const char *COSTMETHOD = "CostMethod"; ///< reckon costs in another way
/// What the account received for the shares it held: dividends, bonus shares
inline constexpr const char *CORPORATEACTIONS = "CorporateActions";
inline constexpr const char *REPLACE = "Replace"; ///< place what is left of an order at another price
inline constexpr const char *MODULESTATUS = "ModuleStatus"; ///< how the module stands, for who watches it
} // namespace CmdType

/// Values of the key "errcode".
namespace ErrorCode {
inline constexpr int LEDGERFAILED = 2; ///< the module could not look into its ledger: ask again later
} // namespace ErrorCode

/// Keys of questions of people, in whose language reasons come back.
namespace AskerFields {
/// "zh" or "en": the module speaks it from now on; of ENTRUSTPLACE, ACCOUNTINFO and OPENORDERS; may be left
/// out.
inline constexpr const char *LANG = "lang";
} // namespace AskerFields

/// Keys of the question ENTRUSTPLACE besides those that every trading module shares.
namespace PlaceFields {
/// What the asker calls this order, so that to ask again places no second one; may be left out.
inline constexpr const char *CLIENTNO = "clientno";
} // namespace PlaceFields

/// Keys of the "data" of the answer to REPLACE, whose question has the keys of ENTRUSTCANCEL, "orderprice"
/// and PlaceFields::CLIENTNO. "ordersno" is the number of the old order. All values are texts.
namespace ReplaceFields {
inline constexpr const char *REPLACEMENT = "replacement"; ///< how far it is, see ReplacementWords
inline constexpr const char *NEWORDERNO = "newordersno";  ///< number of the new order, when it is placed
inline constexpr const char *REASON = "reason";           ///< why none was placed, when it failed
} // namespace ReplaceFields

/// How far a replacement is; ledgers keep the same words.
namespace ReplacementWords {
inline constexpr const char *WAITING = "waiting"; ///< for the cancellation of the old order
inline constexpr const char *PLACED = "placed";
inline constexpr const char *DEALT = "dealt";   ///< nothing was left to be placed
inline constexpr const char *FAILED = "failed"; ///< the old order is cancelled, and no other was taken
} // namespace ReplacementWords

/// Keys of a module's presence.
namespace PresenceFields {
inline constexpr const char *INSTANCE = "instance"; ///< another one each time that a module begins to serve
inline constexpr const char *ONLINE = "online";     ///< boolean
inline constexpr const char *FENCE = "fence";     ///< number: raised each time that the ledger is taken over
inline constexpr const char *VERSION = "version"; ///< of the program
inline constexpr const char *PROTOCOL = "protocol"; ///< of the questions and answers
inline constexpr const char *CAN = "can";           ///< array of texts, see Capability
inline constexpr const char *HOST = "host";
inline constexpr const char *PROCESS = "process"; ///< number of the process on that host
/// When that process began, as its machine counts: its number may belong to another one later
inline constexpr const char *PROCESSSTART = "processstart";
inline constexpr const char *SINCE = "since";       ///< when it began to serve, ISO 8601 in UTC
inline constexpr const char *READONLY = "readonly"; ///< boolean: it answers, but takes no orders
inline constexpr const char *LEDGER = "ledger";     ///< where its ledger is, for people; no password
} // namespace PresenceFields

/// What a module says in its presence that it can do beyond the first one of its protocol.
namespace Capability {
inline constexpr const char *CLIENTNO = "clientno";     ///< ENTRUSTPLACE knows the asker's number
inline constexpr const char *ACTIONS = "actions";       ///< it answers CORPORATEACTIONS
inline constexpr const char *OPENORDERS = "openorders"; ///< it answers OPENORDERS
inline constexpr const char *REPLACE = "replace";       ///< it answers REPLACE
inline constexpr const char *STATUS = "status";         ///< it answers MODULESTATUS
} // namespace Capability

/// Keys of the "data" of the answer to MODULESTATUS, see ModuleStatus.h. Times of answers are in seconds.
namespace StatusFields {
inline constexpr const char *MODULE = "module";               ///< object: its presence
inline constexpr const char *TROUBLE = "ledgertrouble";       ///< why the ledger cannot be used at present
inline constexpr const char *OPEN = "openorders";             ///< how many
inline constexpr const char *QUOTES = "quotes";               ///< how many were heard
inline constexpr const char *WAITINGQUOTES = "waitingquotes"; ///< of them, not dealt yet
inline constexpr const char *LASTQUOTE = "lastquote";         ///< object: the last one
inline constexpr const char *HEARD = "heard";                 ///< when it came
inline constexpr const char *ANSWERS = "answers";             ///< array: each "cmd" that was answered
inline constexpr const char *COUNT = "count";
inline constexpr const char *FAILURES = "failures"; ///< of them
inline constexpr const char *SECONDS = "seconds";   ///< that all of them took
inline constexpr const char *LONGEST = "longest";   ///< of them
} // namespace StatusFields

/// Keys of a quote besides "stkcode" and "market". Prices are texts in yuan.
namespace QuoteFields {
inline constexpr const char *DATE = "date"; ///< yyyymmdd
inline constexpr const char *TIME = "time"; ///< the end of the bar, hhmm or longer
inline constexpr const char *OPEN = "open";
inline constexpr const char *HIGH = "high";
inline constexpr const char *LOW = "low";
inline constexpr const char *CLOSE = "close";
inline constexpr const char *VOLUME = "volume";     ///< shares
inline constexpr const char *PRECLOSE = "preclose"; ///< close of the day before; may be left out
inline constexpr const char *RECORDED =
    "recorded"; ///< the day that is replayed as "date"; of a replay's quotes only
} // namespace QuoteFields

/// Keys of a row of the answer to CORPORATEACTIONS. All values are texts.
namespace ActionFields {
inline constexpr const char *DATE = "date"; ///< yyyymmdd, the day on which it was booked
inline constexpr const char *HELD =
    "held"; ///< shares at the end of the day before, for which it was received
inline constexpr const char *CASH = "cash";   ///< dividends in yuan
inline constexpr const char *BONUS = "bonus"; ///< shares for nothing; below 0 where shares were put together
} // namespace ActionFields

/// Keys of the question RESULTS and of its answer's "data". The rows have the keys of ResultColumns.h.
namespace ResultsFields {
inline constexpr const char *BY = "by";                 ///< what a row stands for, see ResultColumns.h
inline constexpr const char *FIRST = "first";           ///< number of the first row, from 0
inline constexpr const char *MOST = "most";             ///< how many rows at most
inline constexpr const char *ORDER = "order";           ///< key of the column that the list is ordered by
inline constexpr const char *DESCENDING = "descending"; ///< boolean
inline constexpr const char *ROWS = "rows";
inline constexpr const char *COUNT = "count";           ///< of all rows of the list
inline constexpr const char *SUM = "sum";               ///< of all rows, an object like a row
inline constexpr const char *STATE = "state";           ///< another text whenever the ledger has changed
inline constexpr const char *INCOMPLETE = "incomplete"; ///< codes of which earlier statements are missing
} // namespace ResultsFields

/// How many rows of a list one answer to RESULTS has at most.
inline constexpr int mostResultRows = 1000;

/// A key of the answers to HOLDERCOSTPRICE, ACCOUNTINFO and RESULTS beside their "data", and of the question
/// COSTMETHOD and its "data".
namespace CostFields {
inline constexpr const char *COSTMETHOD = "costmethod"; ///< how costs are reckoned, see CostWords
} // namespace CostFields

/// How costs are reckoned; ledgers keep the same words.
namespace CostWords {
inline constexpr const char *AVERAGE = "average"; ///< moving average
inline constexpr const char *DILUTED = "diluted"; ///< what was paid less what was received
inline constexpr const char *FIFO = "fifo";       ///< first in, first out
} // namespace CostWords

/// Keys of the account's "data" and of its positions, which have "stkcode", "stkname", "market" and
/// "costprice" besides. All values are texts.
namespace AccountFields {
inline constexpr const char *CASH = "cash";           ///< yuan
inline constexpr const char *AVAILABLE = "available"; ///< of it, what open buys and their fees leave
inline constexpr const char *POSITIONS = "positions";
inline constexpr const char *QTY = "qty";           ///< shares held
inline constexpr const char *SELLABLE = "sellable"; ///< of them, not bought today and not on offer
} // namespace AccountFields
// NOLINTEND(readability-identifier-naming)

} // namespace Trading
