#pragma once

#include "trading/Market.h"

#include <optional>

namespace Trading {

/// What a code of an exchange is of.
enum class SecurityClass {
    Share,
    Fund,
    Bond,        ///< in units of 100 yuan face value; some statements count in lots of ten
    Repo,        ///< no security: money lent against bonds
    Rights,      ///< the code under which new shares are paid for; they come under another
    Application, ///< the same of an application for new shares
    Other,
};

/// What has rules of its own within a class.
enum class Segment {
    Usual,
    Star,            ///< shares of 科创板
    ChiNext,         ///< shares of 创业板
    ForeignCurrency, ///< B shares
    YoungFunds,      ///< funds of 科创板's shares
    Convertible,     ///< bonds
};

/// Where a range is known from, and so how sure it is.
enum class RangeSource {
    ShanghaiRules, ///< the row of these three digits in 上海证券交易所证券代码分配规则 of August 2009
    ShanghaiFirstDigit, ///< the same rules, which give the first digit a meaning; the three digits are
                        ///< younger
    ShenzhenOverview,   ///< the plan of Shenzhen's codes and the third board's, as overviews for traders tell
                        ///< it
    BeijingNotice, ///< the notice of October 2025 by which Beijing's shares went from 43, 83 and 87 to 920
    Usage,         ///< seen in statements only: nothing that was published has been found for it
};

/// What the first digits of a code tell.
struct CodeRange
{
    const char *start;
    Market market;
    SecurityClass kind;
    const char *listed; ///< of rights and applications: what the shares' own code starts with; null where it
                        ///< is another
    RangeSource source;
    Segment segment = Segment::Usual;
};

/// The exchanges' tables of codes.
namespace CodeRanges {

/// The range of a code on a market; nothing for a code that cannot be there.
std::optional<CodeRange> on(Market market, const QString &code);
/// The range of a code of which nothing else is known: the market where such a code is usual.
std::optional<CodeRange> of(const QString &code);

} // namespace CodeRanges

} // namespace Trading
