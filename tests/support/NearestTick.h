// Day limits held against whole numbers, for whoever reckons them.
#pragma once

#include <QtGlobal>

/// True when no tick is nearer than `limit` to so many percent of `close`, and none above is as near: halves
/// go up. All in ticks.
constexpr bool isNearestTick(qint64 limit, qint64 close, qint64 percent)
{
    const qint64 twiceTooLow = 2 * (close * percent - limit * 100);
    return twiceTooLow >= -100 && twiceTooLow < 100;
}
