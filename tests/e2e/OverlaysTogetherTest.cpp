// All overlays on the same security of one chart, on one bus that the trading module serves.
#include "tests/e2e/TradingModule.h"

#include <QDate>
#include <QTimeZone>

#include <algorithm>
#include <cmath>

using ::testing::UnorderedElementsAre;

namespace {

/// The day on which the module stands, whatever the time zone of the charts.
QDate exchangeToday()
{
    return QDateTime::currentDateTimeUtc().toTimeZone(QTimeZone(8 * 3600)).date();
}

std::uint32_t dateNumber(const QDate &date)
{
    return static_cast<std::uint32_t>(date.year() * 10000 + date.month() * 100 + date.day());
}

class OverlaysTogether : public TradingModule
{
protected:
    OverlaysTogether()
    {
        axis.mode = Korvane::TodayChart; // today's chart
        for (std::uint32_t minute = 1; minute <= 240; ++minute) {
            const std::uint32_t ofDay = minute <= 120 ? 570 + minute : 660 + minute;
            minutes.push_back(makeMinuteBar(dateNumber(QDate::currentDate()), ofDay / 60 * 100 + ofDay % 60));
        }
    }

    /// The ledger and the module, and the overlays when the module answers.
    void begin()
    {
        import("20240102,09:30:15,600536,中国软件,买入,30.00,200,6000.00,1,11\n"
               "20240103,10:00:00,600536,中国软件,买入,33.00,100,3300.00,2,12\n");
        command({QStringLiteral("place"), QStringLiteral("600536"), QStringLiteral("buy"),
                 QStringLiteral("29.50"), QStringLiteral("100")});
        serve();
        cost = create(0);
        ASSERT_TRUE(redrawUntil(*cost, [this] { return std::isfinite(paintedCost(*cost)); }));
        points = create(1);
        orders = create(2);
        combinedCost = construct(0);
        combinedTrades = construct(1);
    }

    /// The combined overlay hears the others' questions: it asks last, so its answer is the last it hears.
    void redraw()
    {
        calc(*cost, chinaSoft, days);
        calc(*points, chinaSoft, days);
        calc(*orders, chinaSoft, minutes, Korvane::IntradayPeriod);
        calc(*combinedCost, chinaSoft, days);
        calc(*combinedTrades, chinaSoft, days);
    }

    bool redrawUntil(const std::function<bool()> &condition)
    {
        return waitUntil([&] {
            redraw();
            return condition();
        });
    }
    using TradingModule::redrawUntil;

    /// Prices of the order markers.
    std::vector<double> paintedOrders() const
    {
        std::vector<double> prices;
        for (const FakePainter::Call &call : paint(*orders).calls) {
            prices.push_back(call.number);
        }
        return prices;
    }

    bool isAllShown() const
    {
        return paintedCost(*cost) == 31.0 && paintedCost(*combinedCost) == 31.0 &&
               paintedMarks(*points) == "BB " && paintedMarks(*combinedTrades) == "B  " &&
               paintedOrders() == std::vector<double>{29.5};
    }

    QStringList listAt(Korvane::IChartObject &overlay, FakeAxis &its, double x, double y) const
    {
        its.popups.clear();
        overlay.handleMousePress(x, y);
        return its.popups.empty() ? QStringList() : its.popups.front();
    }

    Overlay cost;
    Overlay points;
    Overlay orders;
    Overlay combinedCost;
    Overlay combinedTrades;
    std::vector<Korvane::AnalyData> days = {makeDayBar(20240102), makeDayBar(20240103),
                                            makeDayBar(dateNumber(exchangeToday()))};
    std::vector<Korvane::AnalyData> minutes;
};

TEST_F(OverlaysTogether, ShowEachItsOwn)
{
    begin();
    ASSERT_TRUE(redrawUntil([this] { return isAllShown(); }));
    EXPECT_EQ(listAt(*points, axis, 0, 0),
              QStringList{QStringLiteral("买入\t09:30:15\t成交价:30.00\t成交量:200")})
        << "once: the answer to the combined overlay's question is not taken";
    combinedAxis.expectLines = 2;
    EXPECT_EQ(listAt(*combinedTrades, combinedAxis, 0, combinedAxis.yOf(20)),
              (QStringList{QStringLiteral("买入\t00:00:00\t成交价:30.00\t成交量:200"),
                           QStringLiteral("买入\t00:00:00\t成交价:33.00\t成交量:100")}));
    const FakePainter::Call marker = paint(*orders).calls.front();
    EXPECT_TRUE(listAt(*orders, axis, marker.ints[1] * 10.0, axis.yOf(29.5))
                    .value(0)
                    .contains(QStringLiteral("委托价格:29.500")));

    std::sort(axis.updated.begin(), axis.updated.end());
    axis.updated.erase(std::unique(axis.updated.begin(), axis.updated.end()), axis.updated.end());
    EXPECT_THAT(axis.updated, UnorderedElementsAre(cost.get(), points.get(), orders.get()));
    EXPECT_TRUE(combinedAxis.updated.empty());
}

TEST_F(OverlaysTogether, FollowATradeOfToday)
{
    begin();
    ASSERT_TRUE(redrawUntil([this] { return isAllShown(); }));
    import(exchangeToday().toString(QStringLiteral("yyyyMMdd")).toLatin1() +
           ",10:30:00,600536,中国软件,卖出,34.50,300,10350.00,3,13\n");
    EXPECT_TRUE(redrawUntil([this] {
        return paintedMarks(*points) == "BBS" && paintedMarks(*combinedTrades) == "S  " &&
               std::isnan(paintedCost(*cost)) && std::isnan(paintedCost(*combinedCost));
    }));
    EXPECT_EQ(paintedOrders(), std::vector<double>{29.5});
}

TEST_F(OverlaysTogether, LoseTheCombinedTradesToALaterHistoryQuestionUntilTheNextOfTheirOwn)
{
    begin();
    ASSERT_TRUE(redrawUntil([this] { return isAllShown(); }));
    const Overlay later = create(1);
    calc(*later, chinaSoft, days);
    ASSERT_TRUE(redrawUntil([this] { return paintedMarks(*combinedTrades) == "   "; }));
    ASSERT_TRUE(waitUntil([&] { return paintedMarks(*later) == "BB "; }));
    EXPECT_EQ(paintedMarks(*points), "BB ") << "questions of others are nothing to it";
    days.erase(days.begin());
    EXPECT_TRUE(redrawUntil([this] { return paintedMarks(*combinedTrades) == "B "; }));
}

} // namespace
