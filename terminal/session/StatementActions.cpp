#include "terminal/session/StatementActions.h"

#include "terminal/live/ChartSource.h"
#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/ModuleVocabulary.h"
#include "trading/Question.h"
#include "trading/TradingUnits.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTimer>
#include <QUuid>

#include <chrono>
#include <utility>

namespace Terminal {

namespace {

using TradeChart::TradeKeyFields::DATA;
using TradeChart::TradeKeyFields::OBJECTID;
using TradeChart::TradeKeyFields::RTSDATE;
using TradeChart::TradeKeyFields::STKCODE;

constexpr std::chrono::seconds patience(3);

QString textOf(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toString();
}

bool isHoldable(qint64 shares)
{
    return shares >= -Trading::mostHeldShares && shares <= Trading::mostHeldShares;
}

std::optional<BookedAction> bookedActionOf(const QJsonObject &row)
{
    using namespace Trading::ActionFields;
    const auto day = Trading::TradingDate::ofText(textOf(row, DATE));
    bool isHeld = false;
    bool isBonus = false;
    bool isCash = false;
    const qint64 held = textOf(row, HELD).toLongLong(&isHeld);
    const qint64 bonus = textOf(row, BONUS).toLongLong(&isBonus);
    const auto cash = Trading::Money::ofExactYuan(textOf(row, CASH).toDouble(&isCash));
    if (!day || !isHeld || !isBonus || !isCash || !cash || !isHoldable(held) || !isHoldable(bonus)) {
        return std::nullopt;
    }
    return BookedAction{*day, held, *cash, bonus};
}

} // namespace

BookedActions bookedActionsOf(const QJsonObject &answer)
{
    BookedActions actions;
    const QJsonArray rows = answer.value(QLatin1String(DATA)).toArray();
    for (const QJsonValue &row : rows) {
        if (const auto action = bookedActionOf(row.toObject())) {
            actions.push_back(*action);
        }
    }
    return actions;
}

StatementActions::StatementActions(ChartSource *source)
    : m_source(source),
      m_endPoint(nullptr),
      m_channel(QStringLiteral("terminal-actions-") + QUuid::createUuid().toString(QUuid::WithoutBraces)),
      m_question([this] { return ask(); })
{
    using LocalCommunication::EndPoint;
    m_question.setTimeout(patience);
    connect(&m_question, &OpenQuestion::unanswered, this, &StatementActions::askLater);
    connect(&m_endPoint, &EndPoint::ready, this, &StatementActions::askAnew);
    connect(&m_endPoint, &EndPoint::messageReceived, this, &StatementActions::handleMessage);
}

void StatementActions::start(const QString &address)
{
    m_endPoint.subscribe(m_channel.toLatin1(), QByteArray(TradeChart::Topic::TRADEQUERY));
    m_endPoint.subscribe(Trading::Channel::GLOBAL, QByteArray(TradeChart::Topic::TRADENOTIFY));
    m_endPoint.connect(address);
}

void StatementActions::show(const Trading::SecurityId &security)
{
    if (security != m_security) {
        m_security = security;
        askAnew();
    }
}

void StatementActions::noteModule()
{
    const bool wasKnown = std::exchange(m_wasKnown, m_isKnown());
    if (m_wasKnown && !wasKnown) {
        askAnew();
    }
}

/// Nobody else repeats the question, and the module may have been late only.
void StatementActions::askLater()
{
    if (m_isKnown()) {
        QTimer::singleShot(patience, this, &StatementActions::askAnew);
    }
}

void StatementActions::askAnew()
{
    m_question.askAnew();
}

/// The question's id; empty when there is nobody who would answer.
QString StatementActions::ask()
{
    if (m_security.code.isEmpty() || !m_isKnown() || !m_endPoint.isConnected()) {
        return {};
    }
    const QString id = QStringLiteral("%1.%2").arg(m_channel).arg(++m_questionCount);
    Trading::Question question(Trading::CmdType::CORPORATEACTIONS);
    question.answerOn(m_channel, id);
    question.setSecurity(m_security);
    const bool isSent =
        m_endPoint.sendMessage(Trading::Channel::GLOBAL, TradeChart::Topic::TRADEQUERY, question.toJson());
    return isSent ? id : QString();
}

void StatementActions::handleMessage(const QByteArray &topic, const QByteArray &payload)
{
    const QJsonObject message = QJsonDocument::fromJson(payload).object();
    if (topic == TradeChart::Topic::TRADEQUERY && m_question.close(textOf(message, OBJECTID))) {
        takeAnswer(message);
    }
    const bool tellsOfPastTrades =
        topic == TradeChart::Topic::TRADENOTIFY && !textOf(message, RTSDATE).isEmpty();
    if (tellsOfPastTrades && textOf(message, STKCODE) == m_security.code) {
        askAnew();
    }
}

void StatementActions::takeAnswer(const QJsonObject &answer)
{
    const QString code = textOf(answer, STKCODE);
    const bool isRefusal = !answer.value(QLatin1String(TradeChart::TradeKeyFields::SUCCESS)).toBool(true);
    if (!isRefusal && code == m_security.code && m_source->setBookedActions(code, bookedActionsOf(answer))) {
        Q_EMIT changed(code);
    }
    Q_EMIT answered();
}

} // namespace Terminal
