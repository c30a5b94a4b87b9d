#include "hostcheck/HandedRecords.h"

#include "tradechartobject/common/TradeVocabulary.h"

#include <QDate>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextCodec>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>
#include <limits>

namespace HostCheck {

using Korvane::AnalyData;

namespace {

enum class TimeKind { Minutes, Days, Other };

TimeKind kindOf(int period)
{
    switch (period) {
    case 0:
    case 1:
    case 2:
    case 3:
    case 7:
    case Korvane::IntradayPeriod:
        return TimeKind::Minutes;
    case Korvane::DayPeriod:
    case 5:
    case 6:
    case 10:
    case 11:
        return TimeKind::Days;
    default:
        return TimeKind::Other;
    }
}

std::int64_t dayOf(const AnalyData &bar, int period)
{
    switch (kindOf(period)) {
    case TimeKind::Minutes:
        return std::int64_t{2004 + (bar.time >> 27U)} * 10000 + ((bar.time >> 16U) & 0x7FFU);
    case TimeKind::Days:
        return bar.time;
    case TimeKind::Other:
        break;
    }
    return 0;
}

bool isDate(std::int64_t day)
{
    return day < 30000000 && QDate::isValid(static_cast<int>(day / 10000), static_cast<int>(day / 100 % 100),
                                            static_cast<int>(day % 100));
}

constexpr std::uint32_t minutesOfDay = 24 * 60;

bool isTime(const AnalyData &bar, int period)
{
    return isDate(dayOf(bar, period)) &&
           (kindOf(period) == TimeKind::Days || (bar.time & 0xFFFFU) < minutesOfDay);
}

bool hasPrices(const AnalyData &bar)
{
    const double slack = 1e-9 * std::abs(bar.high); // of prices that were computed
    return std::isfinite(bar.high) && std::isfinite(bar.low) && std::isfinite(bar.close) &&
           bar.low <= bar.close + slack && bar.close <= bar.high + slack;
}

std::string barText(std::size_t bar, const AnalyData &record)
{
    return "bar " + std::to_string(bar) + ", time " + std::to_string(record.time) + ", high " +
           std::to_string(record.high) + ", low " + std::to_string(record.low) + ", close " +
           std::to_string(record.close);
}

/// More than half of the bars are one step of `kind` later than the one before.
bool areNextToEachOther(const std::vector<AnalyData> &bars, TimeKind kind)
{
    const int period = kind == TimeKind::Days ? Korvane::DayPeriod : Korvane::IntradayPeriod;
    const bool areTimes =
        std::all_of(bars.begin(), bars.end(), [period](const AnalyData &bar) { return isTime(bar, period); });
    if (!areTimes || bars.size() < 10) {
        return false;
    }
    std::size_t steps = 0;
    for (std::size_t bar = 1; bar < bars.size(); ++bar) {
        steps += bars[bar].time == bars[bar - 1].time + 1 ? 1 : 0; // of one month or hour, at least
    }
    return steps > bars.size() / 2;
}

/// The overlays of days and minutes draw on these two periods alone.
void checkPeriod(const std::vector<AnalyData> &bars, int period, const Tell &tell)
{
    const bool mayBeDays = period != Korvane::DayPeriod && kindOf(period) != TimeKind::Minutes;
    const bool mayBeMinutes = kindOf(period) == TimeKind::Other;
    if ((mayBeDays && areNextToEachOther(bars, TimeKind::Days)) ||
        (mayBeMinutes && areNextToEachOther(bars, TimeKind::Minutes))) {
        tell(Rule::PeriodWrong, "period " + std::to_string(period));
    }
}

template <std::size_t size>
bool isEnded(const char (&text)[size])
{
    return std::memchr(text, 0, size) != nullptr;
}

bool isUtf8(const char *text)
{
    QTextCodec::ConverterState state;
    QTextCodec::codecForName("UTF-8")->toUnicode(text, static_cast<int>(std::strlen(text)), &state);
    return state.invalidChars == 0 && state.remainingChars == 0;
}

bool isAsciiWord(const char *text)
{
    return *text != '\0' && std::all_of(text, text + std::strlen(text),
                                        [](char letter) { return letter > ' ' && letter < 127; });
}

QJsonObject parse(const char *json)
{
    return json == nullptr ? QJsonObject() : QJsonDocument::fromJson(json).object();
}

void checkRefresh(const QJsonObject &configuration, const Tell &tell)
{
    const QJsonValue seconds = configuration.value(QLatin1String("auto_refresh_time"));
    if (!seconds.isUndefined() && (seconds.toInt(-1) < 0 || seconds.toDouble() > 2147483.0)) {
        tell(Rule::RefreshUnusable, seconds.toVariant().toString().toStdString());
    }
}

} // namespace

bool HandedRecords::isSameSecurity(const HandedRecords &other) const
{
    return security.market == other.security.market && code() == other.code();
}

std::string HandedRecords::code() const
{
    return std::string(security.code, strnlen(security.code, sizeof security.code));
}

double HandedRecords::lowestPrice() const
{
    const auto lowest = std::min_element(
        bars.begin(), bars.end(), [](const AnalyData &a, const AnalyData &b) { return a.low < b.low; });
    return lowest == bars.end() ? std::numeric_limits<double>::quiet_NaN() : lowest->low;
}

double HandedRecords::highestPrice() const
{
    const auto highest = std::max_element(
        bars.begin(), bars.end(), [](const AnalyData &a, const AnalyData &b) { return a.high < b.high; });
    return highest == bars.end() ? std::numeric_limits<double>::quiet_NaN() : highest->high;
}

std::int64_t HandedRecords::firstDay() const
{
    return bars.empty() ? 0 : dayOf(bars.front(), period);
}

std::int64_t HandedRecords::lastDay() const
{
    return bars.empty() ? 0 : dayOf(bars.back(), period);
}

int typeOf(const char *json)
{
    return parse(json).value(QLatin1String("type")).toInt(-1);
}

void checkConfiguration(const char *json, int types, const Tell &tell)
{
    if (json == nullptr || !QJsonDocument::fromJson(json).isObject()) {
        tell(Rule::ConfigurationUnreadable, json == nullptr ? "null" : json);
        return;
    }
    const QJsonObject configuration = parse(json);
    const int type = typeOf(json);
    if (type < 0 || type >= types) {
        tell(Rule::TypeUnknown, json);
    }
    checkRefresh(configuration, tell);
    for (const QString &key : configuration.keys()) {
        if (key != QLatin1String("type") && key != QLatin1String("auto_refresh_time")) {
            tell(Rule::KeyUnknown, key.toStdString());
        }
    }
}

void checkSecurity(const Korvane::tagCodeWithName &security, bool hasBars, const Tell &tell)
{
    if (security.identity == 0) {
        tell(Rule::IdentityZero, {});
    }
    const bool isSet = security.market != -1;
    if (isSet ? TradeChart::getMarketId(security.market).isEmpty() : hasBars) {
        tell(Rule::MarketUnknown, "market " + std::to_string(security.market));
    }
    if (!isEnded(security.code) || (isSet && !isAsciiWord(security.code))) {
        tell(Rule::CodeUnreadable, {});
    }
    if (!isEnded(security.name) || !isUtf8(security.name)) {
        tell(Rule::NameUnreadable, {});
    }
}

void checkBars(const std::vector<AnalyData> &bars, int period, const Tell &tell)
{
    checkPeriod(bars, period, tell);
    for (std::size_t bar = 0; bar < bars.size(); ++bar) {
        if (!hasPrices(bars[bar])) {
            tell(Rule::BarPrices, barText(bar, bars[bar]));
        }
        if (kindOf(period) == TimeKind::Other) {
            continue;
        }
        if (!isTime(bars[bar], period)) {
            tell(Rule::BarTime, barText(bar, bars[bar]) + ", period " + std::to_string(period));
        }
        if (bar > 0 && bars[bar].time <= bars[bar - 1].time) {
            tell(Rule::BarsOutOfOrder, barText(bar, bars[bar]));
        }
        if (period == Korvane::IntradayPeriod && dayOf(bars[bar], period) != dayOf(bars.front(), period)) {
            tell(Rule::BarsOfTwoDays, barText(bar, bars[bar]));
        }
    }
}

void checkChange(const HandedRecords &before, const HandedRecords &after, const Tell &tell)
{
    const bool isSameIdentity = before.security.identity == after.security.identity;
    const std::string codes = before.code() + ", " + after.code();
    if (isSameIdentity && !before.isSameSecurity(after)) {
        tell(Rule::IdentitySame, codes);
    }
    if (!isSameIdentity && before.isSameSecurity(after)) {
        tell(Rule::IdentityChanged, codes);
    }
}

} // namespace HostCheck
