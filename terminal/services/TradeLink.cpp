#include "terminal/services/TradeLink.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/ModuleVocabulary.h"
#include "trading/Question.h"

#include <QUuid>

#include <chrono>

namespace Terminal {

namespace {

constexpr std::chrono::milliseconds askInterval{150};

/// A security that need not be held: any answer will do.
QByteArray harmlessQuestion(const QByteArray &channel)
{
    Trading::Question question(TradeChart::CmdType::HOLDERCOSTPRICE);
    question.answerOn(QString::fromLatin1(channel));
    question.setSecurity({QStringLiteral("000001"), Trading::Market::Shanghai});
    return question.toJson();
}

} // namespace

TradeLink::TradeLink(QObject *parent)
    : QObject(parent),
      m_endPoint(nullptr),
      m_channel("terminal-link-" + QUuid::createUuid().toByteArray(QUuid::WithoutBraces))
{
    connect(&m_endPoint, &LocalCommunication::EndPoint::messageReceived, this, &TradeLink::takeAnswer);
    connect(&m_timer, &QTimer::timeout, this, &TradeLink::ask);
}

void TradeLink::start(const QString &address)
{
    m_endPoint.subscribe(m_channel, QByteArray(TradeChart::Topic::TRADEQUERY));
    m_endPoint.connect(address);
    m_timer.start(askInterval);
}

void TradeLink::ask()
{
    m_endPoint.sendMessage(Trading::Channel::GLOBAL, TradeChart::Topic::TRADEQUERY,
                           harmlessQuestion(m_channel));
}

void TradeLink::takeAnswer()
{
    m_timer.stop();
    if (!m_answering) {
        m_answering = true;
        Q_EMIT answering();
    }
    Q_EMIT answered();
}

Gate TradeLink::answerGate()
{
    return [this](QObject *context, std::function<void()> proceed) {
        auto *const waiting = new QObject(context);
        connect(this, &TradeLink::answered, waiting, [this, waiting, proceed = std::move(proceed)] {
            disconnect(this, nullptr, waiting, nullptr);
            // Other clients of this program read what arrived together with the answer first.
            QTimer::singleShot(0, waiting, [waiting, proceed] {
                waiting->deleteLater();
                proceed();
            });
        });
        ask();
        m_timer.start(askInterval);
    };
}

} // namespace Terminal
