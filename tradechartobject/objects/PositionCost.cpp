#include "tradechartobject/objects/PositionCost.h"

#include "tradechartobject/common/BarTime.h"
#include "tradechartobject/common/BusLink.h"
#include "tradechartobject/common/CostLine.h"
#include "tradechartobject/common/OverlayQuestion.h"
#include "tradechartobject/common/PriceScale.h"
#include "tradechartobject/common/RefreshTimer.h"
#include "tradechartobject/common/Security.h"
#include "tradechartobject/common/TradeMessage.h"
#include "tradechartobject/common/TradeVocabulary.h"

#include <QPointer>

#include <cmath>

using namespace TradeChart;

namespace {

constexpr int labelDecimals = 3;

} // namespace

PositionCost::PositionCost(Korvane::IChartAxis &axis, QJsonObject config, QObject *parent)
    : QObject(parent),
      m_axis(axis),
      m_code(noSecurity()),
      m_refreshTimer(RefreshTimer::create(this, &PositionCost::sendQueryPositionCostReq)),
      m_refreshSeconds(RefreshTimer::seconds(config))
{
    BusLink::join(m_endPoint);
    BusLink::listen(m_endPoint, this, &PositionCost::handleTradeNotify);
    BusLink::subscribeScreen(m_endPoint, m_axis);
}

PositionCost::~PositionCost()
{
    BusLink::leave(m_endPoint, this);
}

int PositionCost::type() const
{
    return Korvane::pluginObjectType;
}

bool PositionCost::deleteObject()
{
    RefreshTimer::remove(m_refreshTimer);
    return true;
}

bool PositionCost::calcIt(const Korvane::tagCodeWithName &code, const Korvane::AnalyData *bars, int count,
                          Korvane::Period period, int a, int)
{
    m_period = period;
    m_calcArg = a;
    if (!isSameSecurity(code, m_code) && !turnTo(code)) {
        return true;
    }
    decodeBarTimes(bars, count, period, m_barTimes);
    RefreshTimer::startIfIdle(m_refreshTimer, m_refreshSeconds);
    return true;
}

/// Turns to another security and asks for its cost. False when the host, while the question went out, has
/// ended this object or turned it to yet another security: the bars at hand are no longer the chart's then.
bool PositionCost::turnTo(const Korvane::tagCodeWithName &code)
{
    m_code = code;
    m_costPrice = unknownCost;
    const QPointer<QObject> self(this);
    sendQueryPositionCostReq();
    return self && isSameSecurity(code, m_code);
}

bool PositionCost::calcRatio(int, int)
{
    return false;
}

double PositionCost::maximizeValue(int &)
{
    return neutralMaximum;
}

double PositionCost::minimizeValue(int &)
{
    return neutralMinimum;
}

bool PositionCost::paintIt(Korvane::IChartPainter &painter)
{
    if (isCostVisible()) {
        drawCostLine(painter, m_barTimes.size(), m_costPrice, labelDecimals);
    }
    painter.endPaint();
    return true;
}

int PositionCost::hitTest(double, double y)
{
    return hitTestCostLine(m_axis, m_costPrice, y);
}

void PositionCost::handleMousePress(double, double) {}

void PositionCost::handleMousePressR(double, double) {}

void PositionCost::handleMouseRelease(double, double) {}

void PositionCost::handleMouseReleaseR(double, double) {}

void PositionCost::handleMouseMove(double, double) {}

void PositionCost::sendQueryPositionCostReq()
{
    if (isSet(m_code)) {
        BusLink::send(m_endPoint, screenRequest(CmdType::HOLDERCOSTPRICE, m_code, m_axis), __func__);
    }
}

void PositionCost::handleTradeNotify(QByteArray topic, QByteArray payload)
{
    if (topic != Topic::TRADEQUERY || !TradeMessage::mayBeCommand(payload, {CmdType::HOLDERCOSTPRICE})) {
        return;
    }
    const auto answer = TradeMessage::parse(payload);
    if (answer && answer->isCommand(CmdType::HOLDERCOSTPRICE)) {
        takeHolding(answer->record());
    }
}

void PositionCost::takeHolding(const TradeMessage &holding)
{
    if (!isAnswerForUs(holding)) {
        return;
    }
    if (!holding.has(TradeKeyFields::COSTPRICE)) {
        // Nothing is held any more; the line goes when the host next repaints of itself.
        m_costPrice = unknownCost;
        return;
    }
    m_costPrice = holding.text(TradeKeyFields::COSTPRICE).toDouble();
    m_axis.updateObject(this); // the host may end this object in here: nothing may follow
}

/// An answer that names no market is nobody's.
bool PositionCost::isAnswerForUs(const TradeMessage &holding) const
{
    const QString market = answerMarketCode(holding.text(TradeKeyFields::MARKET));
    return !market.isEmpty() && market == marketCode(m_code) && holding.isAbout(m_code);
}

bool PositionCost::isCostVisible() const
{
    double low = 0.0;
    double high = 0.0;
    return std::isfinite(m_costPrice) && !m_barTimes.empty() && m_axis.visiblePriceRange(low, high) &&
           low <= m_costPrice && m_costPrice <= high;
}
