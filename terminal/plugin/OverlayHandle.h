#pragma once

#include "tradechartobject/ChartInterface.h"

#include <memory>
#include <utility>
#include <vector>

namespace Terminal {

/// Owns one overlay of the library: ends it as the interface asks for.
class OverlayHandle
{
public:
    /// Takes over `object`, and destroys it as its pointer does.
    explicit OverlayHandle(std::shared_ptr<Korvane::IChartObject> object) : m_object(std::move(object)) {}
    explicit OverlayHandle(Korvane::IChartObject *object) : m_object(object) {}
    ~OverlayHandle();
    OverlayHandle(const OverlayHandle &) = delete;
    OverlayHandle &operator=(const OverlayHandle &) = delete;

    Korvane::IChartObject *object() const { return m_object.get(); }

    /// Hands the loaded bars to the overlay; true when it serves them.
    bool calc(const Korvane::tagCodeWithName &security, const std::vector<Korvane::AnalyData> &bars,
              int period);

    /// How far the per-bar arrays may be read that the overlay gives to a painter. An overlay that
    /// refused a range may still have arrays of the length of an earlier one.
    int readableBars() const { return m_readableBars; }

    /// Stops the overlay's activity ahead of its destruction.
    void retire();

private:
    std::shared_ptr<Korvane::IChartObject> m_object;
    int m_servedBars = 0;
    int m_readableBars = 0;
    bool m_retired = false;
};

} // namespace Terminal
