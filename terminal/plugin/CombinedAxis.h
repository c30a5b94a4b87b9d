#pragma once

#include "tradechartobject/ChartInterface.h"

class QObject;

namespace Terminal {

/// The chart as one combined overlay sees it: that of `chart`, but its lists, which have no end mark,
/// are handed on with one.
class CombinedAxis : public Korvane::IChartAxis
{
public:
    explicit CombinedAxis(Korvane::IChartAxis &chart) : m_chart(chart) {}
    virtual ~CombinedAxis() = default;

    /// Who shows its lists here; the length of a list is known from it.
    void setCaller(const QObject *caller) { m_caller = caller; }

    int popupMenu(const char **lines, void *reserved) override;

    int chartMode() override { return m_chart.chartMode(); }
    bool visiblePriceRange(double &low, double &high) override
    {
        return m_chart.visiblePriceRange(low, high);
    }
    const char *screenId() override { return m_chart.screenId(); }
    double markerSize() override { return m_chart.markerSize(); }
    void updateObject(Korvane::IChartObject *object) override { m_chart.updateObject(object); }
    void showMessage(const char *text) override { m_chart.showMessage(text); }
    bool confirmBox(const char *text) override { return m_chart.confirmBox(text); }
    double barToX(int bar) override { return m_chart.barToX(bar); }
    double priceToY(double price, int one, int two) override { return m_chart.priceToY(price, one, two); }
    int xToBar(double x) override { return m_chart.xToBar(x); }
    void barAt(int bar, Korvane::AnalyData &out) override { m_chart.barAt(bar, out); }

private:
    Korvane::IChartAxis &m_chart;
    const QObject *m_caller = nullptr;
};

} // namespace Terminal
