#pragma once

#include <QStringList>

namespace Trading {

/// A line of a CSV file, its end included: cells between commas; those that hold a comma, a quotation mark or
/// the end of a line stand in quotation marks.
QString csvLine(const QStringList &cells);

} // namespace Trading
