#pragma once

#include "terminal/data/DataFolder.h"
#include "tradechartobject/ChartInterface.h"

#include <cstdint>
#include <vector>

namespace Terminal {

/// A bar as overlays read it.
Korvane::AnalyData hostBar(const Bar &bar);

/// The same of all bars.
std::vector<Korvane::AnalyData> hostBars(const Bars &bars);

/// The security as overlays read it. `identity` must differ exactly from one security to the next. A
/// name that is too long for the record ends at a whole character.
Korvane::tagCodeWithName hostSecurity(const Security &security, std::int64_t identity);

/// A number that is the same for the same security and differs for others.
std::int64_t securityIdentity(const Security &security);

/// True for the minute chart of today.
bool isTodaysChart(const ChartData &data);

/// The time word of a bar: the date as yyyymmdd, or for a minute the packed year, month, day and minute.
std::uint32_t packedTime(const Bar &bar);

} // namespace Terminal
