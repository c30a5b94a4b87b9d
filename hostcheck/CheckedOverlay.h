#pragma once

#include "hostcheck/Watch.h"
#include "tradechartobject/ChartInterface.h"

#include <cstddef>
#include <memory>

namespace HostCheck {

/// What the terminal gets in the place of an overlay: each call is looked at and handed on.
///
/// Its memory stays after its end, and calls that still come there are told.
class CheckedOverlay : public Korvane::IChartObject
{
public:
    explicit CheckedOverlay(std::shared_ptr<Watch> watch) : m_watch(std::move(watch)) {}
    ~CheckedOverlay() override;
    CheckedOverlay(const CheckedOverlay &) = delete;
    CheckedOverlay &operator=(const CheckedOverlay &) = delete;

    static void *operator new(std::size_t size) { return ::operator new(size); }
    static void *operator new(std::size_t, void *place) { return place; }
    static void operator delete(void *memory);

    int type() const override;
    bool deleteObject() override;
    bool calcIt(const Korvane::tagCodeWithName &code, const Korvane::AnalyData *bars, int count,
                Korvane::Period period, int a, int b) override;
    bool calcRatio(int a, int b) override;
    double maximizeValue(int &value) override;
    double minimizeValue(int &value) override;
    bool paintIt(Korvane::IChartPainter &painter) override;
    int hitTest(double x, double y) override;
    void handleMousePress(double x, double y) override;
    void handleMousePressR(double x, double y) override;
    void handleMouseRelease(double x, double y) override;
    void handleMouseReleaseR(double x, double y) override;
    void handleMouseMove(double x, double y) override;

private:
    const std::shared_ptr<Watch> m_watch;
};

} // namespace HostCheck
