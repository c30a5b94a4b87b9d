#include "terminal/chart/axes/BarSpan.h"

#include <algorithm>
#include <cmath>

namespace Terminal {

namespace {

size_t clampedIndex(double bar, size_t count)
{
    return static_cast<size_t>(std::clamp(bar, 0.0, static_cast<double>(count)));
}

} // namespace

BarRange barsInView(const BarSpan &span, size_t count)
{
    const size_t first = clampedIndex(std::floor(span.first + 0.5), count);
    return {first, std::max(first, clampedIndex(std::ceil(span.last + 0.5), count))};
}

} // namespace Terminal
