#pragma once

#include "tests/world/SimulatedClock.h"

#include <QByteArray>

#include <cstdint>
#include <deque>

namespace World {

/// What happened in a world, in its order: a number that is the same for the same events, and the last of
/// them as text.
class Trace
{
public:
    /// So many events are kept as text.
    explicit Trace(std::size_t longestTail) : m_longestTail(longestTail) {}

    /// `what` happened, to `whom`; `detail` may be long.
    void note(Instant when, const char *what, const QByteArray &whom, const QByteArray &detail = {});

    /// Of all that was noted.
    std::uint64_t hash() const { return m_hash; }
    qint64 count() const { return m_count; }

    /// The last events, a line each.
    QByteArray tail() const;

private:
    struct Entry
    {
        Instant when;
        const char *what;
        QByteArray whom;
        QByteArray detail;
    };

    void mix(const char *bytes, std::size_t count);

    const std::size_t m_longestTail;
    std::uint64_t m_hash = 14695981039346656037ULL;
    qint64 m_count = 0;
    std::deque<Entry> m_last;
};

} // namespace World
