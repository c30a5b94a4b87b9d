#include "terminal/plugin/HostRecords.h"

#include "trading/TradingDate.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace Terminal {

namespace {

constexpr std::uint32_t firstPackedYear = 2004;

bool isContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// At most `room` bytes of UTF-8 text, none of its characters cut in two.
QByteArray cut(const QByteArray &utf8, int room)
{
    int length = std::min(room, utf8.size());
    while (length > 0 && length < utf8.size() && isContinuation(utf8.at(length))) {
        --length;
    }
    return utf8.left(length);
}

template <std::size_t fieldSize>
void copyText(char (&field)[fieldSize], const QByteArray &utf8)
{
    const QByteArray text = cut(utf8, static_cast<int>(fieldSize) - 1);
    std::memcpy(field, text.constData(), static_cast<size_t>(text.size()));
}

} // namespace

bool isTodaysChart(const ChartData &data)
{
    return data.period == ChartPeriod::Minute && !data.bars.empty() &&
           data.bars.back().date == Trading::TradingDate::today().number();
}

std::uint32_t packedTime(const Bar &bar)
{
    const auto date = static_cast<std::uint32_t>(bar.date);
    if (bar.minute == 0) {
        return date;
    }
    return (date / 10000 - firstPackedYear) << 27U | (date % 10000) << 16U |
           static_cast<std::uint32_t>(bar.minute);
}

Korvane::AnalyData hostBar(const Bar &bar)
{
    Korvane::AnalyData record{};
    record.time = packedTime(bar);
    record.high = bar.high;
    record.low = bar.low;
    record.close = bar.close;
    return record;
}

std::vector<Korvane::AnalyData> hostBars(const Bars &bars)
{
    std::vector<Korvane::AnalyData> records;
    records.reserve(bars.size());
    std::transform(bars.begin(), bars.end(), std::back_inserter(records), hostBar);
    return records;
}

Korvane::tagCodeWithName hostSecurity(const Security &security, std::int64_t identity)
{
    Korvane::tagCodeWithName record{};
    record.market = static_cast<std::int8_t>(security.market);
    record.identity = identity;
    copyText(record.code, security.code.toLatin1());
    copyText(record.name, security.name.toUtf8());
    return record;
}

std::int64_t securityIdentity(const Security &security)
{
    // FNV-1a over market and code.
    std::uint64_t hash = 14695981039346656037U;
    const QByteArray key = Trading::marketLetters(security.market).toLatin1() + security.code.toLatin1();
    for (const char byte : key) {
        hash = (hash ^ static_cast<unsigned char>(byte)) * 1099511628211U;
    }
    return static_cast<std::int64_t>(hash);
}

} // namespace Terminal
