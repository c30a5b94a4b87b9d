#pragma once

#include <QLoggingCategory>

namespace TradeChart {

/// True while debug lines are written: ask before making the text of one.
inline bool isDebugLogOn()
{
    return QLoggingCategory::defaultCategory()->isDebugEnabled();
}

} // namespace TradeChart
