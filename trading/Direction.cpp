#include "trading/Direction.h"

#include "tradechartobject/common/TradeVocabulary.h"

namespace Trading {

const char *directionCode(Direction direction)
{
    switch (direction) {
    case Direction::Buy:
        return "0B";
    case Direction::Sell:
        return "0S";
    }
    Q_UNREACHABLE();
}

const char *directionLetter(Direction direction)
{
    switch (direction) {
    case Direction::Buy:
        return TradeChart::BSFlag::BUY;
    case Direction::Sell:
        return TradeChart::BSFlag::SELL;
    }
    Q_UNREACHABLE();
}

std::optional<Direction> directionOfCode(const QString &code)
{
    const QString known = TradeChart::toBsFlag(code);
    const QString &letter = known.isEmpty() ? code : known;
    for (const Direction direction : {Direction::Buy, Direction::Sell}) {
        if (letter == QLatin1String(directionLetter(direction))) {
            return direction;
        }
    }
    return std::nullopt;
}

} // namespace Trading
