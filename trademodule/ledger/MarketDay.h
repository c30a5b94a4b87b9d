#pragma once

#include "trademodule/ledger/Ledger.h"

#include <QSet>

#include <optional>

namespace TradeModule {

/// What the quotes of today told: the time, which is the exchange's clock, and each security's reference,
/// the price that its limits of the day go by. Kept in the ledger, so that a restart in the middle of a
/// day, and other processes, know it, too. What it knows of other days counts for nothing. Where a day is
/// practised, today is that day, and its time is as late as the account's last order and trade, too.
class MarketDay
{
public:
    /// Reads what is known of today. The ledger stays the caller's and outlives this object.
    explicit MarketDay(Ledger *ledger);

    /// Takes what a quote of today told; in the ledger it is with the next keep(). The reference is
    /// `previousClose`; when that is zero, the open of the security's first quote. Time that goes back
    /// begins the day anew: another recorded day may be played now. Of more securities than any exchange has
    /// nothing more is noted: somebody invents them.
    void note(const SecurityId &security, ClockTime time, Money open, Money previousClose);

    /// Writes what is new into the ledger, in a transaction of its own; nothing when nothing is.
    void keep();
    /// True when a reference is new: until keep(), a crash would lose it.
    bool hasNewReference() const { return m_hasNewReference; }

    /// The time of the last quote; nothing before today's first.
    std::optional<ClockTime> clock() const;
    /// Nothing before today's first quote of the security.
    std::optional<Money> reference(const SecurityId &security) const;

private:
    struct Told
    {
        ClockTime time; ///< of the last quote
        Money reference;
    };

    void read();
    void catchUpWithPractice();

    Ledger *const m_ledger;
    std::optional<TradingDate> m_date; ///< of the last quote
    ClockTime m_time;                  ///< of the last quote
    QHash<SecurityId, Told> m_told;
    QSet<SecurityId> m_changed; ///< whose row in the ledger is older
    bool m_hasNewReference = false;
    bool m_isClockNew = false;
};

} // namespace TradeModule
