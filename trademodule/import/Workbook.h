#pragma once

#include "trademodule/import/SheetRow.h"

namespace TradeModule {

/// Spreadsheets' workbooks (.xlsx).
namespace Workbook {

/// Visits the rows of all sheets in their order; a row's line is its number in its sheet. Dates and times
/// come as the numbers that the workbook has for them. An Error when the file is no such workbook, is
/// damaged, or holds more than any statement does.
void visit(const QString &path, const RowVisitor &visitor, const ReadProgress &progress);

} // namespace Workbook

} // namespace TradeModule
