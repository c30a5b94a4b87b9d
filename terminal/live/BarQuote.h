#pragma once

#include "terminal/data/Bar.h"
#include "terminal/data/SecurityList.h"
#include "trading/Quote.h"

#include <QJsonObject>

#include <optional>

namespace Terminal {

/// A bar as it is published; docs/messages.md. `recorded`: the day that it was recorded on, when a replay
/// plays it.
QJsonObject quoteOf(const Security &security, const Bar &bar, std::optional<double> previousClose,
                    std::optional<Trading::TradingDate> recorded = {});

/// The bar that a quote tells, at the end of its minute; nothing when its time is of no bar, see
/// minuteOfQuote().
std::optional<Bar> barOf(const Trading::Quote &quote);

} // namespace Terminal
