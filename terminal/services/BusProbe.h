#pragma once

#include "terminal/services/Gate.h"

#include <QString>

namespace Terminal {

/// A gate that opens when a client of the bus that joined after the overlays has been accepted. Without
/// a bus it opens after a moment all the same, so that the chart is not kept waiting.
///
/// `address` names the bus instance, as overlays do: the directory of the running program.
Gate busGate(const QString &address);

} // namespace Terminal
