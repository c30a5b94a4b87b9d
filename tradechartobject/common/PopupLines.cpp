#include "tradechartobject/common/PopupLines.h"

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

void PopupLines::append(std::string line)
{
    m_lines.push_back(std::move(line));
}

bool PopupLines::isEmpty() const
{
    return m_lines.empty();
}

int PopupLines::show(Korvane::IChartAxis &axis) const
{
    std::vector<const char *> pointers;
    pointers.reserve(m_lines.size() + 1);
    for (const std::string &line : m_lines) {
        pointers.push_back(line.c_str());
    }
    pointers.push_back(nullptr);
    return axis.popupMenu(pointers.data(), nullptr);
}

} // namespace TradeChart
