#pragma once

#include "tradechartobject/CombinedOverlay.h"

namespace HostCheck {

/// The library whose overlays are wrapped: the file that TRADECHARTOBJECT_CHECKED names, or
/// libtradechartobject beside the checker.
struct RealLibrary
{
    using Factory = Korvane::IChartObject *(*)(Korvane::IChartAxis &, const char *);

    Factory create = nullptr;                                          ///< null when there is no library
    Korvane::CombinedOverlay::Constructor constructCombined = nullptr; ///< null when there is no library

    /// Loaded at the first call; a failure is reported.
    static const RealLibrary &get();
};

} // namespace HostCheck
