#pragma once

#include <QtGlobal>

#include <chrono>
#include <deque>
#include <map>

namespace LocalCommunication {

/// How long the clients of a thread wait for an answer on one topic, so that its window neither stands still
/// for a module that hangs or is swamped nor gives up one that is only slow. It has no clock: whoever asks
/// tells the time.
///
///  1. Trusted, which it is at first: a question waits for its whole time-out, and the module is doubted when
///     it was not answered in that. In a flood the window stands once: the questions of one turn of its event
///     loop wait for one time-out in all, answered or not, and when they have waited for more than 25 ms the
///     module is doubted from the next turn on. (The shortest of their time-outs counts, and what it is above
///     the 3 s of a window is added.) Waits of up to 5 ms do not count, for doubt would not shorten them. A
///     pause of 50 ms ends the turn of who runs no event loop.
///     A flood begins with a crowd of messages, which make the receiver ask again and again, and ends 10 s
///     after the last one, whose load the module may carry so long.
///  2. Doubted: questions are asked, and waited for 5 ms, for 2 ms right after one of the same turn that was
///     waited for in vain. The module is trusted again when one of them is answered within its time-out,
///     though nobody waited any more, or the last one, however late: it speaks again and has caught up. But
///     not in a flood, and at most three times in a minute after a wait of a second or more.
///
/// So a window stands for one time-out for a module that hangs, until it speaks again; in a flood once; and
/// for a module that answers now and then, or always too late, at most three times in a minute. One that
/// always takes a second or two, but less than the time-out, is waited for when there is no flood; one that
/// takes 25 ms also then.
class Patience
{
public:
    using Time = std::chrono::steady_clock::time_point;
    using Duration = std::chrono::nanoseconds;

    /// A question goes out, with a higher number than those before; returns how long it is to be waited for.
    /// `isCrowded` tells here and below whether a crowd of messages waits to be delivered.
    Duration ask(quint64 question, Time now, Duration timeout, bool isCrowded);

    /// A question is answered, be it late.
    void hear(quint64 question, Time now);

    /// Nobody waits any more for the question asked last, answered or not.
    void stopWaiting(Time now, bool isCrowded);

    /// The event loop goes on: a window that stood still moves again.
    void endTurn();

    /// The bus was lost, and on the next one somebody else may answer: trusted, unless there is a flood or it
    /// was doubted too often in this minute.
    void beginAnew(Time now);

private:
    static constexpr std::chrono::seconds calmAfterCrowd{10};

    struct Asked
    {
        Time time;
        Duration timeout;
    };

    void forgetOld(Time now);
    void noteCrowd(Time now) { m_floodEnd = now + calmAfterCrowd; }
    bool isInFlood(Time now) const { return now < m_floodEnd; }
    bool mayTrust(Time now) const { return !isInFlood(now) && now >= m_noTrustBefore; }
    void doubt(Time now, Duration stood);

    bool m_isTrusted = true;
    std::deque<Time> m_doubts;             // when the last ones began that had cost a long wait
    Time m_noTrustBefore;                  // while doubted
    Time m_floodEnd;                       // of the last one
    Duration m_stood{};                    // in this turn, in a flood, longer than in doubt
    Duration m_shortest = Duration::max(); // time-out of this turn's questions
    Time m_lastEnd;                        // of a wait
    bool m_isInVain = false; // in this turn the last question was waited for in doubt, and not answered
    quint64 m_last = 0;      // the question asked last
    Asked m_lastAsked{};
    bool m_wasTrusted = true;        // when it was asked
    std::map<quint64, Asked> m_owed; // the questions without an answer whose time-outs are not over
};

} // namespace LocalCommunication
