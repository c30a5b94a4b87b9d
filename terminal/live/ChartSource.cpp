#include "terminal/live/ChartSource.h"

#include "terminal/data/BarAggregation.h"
#include "terminal/data/TradingHours.h"
#include "terminal/live/SpanBar.h"
#include "terminal/live/Today.h"

#include <algorithm>

namespace Terminal {

namespace {

/// Until when a file can tell of today.
std::optional<Trading::ClockTime> timeOf(const FileStamp &file, Trading::TradingDate today)
{
    const bool isOfToday = Trading::TradingDate::ofCalendar(file.changed.date()) == today;
    return isOfToday ? Trading::ClockTime::ofClock(file.changed.time()) : std::nullopt;
}

} // namespace

ChartSource::ChartSource(const DataFolder &folder, Today *today) : m_folder(folder), m_today(today) {}

void ChartSource::setFolder(const DataFolder &folder)
{
    DataFolder next = folder;
    next.keepBookedActions(m_folder);
    m_folder = next;
    if (m_practised) {
        m_folder.endBefore(*m_practised);
    }
}

void ChartSource::practise(Trading::TradingDate day)
{
    m_practised = day;
    m_folder.endBefore(day);
}

/// That charts of days and longer can have.
Trading::TradingDate ChartSource::lastDay() const
{
    return m_practised.value_or(m_today->date());
}

/// Null unless there are bars.
const MinuteBook *ChartSource::todayOf(const QString &code) const
{
    const Security *const security = findSecurity(m_folder.securities(), code);
    const MinuteBook *const book = security == nullptr ? nullptr : m_today->of(security->id());
    return book == nullptr || book->bars().empty() ? nullptr : book;
}

std::vector<Trading::TradingDate> ChartSource::minuteDays(const QString &code) const
{
    std::vector<Trading::TradingDate> days = m_folder.minuteDays(code);
    const MinuteBook *const today = todayOf(code);
    if (today != nullptr) {
        const Trading::TradingDate day = dayOf(today->bars().front());
        days.erase(std::remove(days.begin(), days.end(), day), days.end());
        days.push_back(day);
    }
    return days;
}

/// True when a minute chart of this day, or of the last one, is today's.
bool ChartSource::isToday(const QString &code, std::optional<Trading::TradingDate> day) const
{
    const MinuteBook *const today = todayOf(code);
    return today != nullptr && (!day || day == dayOf(today->bars().front()));
}

Loaded<ChartData> ChartSource::load(const QString &code, ChartPeriod period,
                                    std::optional<Trading::TradingDate> day, PriceView view) const
{
    fillToday(code);
    if (period != ChartPeriod::Minute) {
        return loadDays(code, period, view);
    }
    return isToday(code, day) ? minutesOfToday(*findSecurity(m_folder.securities(), code))
                              : m_folder.load(code, period, day, view);
}

ChartData ChartSource::minutesOfToday(const Security &security) const
{
    ChartData chart{security, ChartPeriod::Minute, m_today->of(security.id())->bars()};
    chart.ahead = tradingMinutesAfter(chart.bars.back().minute);
    chart.previousClose = closeBefore(security.code, dayOf(chart.bars.back()));
    chart.priceDecimals = priceDecimals(chart.bars);
    chart.recorded = m_today->isReplayed(security.id()) ? m_today->recorded() : std::nullopt;
    return chart;
}

ChartData ChartSource::raw(const ChartData &shown) const
{
    return shown.view == PriceView::Raw ? shown
                                        : load(shown.security.code, shown.period, shownDay(shown)).value();
}

Loaded<ChartData> ChartSource::loadDays(const QString &code, ChartPeriod period, PriceView view) const
{
    const auto days = m_folder.load(code, ChartPeriod::Day, {}, view);
    if (!days) {
        return days;
    }
    const Trading::TradingDate today = lastDay();
    ChartData chart = days.value();
    chart.period = period;
    chart.today = takeSpanOfToday(&chart.bars, period, today);
    chart.today.rowTime = timeOf(m_folder.dailyStamp(code), today);
    chart.bars = joinDays(chart.bars, period);
    endWithToday(&chart);
    return chart;
}

void ChartSource::endWithToday(ChartData *chart) const
{
    if (const std::optional<Bar> last = barOfToday(*chart)) {
        if (chart->today.before) {
            chart->bars.pop_back();
        }
        chart->bars.push_back(*last);
    }
}

bool ChartSource::isOfAnEarlierDay(const ChartData &shown) const
{
    return shown.period != ChartPeriod::Minute && shown.today.day && *shown.today.day < lastDay();
}

/// Whether the files tell of all days that are shown; the last of these may have come by quotes alone.
bool ChartSource::knowsDaysOf(const ChartData &loaded, const ChartData &shown) const
{
    const auto bar = std::find_if(loaded.bars.rbegin(), loaded.bars.rend(), [this](const Bar &candidate) {
        return candidate.date < lastDay().number();
    });
    const int lastOfBars = bar == loaded.bars.rend() ? 0 : bar->date;
    const int lastOfSpan = loaded.today.before ? loaded.today.before->date : 0;
    return loaded.bars.size() >= shown.bars.size() &&
           std::max(lastOfBars, lastOfSpan) >= shown.bars.back().date;
}

ChartData ChartSource::turned(const ChartData &shown) const
{
    const auto loaded = load(shown.security.code, shown.period, {}, shown.view);
    if (loaded && knowsDaysOf(loaded.value(), shown)) {
        return loaded.value();
    }
    ChartData chart = shown;
    chart.today = {};
    chart.today.day = lastDay();
    if (isOfSameSpan(shown.bars.back(), Bar{lastDay().number()}, shown.period)) {
        chart.today.before = shown.bars.back();
    }
    endWithToday(&chart);
    return chart;
}

std::optional<Bar> ChartSource::barOfToday(const ChartData &shown) const
{
    if (isOfAnEarlierDay(shown)) {
        return std::nullopt;
    }
    const bool isKnown = m_today->isReplayed(shown.security.id()) == m_practised.has_value();
    const MinuteBook *const minutes = isKnown ? todayOf(shown.security.code) : nullptr;
    std::optional<Bar> bar = spanBar(minutes, shown.today, shown.shownPrice(1, lastDay()));
    if (bar && minutes != nullptr) {
        bar->date = lastDay().number(); // minutes of a replay are dated today
    }
    return bar;
}

std::optional<double> ChartSource::closeBefore(const QString &code, Trading::TradingDate day) const
{
    if (!isToday(code, day)) {
        return m_folder.closeBefore(code, day);
    }
    const std::optional<double> told = todayOf(code)->previousClose();
    const bool isReplayed = m_today->isReplayed(findSecurity(m_folder.securities(), code)->id());
    return told ? told : m_folder.closeBefore(code, isReplayed ? m_today->recorded().value() : day);
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

void ChartSource::fillToday(const QString &code) const
{
    const Trading::TradingDate today = m_today->date();
    const std::vector<Trading::TradingDate> days = m_folder.minuteDays(code);
    if (std::binary_search(days.begin(), days.end(), today)) {
        const auto recorded = m_folder.load(code, ChartPeriod::Minute, today);
        if (recorded) {
            m_today->fill(recorded.value().security.id(), recorded.value().bars);
        }
    }
}

std::vector<FileStamp> ChartSource::stamps(const QString &code) const
{
    return {m_folder.dailyStamp(code), m_folder.minuteStamp(code, m_today->date())};
}

} // namespace Terminal
