#include "terminal/trades/TradesDesk.h"

#include "terminal/trade/DeskOutcome.h"
#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/ModuleVocabulary.h"

#include <QJsonDocument>
#include <QUuid>

#include <algorithm>

namespace Terminal {

namespace {

using namespace TradeChart;

constexpr std::chrono::seconds defaultTimeout(10); // of thousands of rows
constexpr std::chrono::seconds heartbeat(5);

QString textOf(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toString();
}

bool isSame(const AccountTrade &one, const AccountTrade &other)
{
    return one.day == other.day && one.time == other.time && one.side == other.side &&
           one.price == other.price && one.quantity == other.quantity && one.amount == other.amount &&
           one.orderNumber == other.orderNumber;
}

} // namespace

TradesDesk::TradesDesk(QObject *parent)
    : QObject(parent),
      m_endPoint(nullptr),
      m_channel(QStringLiteral("terminal-trades-") + QUuid::createUuid().toString(QUuid::WithoutBraces)),
      m_past([this] { return askPast(); }),
      m_ofToday([this] { return askToday(); })
{
    using LocalCommunication::EndPoint;
    setTimeout(defaultTimeout);
    m_heartbeat.setInterval(heartbeat);
    connect(&m_heartbeat, &QTimer::timeout, this, [this] {
        if (isPastDue()) {
            m_past.question.ask();
        }
        m_ofToday.question.ask();
    });
    connect(&m_endPoint, &EndPoint::ready, this, &TradesDesk::askAnew);
    connect(&m_endPoint, &EndPoint::messageReceived, this, &TradesDesk::handleMessage);
}

void TradesDesk::setTimeout(std::chrono::milliseconds patience)
{
    m_past.question.setTimeout(patience);
    m_ofToday.question.setTimeout(patience);
}

void TradesDesk::start(const QString &address)
{
    m_isStarted = true;
    m_endPoint.subscribe(m_channel.toLatin1(), QByteArray(Topic::TRADEQUERY));
    m_endPoint.subscribe(Trading::Channel::GLOBAL, QByteArray(Topic::TRADENOTIFY));
    m_endPoint.connect(address);
}

void TradesDesk::watch(bool on)
{
    if (on == isWatching()) {
        return;
    }
    if (on) {
        m_heartbeat.start();
        askAnew();
    } else {
        m_heartbeat.stop();
    }
}

void TradesDesk::show(const Security &security)
{
    if (security.id() == m_security.id()) {
        return;
    }
    m_security = security;
    for (Part *const part : {&m_past, &m_ofToday}) {
        part->trades.clear();
        part->refusal.clear();
    }
    m_trades.clear();
    askAnew(); // first: until it is answered, nobody knows whether there are none
    Q_EMIT changed();
}

bool TradesDesk::isUpToDate() const
{
    return !isWatching() || !m_isStarted || (m_past.question.isAnswered() && m_ofToday.question.isAnswered());
}

void TradesDesk::askAnew()
{
    if (isWatching() && m_isStarted && !m_security.code.isEmpty()) {
        m_past.question.askAnew();
        m_ofToday.question.askAnew();
    }
}

/// They were not told, or have become more since midnight.
bool TradesDesk::isPastDue() const
{
    return !m_past.question.isAnswered() || !m_past.refusal.isEmpty() ||
           m_today != Trading::TradingDate::today();
}

QString TradesDesk::askPast()
{
    m_today = Trading::TradingDate::today();
    Trading::Question question(CmdType::HISTORYTRADE);
    question.setDays(Trading::TradingDate::first(), m_today.plusDays(-1));
    return send(question);
}

QString TradesDesk::askToday()
{
    return send(Trading::Question(CmdType::TODAYTRADE));
}

/// The question's id; empty without a bus.
QString TradesDesk::send(Trading::Question question)
{
    const QString id = QStringLiteral("%1.%2").arg(m_channel).arg(++m_questionCount);
    question.answerOn(m_channel, id);
    question.setSecurity(m_security.id());
    const bool isSent =
        m_endPoint.isConnected() &&
        m_endPoint.sendMessage(Trading::Channel::GLOBAL, Topic::TRADEQUERY, question.toJson());
    return isSent ? id : QString();
}

void TradesDesk::handleMessage(const QByteArray &topic, const QByteArray &payload)
{
    if (topic == Topic::TRADEQUERY) {
        m_aside.run(payload.size(), [this, payload] { return read(payload); });
    } else if (topic == Topic::TRADENOTIFY && isWatching()) {
        takeNotification(QJsonDocument::fromJson(payload).object());
    }
}

/// In another thread, where the tree of the answer ends, too: that takes as long.
AsideWork::Then TradesDesk::read(const QByteArray &payload)
{
    QJsonObject answer = QJsonDocument::fromJson(payload).object();
    Trades rows = readTrades(answer);
    answer.remove(QLatin1String(TradeKeyFields::DATA));
    return [this, answer, rows = std::move(rows)]() mutable { takeAnswer(answer, std::move(rows)); };
}

void TradesDesk::takeAnswer(const QJsonObject &answer, Trades rows)
{
    const QString id = textOf(answer, TradeKeyFields::OBJECTID);
    if (m_past.question.close(id)) {
        take(&m_past, answer, std::move(rows));
    } else if (m_ofToday.question.close(id)) {
        take(&m_ofToday, answer, std::move(rows));
    }
    Q_EMIT answered();
}

/// Trades that are refused now stay as they were known. Most answers of the day tell nothing new.
void TradesDesk::take(Part *part, const QJsonObject &answer, Trades rows)
{
    const QString refusal = refusalOf(answer);
    const bool isNew = isGranted(answer) && !std::equal(rows.begin(), rows.end(), part->trades.begin(),
                                                        part->trades.end(), isSame);
    if (!isNew && refusal == part->refusal) {
        return;
    }
    part->refusal = refusal;
    if (isNew) {
        part->trades = std::move(rows);
    }
    putTogether();
}

void TradesDesk::setPlayedAsToday(bool on)
{
    if (on != m_isPlayedAsToday) {
        m_isPlayedAsToday = on;
        putTogether();
    }
}

void TradesDesk::putTogether()
{
    m_trades = m_past.trades;
    for (AccountTrade trade : m_ofToday.trades) {
        trade.day = m_isPlayedAsToday ? Trading::TradingDate::today() : trade.day;
        m_trades.push_back(trade);
    }
    Q_EMIT changed();
}

void TradesDesk::takeNotification(const QJsonObject &notification)
{
    if (textOf(notification, TradeKeyFields::STKCODE) != m_security.code) {
        return;
    }
    if (!m_past.refusal.isEmpty() || !textOf(notification, TradeKeyFields::RTSDATE).isEmpty()) {
        m_past.question.ask();
    }
    m_ofToday.question.ask();
}

} // namespace Terminal
