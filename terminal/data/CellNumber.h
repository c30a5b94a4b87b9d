#pragma once

#include <optional>
#include <string_view>

namespace Terminal {

/// The number in a cell, with a decimal point: "1732.5", "1,732.50". Nothing for what is none: words,
/// infinities, what may be a decimal comma ("1,732"), a number that a spreadsheet has cut to a few digits
/// ("1.05E+08").
std::optional<double> numberOf(std::string_view cell);

/// The same for a cell that counts: "1,234,567" is a number here, because it can be no decimal comma.
std::optional<double> countOf(std::string_view cell);

} // namespace Terminal
