#pragma once

#include "endpoint/EndPoint.h"
#include "tradechartobject/ChartInterface.h"
#include "tradechartobject/TradeChartExport.h"
#include "tradechartobject/common/Trade.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QObject>

#include <cstdint>
#include <map>
#include <vector>

class QTimer;

namespace TradeChart {
class AnswerRows;
struct DaySides;
struct TradeMarks;
class TradeMessage;
} // namespace TradeChart

/// The buy/sell points: on the daily chart, a marker on each bar on whose day the account traded - bought,
/// sold or both - and on a click the list of that day's trades.
///
/// Past trades are asked for whenever calcIt() brings another range of days, today's trades when the
/// refresh timer ends and after each notification for the shown security. Trades are held by day
/// until the security changes. calcIt() refuses any other period than the daily one and keeps what is
/// shown; the host hides the overlay meanwhile.
///
/// Its size holds for the compiler and the standard library that the library was built with (Debian 12: gcc
/// 12, libstdc++): programs of others take the factory.
class TRADECHARTOBJECT_EXPORT BSPoint : public QObject, public Korvane::IChartObject
{
public:
    /// Joins the terminal's bus and starts the refresh timer; asks nothing yet. `config`:
    /// "auto_refresh_time", seconds, default 10. Requires that `axis` outlives the object.
    BSPoint(Korvane::IChartAxis &axis, QJsonObject config, QObject *parent);
    ~BSPoint() override;

    int type() const override;
    bool deleteObject() override;
    bool calcIt(const Korvane::tagCodeWithName &code, const Korvane::AnalyData *bars, int count,
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

    /// True for the one period that the markers are drawn on.
    bool isPaintItPeriod(Korvane::Period period);

    /// Asks for today's trades.
    void sendQueryTodayTradeInfoReq();

    /// Asks for the trades from m_startDate to m_endDate; false when the bus refused the question.
    bool sendQueryHistoryTradeInfoReq();

    /// Takes the answers for the shown security; asks for today's trades when it is told of one.
    void handleTradeNotify(QByteArray topic, QByteArray message);

    /// Replaces the trades of one day, the day of the last row; always true.
    bool handleQueryTodayTradeInfoRes(QJsonArray rows);

    /// Adds the rows to the trades of their days; always true. Nothing is compared with what is held
    /// already: the trading module's list is taken at its word.
    bool handleQueryHistoryTradeInfoRes(QJsonArray rows);

    /// Marks the bars on whose days there are trades; always true. Marks are only added: calcIt()
    /// clears them.
    bool calcBSPointPriceInfo();

private:
    void changeSecurity(const Korvane::tagCodeWithName &code);
    void readBars(const Korvane::AnalyData *bars, int count);
    bool askForShownDays();
    void handleAnswer(const TradeChart::TradeMessage &answer);
    void takeTodaysTrades(const TradeChart::AnswerRows &rows);
    void takePastTrades(const TradeChart::AnswerRows &rows);
    void showTrades();
    TradeChart::TradeMarks marks();
    void tellHostWhichBar(int bar) const;

    Korvane::IChartAxis &m_axis;
    LocalCommunication::EndPoint m_endPoint{nullptr};
    Korvane::tagCodeWithName m_code;
    Korvane::Period m_period = Korvane::NoPeriod;
    std::vector<std::int64_t> m_barTimes; ///< date-time per bar
    std::int64_t m_startDate = -1;        ///< yyyymmdd of the last question for past trades, -1 for none
    std::int64_t m_endDate = -1;
    int m_calcArg = 0;
    std::map<std::int64_t, std::vector<TradeChart::trade_cj>> m_trades; ///< by day; as received within a day
    std::vector<double> m_barAnchors;                                   ///< high price per bar
    std::vector<double> m_buyMarks; ///< this and the next two: never shorter than m_barTimes
    std::vector<double> m_sellMarks;
    std::vector<double> m_bothMarks;
    QTimer *m_refreshTimer; ///< child; null after deleteObject()
    int m_refreshSeconds;
    std::vector<TradeChart::DaySides> m_daySides; ///< m_trades in short
};
