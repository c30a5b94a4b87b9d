#include "trading/ExchangeTime.h"

#include <QByteArray>

#include <ctime>

namespace Trading {

bool enterExchangeTime()
{
    constexpr long hoursAheadOfUtc = 8;
    qputenv("TZ", "Asia/Shanghai");
    tzset(); // POSIX: the same on Linux and macOS
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    return localtime_r(&now, &local) != nullptr && local.tm_gmtoff == hoursAheadOfUtc * 60 * 60;
}

} // namespace Trading
