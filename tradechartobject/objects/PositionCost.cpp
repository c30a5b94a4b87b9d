#include "tradechartobject/objects/PositionCost.h"

#include "tradechartobject/common/BarTime.h"
#include "tradechartobject/common/CostLine.h"
#include "tradechartobject/common/PriceScale.h"
#include "tradechartobject/common/Security.h"
#include "tradechartobject/common/TradeChannel.h"
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
      m_endPoint(nullptr),
      m_code(noSecurity()),
      m_period(Korvane::NoPeriod),
      m_costPrice(unknownCost),
      m_calcArg(0),
      m_refreshTimer(nullptr),
      m_refreshSeconds(TradeChannel::refreshSeconds(config))
{
    m_refreshTimer = TradeChannel::createRefreshTimer(this, &PositionCost::sendQueryPositionCostReq);
    TradeChannel::joinTerminalBus(m_endPoint);
    TradeChannel::listen(m_endPoint, this, &PositionCost::handleTradeNotify);
    TradeChannel::subscribeScreen(m_endPoint, m_axis);
}

PositionCost::~PositionCost()
{
    TradeChannel::leave(m_endPoint, this);
}

int PositionCost::type() const
{
    return Korvane::pluginObjectType;
}

bool PositionCost::deleteObject()
{
    TradeChannel::remove(m_refreshTimer);
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
    TradeChannel::startIfIdle(m_refreshTimer, m_refreshSeconds);
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
        TradeChannel::send(m_endPoint, TradeChannel::screenRequest(CmdType::HOLDERCOSTPRICE, m_code, m_axis),
                           __func__);
    }
}

void PositionCost::handleTradeNotify(QByteArray topic, QByteArray payload)
{
    if (topic != Topic::TRADEQUERY) {
        return;
    }
    const auto answer = TradeChannel::parseMessage(payload);
    if (!answer || !TradeChannel::isCommand(*answer, CmdType::HOLDERCOSTPRICE)) {
        return;
    }
    const QJsonObject holding = answer->value(QLatin1String(TradeKeyFields::DATA)).toObject();
    if (!isAnswerForUs(holding)) {
        return;
    }
    const QJsonValue costPrice = holding.value(QLatin1String(TradeKeyFields::COSTPRICE));
    if (costPrice.isUndefined()) {
        // Nothing is held any more; the line goes when the host next repaints of itself.
        m_costPrice = unknownCost;
        return;
    }
    m_costPrice = costPrice.toString().toDouble();
    m_axis.updateObject(this); // the host may end this object in here: nothing may follow
}

bool PositionCost::isAnswerForUs(const QJsonObject &holding) const
{
    const QString market =
        TradeChannel::answerMarketCode(TradeChannel::text(holding, TradeKeyFields::MARKET));
    return !market.isEmpty() && market == marketCode(m_code) && TradeChannel::isAbout(holding, m_code);
}

bool PositionCost::isCostVisible() const
{
    double low = 0.0;
    double high = 0.0;
    return std::isfinite(m_costPrice) && !m_barTimes.empty() && m_axis.visiblePriceRange(low, high) &&
           low <= m_costPrice && m_costPrice <= high;
}
