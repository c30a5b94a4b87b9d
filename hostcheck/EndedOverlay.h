#pragma once

#include "tradechartobject/ChartInterface.h"

#include <cstddef>

namespace HostCheck {

/// Stands where an overlay was, for terminals that still call it.
class EndedOverlay final : public Korvane::IChartObject
{
public:
    /// Puts one into the memory of an overlay that has ended; it stays there as long as the process.
    static void bury(void *memory);

    ~EndedOverlay() override;

    static void *operator new(std::size_t, void *place) { return place; }
    /// Ended once more: it goes on to stand there.
    static void operator delete(void *memory) { bury(memory); }

    int type() const override;
    bool deleteObject() override;
    bool calcIt(const Korvane::tagCodeWithName &, const Korvane::AnalyData *, int, Korvane::Period, int,
                int) override;
    bool calcRatio(int, int) override;
    double maximizeValue(int &) override;
    double minimizeValue(int &) override;
    bool paintIt(Korvane::IChartPainter &) override;
    int hitTest(double, double) override;
    void handleMousePress(double, double) override;
    void handleMousePressR(double, double) override;
    void handleMouseRelease(double, double) override;
    void handleMouseReleaseR(double, double) override;
    void handleMouseMove(double, double) override;
};

} // namespace HostCheck
