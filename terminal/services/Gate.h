#pragma once

#include <functional>

class QObject;

namespace Terminal {

/// Runs `proceed` once something has come true; never after `context` is gone.
using Gate = std::function<void(QObject *context, std::function<void()> proceed)>;

/// What overlays wait for before they are calculated.
struct BusGates
{
    Gate joined;   ///< the overlays made before the call have had time to join the bus
    Gate answered; ///< a trading module answers: one that is asked now will not keep the window waiting
};

} // namespace Terminal
