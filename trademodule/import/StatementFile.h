#pragma once

#include "trademodule/import/SheetRow.h"

#include <QIODevice>

namespace TradeModule {

/// Statements' files, whatever is inside: text, a page or a spreadsheet's XML, a workbook. The suffix tells
/// nothing.
namespace StatementFile {

/// Visits the lines of a file. An Error when it cannot be read or holds something else.
void visit(const QString &path, const RowVisitor &visitor, const ReadProgress &progress = {});

/// The same for the bytes of a text or a page.
void visitText(QIODevice *device, const RowVisitor &visitor, const ReadProgress &progress = {});

} // namespace StatementFile

} // namespace TradeModule
