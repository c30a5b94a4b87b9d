#include "trademodule/bus/TradeService.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/bus/AnswerMessage.h"
#include "trademodule/bus/TradeRequest.h"
#include "trading/ModuleVocabulary.h"

#include <QJsonDocument>

namespace TradeModule {

using namespace Trading;

namespace {

/// How soon a cancellation is confirmed, and an order of another process taken, while no quotes come.
constexpr std::chrono::seconds settleInterval(1);

/// Of quotes that wait: more than a day's minutes of forty securities, and a few megabytes.
constexpr int mostWaitingQuotes = 10000;

/// Of messages that wait until the bus is known to be ours, which takes no longer than two seconds.
constexpr int mostWaitingMessages = 10000;

bool isQuestion(const QJsonObject &message)
{
    return !message.contains(QLatin1String(TradeChart::TradeKeyFields::SUCCESS));
}

/// An answer that repeats nothing of the question.
QByteArray bareRefusal(const QString &reason)
{
    AnswerMessage answer{TradeRequest(QJsonObject())};
    answer.fail(AnswerMessage::NotUnderstood, reason);
    return answer.toJson();
}

/// Why what came is no question.
QString faultOf(const QJsonParseError &error)
{
    const bool isJson = error.error == QJsonParseError::NoError;
    return isJson ? translated("the question is JSON, but no object")
                  : translated("the question is no JSON object: %1").arg(error.errorString());
}

/// For the log.
QString refusalText(const TradeRequest &question, const QString &reason)
{
    const QString security = question.field(TradeChart::TradeKeyFields::STKCODE).toString();
    const QString command = question.field(TradeChart::TradeKeyFields::CMD).toString();
    return security.isEmpty() ? translated("refused: %1: %2").arg(command, reason)
                              : translated("refused: %1 of %2: %3").arg(command, security, reason);
}

} // namespace

TradeService::TradeService(const QString &busDirectory, Ledger *ledger, const TradePresence &presence)
    : m_endPoint(nullptr),
      m_orders(ledger),
      m_exchange(ledger, [this](const Order &changed) { notify(changed); }),
      m_answers(
          ledger, &m_exchange, [this](const SecurityId &held) { publish(changeNotification(held)); },
          [this](const QString &language) { Q_EMIT languageAsked(language); }),
      m_post(
          [this](const QByteArray &channel, const QByteArray &answer) {
              return m_endPoint.sendMessage(channel, TradeChart::Topic::TRADEQUERY, answer);
          },
          [this] { return m_endPoint.isConnected(); },
          [this](const QString &reason) { Q_EMIT refused(translated("refused: %1").arg(reason)); }),
      m_presence(presence, busDirectory)
{
    using LocalCommunication::EndPoint;
    m_answers.record().begin(presence);
    m_answers.setDealFirst([this] { dealQuotes(); });
    m_answers.setTellRefusal([this](const TradeRequest &question, const QString &reason) {
        Q_EMIT refused(refusalText(question, reason));
    });
    connect(&m_endPoint, &EndPoint::messageReceived, this,
            [this](const QByteArray &topic, const QByteArray &payload, const QByteArray &replyChannel) {
                takeMessage({topic, payload, replyChannel});
            });
    connect(&m_endPoint, &EndPoint::ready, &m_presence, &ModulePresence::arrive);
    connect(&m_presence, &ModulePresence::begun, this, &TradeService::begin);
    connect(&m_presence, &ModulePresence::occupied, this, &TradeService::occupied);
    connect(&m_presence, &ModulePresence::silent, this, &TradeService::silent);
    m_endPoint.subscribe(Channel::GLOBAL, {TradeChart::Topic::TRADEQUERY, Topic::TRADEPRESENCE});
    if (!ledger->isReadOnly()) {
        beginDealing();
    }
    m_endPoint.connect(busDirectory);
}

void TradeService::beginDealing()
{
    m_endPoint.subscribe(Channel::MARKET, QByteArray(Topic::QUOTE));
    connect(&m_settleTimer, &QTimer::timeout, this, [this] { attempt([this] { settle(); }); });
    m_settleTimer.start(settleInterval);
}

/// What came while the word of this module was on its way is done now.
void TradeService::begin()
{
    attempt([this] { tellOfToday(); });
    Q_EMIT begun();
    while (!m_held.isEmpty() && m_presence.isServing()) {
        handleMessage(m_held.takeFirst());
    }
}

void TradeService::takeMessage(const Message &message)
{
    if (m_isStopped) {
        return;
    }
    if (message.topic == Topic::TRADEPRESENCE) {
        m_presence.hear(message.payload);
        if (m_presence.isWaiting()) {
            m_held.clear(); // who serves on this bus takes them; they must not be done once more when it ends
        }
    } else {
        m_presence.isServing() ? handleMessage(message) : hold(message);
    }
}

/// The module that serves on this bus takes them itself.
void TradeService::hold(const Message &message)
{
    if (m_presence.isWaiting()) {
        m_held.clear();
        return;
    }
    m_held.append(message);
    if (m_held.size() > mostWaitingMessages) {
        m_held.removeFirst();
    }
}

void TradeService::handleMessage(const Message &message)
{
    message.topic == Topic::QUOTE ? handleQuote(message.payload)
                                  : handleQuestion(message.payload, message.replyChannel);
}

void TradeService::handleQuestion(const QByteArray &payload, const QByteArray &replyChannel)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(payload, &error);
    const QJsonObject question = document.object();
    if (!isQuestion(question)) {
        return; // another module's answer to a chart that listens on the global channel
    }
    attempt([this] { dealQuotes(); }); // what came before the question comes first
    attempt([&] {
        m_answers.record().setWaitingQuotes(m_quotes.size());
        const QByteArray answer = document.isObject() ? m_answers.answer(question) : refuse(faultOf(error));
        m_post.give(question, replyChannel, answer);
        m_exchange.report();
    });
}

/// The answer to what is no question.
QByteArray TradeService::refuse(const QString &reason)
{
    m_answers.record().answered(QLatin1String(ServiceRecord::otherCommands), true, {});
    Q_EMIT refused(translated("refused: %1").arg(reason));
    return bareRefusal(reason);
}

void TradeService::handleQuote(const QByteArray &payload)
{
    try {
        m_quotes.append(readQuote(QJsonDocument::fromJson(payload).object()));
        m_answers.record().hear(m_quotes.constLast());
    } catch (const Error &error) {
        qWarning("%s", error.what());
        return;
    }
    if (m_quotes.size() > mostWaitingQuotes) {
        m_quotes.removeFirst();
        warn(translated("more than %1 quotes wait for the ledger: the oldest are left out")
                 .arg(mostWaitingQuotes));
    }
    if (m_quotes.size() == 1) {
        attempt([this] { dealQuotes(); });
    }
}

void TradeService::dealQuotes()
{
    while (!m_quotes.isEmpty()) {
        const Quote quote = m_quotes.takeFirst();
        try {
            m_exchange.take(quote);
        } catch (const LedgerUnavailable &) {
            m_quotes.prepend(quote);
            throw;
        } catch (const LeaseLost &) {
            throw;
        } catch (const Error &error) { // it would fail again, and the next ones are none the worse
            warn(translated("a quote of %1 is left out: %2").arg(quote.security.code, error.reason()));
        }
    }
}

void TradeService::settle()
{
    dealQuotes();
    m_exchange.settle();
    m_warned.clear();
}

/// One word for each security is enough for its charts to ask for everything again.
void TradeService::tellOfToday()
{
    QHash<SecurityId, Order> newest;
    const Orders ofToday = m_orders.ofDay(m_orders.today());
    for (const Order &order : ofToday) {
        newest.insert(order.security, order);
    }
    for (const Order &order : qAsConst(newest)) {
        notify(order);
    }
}

/// What is left to do after the lease is lost, or the bus, is left alone.
void TradeService::attempt(const std::function<void()> &work)
{
    if (m_isStopped || !m_presence.isServing()) {
        return;
    }
    try {
        work();
    } catch (const LeaseLost &lost) {
        stop(lost.reason());
    } catch (const Error &error) {
        warn(error.reason());
    }
}

void TradeService::stop(const QString &reason)
{
    m_isStopped = true;
    Q_EMIT leaseLost(reason);
}

/// Says once what comes again with every second that it lasts.
void TradeService::warn(const QString &trouble)
{
    if (!m_warned.contains(trouble)) {
        m_warned.insert(trouble);
        qWarning("%s", qUtf8Printable(trouble));
    }
}

void TradeService::notify(const Order &changed)
{
    publish(changeNotification(changed));
}

void TradeService::publish(const QJsonObject &notification)
{
    m_endPoint.sendMessage(Channel::GLOBAL, TradeChart::Topic::TRADENOTIFY,
                           QJsonDocument(notification).toJson(QJsonDocument::Compact));
}

} // namespace TradeModule
