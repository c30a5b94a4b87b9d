// The rules of the exchanges in Shanghai, Shenzhen and Beijing, as one table of dated rows: price limits,
// ticks and quantities, hours. docs/market-rules.md shows its rows.
#pragma once

#include "trading/ClockTime.h"
#include "trading/DayState.h"
#include "trading/SecurityKind.h"
#include "trading/SecurityRules.h"
#include "trading/TradingCalendar.h"
#include "trading/TradingDate.h"

#include <QString>

#include <vector>

namespace Trading {

namespace MarketRules {

/// What an order of the security must keep to on the day. The name tells shares under special treatment;
/// without one the security counts as any other of its code. It tells the first days of new shares, too,
/// which have wider limits or none: see ListingStage.
SecurityRules of(const SecurityId &security, TradingDate day, const QString &name = {});

/// How many decimals tell a price of the security of whatever day: those of its finest tick.
int decimals(const SecurityId &security, const QString &name = {});

/// The part of the day at a time by the exchange's clock. Trading has both its ends: 11:30:00 is morning,
/// 13:00:00 afternoon.
DayState stateAt(const SecurityId &security, TradingDate day, ClockTime time, const TradingCalendar &calendar,
                 const QString &name = {});
/// The same of a day that is known to be one of trading, as a recorded one.
DayState stateOnTradingDay(const SecurityId &security, TradingDate day, ClockTime time,
                           const QString &name = {});
/// The same of most shares, where there is no security to ask about: those of Shanghai's main board.
DayState stateAt(TradingDate day, ClockTime time, const TradingCalendar &calendar);
DayState stateOnTradingDay(TradingDate day, ClockTime time);

/// How sure a row is.
enum class Evidence {
    Checked,  ///< held against published accounts of the rule
    Reported, ///< told, and held against nothing
};

/// A row of the table, as people read it.
struct Row
{
    QString about;  ///< "price limit", "tick and quantity", "hours"
    QString kinds;  ///< which securities
    QString market; ///< its letters; empty: each
    TradingDate from;
    TradingDate until; ///< its last day; TradingDate::last() while it is in force
    QString rule;
    QString source;
    Evidence evidence;
};

/// The whole table. Of the rows of one thing that fit a security on a day, the first one counts.
std::vector<Row> rows();

} // namespace MarketRules

} // namespace Trading
