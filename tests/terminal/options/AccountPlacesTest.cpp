#include "terminal/options/AccountPlaces.h"
#include "tests/terminal/support/DataFiles.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

const QString sample = QStringLiteral(TRADECHART_EXAMPLES);

using AccountPlacesTest = DataFiles;

TEST_F(AccountPlacesTest, OfTheUserTheExampleAndThePracticeHaveLedgersOfTheirOwn)
{
    EXPECT_NE(ownPlaces().ledger, examplePlaces(sample).ledger);
    EXPECT_NE(examplePlaces(sample).ledger, practicePlaces(sample).ledger);
    EXPECT_NE(ownPlaces().dataFolder, sample);
}

TEST_F(AccountPlacesTest, AreUsableWithBarsAndALedgerThatIsThere)
{
    write(QStringLiteral("securities.csv"), "code,market,name\n600519,SH,a\n");
    const QString ledger = folder() + QStringLiteral("/a.db");
    EXPECT_FALSE(areUsable({folder(), ledger}));
    write(QStringLiteral("a.db"), {});
    EXPECT_TRUE(areUsable({folder(), ledger}));
    EXPECT_TRUE(areUsable({folder(), QStringLiteral("postgresql://host/db")}));
    EXPECT_FALSE(areUsable({folder() + QStringLiteral("/gone"), ledger}));
    EXPECT_FALSE(areUsable({}));
}

TEST_F(AccountPlacesTest, ForFilesAreThoseOfTheWindow)
{
    const AccountPlaces shown{folder(), folder() + QStringLiteral("/a.db")};
    EXPECT_EQ(placesForIntake(shown, sample), shown);
}

TEST_F(AccountPlacesTest, ForFilesAreNeverTheSample)
{
    EXPECT_EQ(placesForIntake(examplePlaces(sample), sample), ownPlaces());
    EXPECT_EQ(placesForIntake(practicePlaces(sample), sample), ownPlaces());
    EXPECT_EQ(placesForIntake({sample + QStringLiteral("/."), {}}, sample), ownPlaces());
    const AccountPlaces barsAlone{folder(), {}};
    EXPECT_EQ(placesForIntake(barsAlone, sample).dataFolder, folder());
    EXPECT_EQ(placesForIntake(barsAlone, sample).ledger, ownPlaces().ledger);
}

} // namespace
} // namespace Terminal
