#include "tradechartobject/common/PopupLines.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>

namespace TradeChart {

std::string formatText(const char *format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    std::va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    va_end(arguments);
    std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, again);
    va_end(again);
    return text;
}

PopupLines::PopupLines(std::size_t expected)
{
    m_lines.reserve(expected);
}

PopupLines::PopupLines(std::vector<std::string> lines) : m_lines(std::move(lines)) {}

void PopupLines::append(std::string line)
{
    m_lines.push_back(std::move(line));
}

bool PopupLines::isEmpty() const
{
    return m_lines.empty();
}

std::size_t PopupLines::size() const
{
    return m_lines.size();
}

int PopupLines::show(Korvane::IChartAxis &axis) const
{
    std::vector<const char *> lines = pointers();
    lines.push_back(nullptr);
    return axis.popupMenu(lines.data(), nullptr);
}

int PopupLines::showUnterminated(Korvane::IChartAxis &axis) const
{
    return axis.popupMenu(pointers().data(), nullptr);
}

std::vector<const char *> PopupLines::pointers() const
{
    std::vector<const char *> lines(m_lines.size());
    std::transform(m_lines.begin(), m_lines.end(), lines.begin(),
                   [](const std::string &line) { return line.c_str(); });
    return lines;
}

} // namespace TradeChart
