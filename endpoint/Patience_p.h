#pragma once

#include <QtGlobal>

#include <chrono>
#include <map>

namespace LocalCommunication {

/// How long a client waits for an answer, so that its window neither stands still for a module that hangs or
/// is swamped nor gives up one that is only slow. It has no clock: whoever asks tells the time.
///
///  1. Trusted, which it is at first: a question waits for its whole time-out. It ends with a question that
///     is not answered in it, and with one that stood for more than 50 ms while messages came in crowds: they
///     make the receiver ask again and again.
///  2. Doubted: questions are asked, and waited for 5 ms. It ends when one of them is answered within its
///     time-out, though nobody waited any more: the module would have been in time. But not within 10 s of a
///     crowd, whose load the module may still carry, nor within 30 s of a trial that failed.
///  3. On trial: a question waits twice as long as the longest answer took since the doubt, for itself and
///     for each one that is still owed, at least 5 ms and at most its time-out. A crowd and a question
///     that is not answered end it with doubt; it has failed when that question stood for more than
///     50 ms. After a minute the module is trusted again.
///
/// So a question stands for a module that hangs once, for a swamped one once in each time of trust, and for
/// one that answers now and then at most once in 30 s besides. One that always takes a second or two, but
/// less than the time-out, is always waited for.
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

    /// On another bus somebody else answers.
    void reset() { *this = Patience(); }

private:
    enum class State { Trusted, Doubted, OnTrial };

    struct Asked
    {
        Time time;
        Duration timeout;
    };

    void enter(State next, Time now);
    void forgetOld(Time now);
    void noteCrowd(Time now);
    Duration wait(Duration timeout) const;

    State m_state = State::Trusted;
    Time m_since;               // the state
    Time m_noTrialBefore;       // while doubted
    Duration m_longestAnswer{}; // since the doubt began
    Time m_lastAsked;
    State m_askedIn = State::Trusted;
    quint64 m_last = 0;
    std::map<quint64, Asked> m_owed; // the questions without an answer whose time-outs are not over
};

} // namespace LocalCommunication
