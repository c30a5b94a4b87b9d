#include "tradechartobject/objects/BSPoint_p.h"
#include "tradechartobject/common/BarTime.h"
#include "tradechartobject/common/DebugLog.h"
#include "tradechartobject/common/NumberText.h"
#include "tradechartobject/common/TradeLine.h"
#include "tradechartobject/common/TradeVocabulary.h"

#include <QDebug>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <iterator>
#include <limits>

namespace TradeChart {

namespace {

constexpr std::int64_t noDay = -1;
constexpr std::int64_t afterAllTimes = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t beforeAllTimes = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t lastTimeOfDay = 999999; // beyond any hhmmss

// Rows

/// What a row says. What is missing or no text reads as zero, and as a sell: trades carry single
/// letters, not the direction codes of orders.
struct DatedTrade
{
    std::int64_t date; ///< yyyymmdd
    int time;          ///< hhmmss
    trade_cj trade;
};

void takeDate(DatedTrade &read, const RowField &field)
{
    read.date = toInt(field.text());
    read.trade.matchTime = dateTime(read.date, read.time);
}

void takeTime(DatedTrade &read, const RowField &field)
{
    read.time = toInt(field.text()) / 100;
    read.trade.matchTime = dateTime(read.date, read.time);
}

void takeSide(DatedTrade &read, const RowField &field)
{
    read.trade.isBuy = field.text() == QLatin1String(BSFlag::BUY);
}

void takePrice(DatedTrade &read, const RowField &field)
{
    read.trade.matchPrice = toDouble(field.text());
}

void takeQty(DatedTrade &read, const RowField &field)
{
    read.trade.matchQty = toDouble(field.text());
}

const RowColumn<DatedTrade> todayColumns[] = {
    {TradeKeyFields::RTSORDERDATE, takeDate},   // yyyymmdd, of the order
    {TradeKeyFields::RTSENTRUSTTIME, takeTime}, // hhmmsscc, of the order
    {TradeKeyFields::RTSBSFLAG, takeSide},      // "B" or "S"
    {TradeKeyFields::RTSMATCHPRICE, takePrice}, // yuan
    {TradeKeyFields::RTSMATCHQTY, takeQty},     // shares
};

const RowColumn<DatedTrade> historyColumns[] = {
    {TradeKeyFields::RTSDATE, takeDate},        // yyyymmdd, of the trade
    {TradeKeyFields::RTSMATCHTIME, takeTime},   // hhmmsscc, of the trade
    {TradeKeyFields::RTSBSFLAG, takeSide},      // "B" or "S"
    {TradeKeyFields::RTSMATCHPRICE, takePrice}, // yuan
    {TradeKeyFields::RTSMATCHQTY, takeQty},     // shares
};

/// Writes the debug line of every row, if debug lines are written.
class RowLog
{
public:
    RowLog(const char *prefix, QJsonDocument::JsonFormat format) : m_prefix(prefix), m_format(format) {}

    template <class Row>
    void write(const Row &row) const
    {
        if (m_isOn) {
            qDebug() << m_prefix << QString::fromUtf8(QJsonDocument(row.toObject()).toJson(m_format));
        }
    }

private:
    const char *m_prefix;
    QJsonDocument::JsonFormat m_format;
    bool m_isOn = isDebugLogOn();
};

// Marks

using Day = std::vector<DaySides>::const_iterator;

/// Finds the days of bars that mostly come in the order of the days: the search goes on where it ended.
/// Should a host's bars step back, it starts anew.
class DaySearch
{
public:
    explicit DaySearch(const std::vector<DaySides> &days) : m_days(days), m_found(days.cbegin())
    {
        keepSpan();
    }

    /// The sides of the day of a bar; null when it has no trades. The bars are many: times are compared as
    /// they are, and only that of a bar beyond the day that was found is taken apart.
    const DaySides *find(std::int64_t time)
    {
        if (time < m_previous || time > m_end) {
            m_found = firstNotBefore(tradingDay(time), time < m_previous ? m_days.cbegin() : m_found);
            keepSpan();
        }
        m_previous = time;
        return time >= m_begin ? &*m_found : nullptr;
    }

private:
    /// The first and last time of which tradingDay() is the day that was found; it cuts towards zero.
    void keepSpan()
    {
        m_begin = m_end = afterAllTimes;
        if (m_found != m_days.cend()) {
            const std::int64_t midnight = dateTime(m_found->day, 0);
            m_begin = m_found->day > 0 ? midnight : midnight - lastTimeOfDay;
            m_end = m_found->day < 0 ? midnight : midnight + lastTimeOfDay;
        }
    }

    /// The first day, from `from` on, that is not before a bar's. Mostly it is the same or the next one.
    Day firstNotBefore(std::int64_t day, Day from) const
    {
        const auto isBefore = [](const DaySides &sides, std::int64_t wanted) { return sides.day < wanted; };
        for (int step = 0; step < 2; ++step, ++from) {
            if (from == m_days.cend() || !isBefore(*from, day)) {
                return from;
            }
        }
        return std::lower_bound(from, m_days.cend(), day, isBefore);
    }

    const std::vector<DaySides> &m_days;
    Day m_found;
    std::int64_t m_begin = 0;
    std::int64_t m_end = 0;
    std::int64_t m_previous = beforeAllTimes;
};

void markBar(std::size_t bar, const DaySides &sides, const TradeMarks &marks)
{
    if (sides.hasBuys) {
        marks.buys[bar] = marked;
    }
    if (sides.hasSells) {
        marks.sells[bar] = marked;
    }
    mergeSides(marks, bar);
}

// Lines

/// The side under which a trade is listed: the marker's, or the trade's own under a marker of both
/// sides; null without a marker.
const char *lineSide(TradeMarker marker, const trade_cj &trade)
{
    switch (marker) {
    case TradeMarker::Both:
        return sideText(trade.isBuy);
    case TradeMarker::Buys:
        return sideText(true);
    case TradeMarker::Sells:
        return sideText(false);
    case TradeMarker::None:
        break;
    }
    return nullptr;
}

} // namespace

TodaysTrades readTodaysTrades(const AnswerRows &rows)
{
    const RowLog log("handleQueryTradeInfoRes obo:", QJsonDocument::Indented);
    TodaysTrades today{noDay, {}};
    today.trades.reserve(static_cast<std::size_t>(rows.size()));
    rows.read(todayColumns, [&](const DatedTrade &read, const auto &row) {
        log.write(row);
        today.day = read.date;
        today.trades.push_back(read.trade);
    });
    return today;
}

void addPastTrades(const AnswerRows &rows, TradesByDay &trades)
{
    const RowLog log("handleQueryHistoryTradeInfoRes obo:", QJsonDocument::Compact);
    auto day = trades.end();
    rows.read(historyColumns, [&](const DatedTrade &read, const auto &row) {
        log.write(row);
        if (day == trades.end() || day->first != read.date) { // rows of a day mostly follow each other
            day = trades.try_emplace(day == trades.end() ? day : std::next(day), read.date); // and so do days
        }
        day->second.push_back(read.trade);
    });
    for (auto &[date, tradesOfDay] : trades) {
        tradesOfDay.shrink_to_fit(); // held for as long as the security is shown
    }
}

std::vector<DaySides> sumUpDays(const TradesByDay &trades)
{
    std::vector<DaySides> days;
    days.reserve(trades.size());
    for (const auto &[day, tradesOfDay] : trades) {
        const auto isBuy = [](const trade_cj &trade) { return trade.isBuy; };
        days.push_back({static_cast<std::int32_t>(day),
                        std::any_of(tradesOfDay.begin(), tradesOfDay.end(), isBuy),
                        !std::all_of(tradesOfDay.begin(), tradesOfDay.end(), isBuy)});
    }
    return days;
}

void markDays(const std::vector<DaySides> &days, const std::vector<std::int64_t> &barTimes,
              const TradeMarks &marks)
{
    if (days.empty()) {
        return;
    }
    DaySearch search(days);
    std::size_t bar = 0;
    for (const std::int64_t time : barTimes) {
        if (const DaySides *sides = search.find(time)) {
            markBar(bar, *sides, marks);
        }
        ++bar;
    }
}

std::vector<std::string> listTrades(const std::vector<trade_cj> &trades, TradeMarker marker)
{
    std::vector<std::string> lines;
    lines.reserve(expectedTradeLines);
    for (const trade_cj &trade : trades) {
        if (const char *side = lineSide(marker, trade)) {
            lines.push_back(tradeLine(side, trade));
        }
    }
    return lines;
}

} // namespace TradeChart
