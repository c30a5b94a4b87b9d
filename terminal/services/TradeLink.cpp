#include "terminal/services/TradeLink.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/ModuleVocabulary.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QUuid>

#include <chrono>

namespace Terminal {

namespace {

constexpr std::chrono::milliseconds askInterval{150};

QByteArray question(const QByteArray &channel)
{
    using namespace TradeChart;
    const QJsonObject question{
        {QLatin1String(TradeKeyFields::CMD), QLatin1String(CmdType::HOLDERCOSTPRICE)},
        {QLatin1String(TradeKeyFields::SCREENID), QString::fromLatin1(channel)},
        {QLatin1String(TradeKeyFields::STKCODE), QStringLiteral("000001")},
        {QLatin1String(TradeKeyFields::MARKET), QStringLiteral("SH")},
    };
    return QJsonDocument(question).toJson(QJsonDocument::Compact);
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
    m_endPoint.sendMessage(TradeChart::Module::Channel::GLOBAL, TradeChart::Topic::TRADEQUERY,
                           question(m_channel));
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
