#pragma once

#include "terminal/live/MinuteBook.h"
#include "trading/Quote.h"

#include <QHash>
#include <QObject>

#include <functional>
#include <optional>

namespace Terminal {

class Replay;

/// The day that is under way, as quotes tell it: of the market, whoever publishes them, and of this
/// window's replay, which for its security stands in the market's place as long as it lasts.
///
/// The replays of other windows are none of the market's, and quotes of other days none of today's: both are
/// left alone. With the first quote of another day all of the day before is forgotten. A quote costs a look
/// into a table; a security needs some kilobytes.
class Today : public QObject
{
    Q_OBJECT

public:
    /// Which day it is.
    using Calendar = std::function<Trading::TradingDate()>;

    /// Hears `replay`, which must outlive this object, as others hear it on the bus.
    explicit Today(const Replay *replay, Calendar calendar = Trading::TradingDate::today);

    Trading::TradingDate date() const { return m_calendar(); }

    void take(const Trading::Quote &quote);

    /// Adds the minutes of today that the data folder has. Requires bars of today, or none.
    void fill(const Trading::SecurityId &security, const Bars &recorded);

    /// Null while nothing is known of the security's today.
    const MinuteBook *of(const Trading::SecurityId &security) const;

    /// True while the security's today is a replay's.
    bool isReplayed(const Trading::SecurityId &security) const;

    /// What a replay plays; nothing without one.
    std::optional<Trading::TradingDate> recorded() const;

Q_SIGNALS:
    /// Bars of the security are others from this number on, and what is known of it besides.
    void changed(const Trading::SecurityId &security, int firstBar);

    /// What was told of the security's today counts no more: a replay of it begins, or ends.
    void begun(const Trading::SecurityId &security);

    /// The market told something, whatever it was.
    void marketHeard(const Trading::Quote &quote);

private:
    /// A replay in this window.
    struct Played
    {
        Trading::SecurityId security;
        Trading::TradingDate recorded;
        MinuteBook book;
    };

    void hear(const Replay *replay);
    void beginReplay(const Replay &replay);
    void endReplay();
    void takeReplayed(const Trading::Quote &quote);
    void takeOfMarket(const Trading::Quote &quote);
    void beginDay();

    Calendar m_calendar;
    std::optional<Trading::TradingDate> m_day; ///< of the market's quotes
    QHash<Trading::SecurityId, MinuteBook> m_market;
    std::optional<Played> m_played;
};

} // namespace Terminal
