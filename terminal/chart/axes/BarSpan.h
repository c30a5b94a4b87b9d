#pragma once

#include <cstddef>

namespace Terminal {

/// A span of bars, in bar numbers: bar i reaches from i - 0.5 to i + 0.5.
struct BarSpan
{
    double first = -0.5;
    double last = 0.5;

    double width() const { return last - first; }
};

/// Numbers [first, end) of the bars of `count` that `span` shows, even partly.
struct BarRange
{
    size_t first = 0;
    size_t end = 0;
};
BarRange barsInView(const BarSpan &span, size_t count);

} // namespace Terminal
