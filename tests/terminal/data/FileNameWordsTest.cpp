#include "terminal/data/FileNameWords.h"

#include <gtest/gtest.h>

namespace Terminal {
namespace {

TEST(FileNameWords, TellACode)
{
    const auto code = [](const char *name) { return codeInName(QLatin1String(name)).toStdString(); };
    EXPECT_EQ(code("/a/600519.csv"), "600519.SH");
    EXPECT_EQ(code("/a/000001.csv"), "000001.SZ");
    EXPECT_EQ(code("/a/sz.000001_daily.txt"), "000001.SZ");
    EXPECT_EQ(code("/a/SH000001.csv"), "000001.SH") << "an index of Shanghai";
    EXPECT_EQ(code("/a/000001.XSHG.csv"), "000001.SH");
    EXPECT_EQ(code("/a/510300.csv"), "510300.SH");
    EXPECT_EQ(code("/a/113050.csv"), "113050.SH") << "a bond of Shanghai";
    EXPECT_EQ(code("/a/account_880001.csv"), "") << "no code of either market";
    EXPECT_EQ(code("/600519/20240131.csv"), "") << "neither a day nor a folder is a code";
    EXPECT_EQ(code("/a/bars.csv"), "");
}

TEST(FileNameWords, TellADay)
{
    const auto day = [](const char *name) { return dayInName(QLatin1String(name)).toStdString(); };
    EXPECT_EQ(day("/a/600519_20260327.csv"), "20260327");
    EXPECT_EQ(day("/a/2026-03-27 600519.csv"), "20260327");
    EXPECT_EQ(day("/a/20260327/20260327_1.csv"), "20260327");
    EXPECT_EQ(day("/20260327/600519.csv"), "") << "a folder's name is none of the file";
    EXPECT_EQ(day("/a/600519_20260332.csv"), "") << "in no calendar";
    EXPECT_EQ(day("/a/600519_20260301_20260327.csv"), "") << "which of both?";
    EXPECT_EQ(day("/a/600519.csv"), "");
}

} // namespace
} // namespace Terminal
