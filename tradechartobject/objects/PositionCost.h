#pragma once

#include "endpoint/EndPoint.h"
#include "tradechartobject/ChartInterface.h"
#include "tradechartobject/TradeChartExport.h"

#include <QJsonObject>
#include <QObject>

#include <cstdint>
#include <limits>
#include <vector>

class QTimer;

namespace TradeChart {
class TradeMessage;
}

/// The cost line: the average cost price of the holding in the shown security, drawn as one
/// horizontal line with its price, on charts of any period.
///
/// It asks the trading module when calcIt() brings a new security, and again whenever its refresh
/// timer ends. The timer runs once for each calcIt() that finds it idle, so a chart that is no longer
/// redrawn asks no more. The line never takes part in the fitting of the price scale.
///
/// Its size holds for the compiler and the standard library that the library was built with (Debian 12: gcc
/// 12, libstdc++): programs of others take the factory.
class TRADECHARTOBJECT_EXPORT PositionCost : public QObject, public Korvane::IChartObject
{
public:
    /// Joins the terminal's bus; asks nothing yet. `config`: "auto_refresh_time", seconds, default 10.
    /// Requires that `axis` outlives the object.
    PositionCost(Korvane::IChartAxis &axis, QJsonObject config, QObject *parent);
    ~PositionCost() override;

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

    /// Asks the trading module for the cost price; nothing while no security is set.
    void sendQueryPositionCostReq();

    /// Takes the answer for the shown security; every other message is not for this object.
    void handleTradeNotify(QByteArray topic, QByteArray payload);

private:
    bool turnTo(const Korvane::tagCodeWithName &code);
    void takeHolding(const TradeChart::TradeMessage &holding);
    bool isAnswerForUs(const TradeChart::TradeMessage &holding) const;
    bool isCostVisible() const;

    Korvane::IChartAxis &m_axis;
    LocalCommunication::EndPoint m_endPoint{nullptr};
    Korvane::tagCodeWithName m_code;
    Korvane::Period m_period = Korvane::NoPeriod;
    std::vector<std::int64_t> m_barTimes; ///< date-time per bar; only their number is used
    double m_costPrice = std::numeric_limits<double>::quiet_NaN(); ///< NaN while unknown
    int m_calcArg = 0;
    QTimer *m_refreshTimer; ///< child; null after deleteObject()
    int m_refreshSeconds;
};
