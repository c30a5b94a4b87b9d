#include "tradechartobject/common/Security.h"

#include "tradechartobject/common/NumberText.h"
#include "tradechartobject/common/TradeVocabulary.h"

namespace TradeChart {

namespace {

constexpr std::int8_t noMarket = -1;

} // namespace

Korvane::tagCodeWithName noSecurity()
{
    Korvane::tagCodeWithName security{};
    security.market = noMarket;
    return security;
}

bool isSet(const Korvane::tagCodeWithName &security)
{
    return security.market != noMarket;
}

bool isSameSecurity(const Korvane::tagCodeWithName &one, const Korvane::tagCodeWithName &other)
{
    return one.identity == other.identity;
}

QString securityCode(const Korvane::tagCodeWithName &security)
{
    const uint length = qstrnlen(security.code, sizeof security.code);
    return QString::fromUtf8(security.code, static_cast<int>(length));
}

QString marketCode(const Korvane::tagCodeWithName &security)
{
    return getMarketId(security.market);
}

QString answerMarketCode(const QString &market)
{
    // Only the low 16 bits of the number count.
    switch (static_cast<std::int16_t>(toInt(FieldText(market)))) {
    case 1:
        return QStringLiteral("SH");
    case 2:
        return QStringLiteral("SZ");
    default:
        return {};
    }
}

} // namespace TradeChart
