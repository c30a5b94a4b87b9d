#include "terminal/data/BookedAction.h"
#include "tests/terminal/support/DayAndTime.h"
#include "trading/TradingUnits.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

using Trading::Money;

qint64 stepsOf(const char *text)
{
    return decimalSteps(text).value();
}

/// 1.70 yuan and 6 shares for ten.
CorporateAction told(int day)
{
    return {onDay(day), YuanPerShare::ofSteps(stepsOf("0.17")), SharesPerShare::ofSteps(stepsOf("0.6"))};
}

BookedAction booked(int day, qint64 held, double cash, qint64 bonus = 0)
{
    return {onDay(day), held, Money::ofExactYuan(cash).value(), bonus};
}

TEST(BookedAction, IsNoneThatPaysMoreThanAnybodyDoes)
{
    EXPECT_TRUE(knownActions({}, {booked(20130620, 1, 99999999999.0)}).actions.empty());
    EXPECT_TRUE(knownActions({}, {booked(20130620, 1, 0, Trading::mostHeldShares)}).actions.empty());
}

/// 1000 shares received 170.00 yuan and 600 shares: 0.17 and 0.6 for each.
TEST(BookedAction, IsForOneShareWhatWasReceivedForAll)
{
    const KnownActions known = knownActions({}, {booked(20130620, 1000, 170, 600)});
    ASSERT_EQ(known.actions.size(), 1U);
    EXPECT_EQ(known.actions[0].exDate, onDay(20130620));
    EXPECT_EQ(known.actions[0].dividend.steps(), stepsOf("0.17"));
    EXPECT_EQ(known.actions[0].bonus.steps(), stepsOf("0.6"));
    EXPECT_TRUE(known.remarks.isEmpty());
}

/// 7,700 shares at 0.153 are 1,178.10 yuan, which is 0.153 each again.
TEST(BookedAction, IsExactToFourDecimals)
{
    const KnownActions known = knownActions({}, {booked(20160616, 7700, 1178.1)});
    ASSERT_EQ(known.actions.size(), 1U);
    EXPECT_EQ(known.actions[0].dividend.steps(), stepsOf("0.153"));
}

/// 89.79 yuan for 333 shares may be 0.2696 or 0.26964 for one.
TEST(BookedAction, IsLeftOutAndToldWhereItIsNotExact)
{
    const KnownActions known = knownActions({}, {booked(20130620, 333, 89.79), booked(20140620, 155, 0, 46)});
    EXPECT_TRUE(known.actions.empty());
    ASSERT_EQ(known.remarks.size(), 2);
    EXPECT_TRUE(known.remarks[0].startsWith(QStringLiteral("2013-06-20: 89.79 yuan and 0 shares for 333")))
        << qPrintable(known.remarks[0]);
}

TEST(BookedAction, IsLeftOutAndToldWhereNothingWasHeld)
{
    const KnownActions known = knownActions({}, {booked(20130620, 0, 170)});
    EXPECT_TRUE(known.actions.empty());
    EXPECT_EQ(known.remarks.size(), 1);
}

/// Of 155 shares at 0.17, 26.35; 0.6 of them are 93. Of 333: 56.61, and 199 or 200 shares for 199.8.
TEST(BookedAction, AgreesWithTheFileUpToACentAndAShare)
{
    for (const BookedAction &row : {booked(20130620, 155, 26.35, 93), booked(20130620, 333, 56.61, 199),
                                    booked(20130620, 333, 56.61, 200), booked(20130620, 1000, 170)}) {
        const KnownActions known = knownActions({told(20130620)}, {row});
        EXPECT_TRUE(known.remarks.isEmpty()) << row.held;
        EXPECT_EQ(known.actions.size(), 1U);
    }
}

TEST(BookedAction, YieldsToTheFileAndIsTold)
{
    const KnownActions known = knownActions({told(20130620)}, {booked(20130620, 1000, 160, 600)});
    ASSERT_EQ(known.actions.size(), 1U);
    EXPECT_EQ(known.actions[0].dividend.steps(), stepsOf("0.17"));
    ASSERT_EQ(known.remarks.size(), 1);
    EXPECT_TRUE(known.remarks[0].contains(QStringLiteral("the file holds"))) << qPrintable(known.remarks[0]);
}

TEST(BookedAction, IsThatOfTheFileWhenItIsBookedLater)
{
    const KnownActions known =
        knownActions({told(20130620)}, {booked(20130621, 1000, 0, 600), booked(20130705, 1600, 170)});
    EXPECT_EQ(known.actions.size(), 1U);
    EXPECT_TRUE(known.remarks.isEmpty());
}

TEST(BookedAction, IsAddedToThoseOfTheFileInOrder)
{
    const KnownActions known =
        knownActions({told(20130620), told(20150413)}, {booked(20140612, 1000, 160, 200)});
    ASSERT_EQ(known.actions.size(), 3U);
    EXPECT_EQ(known.actions[1].exDate, onDay(20140612));
}

/// Two become one: 1000 shares lose 500.
TEST(BookedAction, PutsSharesTogether)
{
    const KnownActions known = knownActions({}, {booked(20130620, 1000, 0, -500)});
    ASSERT_EQ(known.actions.size(), 1U);
    EXPECT_EQ(known.actions[0].bonus.steps(), stepsOf("-0.5"));
    EXPECT_TRUE(knownActions({}, {booked(20130620, 1000, 0, -1000)}).actions.empty())
        << "nothing would be left";
}

} // namespace
} // namespace Terminal
