#include "terminal/bars/LedgerFills.h"
#include "terminal/bars/LedgerComparison.h"
#include "tests/terminal/data/ManyForms.h"
#include "tests/terminal/support/DataFiles.h"
#include "tests/terminal/support/DayAndTime.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

const Trading::SecurityId security{QStringLiteral("600519"), Trading::Market::Shanghai};

TEST(LedgerFills, AreTheTradesOfTheSecurity)
{
    const auto fills = fillsIn(
        R"([{"date":"2024-01-02","code":"600519","market":"SH","side":"buy","price":"1700.5","quantity":"200"},
            {"date":"2024-01-03","code":"600519","market":"SZ","side":"buy","price":"1","quantity":"1"},
            {"date":"2024-01-03","code":"000001","market":"SZ","side":"buy","price":"1","quantity":"1"}])",
        security);
    ASSERT_TRUE(fills.has_value());
    ASSERT_EQ(fills->size(), 1U);
    EXPECT_EQ(fills->front().day, onDay(20240102));
    EXPECT_DOUBLE_EQ(fills->front().price, 1700.5);
    EXPECT_EQ(fills->front().quantity, 200);
}

TEST(LedgerFills, AreNoBonusShares)
{
    const auto fills = fillsIn(
        R"([{"date":"2024-01-02","code":"600519","market":"SH","price":"0.00","quantity":"200"}])", security);
    ASSERT_TRUE(fills.has_value());
    EXPECT_TRUE(fills->empty());
}

TEST(LedgerFills, AreNothingInAnotherText)
{
    EXPECT_FALSE(fillsIn("trademodule: no such ledger", security).has_value());
    EXPECT_FALSE(fillsIn("{}", security).has_value());
}

TEST(LedgerFills, AreLookedForInADatabaseByTheModule)
{
    EXPECT_EQ(missingLedger(QStringLiteral("postgresql://me@host/account")), QString());
    EXPECT_NE(missingLedger(QStringLiteral("/nowhere/a.db")), QString());
}

TEST(LedgerFills, NameTheLedgerThatCannotBeRead)
{
    const auto fills =
        ledgerFills(QStringLiteral("/nowhere/trademodule"), QStringLiteral("/nowhere/a.db"), security);
    ASSERT_FALSE(fills);
    EXPECT_THAT(fills.error().toStdString(), ::testing::HasSubstr("/nowhere/a.db"));
}

/// A module that lists two trades, and notes each time that it is started.
class LedgerComparisonWithAModule : public DataFiles
{
protected:
    QString module()
    {
        const QString program =
            write(QStringLiteral("module.sh"),
                  "#!/bin/sh\necho $* >> '" + (folder() + QStringLiteral("/started")).toUtf8() +
                      "'\nprintf "
                      "'[\\n{\"date\":\"2024-01-02\",\"code\":\"000001\",\"market\":\"SZ\",\"price\":\"99\","
                      "\"quantity\":\"100\"},\\n{\"date\":\"2024-01-02\",\"code\":\"600519\",\"market\":"
                      "\"SH\",\"price\":"
                      "\"10.00\",\"quantity\":\"100\"}\\n]\\n'\n");
        QFile::setPermissions(program, QFile::permissions(program) | QFile::ExeOwner);
        return program;
    }
    int timesStarted() const
    {
        QFile file(folder() + QStringLiteral("/started"));
        return file.open(QIODevice::ReadOnly) ? file.readAll().count('\n') : 0;
    }
    static BarImportPlan planOf(const char *code, Trading::Market market)
    {
        BarImportPlan plan;
        plan.security = {QLatin1String(code), market, QString()};
        plan.sheet.bars = someDays();
        return plan;
    }
};

TEST_F(LedgerComparisonWithAModule, AsksOnceForAllOfManySecurities)
{
    LedgerComparison comparison({module(), QStringLiteral("a.db")});
    for (int i = 0; i < 50; ++i) {
        const QByteArray code = QByteArray::number(601000 + i);
        ASSERT_TRUE(comparison.of(planOf(code.constData(), Trading::Market::Shanghai)));
    }
    EXPECT_LE(timesStarted(), 4);
    const auto wrong = comparison.of(planOf("000001", Trading::Market::Shenzhen));
    ASSERT_TRUE(wrong);
    EXPECT_EQ(wrong.value().warnings.size(), 1) << "99 yuan lie outside of the day";
    const auto right = comparison.of(planOf("600519", Trading::Market::Shanghai));
    ASSERT_TRUE(right);
    EXPECT_EQ(right.value().warnings, QStringList());
    EXPECT_LE(timesStarted(), 4);
}

TEST_F(LedgerComparisonWithAModule, FailsForAllWhereTheModuleFails)
{
    LedgerComparison comparison({QStringLiteral("/nowhere/trademodule"), QStringLiteral("a.db")});
    for (int i = 0; i < 5; ++i) {
        EXPECT_FALSE(comparison.of(planOf("000001", Trading::Market::Shenzhen)));
    }
}

} // namespace
} // namespace Terminal
