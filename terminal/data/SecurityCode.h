#pragma once

#include "trading/Market.h"
#include "trading/SecurityKind.h"

#include <QString>

#include <optional>

namespace Terminal {

/// A security as files name it: "600519", "sh.600519", "600519.SS", "000001.XSHE". The market is there when
/// it is named.
struct SecurityCode
{
    QString digits; ///< six
    std::optional<Trading::Market> market;

    /// Nothing for what names no security of Shanghai or Shenzhen: another market, fewer than six digits.
    static std::optional<SecurityCode> of(const QString &text);

    /// "600519.SH", or the digits alone.
    QString text() const;

    /// What the exchanges' tables of codes say it is; without a market, on the one where such codes are
    /// usual.
    Trading::SecurityKind kind() const;

    /// False when both name different securities; a market that one of them leaves out is the other's.
    bool agreesWith(const SecurityCode &other) const
    {
        return digits == other.digits && (!market || !other.market || market == other.market);
    }
};

} // namespace Terminal
