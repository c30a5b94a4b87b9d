#pragma once

#include <QString>

namespace Terminal {

/// The text of an overlay with the figures replaced that tell how much the account holds or trades:
/// its cost, quantities and sums of money. Prices of single trades and orders stay: the market knows
/// them anyway. What is replaced does not show how many digits it had.
QString withoutAmounts(const QString &text);

} // namespace Terminal
