// The lines of a pop-up list, as the host takes them: an array of pointers to UTF-8 texts.
#pragma once

#include "tradechartobject/ChartInterface.h"

#include <cstddef>
#include <string>
#include <vector>

namespace TradeChart {

/// Formats as std::printf does, into a text as long as it takes.
[[gnu::format(printf, 1, 2)]] std::string formatText(const char *format, ...);

class PopupLines
{
public:
    /// `expected`: number of lines to have room for.
    explicit PopupLines(std::size_t expected);
    explicit PopupLines(std::vector<std::string> lines);

    void append(std::string line);
    bool isEmpty() const;
    std::size_t size() const;

    /// Lets the host show the lines and blocks until the user has chosen; the chosen row, negative for
    /// none. The host may end the overlay meanwhile: only the lines are still valid afterwards.
    int show(Korvane::IChartAxis &axis) const;

    /// The same with an array that ends with its last line, without a null pointer after it.
    int showUnterminated(Korvane::IChartAxis &axis) const;

private:
    std::vector<const char *> pointers() const;

    std::vector<std::string> m_lines;
};

} // namespace TradeChart
