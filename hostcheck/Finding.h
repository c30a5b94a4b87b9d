#pragma once

#include "hostcheck/Rule.h"

#include <functional>
#include <string>

namespace HostCheck {

/// Whom a check tells what it found: the rule, and the numbers that show it.
using Tell = std::function<void(Rule rule, const std::string &detail)>;

} // namespace HostCheck
