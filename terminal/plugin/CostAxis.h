#pragma once

#include "terminal/plugin/ForwardingAxis.h"

namespace Terminal {

/// The chart as the cost line sees it. The line draws nothing where its price is out of view; here every
/// price is in view, so that the painter can hold the label at the edge, with an arrow to where the cost is.
class CostAxis : public ForwardingAxis
{
public:
    using ForwardingAxis::ForwardingAxis;

    bool visiblePriceRange(double &low, double &high) override;
};

} // namespace Terminal
