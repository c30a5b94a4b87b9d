#pragma once

#include "terminal/intake/FileReport.h"

#include <QJsonObject>

namespace Terminal {

/// What the trading module says of a statement: the object that `trademodule import --json` ends with, of a
/// dry run or of an import.
FileReport statementReport(const QJsonObject &answer);

} // namespace Terminal
