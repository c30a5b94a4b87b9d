#pragma once

#include <QObject>

namespace Terminal {

class ChartView;
class Replay;

/// Keeps a chart that shows the replayed day in step with it. What else the chart shows is left alone.
class ReplayedChart : public QObject
{
    Q_OBJECT

public:
    /// `chart` and `replay` must outlive this object.
    ReplayedChart(ChartView *chart, const Replay *replay, QObject *parent);

    /// True while the chart shows the replayed day.
    bool isShown() const;

private:
    void grow();

    ChartView *m_chart;
    const Replay *m_replay;
};

} // namespace Terminal
