#pragma once

#include <functional>

/// Runs the event loop until `condition` holds; false when it does not within `milliseconds`.
bool waitUntil(const std::function<bool()> &condition, int milliseconds = 20000);
