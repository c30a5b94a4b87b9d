#pragma once

#include <string_view>
#include <vector>

namespace Terminal {

/// What keeps the cells of a line apart.
enum class CellSeparator { Comma, Tab, Semicolon, Pipe, Blanks };

constexpr CellSeparator cellSeparators[] = {CellSeparator::Tab, CellSeparator::Comma,
                                            CellSeparator::Semicolon, CellSeparator::Pipe,
                                            CellSeparator::Blanks};

/// Parts of a text in UTF-8 that lives elsewhere.
using Cells = std::vector<std::string_view>;

/// Takes the first line, without its end (\n, \r\n or \r), away from `text`. Requires a text that is not
/// empty.
std::string_view takeLine(std::string_view *text);

/// The cells of a line, without blanks around them and without the quotation marks they stand in. A separator
/// inside quotation marks belongs to the cell.
void splitCells(std::string_view line, CellSeparator separator, Cells *cells);

/// Without blanks at both ends, also those as wide as a Chinese character.
std::string_view withoutBlanks(std::string_view text);

} // namespace Terminal
