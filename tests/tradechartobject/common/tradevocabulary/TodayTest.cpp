#include "tests/support/TimeZone.h"

#include "tradechartobject/common/TradeVocabulary.h"

#include <gtest/gtest.h>

#include <QDate>

using namespace TradeChart;

namespace {

TEST(TradeVocabularyToday, GivesTodaysLocalDate)
{
    const auto before = currentDate();
    const QDate today = QDate::currentDate();
    const auto after = currentDate();
    const std::int64_t expected = today.toString(QStringLiteral("yyyyMMdd")).toLongLong();
    EXPECT_TRUE(expected == before || expected == after); // midnight may fall between the calls
}

TEST(TradeVocabularyToday, CountsDaysWhereTheUserIs)
{
    TimeZone zone(easternmostZone);
    const auto east = currentDate();
    zone.set(westernmostZone);
    const auto west = currentDate();
    EXPECT_GT(east, west);
}

} // namespace
