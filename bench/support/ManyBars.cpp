#include "bench/support/ManyBars.h"

#include "tests/support/FakeHost.h"

#include <QDate>

std::uint32_t dateOf(int day)
{
    const QDate date = QDate(1750, 1, 1).addDays(day);
    return static_cast<std::uint32_t>(date.year() * 10000 + date.month() * 100 + date.day());
}

std::vector<Korvane::AnalyData> manyBars(int count)
{
    std::vector<Korvane::AnalyData> bars;
    bars.reserve(static_cast<std::size_t>(count));
    for (int day = 0; day < count; ++day) {
        bars.push_back(makeDayBar(dateOf(day), 9.0 + day % 7, 11.0 + day % 7));
    }
    return bars;
}
