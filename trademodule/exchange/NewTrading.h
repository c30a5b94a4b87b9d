#pragma once

#include "trademodule/exchange/QuoteMessage.h"

#include <QHash>

#include <optional>

namespace TradeModule {

/// What a quote tells of trading that no quote before it told: only that is dealt. A quote may tell the
/// minute that is under way again and again, each time with more shares; it may come twice, or late.
///
/// Quotes of the market do not go back. Those of a replay do, when a day is played again from its beginning.
class NewTrading
{
public:
    /// The part of a quote that is new: of a minute that was not told before, all of it; else the shares that
    /// were added and the prices that they can have had. Nothing when there is none, and of a late quote.
    std::optional<Quote> of(const Quote &quote) const;

    /// The exchange's time with this quote: of the market it never goes back, whichever security the quote is
    /// of.
    ClockTime timeWith(const Quote &quote) const;

    /// The last quote of the security that was dealt.
    std::optional<Quote> last(const SecurityId &security) const;

    /// The quote has been dealt; those that follow are held against it.
    void note(const Quote &quote);

private:
    QHash<SecurityId, Quote> m_last; ///< of each security
    std::optional<Quote> m_latest;   ///< of whichever security
};

} // namespace TradeModule
