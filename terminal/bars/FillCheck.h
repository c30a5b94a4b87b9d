#pragma once

#include "terminal/data/Bar.h"

#include <QStringList>

#include <vector>

namespace Terminal {

/// A trade of the account, as far as bars can confirm it.
struct Fill
{
    Trading::TradingDate day = Trading::TradingDate::first();
    double price = 0; ///< yuan
    qint64 quantity = 0;
};

/// What speaks against bars of days being those of the security that was traded: trades outside of their
/// day's prices (adjusted bars? another security?), larger than the whole day's volume (a volume in lots?),
/// on days inside of the bars' range without a bar. A sentence for each kind, with how many and the first
/// one; empty when nothing does. Trades before the first and after the last bar say nothing.
QStringList fillWarnings(const Bars &days, const std::vector<Fill> &fills);

/// What to say where there are no warnings: how many trades lie on the bars, or that none could be compared.
QString fillSummary(const Bars &days, const std::vector<Fill> &fills);

} // namespace Terminal
