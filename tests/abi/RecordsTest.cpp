// Each field of the records stands at the bytes where terminals in the field have it.
#include "tradechartobject/ChartInterface.h"

#include <gmock/gmock.h>

#include <array>
#include <cstring>

namespace {

/// Reads a record out of bytes that carry `value` at one place and nonsense elsewhere.
template <class Record, class Value>
Record recordWith(std::size_t byte, Value value)
{
    unsigned char bytes[80];
    std::memset(bytes, 0xEE, sizeof bytes);
    std::memcpy(bytes + byte, &value, sizeof value);
    Record record;
    static_assert(sizeof record == sizeof bytes, "records are 80 bytes");
    std::memcpy(&record, bytes, sizeof record);
    return record;
}

TEST(Records, HoldABarAtItsPlaces)
{
    EXPECT_EQ(recordWith<Korvane::AnalyData>(0, std::uint32_t{20240102}).time, 20240102U);
    EXPECT_EQ(recordWith<Korvane::AnalyData>(16, 1.5).high, 1.5);
    EXPECT_EQ(recordWith<Korvane::AnalyData>(24, 2.5).low, 2.5);
    EXPECT_EQ(recordWith<Korvane::AnalyData>(32, 3.5).close, 3.5);
}

TEST(Records, HoldASecurityAtItsPlaces)
{
    EXPECT_EQ(recordWith<Korvane::tagCodeWithName>(0, std::int8_t{-1}).market, -1);
    EXPECT_STREQ(recordWith<Korvane::tagCodeWithName>(1, std::array<char, 3>{'6', '0', '\0'}).code, "60");
    EXPECT_EQ(recordWith<Korvane::tagCodeWithName>(40, std::int64_t{77}).identity, 77);
    EXPECT_STREQ(recordWith<Korvane::tagCodeWithName>(48, std::array<char, 3>{'a', 'b', '\0'}).name, "ab");
}

} // namespace
