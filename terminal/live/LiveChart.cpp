#include "terminal/live/LiveChart.h"

#include "terminal/chart/view/ChartView.h"
#include "terminal/data/BarAggregation.h"
#include "terminal/live/ChartSource.h"
#include "terminal/live/MinuteBook.h"
#include "terminal/live/Today.h"
#include "terminal/replay/Replay.h"

#include <algorithm>
#include <chrono>

namespace Terminal {

namespace {

/// Between two repaints for quotes: what an eye can follow, and time left for hands.
constexpr std::chrono::milliseconds frame{8};
/// How often the files of the chart are looked at.
constexpr std::chrono::seconds lookInterval{2};

} // namespace

LiveChart::LiveChart(ChartView *chart, const ChartSource *source, const Today *today, const Replay *replay)
    : m_chart(chart),
      m_source(source),
      m_today(today),
      m_pacer(frame)
{
    connect(chart, &ChartView::dataChanged, this, &LiveChart::takeLoaded);
    connect(today, &Today::changed, this, &LiveChart::takeChanged);
    connect(today, &Today::begun, this, &LiveChart::takeBegun);
    connect(replay, &Replay::advanced, this, &LiveChart::show); // who steps by hand sees each step
    connect(&m_pacer, &Pacer::due, this, &LiveChart::show);
    connect(&m_files, &QTimer::timeout, this, &LiveChart::lookAtFiles);
    m_files.start(lookInterval);
}

bool LiveChart::isShown(const Trading::SecurityId &security) const
{
    return m_chart->data().security.id() == security;
}

bool LiveChart::showsMinutesOfToday() const
{
    const ChartData &shown = m_chart->data();
    const MinuteBook *const book = m_today->of(shown.security.id());
    return shown.period == ChartPeriod::Minute && !shown.bars.empty() && book != nullptr &&
           !book->bars().empty() && shown.bars.back().date == book->bars().back().date;
}

bool LiveChart::showsReplay() const
{
    return showsMinutesOfToday() && m_today->isReplayed(m_chart->data().security.id());
}

void LiveChart::takeLoaded()
{
    m_isAnew = false;
    m_firstBar.reset();
    m_pacer.cancel();
    m_stamps = m_source->stamps(m_chart->data().security.code);
}

void LiveChart::takeChanged(const Trading::SecurityId &security, int firstBar)
{
    if (isShown(security)) {
        const auto first = static_cast<size_t>(firstBar);
        m_firstBar = std::min(m_firstBar.value_or(first), first);
        m_pacer.ask();
    }
}

void LiveChart::takeBegun(const Trading::SecurityId &security)
{
    m_isAnew = m_isAnew || isShown(security);
}

void LiveChart::show()
{
    m_pacer.cancel();
    if (!m_firstBar) {
        return;
    }
    if (m_chart->data().period != ChartPeriod::Minute) {
        showSpan();
    } else if (!showsMinutesOfToday()) {
        if (m_follows) {
            Q_EMIT dayBegan();
        }
    } else if (m_isAnew) {
        showAnew();
    } else {
        showMinutes();
    }
    m_firstBar.reset();
    m_isAnew = false;
}

void LiveChart::showAnew()
{
    const ChartData &shown = m_chart->data();
    const auto today = m_source->load(shown.security.code, shown.period, dayOf(shown.bars.back()));
    if (today) {
        m_chart->setData(today.value());
    }
}

void LiveChart::showMinutes()
{
    const ChartData &shown = m_chart->data();
    const Bars &bars = m_today->of(shown.security.id())->bars();
    const size_t first = std::min(*m_firstBar, shown.bars.size());
    if (bars.size() < shown.bars.size()) {
        showAnew();
    } else {
        m_chart->grow(first, Bars(bars.begin() + static_cast<std::ptrdiff_t>(first), bars.end()));
    }
}

void LiveChart::showSpan()
{
    const ChartData &shown = m_chart->data();
    if (!shown.bars.empty() && m_source->isOfAnEarlierDay(shown)) {
        m_chart->refresh(m_source->turned(shown)); // midnight went by
        return;
    }
    const std::optional<Bar> last = m_source->barOfToday(shown);
    if (!last || shown.bars.empty() || *last == shown.bars.back()) {
        return;
    }
    const bool isThere = isOfSameSpan(shown.bars.back(), *last, shown.period);
    m_chart->grow(shown.bars.size() - (isThere ? 1 : 0), {*last});
}

/// Minutes that no quote told, and today's row, may have come.
void LiveChart::lookAtFiles()
{
    const QString code = m_chart->data().security.code;
    const ChartPeriod period = m_chart->data().period;
    const std::vector<FileStamp> stamps = m_source->stamps(code);
    if (m_chart->data().bars.empty() || stamps == m_stamps) {
        return;
    }
    m_stamps = stamps;
    m_source->fillToday(code); // a chart of minutes hears of it from today
    const auto loaded = period == ChartPeriod::Minute
                            ? Loaded<ChartData>::failure(code)
                            : m_source->load(code, period, {}, m_chart->data().view);
    if (loaded && loaded.value().bars.size() >= m_chart->data().bars.size()) {
        m_chart->refresh(loaded.value());
    }
}

} // namespace Terminal
