#include "terminal/trade/OrderDesk.h"

#include "terminal/chart/text/FigureText.h"
#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/ModuleVocabulary.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QUuid>

namespace Terminal {

namespace {

using namespace TradeChart;

constexpr int defaultTimeout = 3000;
constexpr int heartbeatMilliseconds = 3000; ///< notifications are not receipts: some may be lost

QString textOf(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toString();
}

void set(QJsonObject *object, const char *key, const QString &value)
{
    object->insert(QLatin1String(key), value);
}

QString directionCode(OrderSide side)
{
    return side == OrderSide::Buy ? QStringLiteral("0B") : QStringLiteral("0S");
}

/// What the module says to a wish that it grants: the number of a new order, or words.
QString grantText(const QJsonObject &answer)
{
    const QJsonValue data = answer.value(QLatin1String(TradeKeyFields::DATA));
    return data.isArray() ? textOf(data.toArray().first().toObject(), TradeKeyFields::MSGOK)
                          : textOf(data.toObject(), TradeKeyFields::RTSORDERNO);
}

bool isSuccess(const QJsonObject &answer)
{
    return answer.value(QLatin1String(TradeKeyFields::SUCCESS)).toBool();
}

DeskOutcome outcomeOf(const QJsonObject &answer)
{
    return isSuccess(answer) ? DeskOutcome{DeskOutcome::Kind::Accepted, grantText(answer)}
                             : DeskOutcome{DeskOutcome::Kind::Refused, textOf(answer, TradeKeyFields::MSG)};
}

} // namespace

OrderDesk::OrderDesk(QObject *parent)
    : QObject(parent),
      m_endPoint(nullptr),
      m_channel(QStringLiteral("terminal-desk-") + QUuid::createUuid().toString(QUuid::WithoutBraces)),
      m_ordersQuestion([this] { return askForOrders(); }),
      m_accountQuestion([this] { return askForAccount(); })
{
    using LocalCommunication::EndPoint;
    setTimeout(defaultTimeout);
    m_heartbeat.setInterval(heartbeatMilliseconds);
    connect(&m_heartbeat, &QTimer::timeout, this, &OrderDesk::refresh);
    connect(&m_endPoint, &EndPoint::ready, this, &OrderDesk::askAnew);
    connect(&m_endPoint, &EndPoint::messageReceived, this, &OrderDesk::handleMessage);
    for (const OpenQuestion *const question : {&m_ordersQuestion, &m_accountQuestion}) {
        connect(question, &OpenQuestion::unanswered, this, [this] { setAnswering(false); });
    }
}

void OrderDesk::setTimeout(int milliseconds)
{
    m_timeout = milliseconds;
    m_ordersQuestion.setTimeout(milliseconds);
    m_accountQuestion.setTimeout(milliseconds);
}

void OrderDesk::start(const QString &address)
{
    m_endPoint.subscribe(m_channel.toLatin1(), QByteArray(Topic::TRADEQUERY));
    m_endPoint.subscribe(Module::Channel::GLOBAL, QByteArray(Topic::TRADENOTIFY));
    m_endPoint.connect(address);
}

void OrderDesk::watch()
{
    if (!isWatching()) {
        m_heartbeat.start();
        refresh();
    }
}

void OrderDesk::show(const Security &security, std::int32_t day)
{
    if (isSame(security, m_security) && day == m_day) {
        return;
    }
    m_security = security;
    m_day = day;
    m_orders.clear();
    Q_EMIT ordersChanged();
    if (isWatching()) {
        m_ordersQuestion.askAnew();
    }
}

void OrderDesk::refresh()
{
    if (isWatching()) {
        m_ordersQuestion.ask();
        m_accountQuestion.ask();
    }
}

void OrderDesk::askAnew()
{
    if (isWatching()) {
        m_ordersQuestion.askAnew();
        m_accountQuestion.askAnew();
    }
}

void OrderDesk::place(const OrderRequest &order)
{
    QJsonObject wish = question(Module::CmdType::ENTRUSTPLACE, order.security);
    set(&wish, TradeKeyFields::RTSBSFLAG, directionCode(order.side));
    set(&wish, TradeKeyFields::RTSENTRUSTPRICE, priceText(order.price));
    set(&wish, TradeKeyFields::RTSENTRUSTQTY, QString::number(order.quantity));
    sendWish(wish, [this, order](const DeskOutcome &outcome) { Q_EMIT placed(order, outcome); });
}

void OrderDesk::cancel(const OrderRecord &order)
{
    QJsonObject wish = question(CmdType::ENTRUSTCANCEL, order.security);
    set(&wish, TradeKeyFields::RTSORDERDATE, QString::number(order.date));
    set(&wish, TradeKeyFields::RTSORDERNO, order.number);
    sendWish(wish, [this, order](const DeskOutcome &outcome) { Q_EMIT cancelAnswered(order, outcome); });
}

QJsonObject OrderDesk::question(const char *command, const Security &security)
{
    QJsonObject question;
    set(&question, TradeKeyFields::CMD, QLatin1String(command));
    set(&question, TradeKeyFields::SCREENID, m_channel);
    set(&question, TradeKeyFields::OBJECTID, QStringLiteral("%1.%2").arg(m_channel).arg(++m_questionCount));
    set(&question, TradeKeyFields::STKCODE, security.code);
    set(&question, TradeKeyFields::MARKET, marketWord(security.market));
    return question;
}

/// The question's id; empty without a bus.
QString OrderDesk::send(const QJsonObject &question)
{
    const bool isSent = m_endPoint.isConnected() &&
                        m_endPoint.sendMessage(Module::Channel::GLOBAL, Topic::TRADEQUERY,
                                               QJsonDocument(question).toJson(QJsonDocument::Compact));
    return isSent ? textOf(question, TradeKeyFields::OBJECTID) : QString();
}

QString OrderDesk::askForOrders()
{
    if (m_day == 0) {
        return send(question(CmdType::ENTRUSTTODAYTRADE, m_security));
    }
    QJsonObject ofDay = question(CmdType::ENTRUSTHISTORYTRADE, m_security);
    ofDay.insert(QLatin1String(TradeKeyFields::DATE), m_day);
    return send(ofDay);
}

QString OrderDesk::askForAccount()
{
    return send(question(Module::CmdType::ACCOUNTINFO, m_security));
}

void OrderDesk::sendWish(const QJsonObject &wish, Tell tell)
{
    const QString id = send(wish);
    if (id.isEmpty()) {
        QTimer::singleShot(0, this, [tell = std::move(tell)] { tell({DeskOutcome::Kind::NotSent, {}}); });
        return;
    }
    m_wishes.insert(id, {std::move(tell)});
    QTimer::singleShot(m_timeout, this, [this, id] {
        const auto open = m_wishes.find(id);
        if (open != m_wishes.end()) { // it stays: a late answer is told, too
            open->isLate = true;
            const Tell tellLate = open->tell;
            tellLate({DeskOutcome::Kind::NoAnswer, {}});
            refresh();
        }
    });
}

void OrderDesk::handleMessage(const QByteArray &topic, const QByteArray &payload)
{
    const QJsonObject message = QJsonDocument::fromJson(payload).object();
    if (topic == Topic::TRADENOTIFY) {
        takeNotification(message);
    } else {
        takeAnswer(message);
    }
}

void OrderDesk::takeAnswer(const QJsonObject &answer)
{
    setAnswering(true);
    const QString id = textOf(answer, TradeKeyFields::OBJECTID);
    if (m_ordersQuestion.close(id)) {
        takeOrders(answer);
    } else if (m_accountQuestion.close(id)) {
        takeAccount(answer);
    } else if (m_wishes.contains(id)) {
        const Wish wish = m_wishes.take(id);
        refresh();
        DeskOutcome outcome = outcomeOf(answer);
        outcome.isLate = wish.isLate;
        wish.tell(outcome);
    }
    Q_EMIT answered();
}

bool OrderDesk::isUpToDate() const
{
    return !isWatching() || (m_ordersQuestion.isAnswered() && m_accountQuestion.isAnswered());
}

void OrderDesk::takeOrders(const QJsonObject &answer)
{
    if (isSuccess(answer)) {
        m_orders = readOrders(answer);
        Q_EMIT ordersChanged();
    }
}

void OrderDesk::takeAccount(const QJsonObject &answer)
{
    m_account = isSuccess(answer) ? std::optional<Account>(readAccount(answer)) : std::nullopt;
    Q_EMIT accountChanged();
}

void OrderDesk::takeNotification(const QJsonObject &notification)
{
    if (!isWatching()) {
        return;
    }
    if (textOf(notification, TradeKeyFields::STKCODE) == m_security.code && m_day == 0) {
        m_ordersQuestion.ask();
    }
    m_accountQuestion.ask();
}

void OrderDesk::setAnswering(bool isAnswering)
{
    if (m_isAnswering != isAnswering) {
        m_isAnswering = isAnswering;
        Q_EMIT answeringChanged(isAnswering);
    }
}

} // namespace Terminal
