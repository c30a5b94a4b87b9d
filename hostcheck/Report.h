#pragma once

#include "hostcheck/Rule.h"

#include <array>
#include <map>
#include <mutex>
#include <string>

namespace HostCheck {

/// What was found in a run: each rule is told in full when it is first broken, and counted from then on.
/// Threads may share it.
class Report
{
public:
    /// The one of this process; it stays until the process has ended, so that whatever comes last can still
    /// be told.
    static Report &ofProcess();

    /// `place` is the call, `detail` the numbers, which may be empty.
    void tell(Rule rule, const std::string &place, const std::string &detail = {});

    void countOverlay() { count(0); }
    void countCall() { count(1); }
    void countAnswer() { count(2); }

    /// Tells the summary, returns it, and begins another run.
    std::string endRun();

    /// True when nothing was made and nothing told since the last run.
    bool isEmpty() const;

private:
    void count(std::size_t what);
    std::string summary() const;

    mutable std::mutex m_mutex;
    std::map<Rule, int> m_broken;
    std::array<long, 3> m_counts{};
};

} // namespace HostCheck
