#pragma once

#include "tests/support/OverlayTest.h"
#include "tests/support/SentAnswer.h"
#include "tests/support/SentTrade.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "tradechartobject/objects/BSPoint.h"

#include <cmath>
#include <string>
#include <vector>

/// The buy/sell points on daily bars.
class BSPointTest : public OverlayTest<BSPoint>
{
protected:
    const std::vector<Korvane::AnalyData> threeDays = {
        makeDayBar(20240102, 9, 11), makeDayBar(20240103, 10, 12), makeDayBar(20240104, 11, 13)};

    /// An object that shows 600536 on three daily bars; its question for them is forgotten.
    void createOnThreeDays()
    {
        create();
        ASSERT_TRUE(calc(shanghai, threeDays, Korvane::DayPeriod));
        bus().sent.clear();
    }

    static void hearRows(const TradesAnswer &kind, const std::vector<SentTrade> &rows)
    {
        QJsonArray data;
        for (const SentTrade &row : rows) {
            data.append(row.in(kind));
        }
        hear(TradeChart::Topic::TRADEQUERY, sentAnswer(kind.name, data));
    }

    static void hearHistory(const std::vector<SentTrade> &rows) { hearRows(pastTrades, rows); }
    static void hearToday(const std::vector<SentTrade> &rows) { hearRows(todaysTrades, rows); }

    /// What is drawn on each bar: B, S, T for both, a blank for nothing, # for two markers.
    std::string drawn()
    {
        paint();
        std::string marks(painter.barCount, ' ');
        for (const FakePainter::Call &call : painter.calls) {
            for (std::size_t bar = 0; bar < painter.barCount; ++bar) {
                EXPECT_TRUE(call.values[bar] == 1.0 || std::isnan(call.values[bar]));
                if (call.values[bar] == 1.0) {
                    marks[bar] = marks[bar] == ' ' ? "B S T"[call.ints[1]] : '#';
                }
            }
        }
        return marks;
    }

    QStringList listOn(int bar)
    {
        axis.popups.clear();
        overlay->handleMousePress(bar * 10.0, 0);
        return axis.popups.empty() ? QStringList() : axis.popups.front();
    }

    double anchorY(double high) const { return axis.yOf(high); }
};
