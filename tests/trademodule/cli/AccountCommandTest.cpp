// The program itself, on a real database and a real bus.
#include "tests/trademodule/support/ProgramFixture.h"

#include <QJsonArray>

namespace TradeModule {

namespace {

using ::testing::HasSubstr;

class AccountCommandTest : public Program
{
};

} // namespace

TEST_F(AccountCommandTest, ShowsAndSetsTheCashOfTheAccount)
{
    EXPECT_THAT(runOnLedger({QStringLiteral("account")}).output, HasSubstr("1000000.00  1000000.00"));

    const Ended set = runOnLedger({QStringLiteral("account"), QStringLiteral("--cash"),
                                   QStringLiteral("5000.5"), QStringLiteral("--json")});

    EXPECT_EQ(set.exitCode, 0) << set.errors;
    const QJsonArray rows = QJsonDocument::fromJson(QByteArray::fromStdString(set.output)).array();
    EXPECT_EQ(rows, (QJsonArray{QJsonObject{{QStringLiteral("cash"), QStringLiteral("5000.50")},
                                            {QStringLiteral("available"), QStringLiteral("5000.50")}}}));
    EXPECT_THAT(runOnLedger({QStringLiteral("account")}).output, HasSubstr("5000.50"));
}

} // namespace TradeModule
