#pragma once

#include <vector>

namespace Terminal {

struct PriceSpan
{
    double low = 0;
    double high = 0;
};

/// The price scale for candles that reach over `candles` in a pane of so many pixels, with air above and
/// below, enough for a mark on either side.
///
/// `wishes` are the spans that overlays would like to see. A bound is granted when it lies no more than
/// a quarter of the candles' height beyond them; what lies farther away would squeeze the candles and
/// is left out of the scale. Spans that are not finite or whose high is below their low are no wishes.
PriceSpan fitPrices(PriceSpan candles, const std::vector<PriceSpan> &wishes, double paneHeight);

} // namespace Terminal
