#pragma once

#include "trademodule/SharedTypes.h"

namespace TradeModule {

/// What an account did and earned: by one event, or in a time, added up.
struct Figures
{
    qint64 sales = 0;  ///< how many
    Money bought{};    ///< what shares that came in cost, without fees
    Money sold{};      ///< what sales brought, without fees
    Money fees{};      ///< of buys and sales, stamp duty included
    Money stampDuty{}; ///< of the fees, as far as statements tell it apart
    Money cost{};      ///< what the sold shares had cost, the fees of their buys included
    Money profit{};    ///< of the sales, after their fees; without dividends
    Money dividends{}; ///< received
    Money taxes{};     ///< on dividends
    Money interest{};

    /// Everything earned: profit, dividends and interest less taxes.
    Money total() const;

    /// An Error where a sum gets too large.
    Figures &operator+=(const Figures &other);
};

/// `profit` in hundredths of a percent of `cost`, a half away from zero; 0 unless the cost is more than
/// nothing.
qint64 basisPoints(Money profit, Money cost);

} // namespace TradeModule
