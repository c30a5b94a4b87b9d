#pragma once

#include <QtGlobal>

#include <chrono>
#include <deque>
#include <map>

namespace LocalCommunication {

/// How long a client waits for an answer, so that its window neither stands still for a module that hangs or
/// is swamped nor gives up one that is only slow. It has no clock: whoever asks tells the time.
///
///  1. Trusted, which it is at first: a question waits for its whole time-out. While messages come in crowds,
///     which make the receiver ask again and again, all questions together stand for one time-out: after
///     these, and after a question that was not answered in its time-out, the module is doubted.
///  2. Doubted: questions are asked, and waited for 5 ms. The module is trusted again when one of them is
///     answered within its time-out, though nobody waited any more, or the last one, however late: it speaks
///     again and has caught up. But not within 10 s of a crowd, whose load it may still carry, and at most
///     three times in a minute after a wait of a second or more.
///
/// So a question stands for one time-out for a module that hangs, until it speaks again; a flood costs one in
/// all; and a module that answers now and then, or always too late, at most three in a minute. One that
/// always takes a second or two, but less than the time-out, is always waited for.
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
    struct Asked
    {
        Time time;
        Duration timeout;
    };

    void forgetOld(Time now);
    void noteCrowd(Time now);
    void doubt(Time now, Duration stood);

    bool m_isTrusted = true;
    std::deque<Time> m_doubts; // when the last ones began that had cost a long wait
    Time m_noTrustBefore;      // while doubted
    Time m_lastCrowd;
    Duration m_stoodInCrowd{}; // in the flood of the last one
    quint64 m_last = 0;        // the question asked last
    Asked m_lastAsked{};
    bool m_wasTrusted = true;        // when it was asked
    std::map<quint64, Asked> m_owed; // the questions without an answer whose time-outs are not over
};

} // namespace LocalCommunication
