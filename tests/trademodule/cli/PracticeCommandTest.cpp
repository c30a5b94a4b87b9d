// The command that begins a practice and tells of it.
#include "tests/trademodule/support/ExchangeFixture.h"
#include "tests/trademodule/support/ProgramFixture.h"
#include "trademodule/ledger/OrderBook.h"

#include <QFile>
#include <QTemporaryDir>

namespace TradeModule {
namespace {

using ::testing::HasSubstr;

class PracticeCommand : public Program
{
protected:
    Ended practice(const QStringList &options) const
    {
        return run(QStringList({QStringLiteral("--ledger"), file(), QStringLiteral("practice")}) + options);
    }

    QString file() const { return m_folder.filePath(QStringLiteral("practice.db")); }

    QTemporaryDir m_folder;
};

TEST_F(PracticeCommand, BeginsWithAnAccountThatItCopiesAndTellsOfIt)
{
    book({fill(Side::Buy, bank(), day(20240102), 9, 1000)});
    const Ended ended = practice({QStringLiteral("--day"), QStringLiteral("20230711"),
                                  QStringLiteral("--copy"), location(), QStringLiteral("--json")});
    ASSERT_EQ(ended.exitCode, 0) << ended.errors;
    EXPECT_THAT(ended.output, HasSubstr(R"("day":"2023-07-11")"));
    EXPECT_THAT(ended.output, HasSubstr(R"("time":"")"));
    EXPECT_EQ(Ledger(file()).holding(bank()).quantity(), 1000);
}

TEST_F(PracticeCommand, BeginsWithCashAndAHoldingThatAreChosen)
{
    const Ended ended =
        practice({QStringLiteral("--day"), QStringLiteral("20230711"), QStringLiteral("--cash"),
                  QStringLiteral("5000.50"), QStringLiteral("--hold"), QStringLiteral("000001 300 9.10")});
    ASSERT_EQ(ended.exitCode, 0) << ended.errors;
    Ledger ledger(file());
    EXPECT_EQ(OrderBook(&ledger).cash(), yuan(5000.5));
    EXPECT_EQ(ledger.holding(bank()).quantity(), 300);
    EXPECT_DOUBLE_EQ(ledger.holding(bank()).costPrice().value(), 9.1);
}

TEST_F(PracticeCommand, RefusesWhatIsNoAccountAndMakesNothing)
{
    for (const QStringList &wrong :
         {QStringList{QStringLiteral("--cash"), QStringLiteral("much")},
          QStringList{QStringLiteral("--hold"), QStringLiteral("000001 0 9.10")},
          QStringList{QStringLiteral("--hold"), QStringLiteral("000001 9223372036854775807 0")},
          QStringList{QStringLiteral("--copy"), QStringLiteral("nothing.db")}}) {
        EXPECT_NE(practice(QStringList{QStringLiteral("--day"), QStringLiteral("20230711")} + wrong).exitCode,
                  0);
        EXPECT_FALSE(QFile::exists(file())) << qPrintable(wrong.join(QLatin1Char(' ')));
    }
}

TEST_F(PracticeCommand, SaysThatAnAccountPractisesNothing)
{
    ledger();
    const Ended ended = run(ledgerOptions() + QStringList(QStringLiteral("practice")));
    EXPECT_EQ(ended.exitCode, 1);
    EXPECT_THAT(ended.errors, HasSubstr("practises no day"));
}

} // namespace
} // namespace TradeModule
