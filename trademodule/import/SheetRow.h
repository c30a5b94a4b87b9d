#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace TradeModule {

/// One line of a statement's file: of a text as it stands, of a workbook or a page as its cells.
struct SheetRow
{
    int line = 0; ///< from 1
    QString text;
    QStringList cells;
    bool isCut = false; ///< true when it has cells, false when it has text
    QString sheet{};    ///< its name in a workbook of several; else empty
};

using RowVisitor = std::function<void(const SheetRow &row)>;

/// Called now and then while a file is read, with how many of its bytes are done.
using ReadProgress = std::function<void(qint64 done, qint64 total)>;

} // namespace TradeModule
