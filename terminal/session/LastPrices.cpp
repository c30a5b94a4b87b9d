#include "terminal/session/LastPrices.h"

#include "terminal/live/ChartSource.h"
#include "terminal/live/Today.h"

#include <QElapsedTimer>

#include <chrono>

namespace Terminal {

namespace {

/// For how long at a time closes are read: an event loop must not stand still.
constexpr std::chrono::milliseconds readingTurn{10};

/// How often prices are told anew while quotes come: so often figures can be read.
constexpr std::chrono::milliseconds tellingInterval{200};

} // namespace

LastPrices::LastPrices(const ChartSource *source, const Today *today)
    : m_source(source),
      m_today(today),
      m_pacer(tellingInterval)
{
    m_reading.setSingleShot(true);
    connect(&m_reading, &QTimer::timeout, this, &LastPrices::readForATurn);
    connect(&m_pacer, &Pacer::due, this, &LastPrices::changed);
    connect(today, &Today::begun, this, &LastPrices::changed);
    connect(today, &Today::changed, this, &LastPrices::takeChanged);
}

void LastPrices::takeChanged(const Trading::SecurityId &security)
{
    if (m_asked.contains(security)) {
        m_pacer.ask();
    }
}

std::optional<LastPrice> LastPrices::of(const Security &security)
{
    m_asked.insert(security.id());
    const std::optional<LastPrice> quote = quoted(security.id());
    return quote || m_today->isReplayed(security.id()) ? quote : closeOf(security.code);
}

/// Minutes of today that no quote told are closes of the data folder.
std::optional<LastPrice> LastPrices::quoted(const Trading::SecurityId &security) const
{
    const MinuteBook *const today = m_today->of(security);
    if (today == nullptr || today->bars().empty() || !today->lastTime()) {
        return std::nullopt;
    }
    const Bar &last = today->bars().back();
    return m_today->isReplayed(security)
               ? LastPrice{last.close, PriceOrigin::Replay, m_today->recorded().value()}
               : LastPrice{last.close, PriceOrigin::Quote, dayOf(last)};
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

} // namespace Terminal
