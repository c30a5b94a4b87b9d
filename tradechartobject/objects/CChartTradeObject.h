#pragma once

#include "endpoint/EndPoint.h"
#include "tradechartobject/ChartInterface.h"
#include "tradechartobject/TradeChartExport.h"
#include "tradechartobject/common/Trade.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QObject>

#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

namespace TradeChart {
class AnswerRows;
struct TradeMarks;
class TradeMessage;
} // namespace TradeChart

/// The combined overlay: the cost line or the trade markers, by configuration. It is the older of the
/// overlays; the factory does not make it, a terminal constructs it itself.
///
/// It has no timer and asks for no repaint: what it hears is shown at the next calcIt(). The cost and
/// today's trades are asked with a request that blocks the user interface for as long as the trading
/// module needs. Its questions name no screen, so it listens on the channel that everybody hears,
/// questions of other overlays included: one of them for the history of the same security reads as an
/// answer without trades.
///
/// Its list has no null pointer at the end; when popupMenu() is called, the property "popupLineCount" (an
/// int) of this object is its length. Read it on entry: a click inside the list shows another one and changes
/// it.
///
/// Its size holds for the compiler and the standard library that the library was built with (Debian 12: gcc
/// 12, libstdc++): programs of others take CombinedOverlay.h.
class TRADECHARTOBJECT_EXPORT CChartTradeObject : public QObject, public Korvane::IChartObject
{
public:
    /// Joins the terminal's bus; asks nothing yet. `json`: "type" 0 for the cost line, 1 for the trade
    /// markers; with any other, or a text that is no JSON object, or null, the object draws and asks
    /// nothing. Requires that `axis` outlives the object.
    CChartTradeObject(Korvane::IChartAxis &axis, const char *json);
    ~CChartTradeObject() override;

    int type() const override;
    bool deleteObject() override;
    bool calcIt(const Korvane::tagCodeWithName &code, const Korvane::AnalyData *data, int count,
                Korvane::Period period, int a, int b) override;
    bool calcRatio(int, int) override;
    double maximizeValue(int &) override;
    double minimizeValue(int &) override;
    bool paintIt(Korvane::IChartPainter &painter) override;
    int hitTest(double x, double y) override;
    void handleMousePress(double x, double y) override;
    void handleMousePressR(double x, double y) override;
    void handleMouseRelease(double x, double y) override;
    void handleMouseReleaseR(double x, double y) override;
    void handleMouseMove(double x, double y) override;

    /// Asks for the cost and blocks for the answer; false, and the cost as it was, without a security,
    /// without an answer, or when the host has switched to another security meanwhile.
    bool requestHolderPrice();

    /// Asks for the trades of the days from `start` to `end` (yyyymmdd) and holds that range as asked
    /// for; false, and the range as it was, when the bus refused the question.
    bool requestHistoryTradeInfo(long long start, long long end);

    /// Asks for today's trades and blocks for the answer; false, and the trades as they were, without one
    /// or when the host has switched to another security meanwhile.
    bool requestTodayTradeInfo();

    /// Adds the rows of an answer, today's behind and past ones in front of the trades held; always true.
    bool parseTradeInfo(QJsonArray array, bool isToday);

    /// Takes the answer with past trades for the shown security; asks for today's when it is told of one, and
    /// blocks for them.
    void handleTradeNotify(QByteArray topic, QByteArray payload);

    /// Marks the bars on which the trades stand. Marks are only added: calcIt() clears them.
    void calcTradeData(const Korvane::AnalyData *data, int count);

private:
    void showTrades(const Korvane::AnalyData *data, int count, Korvane::Period period);
    void drawMarkers(Korvane::IChartPainter &painter) const;
    int hitTestBar(int bar, double y);
    TradeChart::TradeMarks marksAbove();
    TradeChart::TradeMarks marksBelow();
    std::optional<TradeChart::TradeMessage> ask(const char *command);
    void addTrades(const TradeChart::AnswerRows &rows, bool isToday);

    Korvane::IChartAxis &m_axis;
    LocalCommunication::EndPoint m_endPoint{nullptr};
    Korvane::tagCodeWithName m_code;
    Korvane::Period m_period = Korvane::NoPeriod;
    int m_calcArg = 0;
    double m_maxPrice =
        std::numeric_limits<double>::min(); ///< for the price scale, as of the last calcRatio()
    double m_minPrice = std::numeric_limits<double>::max();
    std::vector<std::int64_t> m_barTimes; ///< date-time per bar
    int m_algorithmType;
    double m_holderPrice = std::numeric_limits<double>::quiet_NaN(); ///< NaN while unknown
    std::int64_t m_startDate = -1; ///< yyyymmdd of the last question for past trades, -1 for none
    std::int64_t m_endDate = -1;
    std::vector<TradeChart::trade_cj> m_trades; ///< past ones first
    std::vector<double> m_highs;                ///< per bar, as the marks
    std::vector<double> m_lows;
    std::vector<double> m_buyAbove; ///< at or above the close; stands at the high
    std::vector<double> m_buyBelow; ///< below the close; stands at the low
    std::vector<double> m_sellAbove;
    std::vector<double> m_sellBelow;
    std::vector<double> m_bothAbove;
    std::vector<double> m_bothBelow;
};
