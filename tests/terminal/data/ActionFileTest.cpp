#include "terminal/data/ActionFile.h"
#include "tests/support/ByName.h"
#include "tests/terminal/support/DataFiles.h"
#include "tests/terminal/support/DayAndTime.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

const QString actionFile = QStringLiteral("actions/600519.csv");
const auto moutai = SecurityCode::of(QStringLiteral("600519.SH"));

Loaded<CorporateActions> read(const QByteArray &text)
{
    return readActions(text, actionFile, moutai);
}

qint64 steps(const char *text)
{
    return decimalSteps(text).value();
}

TEST(ActionFile, TakesTheOwnForm)
{
    const auto actions = read("exdate,dividend,bonus,split,rights,rightsprice\n"
                              "20240620,0.5,0.3,,0.2,6.50\n"
                              "20250619,,,2,,\n");
    ASSERT_TRUE(actions) << qPrintable(actions.error());
    ASSERT_EQ(actions.value().size(), 2U);
    const CorporateAction &first = actions.value().front();
    EXPECT_EQ(first.exDate, onDay(20240620));
    EXPECT_EQ(first.dividend.steps(), steps("0.5"));
    EXPECT_EQ(first.bonus.steps(), steps("0.3"));
    EXPECT_EQ(first.rights.steps(), steps("0.2"));
    EXPECT_EQ(first.rightsPrice.steps(), steps("6.5"));
    EXPECT_EQ(actions.value().back().bonus.steps(), steps("1")); // one more for each
}

TEST(ActionFile, TakesFiguresOfTenSharesByTheirChineseNames)
{
    const auto actions = read("除权除息日,每10股派息(元),每10股送股,每10股转增,每10股配股,配股价\n"
                              "2013-06-20,1.70,6,0,-,--\n"
                              "2012-10-19,1.00,,2,3,5.25\n");
    ASSERT_TRUE(actions) << qPrintable(actions.error());
    ASSERT_EQ(actions.value().size(), 2U);
    const CorporateAction &older = actions.value().front(); // newest first in the file
    EXPECT_EQ(older.exDate, onDay(20121019));
    EXPECT_EQ(older.dividend.steps(), steps("0.1"));
    EXPECT_EQ(older.bonus.steps(), steps("0.2"));
    EXPECT_EQ(older.rights.steps(), steps("0.3"));
    EXPECT_EQ(older.rightsPrice.steps(), steps("5.25"));
    EXPECT_EQ(actions.value().back().dividend.steps(), steps("0.17"));
    EXPECT_EQ(actions.value().back().bonus.steps(), steps("0.6"));
}

TEST(ActionFile, TakesGb18030AndTabs)
{
    const QByteArray gb18030 =
        "\xB3\xFD\xC8\xA8\xB3\xFD\xCF\xA2\xC8\xD5\t\xC3\xBF\xB9\xC9\xC5\xC9\xCF\xA2\r\n"
        "20240620\t0.5\r\n";
    const auto actions = read(gb18030);
    ASSERT_TRUE(actions) << qPrintable(actions.error());
    EXPECT_EQ(actions.value().front().dividend.steps(), steps("0.5"));
}

TEST(ActionFile, LeavesDaysOfAnnouncementAndBlankLinesAlone)
{
    const auto actions = read("公告日,除权除息日,股权登记日,每股派息,代码,备注\n"
                              "20240601,20240620,20240619,0.5,600519.SH,年度\n"
                              "\n");
    ASSERT_TRUE(actions) << qPrintable(actions.error());
    EXPECT_EQ(actions.value().size(), 1U);
}

TEST(ActionFile, PutsTwoSharesTogether)
{
    const auto actions = read("exdate,split\n20240620,0.5\n");
    ASSERT_TRUE(actions) << qPrintable(actions.error());
    EXPECT_EQ(actions.value().front().bonus.steps(), steps("-0.5"));
}

TEST(ActionFile, MayHaveNoRows)
{
    EXPECT_TRUE(read("exdate,dividend\n"));
}

struct WrongFile
{
    const char *name;
    const char *content;
    const char *reason;
};

class ActionFileRefuses : public ::testing::TestWithParam<WrongFile>
{
};

TEST_P(ActionFileRefuses, ByFileLineAndReason)
{
    const auto actions = read(GetParam().content);
    EXPECT_FALSE(actions);
    const QString reason = actionFile + QString::fromUtf8(GetParam().reason);
    EXPECT_TRUE(actions.error().startsWith(reason)) << qPrintable(actions.error());
}

INSTANTIATE_TEST_SUITE_P(
    Files, ActionFileRefuses,
    ::testing::Values(
        WrongFile{"Empty", "", ":1: the first line is \"\", but must name the columns"},
        WrongFile{"NoHeader", "20240620,0.5\n", ":1: the first line is \"20240620,0.5\""},
        WrongFile{"UnknownColumn", "exdate,divident\n20240620,0.5\n",
                  ":1: the column \"divident\" is not known"},
        WrongFile{"OneOrTen", "除权除息日,派息\n20240620,0.5\n",
                  ":1: the column \"派息\" does not say for how many shares it is"},
        WrongFile{"SameTwice", "exdate,dividend,每10股派息\n20240620,0.5,5\n",
                  ":1: the columns \"dividend\" and \"每10股派息\" have the same meaning"},
        WrongFile{"NothingTold", "exdate,note\n20240620,\n", ":1: no column tells what happened"},
        WrongFile{"TooFewCells", "exdate,dividend\n20240620\n", ":2: 1 fields, but there must be 2"},
        WrongFile{"NoDate", "exdate,dividend\nsoon,0.5\n", ":2: \"soon\" is not a date"},
        WrongFile{"OtherForm", "exdate,dividend\n20240620,0.5\n2024-06-21,1\n",
                  ":3: \"2024-06-21\" is not a date"},
        WrongFile{"NoSuchDay", "exdate,dividend\n20240230,0.5\n", ":2: \"20240230\" is not a date"},
        WrongFile{"Weekend", "exdate,dividend\n20240622,0.5\n", ":2: 2024-06-22 is no trading day"},
        WrongFile{"NoNumber", "exdate,dividend\n20240620,half\n", ":2: \"half\" is not a decimal number"},
        WrongFile{"Negative", "exdate,dividend\n20240620,-0.5\n", ":2: \"-0.5\" is not a decimal number"},
        WrongFile{"TooFine", "exdate,每10股派息\n20240620,0.00000001\n",
                  ":2: \"0.00000001\" is not a decimal number"},
        WrongFile{"TenAsOne", "exdate,bonus\n20240620,5\n", ":2: so many new shares for one"},
        WrongFile{"TenRightsAsOne", "exdate,rights,rightsprice\n20240620,3,5\n",
                  ":2: so many new shares for one"},
        WrongFile{"RightsWithoutPrice", "exdate,rights\n20240620,0.3\n", ":2: rights need a price"},
        WrongFile{"PriceWithoutRights", "exdate,dividend,rightsprice\n20240620,0.3,5\n",
                  ":2: rights need a price"},
        WrongFile{"SplitAndBonus", "exdate,bonus,split\n20240620,1,2\n",
                  ":2: bonus shares and a split on one day"},
        WrongFile{"Nothing", "exdate,dividend\n20240620,0\n", ":2: nothing happened on this day"},
        WrongFile{"SameDay", "exdate,dividend\n20240620,1\n20250620,1\n20240620,1\n",
                  ":4: 2024-06-20 is there twice"},
        WrongFile{"OtherSecurity", "exdate,dividend,code\n20240620,1,600518\n",
                  ":2: \"600518\" is another security than that of the file, 600519.SH"},
        WrongFile{"NoText", "\xff\xfe\xff\xff\x01", ": this is no text"}),
    ByName());

TEST(ActionFile, NamesTheColumnOfAWrongCell)
{
    EXPECT_TRUE(read("除权除息日,每股派息\n20240620,x\n").error().endsWith(QStringLiteral("每股派息")));
}

using ActionFileOnDisk = DataFiles;

TEST_F(ActionFileOnDisk, MayBeMissing)
{
    const auto actions = readActionFile(folder() + QStringLiteral("/none.csv"), moutai);
    EXPECT_TRUE(actions);
    EXPECT_TRUE(actions.value().empty());
}

TEST_F(ActionFileOnDisk, IsNamedWhenItIsWrong)
{
    const QString file = write(actionFile, "exdate,dividend\n20240620,x\n");
    EXPECT_TRUE(readActionFile(file, moutai).error().startsWith(file + QStringLiteral(":2: ")));
}

} // namespace
} // namespace Terminal
