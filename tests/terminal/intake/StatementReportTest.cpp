#include "terminal/intake/StatementReport.h"

#include <gmock/gmock.h>

#include <QJsonDocument>

namespace Terminal {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

FileReport reportOf(const char *json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    EXPECT_TRUE(document.isObject()) << json;
    return statementReport(document.object());
}

std::vector<std::string> lines(const QStringList &texts)
{
    std::vector<std::string> all;
    for (const QString &text : texts) {
        all.push_back(text.toStdString());
    }
    return all;
}

TEST(StatementReport, CountsByKindAndSaysWhatIsNew)
{
    const FileReport report = reportOf(
        R"({"result":{"dryrun":true,"rows":5,"from":"2024-01-02","to":"2024-01-09","account":"77",
            "kinds":[{"name":"purchases","effect":"trade","rows":3},{"name":"sales","effect":"trade","rows":1},
                     {"name":"bank transfers","effect":"money","rows":1}],
            "added":3,"alreadythere":1,"moneyadded":1,"cash":{"date":"2024-01-09","balance":"12.50"}}})");
    EXPECT_THAT(lines(report.facts),
                ElementsAre("5 rows, 2024-01-02 to 2024-01-09", "Account 77", "Trades: purchases 3, sales 1",
                            "Money: bank transfers 1", "4 entries are new, 1 are there already",
                            "Cash on 2024-01-09: 12.50"));
    EXPECT_THAT(report.refusals, IsEmpty());
    EXPECT_THAT(report.asks, IsEmpty());
}

TEST(StatementReport, PlacesEachRowThatCannotBeReadAndAsksWhetherToLeaveThemOut)
{
    const FileReport report =
        reportOf(R"({"refused":{"reason":"1 row cannot be read; leave it out with --skip-bad"},
                     "result":{"dryrun":true,"refusalcount":3,"refusals":[
                       {"line":3,"column":"成交数量","reason":"no number"},{"line":9,"reason":"cut short"}]}})");
    EXPECT_THAT(lines(report.refusals),
                ElementsAre("1 row cannot be read; leave it out with \"Leave these rows out\"",
                            "Line 3, 成交数量: no number", "Line 9: cut short", "and 1 more rows"));
    EXPECT_THAT(lines(report.asks), ElementsAre("skip-bad"));
    EXPECT_FALSE(report.isUnknown);
}

TEST(StatementReport, SaysOnceWhatIsWrongWithTheOnlyBadRow)
{
    const FileReport report = reportOf(R"({"refused":{"line":3,"column":"成交数量","reason":"no number"},
                     "result":{"dryrun":true,"refusalcount":1,"refusals":[
                       {"line":3,"column":"成交数量","reason":"no number"}]}})");
    EXPECT_THAT(lines(report.refusals), ElementsAre("Line 3, 成交数量: no number"));
}

TEST(StatementReport, AsksForTheAccount)
{
    const FileReport report =
        reportOf(R"({"refused":{"reason":"two accounts: give --account","accounts":["1","2"]}})");
    EXPECT_THAT(lines(report.asks), ElementsAre("account"));
    EXPECT_THAT(lines(report.accounts), ElementsAre("1", "2"));
    EXPECT_FALSE(report.isUnknown);
}

TEST(StatementReport, AsksWhetherEntriesInDoubtAreNew)
{
    EXPECT_THAT(lines(reportOf(R"({"refused":{"reason":"in doubt"},"result":{"doubtfulcount":2}})").asks),
                ElementsAre("doubt"));
}

TEST(StatementReport, OffersAProfileToFillIn)
{
    const FileReport report =
        reportOf(R"({"result":{"dryrun":true,"unknownwords":["撮合"],"profile":"word 撮合 = \n"}})");
    EXPECT_THAT(lines(report.asks), ElementsAre("profile"));
    EXPECT_EQ(report.profile, QStringLiteral(u"word 撮合 = \n"));
}

TEST(StatementReport, TellsOfTheButtonWhereAProfileTellsOfAnOption)
{
    const FileReport report = reportOf(
        R"({"result":{"dryrun":true,"profile":"# Write, and import with --profile.\nword --profile = \n"}})");
    EXPECT_EQ(report.profile, QStringLiteral("# Write after each = what it means, then press Use.\n"
                                             "word --profile = \n"));
}

TEST(StatementReport, KnowsAFileOfWhichNothingIsUnderstood)
{
    EXPECT_TRUE(reportOf(R"({"refused":{"reason":"there is no header line"}})").isUnknown);
}

TEST(StatementReport, HasTheFirstRowsAndWhichOfTheirCellsTellTheAccount)
{
    const FileReport report = reportOf(
        R"({"result":{"dryrun":true,"firstrows":[{"line":2,"name":"purchases","date":"2024-01-02","code":"000001",
            "security":"平安银行","price":"10.00","quantity":"100","amount":"1000.00"}],
            "securities":[{"code":"600519","market":"SH","security":"","entries":7},
                          {"code":"000001","market":"SZ","security":"平安银行","entries":2}]}})");
    ASSERT_EQ(report.rows.size(), 1U);
    EXPECT_EQ(report.rows[0].size(), report.columns.size());
    EXPECT_EQ(report.rows[0].value(0), QStringLiteral("2"));
    const int quantity = report.columns.indexOf(QStringLiteral("Quantity"));
    EXPECT_EQ(report.rows[0].value(quantity), QStringLiteral("100"));
    EXPECT_TRUE(report.amountColumns.contains(quantity));
    EXPECT_FALSE(report.amountColumns.contains(report.columns.indexOf(QStringLiteral("Price"))));
    EXPECT_THAT(lines(report.codes), ElementsAre("600519", "000001")) << "those with most entries first";
    EXPECT_EQ(report.names.value(QStringLiteral("000001")), QStringLiteral(u"平安银行"));
}

TEST(StatementReport, WarnsOfTheFirstRowThatDisagreesWithTheBalances)
{
    EXPECT_THAT(lines(reportOf(R"({"result":{"warnings":[{"line":7,"reason":"the statement holds 5"},
                                   {"reason":"as listed"}]}})")
                          .warnings),
                ElementsAre("Line 7: the statement holds 5", "as listed"));
}

} // namespace
} // namespace Terminal
