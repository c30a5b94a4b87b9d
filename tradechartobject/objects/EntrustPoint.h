#pragma once

#include "endpoint/EndPoint.h"
#include "tradechartobject/ChartInterface.h"
#include "tradechartobject/TradeChartExport.h"
#include "tradechartobject/common/EntrustInfo.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QObject>
#include <QString>
#include <QVector>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

class QTimer;

namespace TradeChart {
class AnswerRows;
class SettlingWaits;
class TradeMessage;
} // namespace TradeChart

/// The order points: on the intraday chart, a marker for each price at which the account has orders in
/// a minute, told apart by side and by how much is dealt. A click lists the orders behind a marker; one
/// that can still be cancelled is cancelled after the user has confirmed it.
///
/// The orders of the day, or of the past day that the chart shows, are asked for when calcIt() brings a
/// new security; today's again when the refresh timer ends and one second after each notification for
/// the shown security. On any other period than the intraday one nothing is drawn.
///
/// Its size holds for the compiler and the standard library that the library was built with (Debian 12: gcc
/// 12, libstdc++): programs of others take the factory.
class TRADECHARTOBJECT_EXPORT EntrustPoint : public QObject, public Korvane::IChartObject
{
public:
    /// Joins the terminal's bus; asks nothing yet. `config`: "auto_refresh_time", seconds, default 10.
    /// The object belongs to the host: `parent` is not used. Requires that `axis` outlives the object.
    EntrustPoint(Korvane::IChartAxis &axis, QJsonObject config, QObject *parent);
    ~EntrustPoint() override;

    int type() const override;
    bool deleteObject() override;
    /// Throws std::length_error for a count below zero.
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

    /// Asks for today's orders.
    void sendQueryTodayEntrustInfoReq();

    /// Asks for the orders of `date`, yyyymmdd; false when the bus refused the question.
    bool sendQueryHistoryEntrustInfoReq(long long date);

    /// Asks the trading module to cancel an order of the shown security.
    void sendCancelOrderReq(TradeChart::EntrustInfo &order);

    /// May run the event loop for a second: the object can be gone when it returns.
    void handleTradeNotify(QByteArray topic, QByteArray message);

    /// Replaces the orders by those of the answer, unless it is empty; always true.
    bool handleQueryTodayEntrustInfoRes(QJsonArray data);

    /// The same for the orders of a past day; always true.
    bool handleQueryHistoryEntrustInfoRes(QJsonArray data);

    /// Groups the orders by bar and by price; always true. Without orders or bars the last grouping stays.
    bool calcEntrustPointPriceInfo();

private:
    void changeSecurity(const Korvane::tagCodeWithName &code);
    void askForOrders();
    void handleNotification(const TradeChart::TradeMessage &notification);
    void handleAnswer(const TradeChart::TradeMessage &answer);
    void takeOrders(const TradeChart::AnswerRows &rows);
    void showCancelAnswer(const TradeChart::TradeMessage &answer);
    std::vector<TradeChart::EntrustInfo> ordersAt(double x, double y) const;
    void offerCancellation(const TradeChart::EntrustInfo &order, const Korvane::tagCodeWithName &security,
                           const std::string &text);
    void cancel(const TradeChart::EntrustInfo &order, const Korvane::tagCodeWithName &security);

    Korvane::IChartAxis &m_axis;
    LocalCommunication::EndPoint m_endPoint{nullptr};
    Korvane::tagCodeWithName m_code;
    Korvane::Period m_period = Korvane::NoPeriod;
    std::vector<std::int64_t> m_barTimes; ///< date-time per bar
    std::int64_t m_firstDate = -1;        ///< yyyymmdd of the first bar, -1 before there was one
    std::int64_t m_lastDate = -1;
    bool m_isTodayChart; ///< when the object was made
    int m_lastArg = 0;
    std::map<int, std::map<std::int64_t, int>> m_priceMarks;                 ///< bar, price key: marker kind
    std::map<int, QVector<TradeChart::EntrustInfo>> m_barOrders;             ///< by bar
    std::map<std::int64_t, QVector<TradeChart::EntrustInfo>> m_ordersByTime; ///< by the minute shown at
    QTimer *m_refreshTimer; ///< child; null after deleteObject()
    int m_refreshSeconds;
    QString m_objectId; ///< tells the answers to this object's cancellations
    const std::unique_ptr<TradeChart::SettlingWaits> m_waits; ///< of notifications still to be asked about
};
