#include "tests/terminal/data/ManyForms.h"

#include <gmock/gmock.h>

#include <QDate>
#include <QList>
#include <QLocale>

#include <algorithm>
#include <cmath>
#include <random>
#include <utility>

namespace Terminal {

namespace {

double cents(double price)
{
    return std::round(price * 100) / 100;
}

/// One bar after another, each near the one before, as markets go.
class Walk
{
public:
    Bar next(std::int32_t date, std::int32_t minute, double size)
    {
        Bar bar;
        bar.date = date;
        bar.minute = minute;
        bar.open = cents(m_price * (1 + size / 5 * step()));
        bar.close = cents(bar.open * (1 + size * step()));
        bar.high = cents(std::max(bar.open, bar.close) * (1 + size / 2 * std::abs(step())));
        bar.low = cents(std::min(bar.open, bar.close) * (1 - size / 2 * std::abs(step())));
        bar.volume = 100.0 * (1000 + static_cast<int>(m_random() % 90000));
        m_price = bar.close;
        return bar;
    }

private:
    double step() { return std::clamp(m_normal(m_random), -2.0, 2.0); }

    std::mt19937 m_random{5};
    std::normal_distribution<double> m_normal{0, 1};
    double m_price = 10;
};

QByteArray priceText(double price)
{
    return QByteArray::number(price, 'f', 2);
}

QByteArray clock(int minute, const char *between)
{
    const auto two = [](int number) { return QByteArray::number(number).rightJustified(2, '0'); };
    return two(minute / 60) + between + two(minute % 60);
}

} // namespace

Bars someDays()
{
    constexpr int count = 60;
    Walk walk;
    Bars bars;
    for (QDate day(2024, 1, 2); static_cast<int>(bars.size()) < count; day = day.addDays(1)) {
        if (day.dayOfWeek() < Qt::Saturday) {
            bars.push_back(walk.next(day.toString(QStringLiteral("yyyyMMdd")).toInt(), 0, 0.02));
        }
    }
    return bars;
}

Bars someMinutes()
{
    Walk walk;
    Bars bars;
    for (const int day : {20240102, 20240103}) {
        for (const auto &[first, last] : {std::pair(571, 690), std::pair(781, 900)}) {
            for (int minute = first; minute <= last; ++minute) {
                bars.push_back(walk.next(day, minute, 0.002));
            }
        }
    }
    return bars;
}

QByteArray FormOfDays::of(const Bars &bars) const
{
    QList<QByteArray> lines;
    double previousClose = bars.front().open;
    for (const Bar &bar : bars) {
        lines.append(row(bar, previousClose));
        previousClose = bar.close;
    }
    if (m_isNewestFirst) {
        std::reverse(lines.begin(), lines.end());
    }
    lines.prepend(m_header);
    return lines.join('\n') + '\n';
}

QByteArray FormOfDays::row(const Bar &bar, double previousClose) const
{
    const QDate day = dayOf(bar).calendarDate();
    const double amount = std::round(bar.volume * (bar.low + bar.high) / 2);
    const std::pair<const char *, QByteArray> words[] = {
        {"{d}", QByteArray::number(bar.date)},
        {"{iso}", day.toString(Qt::ISODate).toLatin1()},
        {"{slash}", day.toString(QStringLiteral("yyyy/M/d")).toLatin1()},
        {"{hhmm}", clock(bar.minute, "")},
        {"{hh:mm}", clock(bar.minute, ":")},
        {"{o}", priceText(bar.open)},
        {"{h}", priceText(bar.high)},
        {"{l}", priceText(bar.low)},
        {"{c}", priceText(bar.close)},
        {"{p}", priceText(previousClose)},
        {"{v}", QByteArray::number(bar.volume, 'f', 0)},
        {"{lots}", QByteArray::number(bar.volume / 100, 'f', 2)},
        {"{lots0}", QByteArray::number(bar.volume / 100, 'f', 0)},
        {"{v4}", QByteArray::number(bar.volume / 10000, 'f', 4)},
        {"{grouped}", QLocale(QLocale::English).toString(bar.volume, 'f', 0).toLatin1()},
        {"{lessYuan}", QByteArray::number(amount * 0.8, 'f', 2)},
        {"{millions}", QByteArray::number(amount / 1e6, 'f', 6)},
        {"{yuan}", QByteArray::number(amount, 'f', 2)},
        {"{thousands}", QByteArray::number(amount / 1000, 'f', 4)},
        {"{yuan4}", QByteArray::number(amount / 10000, 'f', 4)},
    };
    QByteArray row = m_row;
    for (const auto &[word, value] : words) {
        row.replace(word, value);
    }
    return row;
}

void expectSame(const Bars &found, const Bars &expected)
{
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i) {
        SCOPED_TRACE(expected[i].date);
        EXPECT_EQ(found[i].date, expected[i].date);
        EXPECT_EQ(found[i].minute, expected[i].minute);
        EXPECT_DOUBLE_EQ(found[i].open, expected[i].open);
        EXPECT_DOUBLE_EQ(found[i].high, expected[i].high);
        EXPECT_DOUBLE_EQ(found[i].low, expected[i].low);
        EXPECT_DOUBLE_EQ(found[i].close, expected[i].close);
        EXPECT_DOUBLE_EQ(found[i].volume, expected[i].volume);
    }
}

} // namespace Terminal
