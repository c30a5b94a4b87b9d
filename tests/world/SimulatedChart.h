#pragma once

#include "terminal/data/SecurityList.h"
#include "tests/support/FakeHost.h"

#include <memory>
#include <string>
#include <vector>

namespace World {

/// A chart with the overlays of the plug-in, driven as a terminal drives them, and what they draw as text.
class SimulatedChart
{
public:
    enum class Kind { Intraday, Daily };

    /// `withCombined`: the older overlay, whose calls wait for their answers, is there, too.
    SimulatedChart(const QByteArray &screen, bool withCombined);
    ~SimulatedChart();
    Q_DISABLE_COPY_MOVE(SimulatedChart)

    /// Has the overlays calculate the bars of this chart, and paint.
    void show(const Terminal::Security &security, Kind kind);

    /// What the overlays drew last that ask anew by themselves: markers, lines and labels.
    std::string drawing() const;

private:
    struct Overlay
    {
        std::unique_ptr<Korvane::IChartObject> object;
        FakePainter painter;
        bool asksAnew = true;
    };

    void add(Korvane::IChartObject *object, bool asksAnew);

    FakeAxis m_axis;
    std::vector<Overlay> m_overlays;
};

} // namespace World
