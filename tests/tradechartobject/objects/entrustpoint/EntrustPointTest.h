#pragma once

#include "tests/support/OverlayTest.h"
#include "tests/support/SentAnswer.h"
#include "tests/support/SentOrder.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "tradechartobject/objects/EntrustPoint.h"

#include <algorithm>
#include <string>
#include <vector>

/// The order points on a chart of today.
class EntrustPointTest : public OverlayTest<EntrustPoint>
{
protected:
    EntrustPointTest() { axis.mode = Korvane::TodayChart; }

    static QJsonObject anOrder() { return SentOrder(); }

    const std::uint32_t today = dayFromToday(0);
    const std::vector<Korvane::AnalyData> threeMinutes = minutes({931, 932, 933});

    std::vector<Korvane::AnalyData> minutes(const std::vector<std::uint32_t> &times) const
    {
        std::vector<Korvane::AnalyData> bars;
        for (const std::uint32_t time : times) {
            bars.push_back(makeMinuteBar(today, time));
        }
        return bars;
    }

    /// An object that shows 600536 on the first three minutes of today; its question is forgotten.
    void createOnThreeMinutes(const QJsonObject &config = {})
    {
        create(config);
        ASSERT_TRUE(calc(shanghai, threeMinutes, Korvane::IntradayPeriod));
        bus().sent.clear();
    }

    static void hearOrders(const std::vector<QJsonObject> &rows, const char *cmd = "EntrustTodayTrade")
    {
        QJsonArray data;
        for (const QJsonObject &row : rows) {
            data.append(row);
        }
        hear(TradeChart::Topic::TRADEQUERY, sentAnswer(cmd, data));
    }

    static void notify() { hear(TradeChart::Topic::TRADENOTIFY, R"({"stkcode":"600536"})"); }

    /// Text of the order behind the marker at 10 on the first bar.
    std::string listedText()
    {
        listAt(0, yOfTen());
        return axis.popups.empty() ? std::string() : axis.popups.front().front().toStdString();
    }

    /// Every marker drawn: "bar kind price", with a v after it when it stands at the bottom edge.
    std::vector<std::string> drawn()
    {
        paint();
        std::vector<std::string> markers;
        for (const FakePainter::Call &call : painter.calls) {
            EXPECT_EQ(call.kind, FakePainter::Call::Marker);
            EXPECT_EQ(call.ints[0], 0);
            EXPECT_THAT(call.ints[3], ::testing::AnyOf(0, 1));
            markers.push_back(QStringLiteral("%1 %2 %3%4")
                                  .arg(call.ints[1])
                                  .arg(call.ints[2])
                                  .arg(call.number)
                                  .arg(QLatin1String(call.ints[3] == 1 ? "v" : ""))
                                  .toStdString());
        }
        return markers;
    }

    /// Numbers of the orders in the list that a click shows.
    std::vector<std::string> listAt(double x, double y)
    {
        axis.popups.clear();
        overlay->handleMousePress(x, y);
        std::vector<std::string> numbers;
        for (const QString &text : axis.popups.empty() ? QStringList() : axis.popups.front()) {
            numbers.push_back(
                text.section(QLatin1Char('\n'), 2, 2).section(QLatin1Char(':'), 1).toStdString());
        }
        return numbers;
    }

    /// Clicks the marker at 10 on the first bar and chooses a row.
    void choose(int row)
    {
        axis.onPopup = [row] { return row; };
        overlay->handleMousePress(0, yOfTen());
    }

    double yOfTen() const { return axis.yOf(10.0); }

    /// Lets the refresh timer run as only a test does, for timerRunsOn().
    void startTimerOddly() { timer()->start(oddMilliseconds); }

    /// True while nobody has stopped the timer nor started it anew.
    bool timerRunsOn() const { return timer()->isActive() && timer()->interval() == oddMilliseconds; }

    static int countOf(const char *command)
    {
        const auto all = questions();
        return static_cast<int>(std::count_if(all.begin(), all.end(), [command](const QByteArray &question) {
            return question.contains(command);
        }));
    }

    static int todayQuestions() { return countOf("EntrustTodayTrade"); }

private:
    static constexpr int oddMilliseconds = 123456;
};
