#include "terminal/replay/ChartSource.h"

#include "terminal/replay/Replay.h"

namespace Terminal {

ChartSource::ChartSource(const DataFolder &folder, const Replay *replay) : m_folder(folder), m_replay(replay)
{
}

void ChartSource::setFolder(const DataFolder &folder)
{
    DataFolder next = folder;
    next.keepBookedActions(m_folder);
    m_folder = next;
}

bool ChartSource::replays(const QString &code) const
{
    return m_replay->state() != Replay::State::Closed && m_replay->security().code == code;
}

Trading::TradingDate ChartSource::replayedDate() const
{
    return dayOf(m_replay->day().front());
}

std::vector<Trading::TradingDate> ChartSource::minuteDays(const QString &code) const
{
    std::vector<Trading::TradingDate> days = m_folder.minuteDays(code);
    if (replays(code)) {
        days.push_back(replayedDate());
    }
    return days;
}

bool ChartSource::isReplayed(const QString &code, Trading::TradingDate day) const
{
    return replays(code) && day == replayedDate();
}

Loaded<ChartData> ChartSource::load(const QString &code, ChartPeriod period,
                                    std::optional<Trading::TradingDate> day, PriceView view) const
{
    const bool isToday = period == ChartPeriod::Minute && replays(code) && (!day || *day == replayedDate());
    return isToday ? m_replay->today() : m_folder.load(code, period, day, view);
}

ChartData ChartSource::raw(const ChartData &shown) const
{
    return shown.view == PriceView::Raw
               ? shown
               : m_folder.load(shown.security.code, shown.period, shownDay(shown)).value();
}

std::optional<double> ChartSource::closeBefore(const QString &code, Trading::TradingDate day) const
{
    return isReplayed(code, day) ? m_replay->previousClose() : m_folder.closeBefore(code, day);
}

std::optional<Bar> ChartSource::lastBar(const QString &code) const
{
    const auto daily = m_folder.load(code, ChartPeriod::Day);
    std::optional<Bar> last;
    if (daily && !daily.value().bars.empty()) {
        last = daily.value().bars.back();
    }
    const std::vector<Trading::TradingDate> days = m_folder.minuteDays(code);
    if (!days.empty() && (!last || days.back() > dayOf(*last))) {
        const auto minutes = m_folder.load(code, ChartPeriod::Minute, days.back());
        last = minutes && !minutes.value().bars.empty() ? std::optional(minutes.value().bars.back()) : last;
    }
    return last;
}

} // namespace Terminal
