#include "terminal/data/TextCells.h"

#include <algorithm>

namespace Terminal {

namespace {

constexpr std::string_view wideBlank = "\xE3\x80\x80";

bool isBlank(char character)
{
    return character == ' ' || character == '\t';
}

bool startsWith(std::string_view text, std::string_view start)
{
    return text.substr(0, start.size()) == start;
}

bool endsWith(std::string_view text, std::string_view end)
{
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

std::string_view withoutQuotes(std::string_view cell)
{
    const bool isQuoted = cell.size() >= 2 && cell.front() == '"' && cell.back() == '"';
    return isQuoted ? withoutBlanks(cell.substr(1, cell.size() - 2)) : cell;
}

char characterOf(CellSeparator separator)
{
    switch (separator) {
    case CellSeparator::Comma:
        return ',';
    case CellSeparator::Tab:
        return '\t';
    case CellSeparator::Semicolon:
        return ';';
    case CellSeparator::Pipe:
        return '|';
    case CellSeparator::Blanks:
        break;
    }
    return ' ';
}

/// Where the cell that begins `line` ends.
std::size_t endOfCell(std::string_view line, char separator)
{
    const std::size_t end = std::min(line.find(separator), line.size());
    const bool isQuoted = startsWith(withoutBlanks(line.substr(0, end)), "\"");
    if (!isQuoted) {
        return end;
    }
    const std::size_t closing = line.find('"', line.find('"') + 1);
    return closing == std::string_view::npos ? end : std::min(line.find(separator, closing), line.size());
}

void splitAtBlanks(std::string_view line, Cells *cells)
{
    for (line = withoutBlanks(line); !line.empty(); line = withoutBlanks(line)) {
        const auto *const end = std::find_if(line.begin(), line.end(), isBlank);
        const auto length = static_cast<std::size_t>(end - line.begin());
        cells->push_back(withoutQuotes(line.substr(0, length)));
        line.remove_prefix(length);
    }
}

} // namespace

std::string_view withoutBlanks(std::string_view text)
{
    for (;;) {
        if (!text.empty() && isBlank(text.front())) {
            text.remove_prefix(1);
        } else if (!text.empty() && isBlank(text.back())) {
            text.remove_suffix(1);
        } else if (startsWith(text, wideBlank)) {
            text.remove_prefix(wideBlank.size());
        } else if (endsWith(text, wideBlank)) {
            text.remove_suffix(wideBlank.size());
        } else {
            return text;
        }
    }
}

std::string_view takeLine(std::string_view *text)
{
    const std::size_t end = std::min(text->find_first_of("\r\n"), text->size());
    const std::string_view line = text->substr(0, end);
    const bool hasTwoCharacters = startsWith(text->substr(end), "\r\n");
    text->remove_prefix(std::min(text->size(), end + (hasTwoCharacters ? 2 : 1)));
    return line;
}

void splitCells(std::string_view line, CellSeparator separator, Cells *cells)
{
    cells->clear();
    if (separator == CellSeparator::Blanks) {
        splitAtBlanks(line, cells);
        return;
    }
    for (;;) {
        const std::size_t end = endOfCell(line, characterOf(separator));
        cells->push_back(withoutQuotes(withoutBlanks(line.substr(0, end))));
        if (end == line.size()) {
            return;
        }
        line.remove_prefix(end + 1);
    }
}

} // namespace Terminal
