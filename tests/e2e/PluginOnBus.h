#pragma once

#include "tests/support/FakeHost.h"
#include "tests/support/TestBroker.h"
#include "tradechartobject/ChartInterface.h"

#include <gmock/gmock.h>

#include <QLibrary>

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

    /// Hands `bars` of a security to the overlay.
    bool calc(Korvane::IChartObject &overlay, const Korvane::tagCodeWithName &security,
              const std::vector<Korvane::AnalyData> &bars, int period = Korvane::DayPeriod);

    /// Price of the cost line as it is painted now; NaN without one.
    double paintedCost(Korvane::IChartObject &overlay);

    /// What the buy/sell points paint on each bar: B, S, T for both, a blank for nothing.
    std::string paintedMarks(Korvane::IChartObject &overlay);

    const Korvane::tagCodeWithName chinaSoft = makeSecurity(1, "600536", 11, "中国软件");

    TestBroker broker;
    FakeAxis axis;

private:
    QString m_busFile;
    QLibrary m_library;
    std::size_t m_barCount = 0;
};
