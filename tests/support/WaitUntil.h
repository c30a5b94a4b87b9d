#pragma once

#include <chrono>
#include <functional>

/// Runs the event loop until `condition` holds; false when it does not within `patience`.
bool waitUntil(const std::function<bool()> &condition,
               std::chrono::milliseconds patience = std::chrono::seconds(20));
