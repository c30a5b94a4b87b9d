#pragma once

#include "terminal/data/BarRows.h"
#include "trading/SecurityKind.h"

namespace Terminal {

/// What no row shows by itself: whether columns are what their names say and decimal points where they
/// belong. Requires rows in the order of time. Each rule holds for every security whose bars we have; a file
/// that breaks one would be drawn wrong without a word.
///
/// - Prices are above zero, but for adjusted ones; since 2000 nobody trades at weekends. A file of one
///   day may be of any: it may be a rehearsal's.
/// - A high or low, and the prices of a bar, are not several times those beside them.
/// - Most opens are nearer to the close before than closes are to the open before: else both are exchanged.
/// - Most previous closes are the close of the bar before.
/// - Days follow one another: bars of weeks or months are none.
/// - Volumes of minutes do not only grow over a day: sums since its begin are none of a minute.
///
/// The rates of money lent (逆回购) are no prices: they may be any from one minute to the next.
LineProblem problemAmong(const BarRows &rows, Trading::SecurityKind kind = Trading::SecurityKind::MainShare);

/// Days from one bar to the next: the middle one of these distances. Requires two bars.
int usualDistance(const Bars &bars);

} // namespace Terminal
