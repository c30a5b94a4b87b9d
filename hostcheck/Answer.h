#pragma once

#include <memory>

namespace HostCheck {

class Watch;

/// While the terminal answers a number, a text or a bar, or draws: it must neither call an overlay then, nor
/// end one, nor run events.
class Answer
{
public:
    explicit Answer(const Watch &watch);
    ~Answer();
    Answer(const Answer &) = delete;
    Answer &operator=(const Answer &) = delete;

    /// True while one is open on this thread.
    static bool isOpen();

private:
    const std::shared_ptr<const Watch> m_watch; // the terminal may end it in here, against the rule
    const long m_turns;
};

} // namespace HostCheck
