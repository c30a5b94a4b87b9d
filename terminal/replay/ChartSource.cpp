#include "terminal/replay/ChartSource.h"

#include "terminal/replay/Replay.h"

namespace Terminal {

ChartSource::ChartSource(const DataFolder &folder, const Replay *replay) : m_folder(folder), m_replay(replay)
{
}

bool ChartSource::replays(const QString &code) const
{
    return m_replay->state() != Replay::State::Closed && m_replay->security().code == code;
}

std::int32_t ChartSource::replayedDate() const
{
    return m_replay->day().front().date;
}

std::vector<std::int32_t> ChartSource::minuteDays(const QString &code) const
{
    std::vector<std::int32_t> days = m_folder.minuteDays(code);
    if (replays(code)) {
        days.push_back(replayedDate());
    }
    return days;
}

bool ChartSource::isReplayed(const QString &code, std::int32_t day) const
{
    return replays(code) && day == replayedDate();
}

Loaded<ChartData> ChartSource::load(const QString &code, ChartPeriod period, std::int32_t day) const
{
    const bool isToday =
        period == ChartPeriod::Minute && (isReplayed(code, day) || (day == 0 && replays(code)));
    return isToday ? m_replay->today() : m_folder.load(code, period, day);
}

std::optional<double> ChartSource::closeBefore(const QString &code, std::int32_t day) const
{
    return isReplayed(code, day) ? m_replay->previousClose() : m_folder.closeBefore(code, day);
}

} // namespace Terminal
