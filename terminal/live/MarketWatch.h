#pragma once

#include "terminal/live/Today.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <optional>

namespace Terminal {

/// Whether the market goes on, as its quotes tell: their time is the exchange's clock, which goes on between
/// them. Nothing is said before today's first quote: a terminal need not have a feed.
class MarketWatch : public QObject
{
    Q_OBJECT

public:
    enum class State {
        Unheard, ///< no quote today
        NotOpen, ///< before the opening auction
        Quoted,  ///< open, and told
        Silent,  ///< open, but no quote has come for long
        Break,   ///< between morning and afternoon
        Closed,  ///< after the close
    };

    /// A publisher of complete bars tells each minute.
    static constexpr std::chrono::milliseconds longSilence = std::chrono::minutes(2);

    /// `today` must outlive this object. `silence`: how long an open market may be without a quote.
    explicit MarketWatch(const Today *today, std::chrono::milliseconds silence = longSilence);

    State state() const { return m_state; }

    /// The latest time that a quote had. Requires one.
    Trading::ClockTime lastTime() const { return *m_lastTime; }

Q_SIGNALS:
    /// The state, or the minute of the latest quote, is another one.
    void changed();

private:
    void hear(const Trading::Quote &quote);
    void look();
    State found() const;

    const Today *m_today;
    std::chrono::milliseconds m_silence;
    std::optional<Trading::TradingDate> m_day; ///< of the quotes that were heard
    std::optional<Trading::ClockTime> m_lastTime;
    QElapsedTimer m_sinceHeard;
    QTimer m_looks;
    State m_state = State::Unheard;
};

} // namespace Terminal
