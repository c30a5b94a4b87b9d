#pragma once

#include "terminal/data/PerShare.h"
#include "trading/Money.h"
#include "trading/TradingDate.h"

#include <optional>
#include <vector>

namespace Terminal {

/// What a company did to its shares on one day: paid cash, gave shares, offered shares, split them. Who buys
/// on the ex-date or later receives nothing of it, so the price falls by as much without anybody losing.
struct CorporateAction
{
    Trading::TradingDate exDate;
    YuanPerShare dividend{};    ///< cash, before tax
    SharesPerShare bonus{};     ///< shares received for nothing: 0.3 of 10送3, 1 of a split of one into two;
                                ///< -0.5 where two become one
    SharesPerShare rights{};    ///< shares that may be bought
    YuanPerShare rightsPrice{}; ///< at this price
};

/// Oldest first, one for each ex-date.
using CorporateActions = std::vector<CorporateAction>;

/// What one share from before the ex-date is worth after it, as a part of `closeBefore`, the last price
/// before it: by this, prices before the ex-date compare with those after it.
///
/// Who holds a share has, after it, the share and bonus + rights more; he has received the dividend and paid
/// for the rights. So a share is worth (close before - dividend + rights × their price) ÷ (1 + bonus +
/// rights): the exchange's reference price. It is reckoned in whole numbers and rounded once, at the end.
///
/// Nothing where nothing would be left: a dividend as high as the price.
std::optional<double> adjustmentFactor(const CorporateAction &action, Trading::Money closeBefore);

} // namespace Terminal
