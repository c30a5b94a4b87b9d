#include "terminal/session/LastPrices.h"

#include "endpoint/EndPoint.h"
#include "terminal/replay/ChartSource.h"
#include "terminal/replay/Replay.h"
#include "terminal/trade/OrderDesk.h"
#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/ModuleVocabulary.h"

#include <QElapsedTimer>
#include <QJsonDocument>

namespace Terminal {

namespace {

namespace QuoteFields = Trading::QuoteFields;
namespace Keys = TradeChart::TradeKeyFields;

/// For how long at a time closes are read: an event loop must not stand still.
constexpr std::chrono::milliseconds readingTurn{10};

QString textOf(const QJsonObject &quote, const char *key)
{
    return quote.value(QLatin1String(key)).toString();
}

std::optional<Trading::SecurityId> securityOf(const QJsonObject &quote)
{
    const QString market = textOf(quote, Keys::MARKET);
    const auto byLetters = Trading::marketOfLetters(market);
    const auto known = byLetters ? byLetters : Trading::marketOfNumber(market);
    const QString code = textOf(quote, Keys::STKCODE);
    return known && !code.isEmpty() ? std::optional(Trading::SecurityId{code, *known}) : std::nullopt;
}

/// The later one; of the same day the quote.
std::optional<LastPrice> later(const std::optional<LastPrice> &quote, const std::optional<LastPrice> &close)
{
    return quote && (!close || quote->day >= close->day) ? quote : close;
}

} // namespace

LastPrices::LastPrices(const ChartSource *source, const Replay *replay, OrderDesk *desk)
    : m_source(source),
      m_replay(replay)
{
    using LocalCommunication::EndPoint;
    m_reading.setSingleShot(true);
    connect(&m_reading, &QTimer::timeout, this, &LastPrices::readForATurn);
    connect(replay, &Replay::advanced, this, &LastPrices::changed);
    connect(replay, &Replay::stateChanged, this, &LastPrices::changed);
    desk->endPoint()->subscribe(Trading::Channel::MARKET, QByteArray(Trading::Topic::QUOTE));
    connect(desk->endPoint(), &EndPoint::messageReceived, this,
            [this](const QByteArray &topic, const QByteArray &payload) {
                if (topic == Trading::Topic::QUOTE) {
                    takeQuote(QJsonDocument::fromJson(payload).object());
                }
            });
}

std::optional<LastPrice> LastPrices::of(const Security &security)
{
    if (m_replay->state() != Replay::State::Closed && m_replay->security().id() == security.id()) {
        return replayed();
    }
    const auto quote = m_quotes.constFind(security.id());
    return later(quote == m_quotes.constEnd() ? std::nullopt : std::optional(*quote), closeOf(security.code));
}

std::optional<LastPrice> LastPrices::replayed() const
{
    if (m_replay->completed() == 0) {
        return std::nullopt;
    }
    const Bar &bar = m_replay->day()[m_replay->completed() - 1];
    return LastPrice{bar.close, PriceOrigin::Replay, m_replay->recordedDate().value()};
}

std::optional<LastPrice> LastPrices::closeOf(const QString &code)
{
    const auto known = m_closes.constFind(code);
    if (known != m_closes.constEnd()) {
        return *known;
    }
    if (!m_unread.contains(code)) {
        m_unread.append(code);
        m_reading.start(std::chrono::milliseconds(0));
    }
    return std::nullopt;
}

void LastPrices::readAnew(const QString &code)
{
    m_unread.removeAll(code);
    readClose(code);
    Q_EMIT changed();
}

void LastPrices::forgetCloses()
{
    m_closes.clear();
    Q_EMIT changed();
}

void LastPrices::readNow()
{
    while (!m_unread.isEmpty()) {
        readClose(m_unread.takeFirst());
    }
    Q_EMIT changed();
}

void LastPrices::readForATurn()
{
    QElapsedTimer clock;
    clock.start();
    while (!m_unread.isEmpty() && clock.elapsed() < readingTurn.count()) {
        readClose(m_unread.takeFirst());
    }
    if (!m_unread.isEmpty()) {
        m_reading.start(std::chrono::milliseconds(0));
    }
    Q_EMIT changed();
}

void LastPrices::readClose(const QString &code)
{
    const auto bar = m_source->lastBar(code);
    m_closes.insert(code, bar ? std::optional(LastPrice{bar->close, PriceOrigin::Close, dayOf(*bar)})
                              : std::nullopt);
}

/// A day that another window replays as today is none of the market's.
void LastPrices::takeQuote(const QJsonObject &quote)
{
    const auto security = securityOf(quote);
    const auto day = Trading::TradingDate::ofText(textOf(quote, QuoteFields::DATE));
    const double price = textOf(quote, QuoteFields::CLOSE).toDouble();
    const bool isOfAReplay = quote.contains(QLatin1String(QuoteFields::RECORDED));
    if (security && day == Trading::TradingDate::today() && price > 0 && !isOfAReplay) {
        m_quotes.insert(*security, LastPrice{price, PriceOrigin::Quote, *day});
        Q_EMIT changed();
    }
}

} // namespace Terminal
