#pragma once

#include "terminal/data/BarSheet.h"

#include <QStringList>

namespace Terminal {

/// What who looks at a chart of these bars should know, for the user: that trades do not lie on adjusted
/// prices, that a bar is more than the minute it is drawn as.
QStringList barRemarks(const BarSheet &sheet);

} // namespace Terminal
