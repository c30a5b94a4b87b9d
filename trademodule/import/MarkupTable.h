#pragma once

#include "trademodule/import/SheetRow.h"

namespace TradeModule {

/// Tables of a page or of a spreadsheet's XML, which some clients write under the suffix of a workbook.
namespace MarkupTable {

/// True when a text is such a file: it begins with a tag and has rows of a table.
bool isMarkup(const QString &start);

/// Visits the rows of all tables in the text; a row's line is that of its tag.
void visit(const QString &text, const RowVisitor &visitor);

} // namespace MarkupTable

} // namespace TradeModule
