// The program itself, on a real database and a real bus.
#include "tests/trademodule/support/ProgramFixture.h"
#include "tests/trademodule/support/PseudoTerminal.h"

namespace TradeModule {

namespace {

using ::testing::HasSubstr;

const QByteArray oneRow = "20210811,11:03:51,600519,贵州茅台,买入,1700.00,100,170000.00,1\n";
const QByteArray badRow = "2021-02-31,11:03:51,600519,贵州茅台,买入,1700.00,100,170000.00,2\n";

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

} // namespace TradeModule
