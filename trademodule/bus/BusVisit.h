#pragma once

#include "endpoint/EndPoint.h"

namespace TradeModule {

/// Joins a bus for a short visit: waits until the bus has accepted the endpoint, three seconds at most. False
/// when it has not.
bool joinInTime(LocalCommunication::EndPoint *endPoint, const QString &busDirectory);

} // namespace TradeModule
