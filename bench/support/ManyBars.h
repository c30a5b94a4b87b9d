#pragma once

#include "tradechartobject/ChartInterface.h"

#include <cstdint>
#include <vector>

/// yyyymmdd of the n-th day of a long history.
std::uint32_t dateOf(int day);

/// `count` daily bars of that history, as a host hands them over.
std::vector<Korvane::AnalyData> manyBars(int count);
