#pragma once

#include "terminal/plugin/CombinedAxis.h"
#include "tradechartobject/CombinedOverlay.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace Terminal {

/// A combined overlay of the library, with the memory that it lives in and an axis of its own.
class CombinedObject
{
public:
    /// `chart` must outlive the overlay.
    CombinedObject(Korvane::CombinedOverlay::Constructor construct, Korvane::IChartAxis &chart,
                   const char *json);
    ~CombinedObject();
    CombinedObject(const CombinedObject &) = delete;
    CombinedObject &operator=(const CombinedObject &) = delete;

    /// What the chart drives.
    Korvane::IChartObject *object();

private:
    CombinedAxis m_axis;
    alignas(std::max_align_t) std::array<unsigned char, Korvane::CombinedOverlay::memorySize> m_memory;
};

} // namespace Terminal
