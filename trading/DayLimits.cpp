#include "trading/DayLimits.h"

namespace Trading {

DayLimits dayLimits(const QString &code, qint64 closeBefore)
{
    const bool isYoungBoard = code.startsWith(QLatin1String("30")) || code.startsWith(QLatin1String("688"));
    const qint64 percent = isYoungBoard ? 20 : 10;
    // whole numbers: as a binary fraction, many a half cent would fall short and be rounded down
    const auto part = [closeBefore](qint64 percents) { return (closeBefore * percents + 50) / 100; };
    return {part(100 - percent), part(100 + percent)};
}

} // namespace Trading
