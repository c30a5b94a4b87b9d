#pragma once

#include <chrono>

namespace LocalCommunication {

/// How long to wait before something that failed is tried again: longer and longer, up to a limit.
class Retry
{
public:
    struct Pace
    {
        std::chrono::milliseconds first;
        std::chrono::milliseconds longest;
        int factor; ///< every delay is so many times the one before it
    };

    explicit constexpr Retry(Pace pace) : m_pace(pace) {}

    std::chrono::milliseconds nextDelay();

    /// It went well: the next delay is the first one again.
    void reset() { m_delay = {}; }

private:
    Pace m_pace;
    std::chrono::milliseconds m_delay{};
};

} // namespace LocalCommunication
