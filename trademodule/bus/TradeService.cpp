#include "trademodule/bus/TradeService.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/Error.h"
#include "trademodule/bus/BusNames.h"

#include <QJsonDocument>

namespace TradeModule {

namespace {

/// How soon a cancellation is confirmed, and an order of another process taken, while no quotes come.
constexpr int SettleIntervalMs = 1000;

bool isQuestion(const QJsonObject &message)
{
    return !message.contains(QLatin1String(TradeChart::TradeKeyFields::SUCCESS));
}

QByteArray answerChannel(const QJsonObject &question, const QByteArray &replyChannel)
{
    const QString screen = question.value(QLatin1String(TradeChart::TradeKeyFields::SCREENID)).toString();
    return screen.isEmpty() ? replyChannel : screen.toUtf8();
}

} // namespace

TradeService::TradeService(const QString &busDirectory, Ledger *ledger)
    : m_endPoint(nullptr),
      m_exchange(ledger, [this](const Order &changed) { notify(changed); }),
      m_answers(ledger, &m_exchange)
{
    QObject::connect(&m_endPoint, &LocalCommunication::EndPoint::messageReceived, this,
                     &TradeService::handleMessage);
    m_endPoint.subscribe(globalChannel(), QByteArray(TradeChart::Topic::TRADEQUERY));
    m_endPoint.subscribe(marketChannel(), quoteTopic());
    m_endPoint.connect(busDirectory);
    QObject::connect(&m_settleTimer, &QTimer::timeout, this, &TradeService::settle);
    m_settleTimer.start(SettleIntervalMs);
}

void TradeService::handleMessage(const QByteArray &topic, const QByteArray &payload,
                                 const QByteArray &replyChannel)
{
    topic == quoteTopic() ? handleQuote(payload) : handleQuestion(payload, replyChannel);
}

void TradeService::handleQuestion(const QByteArray &payload, const QByteArray &replyChannel)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(payload, &error);
    const QJsonObject question = document.object();
    if (!isQuestion(question)) {
        return; // another module's answer to a chart that listens on the global channel
    }
    const QJsonObject answer =
        document.isObject()
            ? m_answers.answer(question)
            : TradeAnswers::refusal(
                  QStringLiteral("the question is no JSON object: %1").arg(error.errorString()));
    m_endPoint.sendMessage(answerChannel(question, replyChannel), QByteArray(TradeChart::Topic::TRADEQUERY),
                           QJsonDocument(answer).toJson(QJsonDocument::Compact));
}

void TradeService::handleQuote(const QByteArray &payload)
{
    try {
        m_exchange.take(readQuote(QJsonDocument::fromJson(payload).object()));
    } catch (const Error &error) {
        qWarning("%s", error.what());
    }
}

void TradeService::settle()
{
    try {
        m_exchange.settle();
    } catch (const Error &error) {
        qWarning("%s", error.what());
    }
}

void TradeService::notify(const Order &changed)
{
    m_endPoint.sendMessage(globalChannel(), QByteArray(TradeChart::Topic::TRADENOTIFY),
                           QJsonDocument(changeNotification(changed)).toJson(QJsonDocument::Compact));
}

} // namespace TradeModule
