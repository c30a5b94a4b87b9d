#include "terminal/trade/OrderDesk.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/ModuleVocabulary.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QUuid>

#include <algorithm>
#include <chrono>

namespace Terminal {

namespace {

using namespace TradeChart;

constexpr std::chrono::seconds defaultTimeout(3);
constexpr std::chrono::seconds heartbeat(3); ///< notifications are not receipts: some may be lost

QString textOf(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toString();
}

} // namespace

OrderDesk::OrderDesk(QObject *parent)
    : QObject(parent),
      m_endPoint(nullptr),
      m_channel(QStringLiteral("terminal-desk-") + QUuid::createUuid().toString(QUuid::WithoutBraces)),
      m_ordersQuestion([this] { return askForOrders(); }),
      m_workingQuestion([this] { return askForWorkingOrders(); }),
      m_accountQuestion([this] { return askForAccount(); }),
      m_wishes([this](const QByteArray &question) { return send(question); })
{
    using LocalCommunication::EndPoint;
    setTimeout(defaultTimeout);
    m_heartbeat.setInterval(heartbeat);
    connect(&m_heartbeat, &QTimer::timeout, this, &OrderDesk::refresh);
    connect(&m_endPoint, &EndPoint::ready, this, &OrderDesk::askAnew);
    connect(&m_endPoint, &EndPoint::ready, this, &OrderDesk::askForOutcomes);
    connect(&m_endPoint, &EndPoint::messageReceived, this, &OrderDesk::handleMessage);
    for (const OpenQuestion *const question : {&m_ordersQuestion, &m_workingQuestion, &m_accountQuestion}) {
        connect(question, &OpenQuestion::unanswered, this, [this] { setAnswering(false); });
    }
    connect(&m_wishes, &OpenWishes::unanswered, this, &OrderDesk::refresh);
}

void OrderDesk::setTimeout(std::chrono::milliseconds patience)
{
    m_patience = patience;
    m_wishes.setTimeout(patience);
    m_ordersQuestion.setTimeout(patience);
    m_workingQuestion.setTimeout(patience);
    m_accountQuestion.setTimeout(patience);
}

void OrderDesk::start(const QString &address)
{
    m_endPoint.subscribe(m_channel.toLatin1(), QByteArray(Topic::TRADEQUERY));
    m_endPoint.subscribe(Trading::Channel::GLOBAL, QByteArray(Topic::TRADENOTIFY));
    m_endPoint.connect(address);
}

void OrderDesk::watch()
{
    if (!isWatching()) {
        m_heartbeat.start();
        refresh();
    }
}

void OrderDesk::show(const Security &security, std::optional<Trading::TradingDate> day)
{
    if (security.id() == m_security.id() && day == m_day) {
        return;
    }
    m_security = security;
    m_day = day;
    m_orders.clear();
    m_ordersRefusal.clear();
    Q_EMIT ordersChanged();
    if (isWatching()) {
        m_ordersQuestion.askAnew();
    }
}

void OrderDesk::refresh()
{
    askForAll(&OpenQuestion::ask);
}

void OrderDesk::askAnew()
{
    askForAll(&OpenQuestion::askAnew);
}

void OrderDesk::askForAll(void (OpenQuestion::*asking)())
{
    if (!isWatching()) {
        return;
    }
    (m_ordersQuestion.*asking)();
    (m_accountQuestion.*asking)();
    if (m_module().tellsOpenOrders) {
        (m_workingQuestion.*asking)();
        return;
    }
    m_workingQuestion.forget(); // who tells them next is asked at once
    if (std::exchange(m_working, std::nullopt)) {
        Q_EMIT workingOrdersChanged();
    }
}

QString OrderDesk::place(const OrderRequest &order)
{
    OrderRequest placing = order;
    if (placing.clientNumber.isEmpty()) {
        placing.clientNumber = QUuid::createUuid().toString(QUuid::WithoutBraces);
    }
    OwnQuestion own = ask(Trading::CmdType::ENTRUSTPLACE, order.security);
    const auto price = Trading::Money::ofYuan(order.price);
    own.question.setNewOrder(order.side, price.value_or(Trading::Money()), order.quantity);
    speak(&own.question);
    own.question.setClientNumber(placing.clientNumber); // who takes it may not be known yet
    Wish wish = numbered(own);
    wish.isNumbered = m_module().knowsClientNumbers;
    wish.tellRepeat = [this, placing] { Q_EMIT askedAgain(placing); };
    wish.tell = [this, placing](const DeskOutcome &outcome) { Q_EMIT placed(placing, outcome); };
    sendWish(wish);
    return placing.clientNumber;
}

QString OrderDesk::replace(const PriceChange &change)
{
    PriceChange asked = change;
    asked.clientNumber = QUuid::createUuid().toString(QUuid::WithoutBraces);
    OwnQuestion own = ask(Trading::CmdType::REPLACE, change.order.security);
    own.question.setOrder(change.order.day.value(), change.order.number);
    own.question.setNewPrice(Trading::Money::ofYuan(change.price).value_or(Trading::Money()));
    own.question.setClientNumber(asked.clientNumber);
    Wish wish = numbered(own);
    wish.tellRepeat = [this, asked] { Q_EMIT replaceAskedAgain(asked); };
    wish.tell = [this, asked](const DeskOutcome &outcome) { Q_EMIT replaced(asked, outcome); };
    sendWish(wish);
    return asked.clientNumber;
}

/// A wish that may be sent again to a module of the same account.
Wish OrderDesk::numbered(const OwnQuestion &own) const
{
    Wish wish;
    wish.id = own.id;
    wish.question = own.question.toJson();
    wish.isNumbered = true;
    wish.mayRepeat = [this, account = m_module().account] {
        const DeskModule now = m_module();
        return now.knowsClientNumbers && now.account == account;
    };
    return wish;
}

void OrderDesk::cancel(const OrderRecord &order)
{
    OwnQuestion own = ask(CmdType::ENTRUSTCANCEL, order.security);
    own.question.setOrder(order.day.value(), order.number);
    Wish wish;
    wish.id = own.id;
    wish.question = own.question.toJson();
    wish.tell = [this, order](const DeskOutcome &outcome) { Q_EMIT cancelAnswered(order, outcome); };
    sendWish(wish);
}

void OrderDesk::lookUp(const OrderRecord &order)
{
    const OwnQuestion own = ask(CmdType::ENTRUSTTODAYTRADE, order.security);
    m_lookUps.insert(own.id, order);
    sendOwn(own);
    QTimer::singleShot(m_patience, this, [this, id = own.id] { endLookUp(id, {}); });
}

void OrderDesk::endLookUp(const QString &id, const OrderRecords &rows)
{
    const auto asked = m_lookUps.find(id);
    if (asked == m_lookUps.end()) {
        return; // it has ended before
    }
    OrderRecord order = *asked;
    m_lookUps.erase(asked);
    order.dealt = 0; // it is more by now
    order.dealtAmount = 0;
    const auto told = std::find_if(rows.begin(), rows.end(),
                                   [&order](const OrderRecord &row) { return row.number == order.number; });
    Q_EMIT lookedUp(told == rows.end() ? order : *told);
}

OrderDesk::OwnQuestion OrderDesk::ask(const char *command, const Security &security)
{
    OwnQuestion own{Trading::Question(command),
                    QStringLiteral("%1.%2").arg(m_channel).arg(++m_questionCount)};
    own.question.answerOn(m_channel, own.id);
    own.question.setSecurity(security.id());
    return own;
}

void OrderDesk::sendWish(const Wish &wish)
{
    const QString objection = m_module().objection;
    if (objection.isEmpty()) {
        m_wishes.add(wish);
    } else {
        QTimer::singleShot(0, this, [tell = wish.tell, objection] {
            tell({DeskOutcome::Kind::Refused, objection});
        });
    }
}

bool OrderDesk::send(const QByteArray &question)
{
    return m_endPoint.isConnected() &&
           m_endPoint.sendMessage(Trading::Channel::GLOBAL, Topic::TRADEQUERY, question);
}

/// The question's id; empty without a bus.
QString OrderDesk::sendOwn(const OwnQuestion &own)
{
    return send(own.question.toJson()) ? own.id : QString();
}

QString OrderDesk::askForOrders()
{
    if (!m_day) {
        return sendOwn(ask(CmdType::ENTRUSTTODAYTRADE, m_security));
    }
    OwnQuestion ofDay = ask(CmdType::ENTRUSTHISTORYTRADE, m_security);
    ofDay.question.setDay(*m_day);
    return sendOwn(ofDay);
}

QString OrderDesk::askForWorkingOrders()
{
    OwnQuestion own = ask(Trading::CmdType::OPENORDERS, m_security);
    speak(&own.question);
    return sendOwn(own);
}

QString OrderDesk::askForAccount()
{
    OwnQuestion own = ask(Trading::CmdType::ACCOUNTINFO, m_security);
    speak(&own.question);
    return sendOwn(own);
}

void OrderDesk::speak(Trading::Question *question) const
{
    if (!m_language.isEmpty()) {
        question->setLanguage(m_language);
    }
}

void OrderDesk::handleMessage(const QByteArray &topic, const QByteArray &payload)
{
    if (topic == Topic::TRADENOTIFY) {
        takeNotification(QJsonDocument::fromJson(payload).object());
    } else if (topic == Topic::TRADEQUERY) {
        m_aside.run(payload.size(), [this, payload] { return read(payload); });
    }
}

/// In another thread, where the tree of the answer ends, too: that takes as long.
AsideWork::Then OrderDesk::read(const QByteArray &payload)
{
    QJsonObject answer = QJsonDocument::fromJson(payload).object();
    OrderRecords rows = readOrders(answer);
    if (!rows.empty()) {
        answer.remove(QLatin1String(TradeKeyFields::DATA));
    }
    return [this, answer, rows = std::move(rows)]() mutable { takeAnswer(answer, std::move(rows)); };
}

void OrderDesk::takeAnswer(const QJsonObject &answer, OrderRecords rows)
{
    setAnswering(true);
    const QString id = textOf(answer, TradeKeyFields::OBJECTID);
    if (m_ordersQuestion.close(id)) {
        takeOrders(answer, std::move(rows));
    } else if (m_workingQuestion.close(id)) {
        takeWorkingOrders(answer, std::move(rows));
    } else if (m_accountQuestion.close(id)) {
        takeAccount(answer);
    } else if (m_lookUps.contains(id)) {
        endLookUp(id, rows);
    } else if (isUnderWay(answer)) {
        m_wishes.keepOpen(id);
    } else if (isWithoutLedger(answer) && m_wishes.isKept(id)) {
        // What the module has begun goes on, though it cannot tell now: the next try may find it ended.
    } else if (m_wishes.close(id, outcomeOf(answer))) {
        refresh();
    }
    Q_EMIT answered();
}

bool OrderDesk::isUpToDate() const
{
    const bool knowsWorking = m_workingQuestion.isAnswered() || !m_module().tellsOpenOrders;
    return !isWatching() || (m_ordersQuestion.isAnswered() && m_accountQuestion.isAnswered() && knowsWorking);
}

/// Orders that are refused now stay as they were known; the panel says that they are old.
void OrderDesk::takeOrders(const QJsonObject &answer, OrderRecords rows)
{
    const QString refusal = refusalOf(answer);
    const bool isNew = isGranted(answer) && !(rows == m_orders);
    if (!isNew && refusal == m_ordersRefusal) {
        return;
    }
    m_ordersRefusal = refusal;
    if (isNew) {
        m_orders = std::move(rows);
    }
    Q_EMIT ordersChanged();
}

void OrderDesk::takeWorkingOrders(const QJsonObject &answer, OrderRecords rows)
{
    const auto told = isGranted(answer) ? std::optional(std::move(rows)) : std::nullopt;
    if (told != m_working) {
        m_working = told;
        Q_EMIT workingOrdersChanged();
    }
}

void OrderDesk::takeAccount(const QJsonObject &answer)
{
    const QString refusal = refusalOf(answer);
    const auto told = isGranted(answer) ? std::optional(readAccount(answer)) : std::nullopt;
    if (told == m_account && refusal == m_accountRefusal) {
        return;
    }
    m_accountRefusal = refusal;
    m_account = told;
    Q_EMIT accountChanged();
}

void OrderDesk::takeNotification(const QJsonObject &notification)
{
    m_wishes.askAboutKept();
    if (!isWatching()) {
        return;
    }
    if (textOf(notification, TradeKeyFields::STKCODE) == m_security.code && !m_day) {
        m_ordersQuestion.ask();
    }
    m_accountQuestion.ask();
    if (m_module().tellsOpenOrders) {
        m_workingQuestion.ask();
    }
    Q_EMIT statusTold(textOf(notification, TradeKeyFields::RTSORDERNO),
                      textOf(notification, TradeKeyFields::RTSORDERSTATUS));
}

void OrderDesk::setAnswering(bool isAnswering)
{
    if (m_isAnswering != isAnswering) {
        m_isAnswering = isAnswering;
        Q_EMIT answeringChanged(isAnswering);
    }
}

} // namespace Terminal
