#include "hostcheck/Report.h"

#include <QFile>

#include <cstdio>

namespace HostCheck {

namespace {

constexpr char prefix[] = "tradechartobject-check: ";

/// To stderr and to the file that the user names; at once, for the program may crash next.
void write(const std::string &text)
{
    std::fputs(text.c_str(), stderr);
    std::fflush(stderr);
    QFile file(QFile::decodeName(qgetenv("TRADECHARTOBJECT_CHECK_REPORT")));
    if (!file.fileName().isEmpty() && file.open(QIODevice::WriteOnly | QIODevice::Append)) {
        file.write(text.data(), static_cast<qint64>(text.size()));
    }
}

std::string inFull(const RuleText &text, const std::string &place, const std::string &detail)
{
    return prefix + std::string(text.id) + ": " + text.wrong + (detail.empty() ? "" : " (" + detail + ")") +
           "\n    at: " + place + "\n    do: " + text.remedy + "\n    see: host-interface.md, " +
           text.section + "\n";
}

} // namespace

Report &Report::ofProcess()
{
    static Report &report = *new Report; // never destroyed: see the header
    return report;
}

void Report::tell(Rule rule, const std::string &place, const std::string &detail)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (++m_broken[rule] == 1) {
        write(inFull(textOf(rule), place, detail));
    }
}

void Report::count(std::size_t what)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    ++m_counts.at(what);
}

bool Report::isEmpty() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_broken.empty() && m_counts == std::array<long, 3>{};
}

std::string Report::endRun()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const std::string text = summary();
    write(text);
    m_broken.clear();
    m_counts = {};
    return text;
}

std::string Report::summary() const
{
    const std::string watched = "; " + std::to_string(m_counts[0]) + " overlays, " +
                                std::to_string(m_counts[1]) + " calls, " + std::to_string(m_counts[2]) +
                                " answers\n";
    if (m_broken.empty()) {
        return prefix + std::string("no rule broken") + watched;
    }
    std::string text = prefix + std::to_string(m_broken.size()) + " rules broken" + watched;
    for (const auto &[rule, times] : m_broken) {
        text += "    " + std::to_string(times) + " x " + textOf(rule).id + "\n";
    }
    return text;
}

} // namespace HostCheck
