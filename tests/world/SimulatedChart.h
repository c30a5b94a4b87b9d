#pragma once

#include "terminal/data/SecurityList.h"
#include "tests/support/FakeHost.h"
#include "tests/world/SimulatedClock.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace World {

/// A chart with the overlays of the plug-in, driven as a terminal drives them, and what they draw as text.
class SimulatedChart
{
public:
    enum class Kind { Intraday, Daily };

    /// Does something once the overlays that were made before have had time to join the bus.
    using OnceJoined = std::function<void(std::function<void()>)>;

    /// `withCombined`: the older overlay, whose calls wait for their answers, is there, too.
    SimulatedChart(const QByteArray &screen, bool withCombined, OnceJoined onceJoined);
    ~SimulatedChart();
    Q_DISABLE_COPY_MOVE(SimulatedChart)

    /// Has the overlays calculate the bars of this chart, and paint. Those that add up records of a range are
    /// made anew for another range.
    void show(const Terminal::Security &security, Kind kind);
    /// Has those paint again that draw on this chart, with what they have calculated.
    void paint();

    /// Makes those overlays anew: what they have asked once only may be lost.
    void renew();

    /// What the overlays drew last that ask anew by themselves: markers, lines and labels.
    std::string drawing() const;

private:
    using Make = std::function<Korvane::IChartObject *()>;

    struct Overlay
    {
        Make make;
        bool isBoundToRange;
        bool asksAnew; ///< by itself
        std::unique_ptr<Korvane::IChartObject> object;
        FakePainter painter{};
        bool draws = false; ///< as it said when it calculated last
    };

    struct Range
    {
        QString code;
        Kind kind;
        int lastDay;

        bool operator==(const Range &other) const
        {
            return code == other.code && kind == other.kind && lastDay == other.lastDay;
        }
    };

    void add(const Make &make, bool isBoundToRange, bool asksAnew);
    void takeRange(const Range &range);
    void awaitJoining();

    const OnceJoined m_onceJoined;
    std::shared_ptr<bool> m_haveJoined; ///< the overlays that were made last
    FakeAxis m_axis;
    std::optional<Range> m_range; ///< that is shown
    std::vector<Overlay> m_overlays;
};

} // namespace World
