#pragma once

#include "terminal/data/SecurityList.h"

namespace Terminal {

inline const Security moutai{QStringLiteral("600519"), Market::Shanghai, QStringLiteral("MT")};

} // namespace Terminal
