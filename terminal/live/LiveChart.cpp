#include "terminal/replay/ReplayedChart.h"

#include "terminal/chart/view/ChartView.h"
#include "terminal/replay/Replay.h"

namespace Terminal {

ReplayedChart::ReplayedChart(ChartView *chart, const Replay *replay, QObject *parent)
    : QObject(parent),
      m_chart(chart),
      m_replay(replay)
{
    connect(replay, &Replay::advanced, this, &ReplayedChart::grow);
}

bool ReplayedChart::isShown() const
{
    const ChartData &shown = m_chart->data();
    return m_replay->state() != Replay::State::Closed && shown.period == ChartPeriod::Minute &&
           shown.security.code == m_replay->security().code && !shown.bars.empty() &&
           shown.bars.back().date == m_replay->day().back().date;
}

void ReplayedChart::grow()
{
    if (!isShown()) {
        return;
    }
    const size_t shown = m_chart->data().bars.size();
    const size_t completed = m_replay->completed();
    if (completed < shown) {
        m_chart->setData(m_replay->today());
        return;
    }
    const auto bar = [this](size_t number) {
        return m_replay->day().begin() + static_cast<std::ptrdiff_t>(number);
    };
    m_chart->append(Bars(bar(shown), bar(completed)));
}

} // namespace Terminal
