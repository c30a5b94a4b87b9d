#include "terminal/live/Today.h"

#include "terminal/live/BarQuote.h"
#include "terminal/replay/Replay.h"

#include <utility>

namespace Terminal {

Today::Today(const Replay *replay, Calendar calendar) : m_calendar(std::move(calendar))
{
    hear(replay);
}

void Today::hear(const Replay *replay)
{
    connect(replay, &Replay::restarted, this, [this, replay] { beginReplay(*replay); });
    connect(replay, &Replay::stateChanged, this, [this, replay] {
        if (replay->state() == Replay::State::Closed) {
            endReplay();
        }
    });
    connect(replay, &Replay::barCompleted, this, [this, replay](const Bar &bar) {
        const auto reading = Trading::readQuote(
            quoteOf(replay->security(), bar, replay->previousClose(), replay->recordedDate()));
        if (!reading.fault) {
            take(reading.quote);
        }
    });
}

void Today::beginReplay(const Replay &replay)
{
    m_played = Played{replay.security().id(), replay.recordedDate().value(), {}};
    Q_EMIT begun(m_played->security);
}

void Today::endReplay()
{
    if (m_played) {
        const Trading::SecurityId security = m_played->security;
        m_played.reset();
        Q_EMIT begun(security);
    }
}

void Today::take(const Trading::Quote &quote)
{
    if (quote.recorded) {
        takeReplayed(quote);
    } else {
        takeOfMarket(quote);
    }
}

void Today::takeReplayed(const Trading::Quote &quote)
{
    if (m_played && m_played->security == quote.security && m_played->recorded == quote.recorded) {
        if (const auto first = m_played->book.take(quote)) {
            Q_EMIT changed(quote.security, static_cast<int>(*first));
        }
    }
}

void Today::takeOfMarket(const Trading::Quote &quote)
{
    if (quote.date != date()) {
        return;
    }
    beginDay();
    const auto first = m_market[quote.security].take(quote);
    Q_EMIT marketHeard(quote);
    if (first && !isReplayed(quote.security)) {
        Q_EMIT changed(quote.security, static_cast<int>(*first));
    }
}

void Today::fill(const Trading::SecurityId &security, const Bars &recorded)
{
    if (recorded.empty()) {
        return;
    }
    beginDay();
    const auto first = m_market[security].fill(recorded);
    if (first && !isReplayed(security)) {
        Q_EMIT changed(security, static_cast<int>(*first));
    }
}

void Today::beginDay()
{
    if (m_day != date()) {
        m_day = date();
        m_market.clear();
    }
}

const MinuteBook *Today::of(const Trading::SecurityId &security) const
{
    if (isReplayed(security)) {
        return &m_played->book;
    }
    const auto book = m_market.constFind(security);
    const bool isOfToday = m_day == date();
    return isOfToday && book != m_market.constEnd() ? &*book : nullptr;
}

bool Today::isReplayed(const Trading::SecurityId &security) const
{
    return m_played && m_played->security == security;
}

std::optional<Trading::TradingDate> Today::recorded() const
{
    return m_played ? std::optional(m_played->recorded) : std::nullopt;
}

} // namespace Terminal
