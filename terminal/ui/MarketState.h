#pragma once

#include "terminal/live/MarketWatch.h"

#include <QString>

namespace Terminal {

/// How things stand with the market, in a few words for the user; empty where nothing was heard of it today.
QString marketStateText(const MarketWatch &market);

/// The same, for who points at it; may be empty.
QString marketStateDetails(const MarketWatch &market);

} // namespace Terminal
