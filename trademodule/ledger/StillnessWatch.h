#pragma once

#include <QString>

#include <chrono>

namespace TradeModule {

/// Tells when a sign of life has stood still for too long. Shown the sign at short intervals, it goes by its
/// own steady clock: those of two machines differ, and a person may set one. After a longer interval it
/// begins anew: who did not look cannot know, for example because this process was stopped or the machine
/// slept.
class StillnessWatch
{
public:
    using Clock = std::chrono::steady_clock;

    explicit StillnessWatch(std::chrono::milliseconds longest) : m_longest(longest) {}

    /// True when `sign` is what it was for longer than the longest time. An empty sign is none.
    bool isStill(const QString &sign, Clock::time_point now = Clock::now());

private:
    const std::chrono::milliseconds m_longest;
    QString m_sign;
    Clock::time_point m_since; ///< since when the sign is what it is
    Clock::time_point m_looked;
};

} // namespace TradeModule
