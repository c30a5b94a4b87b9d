// The program itself, on a real database and a real bus.
#include "tests/trademodule/support/ProgramFixture.h"
#include "tests/trademodule/support/PseudoTerminal.h"

namespace TradeModule {

namespace {

using ::testing::HasSubstr;

class ImportCommandTest : public Program
{
};

} // namespace

TEST_F(ImportCommandTest, ImportsAStatementOnce)
{
    const QString file = write(oneRow);

    EXPECT_THAT(import(file).output, HasSubstr("imported 1 entry, 0 already in the ledger"));
    EXPECT_THAT(import(file).output, HasSubstr("imported 0 entries, 1 already in the ledger"));

    EXPECT_EQ(tradeCount(), 1);
}

TEST_F(ImportCommandTest, ImportsNothingOfAStatementWithABadRow)
{
    const QString file = write(oneRow + badRow);

    const Ended ended = import(file);

    EXPECT_EQ(ended.exitCode, 1);
    EXPECT_THAT(ended.output, HasSubstr(file.toStdString() + ":3: \"2021-02-31\" is no date"));
    EXPECT_THAT(ended.output, HasSubstr("nothing imported"));
    EXPECT_EQ(tradeCount(), 0);
}

TEST_F(ImportCommandTest, LeavesBadRowsOutWhenAskedTo)
{
    const Ended ended = import(write(oneRow + badRow), {QStringLiteral("--skip-bad")});

    EXPECT_EQ(ended.exitCode, 0);
    EXPECT_THAT(ended.output, HasSubstr(":3: "));
    EXPECT_EQ(tradeCount(), 1);
}

TEST_F(ImportCommandTest, ShowsInADryRunWhatWouldHappen)
{
    const Ended ended = import(write(oneRow), {QStringLiteral("--dry-run")});

    EXPECT_THAT(ended.output, HasSubstr("would import 1 entry"));
    EXPECT_EQ(tradeCount(), 0);
}

TEST_F(ImportCommandTest, ShowsNoProgressBarWhereNobodyLooks)
{
    EXPECT_EQ(import(write(oneRow)).errors, "");
}

TEST_F(ImportCommandTest, ShowsAProgressBarOnATerminalAndWipesItAway)
{
    const PseudoTerminal terminal;
    QProcess process;
    process.setStandardErrorFile(terminal.name());
    process.start(QStringLiteral(TRADEMODULE_PROGRAM),
                  ledgerOptions() + QStringList{QStringLiteral("import"), writeManyRows(2)});
    ASSERT_TRUE(process.waitForFinished());

    const std::string shown = terminal.text();
    EXPECT_THAT(shown, HasSubstr("[" + std::string(20, '#') + std::string(20, '.') + "]  50 %"));
    EXPECT_THAT(shown, HasSubstr("[" + std::string(40, '#') + "] 100 %\r\x1b[K"));
}

TEST_F(ImportCommandTest, NamesAFileThatIsNotThere)
{
    const Ended ended = import(QStringLiteral("/nowhere/statement.csv"));

    EXPECT_EQ(ended.exitCode, 1);
    EXPECT_THAT(ended.errors, HasSubstr("/nowhere/statement.csv"));
}

TEST_F(ImportCommandTest, ListsImportsAndTakesOneBack)
{
    import(write(oneRow));
    EXPECT_THAT(runOnLedger({QStringLiteral("imports")}).output, HasSubstr("statement.csv"));

    const Ended ended = runOnLedger({QStringLiteral("undo"), QStringLiteral("1")});

    EXPECT_THAT(ended.output, HasSubstr("import 1 is taken back"));
    EXPECT_EQ(tradeCount(), 0);
    EXPECT_EQ(runOnLedger({QStringLiteral("undo"), QStringLiteral("1")}).exitCode, 1);
    EXPECT_EQ(runOnLedger({QStringLiteral("undo"), QStringLiteral("all")}).exitCode, 2);
}

TEST_F(ImportCommandTest, EntersAHoldingFromBeforeTheFirstStatement)
{
    const QStringList open{QStringLiteral("open"), QStringLiteral("600519"), QStringLiteral("100"),
                           QStringLiteral("1500.5"), QStringLiteral("20191231")};

    EXPECT_EQ(runOnLedger(open).exitCode, 0);
    EXPECT_EQ(runOnLedger(open).exitCode, 1);

    EXPECT_EQ(ledger().holding(liquor()).quantity(), 100);
    EXPECT_DOUBLE_EQ(costPrice(liquor()), 1500.5);
    EXPECT_EQ(tradeCount(), 0);
}

TEST_F(ImportCommandTest, CorrectsAHoldingOnlyWhenToldTo)
{
    const QStringList wrong{QStringLiteral("open"), QStringLiteral("600519"), QStringLiteral("100"),
                            QStringLiteral("1500"), QStringLiteral("20191231")};
    QStringList right = wrong;
    right[2] = QStringLiteral("200");
    runOnLedger(wrong);

    const Ended refused = runOnLedger(right);
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_THAT(refused.errors, HasSubstr("opening holding of 600519 already, import 1"));
    EXPECT_EQ(ledger().holding(liquor()).quantity(), 100);

    EXPECT_EQ(runOnLedger(right + QStringList{QStringLiteral("--replace")}).exitCode, 0);
    EXPECT_EQ(ledger().holding(liquor()).quantity(), 200);
}

TEST_F(ImportCommandTest, SaysThatAQuantityBelowZeroIsNone)
{
    const Ended ended = runOnLedger({QStringLiteral("open"), QStringLiteral("600519"), QStringLiteral("-100"),
                                     QStringLiteral("1500"), QStringLiteral("20191231")});

    EXPECT_EQ(ended.exitCode, 2);
    EXPECT_THAT(ended.errors, HasSubstr("-100 is negative"));
}

TEST_F(ImportCommandTest, RefusesAStatementOfAnotherAccountUnlessItIsChosen)
{
    const QByteArray header = "成交日期,证券代码,买卖标志,成交价格,成交数量,资金帐号\n";
    import(writeFile(QStringLiteral("one.csv"), header + "20210811,600519,买入,1700,100,11\n"));
    const QString other = writeFile(QStringLiteral("two.csv"), header + "20210812,600519,买入,1700,100,22\n");

    const Ended refused = import(other);
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_THAT(refused.errors, HasSubstr("of the account 22, the ledger of 11"));
    EXPECT_EQ(tradeCount(), 1);

    EXPECT_EQ(import(other, {QStringLiteral("--account"), QStringLiteral("22")}).exitCode, 0);
    EXPECT_EQ(tradeCount(), 2);
}

TEST_F(ImportCommandTest, TellsAccountsApartByTheShareholdersCodesOfAMarket)
{
    const QByteArray header = "成交日期,证券代码,买卖标志,成交价格,成交数量,股东代码\n";
    import(writeFile(QStringLiteral("one.csv"), header + "20210811,600519,买入,1700,100,A000000001\n"));

    EXPECT_EQ(import(writeFile(QStringLiteral("sz.csv"), header + "20210812,000001,买入,17,100,0000000001\n"))
                  .exitCode,
              0);
    EXPECT_EQ(
        import(writeFile(QStringLiteral("two.csv"), header + "20210812,600519,买入,1700,100,A000000002\n"))
            .exitCode,
        1);
}

TEST_F(ImportCommandTest, ListsMoneyThatMovedWithoutATrade)
{
    import(write("20210811,11:03:51,600519,贵州茅台,股息入账,0,100,2599.00,1\n"));

    EXPECT_THAT(runOnLedger({QStringLiteral("money")}).output, HasSubstr("2599.00"));
}

TEST_F(ImportCommandTest, KeepsTheProfileWithTheLedger)
{
    const QString file = write("20210811,11:03:51,600519,贵州茅台,撮合,1700.00,100,170000.00,1\n");
    EXPECT_EQ(import(file).exitCode, 1);
    const std::string suggestion = import(file, {QStringLiteral("--suggest")}).output;
    EXPECT_THAT(suggestion, HasSubstr("word 撮合 = "));
    const QString profile = writeFile(QStringLiteral("broker.profile"),
                                      QByteArray::fromStdString(suggestion).replace("撮合 = ", "撮合 = buy"));

    EXPECT_EQ(import(file, {QStringLiteral("--profile"), profile}).exitCode, 0);

    EXPECT_THAT(import(file).output, HasSubstr("1 already in the ledger"));
}

TEST_F(ImportCommandTest, NamesTheRowAfterWhichTheStatementHoldsSomethingElse)
{
    const QString file =
        writeFile(QStringLiteral("balances.csv"),
                  "成交日期,证券代码,操作,成交数量,成交价格,股票余额\n20240102,600519,买入,100,1700,300\n");

    EXPECT_THAT(import(file).output, HasSubstr("balances.csv:2: warning: the statement holds 300 of 600519"));
}

TEST_F(ImportCommandTest, RefusesADayOnWhichNothingCanHaveBeenDealt)
{
    EXPECT_EQ(import(write(oneRow), {QStringLiteral("--date"), QStringLiteral("20620105")}).exitCode, 2);
}

TEST_F(ImportCommandTest, PrintsNoMoreThanSomeOfManyBadRows)
{
    QByteArray rows;
    for (int i = 0; i < 50; ++i) {
        rows += badRow;
    }

    const std::string output = import(write(rows)).output;

    EXPECT_THAT(output, HasSubstr("and 30 rows like these"));
    EXPECT_THAT(output, HasSubstr("nothing imported: 50 rows"));
}

} // namespace TradeModule
