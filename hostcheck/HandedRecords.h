#pragma once

#include "hostcheck/Finding.h"
#include "tradechartobject/ChartInterface.h"

#include <cstdint>
#include <string>
#include <vector>

namespace HostCheck {

/// What calcIt was called with, kept for comparisons.
struct HandedRecords
{
    Korvane::tagCodeWithName security{};
    int period = Korvane::NoPeriod;
    std::vector<Korvane::AnalyData> bars;

    bool isSameSecurity(const HandedRecords &other) const;
    std::string code() const;
    double lowestPrice() const;   ///< of the bars; NaN without
    double highestPrice() const;  ///< of the bars; NaN without
    std::int64_t lastDay() const; ///< yyyymmdd, 0 without bars or for a period of neither kind
    std::int64_t firstDay() const;
};

/// The configuration that a terminal makes an overlay with; `types` is how many overlays it may choose from.
void checkConfiguration(const char *json, int types, const Tell &tell);

/// "type" of a configuration, -1 when there is none.
int typeOf(const char *json);

void checkSecurity(const Korvane::tagCodeWithName &security, bool hasBars, const Tell &tell);

/// Each bar for itself and beside the one before it.
void checkBars(const std::vector<Korvane::AnalyData> &bars, int period, const Tell &tell);

/// A security and its bars after those of an earlier calcIt of the same overlay.
void checkChange(const HandedRecords &before, const HandedRecords &after, const Tell &tell);

} // namespace HostCheck
