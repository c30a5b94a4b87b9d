#pragma once

#include "tests/support/FakeHost.h"
#include "tests/support/TestBroker.h"
#include "tradechartobject/ChartInterface.h"

#include <gmock/gmock.h>

#include <QLibrary>

#include <map>
#include <memory>

/// A chart with overlays of the built plug-in on a bus with a real broker.
///
/// Overlays join the bus of the directory of the running program, so the fixture lays an endpoint.ini
/// there: its tests must not run beside each other.
class PluginOnBus : public ::testing::Test
{
protected:
    PluginOnBus();
    ~PluginOnBus() override;

    struct End
    {
        void operator()(Korvane::IChartObject *object) const
        {
            object->deleteObject();
            delete object;
        }
    };
    using Overlay = std::unique_ptr<Korvane::IChartObject, End>;

    /// An overlay that asks again every second.
    Overlay create(int type);

    /// The combined overlay, which terminals construct themselves: type 0 the cost line, 1 the trade
    /// markers. It is shown on combinedAxis, because its lists have no end mark.
    Overlay construct(int type);

    /// Hands `bars` of a security to the overlay.
    bool calc(Korvane::IChartObject &overlay, const Korvane::tagCodeWithName &security,
              const std::vector<Korvane::AnalyData> &bars, int period = Korvane::DayPeriod);

    /// What the overlay paints now, over the bars of its last calc().
    FakePainter paint(Korvane::IChartObject &overlay) const;

    /// Price of the cost line as it is painted now; NaN without one.
    double paintedCost(Korvane::IChartObject &overlay) const;

    /// What the trade markers show on each bar: B, S, T for both, in small letters below the close, a
    /// blank for nothing. Of several markers on a bar, the one that is painted last.
    std::string paintedMarks(Korvane::IChartObject &overlay) const;

    const Korvane::tagCodeWithName chinaSoft = makeSecurity(1, "600536", 11, "中国软件");

    TestBroker broker;
    FakeAxis axis;
    FakeAxis combinedAxis;

private:
    QString m_busFile;
    QLibrary m_library;
    std::map<const Korvane::IChartObject *, std::size_t> m_barCounts;
};
