#pragma once

#include "tradechartobject/ChartInterface.h"

#include <functional>

namespace HostCheck {

class Watch;

/// The terminal's axis as the real overlay sees it: each answer is looked at on its way.
class CheckedAxis : public Korvane::IChartAxis
{
public:
    CheckedAxis(Korvane::IChartAxis &host, Watch &watch);
    virtual ~CheckedAxis() = default;

    /// The terminal's own axis.
    Korvane::IChartAxis &host() const { return m_host; }

    int chartMode() override;
    bool visiblePriceRange(double &low, double &high) override;
    const char *screenId() override;
    double markerSize() override;
    void updateObject(Korvane::IChartObject *object) override;
    int popupMenu(const char **lines, void *reserved) override;
    void showMessage(const char *text) override;
    bool confirmBox(const char *text) override;
    double barToX(int bar) override;
    double priceToY(double price, int one, int two) override;
    int xToBar(double x) override;
    void barAt(int bar, Korvane::AnalyData &out) override;

    /// How many of the lines of its list the combined overlay shows, which has no end mark.
    std::function<int()> listLength;

private:
    bool isThere() const;
    int lengthOf(const char **lines) const;
    void checkPriceRange(double low, double high) const;
    void checkBarCopy(int bar, const Korvane::AnalyData &copy) const;

    Korvane::IChartAxis &m_host;
    Watch &m_watch;
    const void *const m_table; ///< of the host's operations, which goes with the object
};

} // namespace HostCheck
