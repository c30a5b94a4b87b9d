#pragma once

#include "terminal/chart/theme/ChartTheme.h"

namespace Terminal {

/// The style sheet of the order ticket and the orders-and-positions panel, beside that of the window.
QString tradeStyleSheet(const ChartTheme &theme);

} // namespace Terminal
