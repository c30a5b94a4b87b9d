#pragma once

#include "terminal/plugin/UserPrompts.h"
#include "tradechartobject/ChartInterface.h"

#include <QByteArray>
#include <QObject>
#include <QPointF>

namespace Terminal {

class ChartView;

/// The services of one chart as overlays call them.
class HostAxis : public QObject, public Korvane::IChartAxis
{
    Q_OBJECT

public:
    /// `chart` and `prompts` must outlive the axis. `screenId` is unique per window.
    HostAxis(ChartView *chart, UserPrompts *prompts, const QByteArray &screenId, QObject *parent);

    /// Where on the canvas the list that an overlay shows next belongs.
    void setListPlace(const QPointF &place) { m_listPlace = place; }

    /// Hides amounts in lists of overlays. Questions always show them: an order that is cancelled is to be
    /// known.
    void setAmountsHidden(bool hidden) { m_hidesAmounts = hidden; }

    int chartMode() override;
    bool visiblePriceRange(double &low, double &high) override;
    const char *screenId() override;
    double markerSize() override;
    void updateObject(Korvane::IChartObject *object) override;
    int popupMenu(const char **lines, void *reserved) override;
    void showMessage(const char *text) override;
    bool confirmBox(const char *text) override;
    double barToX(int bar) override;
    double priceToY(double price, int, int) override;
    int xToBar(double x) override;
    void barAt(int bar, Korvane::AnalyData &out) override;

Q_SIGNALS:
    /// An overlay has new data.
    void updateRequested(Korvane::IChartObject *object);

private:
    ChartView *m_chart;
    UserPrompts *m_prompts;
    QByteArray m_screenId;
    QPointF m_listPlace;
    bool m_hidesAmounts = false;
};

} // namespace Terminal
