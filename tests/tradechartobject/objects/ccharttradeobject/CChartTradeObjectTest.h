#pragma once

#include "tests/support/OverlayTest.h"
#include "tests/support/SentAnswer.h"
#include "tests/support/SentTrade.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "tradechartobject/objects/CChartTradeObject.h"

#include <optional>
#include <string>
#include <vector>

inline constexpr char costLine[] = R"({"type":0})";
inline constexpr char tradeMarkers[] = R"({"type":1})";

MATCHER_P(HasText, text, "")
{
    return arg.contains(text);
}

inline QByteArray exactly(double number)
{
    return QByteArray::number(number, 'g', 17);
}

inline QJsonObject buy(double price, double quantity = 100)
{
    return SentTrade{"B", "20240103", "", exactly(price), exactly(quantity)}.asNumbers();
}

inline QJsonObject sell(double price, double quantity = 100)
{
    return SentTrade{"S", "20240103", "", exactly(price), exactly(quantity)}.asNumbers();
}

/// A line of the list that a click shows: trades without a time.
inline QString line(const char *side, const char *price, const char *quantity = "100")
{
    return QStringLiteral("%1\t00:00:00\t成交价:%2\t成交量:%3")
        .arg(QString::fromUtf8(side), QLatin1String(price), QLatin1String(quantity));
}

/// The combined overlay on daily bars, as a cost line or with the markers of trades.
class CChartTradeObjectTest : public OverlayTest<CChartTradeObject>
{
protected:
    /// Each closes at 10.00.
    const std::vector<Korvane::AnalyData> threeDays = {
        makeDayBar(20240102, 9, 11), makeDayBar(20240103, 8, 12), makeDayBar(20240104, 7, 13)};

    CChartTradeObject &create(const char *json)
    {
        overlay = new CChartTradeObject(axis, json);
        owner.reset(overlay);
        return *overlay;
    }

    /// The trade markers of 600536 on three daily bars; the question for them is forgotten.
    void createMarkers()
    {
        create(tradeMarkers);
        ASSERT_TRUE(calc(shanghai, threeDays, Korvane::DayPeriod));
        bus().sent.clear();
    }

    /// The cost line of 600536 on three daily bars, at the cost that the trading module sends.
    void createLine(const QByteArray &answer)
    {
        answerWith(answer);
        create(costLine);
        ASSERT_TRUE(calc(shanghai, threeDays, Korvane::DayPeriod));
    }

    /// What the blocking requests come back with.
    static void answerWith(const QByteArray &answer)
    {
        bus().answerRequest = [answer](const RecordedBus::Message &) { return answer; };
    }

    static QByteArray todaysAnswer(const QJsonArray &rows)
    {
        return QJsonDocument(QJsonObject{{QStringLiteral("data"), rows}}).toJson();
    }

    static QJsonObject historyAnswer(const QJsonArray &rows) { return sentAnswer("HistoryTrade", rows); }

    static void hearHistory(const QJsonArray &rows)
    {
        hear(TradeChart::Topic::TRADEQUERY, historyAnswer(rows));
    }

    static void hearNotification() { hear(TradeChart::Topic::TRADENOTIFY, R"({"stkcode":"600536"})"); }

    void recalc() { calc(shanghai, threeDays, Korvane::DayPeriod); }

    static std::vector<QByteArray> requests()
    {
        std::vector<QByteArray> texts;
        for (const RecordedBus::Message &message : bus().requests) {
            texts.push_back(message.payload);
        }
        return texts;
    }

    /// The markers on each bar, by the painter's style: 0 buy, 2 sell, 4 both above the close, 1, 3, 5
    /// below. Bars are parted by a blank, a dash stands for a bar without markers.
    std::string drawn()
    {
        paint();
        std::string markers;
        for (std::size_t bar = 0; bar < painter.barCount; ++bar) {
            markers += bar == 0 ? "" : " ";
            const std::size_t before = markers.size();
            for (const FakePainter::Call &call : painter.calls) {
                if (call.kind == FakePainter::Call::MarkerSeries && call.values[bar] == 1.0) {
                    markers += std::to_string(call.ints[1]);
                }
            }
            markers += markers.size() == before ? "-" : "";
        }
        return markers;
    }

    std::optional<double> drawnCost()
    {
        paint();
        for (const FakePainter::Call &call : painter.calls) {
            if (call.kind == FakePainter::Call::LineSeries) {
                return call.values.front();
            }
        }
        return std::nullopt;
    }

    /// Puts a mark into the series that is painted in `style`. Trades without a time never leave their
    /// bar, so no bar gets the marks of both sides in one by itself.
    void mark(int style, std::size_t bar)
    {
        paint();
        for (const FakePainter::Call &call : painter.calls) {
            if (call.kind == FakePainter::Call::MarkerSeries && call.ints[1] == style) {
                const_cast<double &>(call.flags[bar]) = 1.0;
            }
        }
    }

    /// The list after a click on `bar` at the height of `price`; the host is told its length.
    QStringList listAt(int bar, double price, int expectedLines)
    {
        axis.popupHasTerminator = false;
        axis.expectLines = expectedLines;
        axis.popups.clear();
        overlay->handleMousePress(bar * 10.0, axis.yOf(price));
        return axis.popups.empty() ? QStringList() : axis.popups.front();
    }
};
