#include "trademodule/ledger/DatabaseFailure.h"

#include "tests/support/ByName.h"

#include <QSqlError>

namespace TradeModule {

namespace {

struct State
{
    std::string name;
    const char *state;
    DatabaseFailure failure;
};

class DatabaseFailureOfPostgreSql : public ::testing::TestWithParam<State>
{
};

} // namespace

TEST_P(DatabaseFailureOfPostgreSql, IsToldByItsState)
{
    const QSqlError error(QString(), QString(), QSqlError::StatementError, QLatin1String(GetParam().state));

    EXPECT_EQ(failureOf(error, Database::Kind::PostgreSql), GetParam().failure);
}

INSTANTIATE_TEST_SUITE_P(
    States, DatabaseFailureOfPostgreSql,
    ::testing::Values(State{"ALockThatOthersHave", "55P03", DatabaseFailure::Busy},
                      State{"AServerThatIsShutDown", "57P01", DatabaseFailure::Lost},
                      State{"AStatementThatWasCancelled", "57014", DatabaseFailure::CannotNow},
                      State{"AServerThatOnlyReads", "25006", DatabaseFailure::CannotNow},
                      State{"AChangeThatHasFailedBefore", "25P02", DatabaseFailure::CannotNow},
                      State{"AChangeThatOthersWereFasterWith", "40001", DatabaseFailure::CannotNow},
                      State{"ARowThatIsThereAlready", "23505", DatabaseFailure::Refused}),
    ByName());

} // namespace TradeModule
