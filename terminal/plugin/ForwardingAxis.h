#pragma once

#include "tradechartobject/ChartInterface.h"

namespace Terminal {

/// The chart as an overlay sees it that sees it in its own way: that of `chart` but for what a derived class
/// answers itself.
class ForwardingAxis : public Korvane::IChartAxis
{
public:
    /// `chart` must outlive the axis.
    explicit ForwardingAxis(Korvane::IChartAxis &chart) : m_chart(chart) {}
    virtual ~ForwardingAxis() = default;

    int chartMode() override { return m_chart.chartMode(); }
    bool visiblePriceRange(double &low, double &high) override
    {
        return m_chart.visiblePriceRange(low, high);
    }
    const char *screenId() override { return m_chart.screenId(); }
    double markerSize() override { return m_chart.markerSize(); }
    void updateObject(Korvane::IChartObject *object) override { m_chart.updateObject(object); }
    int popupMenu(const char **lines, void *reserved) override { return m_chart.popupMenu(lines, reserved); }
    void showMessage(const char *text) override { m_chart.showMessage(text); }
    bool confirmBox(const char *text) override { return m_chart.confirmBox(text); }
    double barToX(int bar) override { return m_chart.barToX(bar); }
    double priceToY(double price, int one, int two) override { return m_chart.priceToY(price, one, two); }
    int xToBar(double x) override { return m_chart.xToBar(x); }
    void barAt(int bar, Korvane::AnalyData &out) override { m_chart.barAt(bar, out); }

protected:
    Korvane::IChartAxis &m_chart;
};

} // namespace Terminal
