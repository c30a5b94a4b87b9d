#include "trading/DayLimits.h"

#include "trading/TradingUnits.h"

namespace Trading {

DayLimits dayLimits(const QString &code, Money closeBefore)
{
    const bool isYoungBoard = code.startsWith(QLatin1String("30")) || code.startsWith(QLatin1String("688"));
    const qint64 percent = isYoungBoard ? 20 : 10;
    const qint64 step = priceStep.steps();
    const qint64 close = (closeBefore.steps() + step / 2) / step;
    // whole numbers: as a binary fraction, many a half step would fall short and be rounded down
    const auto part = [close, step](qint64 percents) {
        return Money::ofSteps((close * percents + 50) / 100 * step);
    };
    return {part(100 - percent), part(100 + percent)};
}

} // namespace Trading
