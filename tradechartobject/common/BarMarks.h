// Marks on bars: one double per bar, 1.0 where a marker stands and NaN where none does.
#pragma once

#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

namespace TradeChart {

constexpr double marked = 1.0;
constexpr double unmarked = std::numeric_limits<double>::quiet_NaN();

/// True when `bar`, an index that came from the host, lies inside the per-bar vector.
template <class Value>
bool hasBar(const std::vector<Value> &perBar, int bar)
{
    return bar >= 0 && static_cast<std::size_t>(bar) < perBar.size();
}

/// True when a marker stands on `bar`; false for an index outside the vector.
inline bool isMarked(const std::vector<double> &marks, int bar)
{
    return hasBar(marks, bar) && std::isfinite(marks[static_cast<std::size_t>(bar)]);
}

} // namespace TradeChart
