#include "trademodule/bus/TradeService.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/bus/BusNames.h"

#include <QJsonDocument>

namespace TradeModule {

namespace {

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
    : m_answers(ledger),
      m_endPoint(nullptr)
{
    QObject::connect(&m_endPoint, &LocalCommunication::EndPoint::messageReceived, this,
                     &TradeService::handleMessage);
    m_endPoint.subscribe(globalChannel(), QByteArray(TradeChart::Topic::TRADEQUERY));
    m_endPoint.connect(busDirectory);
}

void TradeService::handleMessage(const QByteArray &topic, const QByteArray &payload,
                                 const QByteArray &replyChannel)
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
    m_endPoint.sendMessage(answerChannel(question, replyChannel), topic,
                           QJsonDocument(answer).toJson(QJsonDocument::Compact));
}

} // namespace TradeModule
