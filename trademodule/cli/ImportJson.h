#pragma once

#include "trademodule/import/StatementImport.h"

#include <QJsonObject>

namespace TradeModule {

/// An import for programs: "result", and "refused" when nothing was imported. docs/trading-module.md tells
/// the keys. `isTold` says that charts know.
QJsonObject importJson(const ImportReport &report, const QString &path, const ImportOptions &options,
                       bool isTold);

} // namespace TradeModule
