#pragma once

#include <QtGlobal>

namespace Trading {

/// Orders are for multiples of so many shares; a sell of all that is held may have a rest.
constexpr qint64 sharesOfLot = 100;

} // namespace Trading
