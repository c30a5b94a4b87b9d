#include "terminal/intake/BarsReport.h"

#include <gmock/gmock.h>

#include <QJsonDocument>

namespace Terminal {
namespace {

FileReport reportOf(const char *json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    EXPECT_TRUE(document.isObject()) << json;
    return barsReport(document.object());
}

TEST(BarsReport, SaysWhatIsMissingWithoutTheFilesPlaceInBothLanguages)
{
    EXPECT_EQ(reportOf(R"({"file":"/a/b.csv","refused":"/a/b.csv: add --code","asks":["code"]})").refusals,
              QStringList(QStringLiteral("add \"Security\"")));
    EXPECT_EQ(reportOf(R"({"file":"/a/b.csv","refused":"/a/b.csv：请加 --code","asks":["code"]})").refusals,
              QStringList(QStringLiteral(u"请加 \"Security\"")));
}

TEST(BarsReport, NamesTheLineOfAFault)
{
    EXPECT_EQ(reportOf(R"({"file":"/a/b.csv","refused":"/a/b.csv:12: a price is zero","asks":[]})").refusals,
              QStringList(QStringLiteral("Line 12: a price is zero")));
}

TEST(BarsReport, KnowsAFileThatIsNoBars)
{
    EXPECT_TRUE(reportOf(R"({"file":"/a","refused":"no line names the columns","asks":[]})").isUnknown);
    EXPECT_FALSE(reportOf(R"({"file":"/a","refused":"add --volume","asks":["volume"]})").isUnknown);
}

TEST(BarsReport, TellsTheSecurityTheBarsAndWhatWillChange)
{
    const FileReport report = reportOf(
        R"({"file":"/a","code":"600519","security":"600519.SH","name":"贵州茅台","bars":60,"minutes":false,
                     "from":"2024-01-02","to":"2024-03-25","volume":"volume in lots","columns":["date","open"],
                     "rows":[["20240102","1.00"]],"warnings":["adjusted"],"changecount":3,
                     "changes":[{"file":"daily/600519.csv","change":"new"}]})");
    EXPECT_EQ(report.heading, QStringLiteral(u"600519.SH 贵州茅台"));
    EXPECT_EQ(report.facts,
              QStringList({QStringLiteral("60 bars of days, 2024-01-02 to 2024-03-25"),
                           QStringLiteral("volume in lots"), QStringLiteral("daily/600519.csv: new"),
                           QStringLiteral("and 2 more files")}));
    EXPECT_EQ(report.warnings, QStringList(QStringLiteral("adjusted")));
    EXPECT_EQ(report.rows.size(), 1U);
    EXPECT_TRUE(report.refusals.isEmpty());
}

} // namespace
} // namespace Terminal
