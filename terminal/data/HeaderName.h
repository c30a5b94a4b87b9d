#pragma once

#include <QString>

namespace Terminal {

/// What stands above a column: 成交量(手) is a volume in lots.
struct HeaderName
{
    QString plain; ///< without what makers of files write one way or the other: case, blanks, underscores
    QString unit;  ///< what stands in parentheses, or after a slash; may be empty
};

HeaderName headerName(const QString &cell);

} // namespace Terminal
