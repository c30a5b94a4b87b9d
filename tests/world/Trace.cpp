#include "tests/world/Trace.h"

#include <cstring>

namespace World {

void Trace::note(Instant when, const char *what, const QByteArray &whom, const QByteArray &detail)
{
    const std::int64_t time = when.count();
    mix(reinterpret_cast<const char *>(&time), sizeof time);
    mix(what, std::strlen(what));
    mix(whom.constData(), static_cast<std::size_t>(whom.size()));
    mix(detail.constData(), static_cast<std::size_t>(detail.size()));
    ++m_count;
    m_last.push_back({when, what, whom, detail});
    if (m_last.size() > m_longestTail) {
        m_last.pop_front();
    }
}

/// FNV-1a: it tells orders apart, and is the same on every machine.
void Trace::mix(const char *bytes, std::size_t count)
{
    constexpr std::uint64_t prime = 1099511628211ULL;
    for (std::size_t i = 0; i < count; ++i) {
        m_hash = (m_hash ^ static_cast<unsigned char>(bytes[i])) * prime;
    }
}

QByteArray Trace::tail() const
{
    constexpr int longestDetail = 300;
    QByteArray text;
    for (const Entry &entry : m_last) {
        const auto microseconds = std::chrono::duration_cast<std::chrono::microseconds>(entry.when);
        text +=
            QByteArray::number(static_cast<double>(microseconds.count()) / 1e6, 'f', 6).rightJustified(12) +
            ' ' + entry.what + ' ' + entry.whom + ' ' + entry.detail.left(longestDetail) + '\n';
    }
    return text;
}

} // namespace World
