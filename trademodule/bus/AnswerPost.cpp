#include "trademodule/bus/AnswerPost.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/bus/AnswerMessage.h"
#include "trademodule/bus/TradeRequest.h"

#include <chrono>
#include <utility>

namespace TradeModule {

namespace {

constexpr std::chrono::seconds betweenTries(1);
constexpr int mostTries = 60; // nobody waits for an answer as long as that

/// More than the answer to an order, a cancellation or a question for a cost has.
constexpr int mostOfShortAnswer = 4096;

/// As many as the bus client can still answer.
constexpr int mostWaiting = 4096;

QByteArray channelOf(const QJsonObject &question, const QByteArray &replyChannel)
{
    const QString screen = question.value(QLatin1String(TradeChart::TradeKeyFields::SCREENID)).toString();
    return screen.isEmpty() ? replyChannel : screen.toUtf8();
}

QString faultOfScreen()
{
    return translated("\"%1\" cannot be a channel").arg(QLatin1String(TradeChart::TradeKeyFields::SCREENID));
}

/// Repeats nothing of the question, whose screen is what was refused.
QByteArray refusalOfScreen()
{
    AnswerMessage answer{TradeRequest(QJsonObject())};
    answer.fail(AnswerMessage::NotUnderstood, faultOfScreen());
    return answer.toJson();
}

QString faultOfLength(int length)
{
    return translated("the bus has no room for the answer, which has %1 bytes: ask again later, or for less")
        .arg(length);
}

QByteArray refusalOfLength(const QJsonObject &question, int length)
{
    AnswerMessage answer{TradeRequest(question)};
    answer.fail(AnswerMessage::LedgerFailed, faultOfLength(length));
    return answer.toJson();
}

} // namespace

AnswerPost::AnswerPost(Send send, std::function<bool()> hasBus, TellRefusal tellRefusal)
    : m_send(std::move(send)),
      m_hasBus(std::move(hasBus)),
      m_tellRefusal(std::move(tellRefusal))
{
    QObject::connect(&m_again, &QTimer::timeout, &m_again, [this] { giveWaiting(); });
}

void AnswerPost::give(const QJsonObject &question, const QByteArray &replyChannel, const QByteArray &answer)
{
    Letter letter{channelOf(question, replyChannel), replyChannel, answer, 0};
    if (m_send(letter.channel, answer) || !m_hasBus()) {
        return;
    }
    if (answer.size() > mostOfShortAnswer) {
        letter.answer = refusalOfLength(question, answer.size());
        m_tellRefusal(faultOfLength(answer.size()));
    }
    if (!give(letter)) {
        keep(letter);
    }
}

/// A bus without room takes neither of them.
bool AnswerPost::give(const Letter &letter) const
{
    if (m_send(letter.channel, letter.answer)) {
        return true;
    }
    const bool isTold =
        letter.channel != letter.replyChannel && m_send(letter.replyChannel, refusalOfScreen());
    if (isTold) {
        m_tellRefusal(faultOfScreen());
    }
    return isTold;
}

void AnswerPost::keep(const Letter &letter)
{
    if (m_waiting.size() == mostWaiting) {
        m_waiting.removeFirst();
    }
    m_waiting.append(letter);
    m_again.start(betweenTries);
}

void AnswerPost::giveWaiting()
{
    for (Letter &letter : std::exchange(m_waiting, {})) {
        if (!give(letter) && ++letter.tries < mostTries) {
            m_waiting.append(letter);
        }
    }
    if (m_waiting.isEmpty()) {
        m_again.stop();
    }
}

} // namespace TradeModule
