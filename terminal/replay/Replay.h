#pragma once

#include "terminal/data/DataFolder.h"

#include <QTimer>

#include <cstddef>
#include <optional>

namespace Terminal {

/// A recorded day of one security, played as if it were today.
///
/// Bars complete one after the other, each a minute of the day after the one before, faster than on
/// the day by speed(). The lunch break is left out. A market does not go back: a day can be advanced or
/// begun again, nothing else.
class Replay : public QObject
{
    Q_OBJECT

public:
    enum class State {
        Closed, ///< there is no day
        Paused,
        Playing,
        Ended ///< every bar is complete
    };

    static constexpr int slowest = 1;   ///< as on the day
    static constexpr int fastest = 600; ///< ten bars a second

    explicit Replay(QObject *parent);

    /// Takes the minutes of a recorded day, moves them to `today` and begins, paused. False, and
    /// nothing changes, when `day` has no bars or others than minutes.
    bool open(const ChartData &day, Trading::TradingDate today);

    /// Forgets the day.
    void close();

    /// Has another day stand for today: bars that are complete complete once more, dated so, and playing goes
    /// on.
    void moveTo(Trading::TradingDate today);

    /// Completes the first bar, that of the opening auction, again. Playing goes on.
    void restart();

    void play();
    void pause();

    /// Completes one bar.
    void step();

    /// Completes all bars at once that end at `time` or before.
    void playTo(Trading::ClockTime time);

    /// Held between slowest and fastest. The minute that is under way begins anew with it.
    void setSpeed(int speed);
    int speed() const { return m_speed; }

    State state() const { return m_state; }

    /// All bars of the day, dated today, and how many of them are complete.
    const Bars &day() const { return m_day.bars; }
    size_t completed() const { return m_completed; }

    const Security &security() const { return m_day.security; }
    /// Nothing before a day was opened; kept when it is closed.
    std::optional<Trading::TradingDate> recordedDate() const { return m_recordedDate; }
    /// The close of the trading day before the recorded one.
    std::optional<double> previousClose() const { return m_day.previousClose; }

Q_SIGNALS:
    /// Once for every bar, in order.
    void barCompleted(const Bar &bar);
    /// After a bar, or after all bars that were completed at once.
    void advanced();
    /// The day begins: no bar is complete.
    void restarted();
    void stateChanged();
    void speedChanged();

private:
    void dateBars(Trading::TradingDate today);
    void complete(size_t count);
    void setState(State state);
    bool hasMore() const { return m_completed < m_day.bars.size(); }

    ChartData m_day;
    std::optional<Trading::TradingDate> m_recordedDate;
    size_t m_completed = 0;
    State m_state = State::Closed;
    int m_speed = 60;
    QTimer m_minute;
};

} // namespace Terminal
