#pragma once

#include "trading/SecurityKind.h"

#include <QString>

#include <optional>

namespace Terminal {

/// What a file counts its volume in.
enum class VolumeUnit {
    Shares,
    ThousandShares,
    TenThousandShares,
    HundredMillionShares,
    Lots,
    TenThousandLots
};

/// How many shares, units of a fund or bonds one of the unit is: a lot of bonds has ten.
double sharesIn(VolumeUnit unit, Trading::SecurityKind kind);

/// True for a unit that another kind of security may have more or less of.
bool isInLots(VolumeUnit unit);

/// The unit of a header or of the command line: "shares", "lots", 股, 手, 万股, 万手. Nothing for another
/// word.
std::optional<VolumeUnit> volumeUnitOf(const QString &word);

/// The word that volumeUnitOf() reads, in English.
QString wordOf(VolumeUnit unit);

/// The unit as a sentence for the user names it, in the chosen language.
QString titleOf(VolumeUnit unit);

} // namespace Terminal
