#include "terminal/plugin/CostAxis.h"

#include <limits>

namespace Terminal {

bool CostAxis::visiblePriceRange(double &low, double &high)
{
    if (!ForwardingAxis::visiblePriceRange(low, high)) {
        return false;
    }
    low = std::numeric_limits<double>::lowest();
    high = std::numeric_limits<double>::max();
    return true;
}

} // namespace Terminal
