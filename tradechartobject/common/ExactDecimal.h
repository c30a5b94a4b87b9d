// Decimal numbers that a double can be made of in one step.
#pragma once

namespace TradeChart {

/// Whole numbers of so many digits are exact in a double, and so are the powers of ten up to here.
constexpr int mostExactDigits = 15;

constexpr double powersOfTen[mostExactDigits + 1] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                     1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

/// The double nearest to digits / 10^decimals: the quotient of two exact doubles is just that.
/// Requires an exact whole number and 0 <= decimals <= mostExactDigits.
constexpr double exactDecimal(double digits, int decimals)
{
    return digits / powersOfTen[decimals];
}

} // namespace TradeChart
