#pragma once

#include <functional>

/// Runs the event loop until `condition` holds or `milliseconds` have passed; true when it holds.
bool waitFor(const std::function<bool()> &condition, int milliseconds = 20000);
