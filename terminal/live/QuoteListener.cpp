#include "terminal/live/QuoteListener.h"

#include "terminal/live/Today.h"
#include "trading/ModuleVocabulary.h"

#include <QJsonDocument>

namespace Terminal {

QuoteListener::QuoteListener(Today *today) : m_today(today)
{
    connect(&m_endPoint, &LocalCommunication::EndPoint::messageReceived, this,
            [this](const QByteArray &, const QByteArray &payload) { take(payload); });
    m_endPoint.subscribe(Trading::Channel::MARKET, QByteArray(Trading::Topic::QUOTE));
}

void QuoteListener::start(const QString &busAddress)
{
    m_endPoint.connect(busAddress);
}

/// What is no quote is told by the trading module, which hears it, too. A replay that is published here is
/// another window's, or this one's, which today has heard already.
void QuoteListener::take(const QByteArray &payload)
{
    const Trading::QuoteReading reading = Trading::readQuote(QJsonDocument::fromJson(payload).object());
    if (!reading.fault && !reading.quote.recorded) {
        m_today->take(reading.quote);
    }
}

} // namespace Terminal
