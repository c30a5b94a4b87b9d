// Today's bar on charts of days, weeks and months: what quotes tell of today, and what the data folder
// has of today and of the days before it.
#pragma once

#include "terminal/data/DataFolder.h"
#include "terminal/live/MinuteBook.h"

#include <optional>

namespace Terminal {

/// Takes today's row out of `days`, if it is their last, and the days before it that a bar of the period
/// would join with today. Leaves `days` as they were before today.
SpanOfToday takeSpanOfToday(Bars *days, ChartPeriod period, Trading::TradingDate today);

/// Today as one bar: its minutes and its row put together, so that nothing counts twice. Requires minutes.
/// The open is the row's; the close is of whoever tells of the later time.
Bar dayBar(const MinuteBook &minutes, const SpanOfToday &span, double factor = 1);

/// The bar of the span that today is in, as a chart shows it whose prices of today are `factor` times the raw
/// ones, those of `span` too. Nothing when there is nothing of today.
std::optional<Bar> spanBar(const MinuteBook *minutes, const SpanOfToday &span, double factor = 1);

} // namespace Terminal
