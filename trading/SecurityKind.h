#pragma once

#include "trading/SecurityId.h"

namespace Trading {

/// What the market's rules tell apart. Shares under special treatment are known by their names alone, and so
/// are the funds of the young boards; everything else by its code.
enum class SecurityKind {
    MainShare,        ///< of a main board, and whatever has a code of no known range
    SpecialTreatment, ///< 风险警示: a main board's share whose name begins with ST, *ST, SST or S*ST
    StarShare,        ///< 科创板
    ChiNextShare,     ///< 创业板
    BeijingShare,
    ForeignShare, ///< B shares, in dollars
    Fund,
    YoungBoardFund, ///< of the shares of 科创板 or 创业板
    Bond,
    ConvertibleBond,
    Repo,
    Other, ///< rights, applications for new shares, and the like
};

/// The kind of a security; of one whose name is not known, as if it had a usual one.
SecurityKind kindOf(const SecurityId &security, const QString &name = {});

/// How long a security has been listed, as far as its name tells: the exchanges put N before it on the first
/// day, and C on the four days after that.
enum class ListingStage {
    FirstDay,
    FirstDays, ///< the second to the fifth
    Later,     ///< and whatever has no name
};

ListingStage listingStageOf(const QString &name);

/// How many shares, units of a fund or bonds of 100 yuan are one 手, in which charts and files count volumes.
qint64 lotOf(SecurityKind kind);

} // namespace Trading
