#include "terminal/bars/BarImport.h"
#include "terminal/data/DataFolder.h"
#include "tests/terminal/data/ManyForms.h"
#include "tests/terminal/support/DataFiles.h"

#include <gmock/gmock.h>

namespace Terminal {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;

const FormOfDays withCode("ts_code,trade_date,open,high,low,close,vol,amount",
                          "000001.SZ,{d},{o},{h},{l},{c},{lots},{thousands}");
const FormOfDays withoutCode("Date,Open,High,Low,Close,Volume,Amount", "{iso},{o},{h},{l},{c},{v},{yuan}");

class BarImportIntoAFolder : public DataFiles
{
protected:
    QString target() const { return folder() + QStringLiteral("/data"); }

    QString refusal(BarImport *import, const QString &file, const BarImportOptions &options = {})
    {
        return import->plan(file, options).error();
    }

    void importFile(const QByteArray &content, const BarImportOptions &options = {})
    {
        BarImport import(target());
        const auto plan = import.plan(write(QStringLiteral("in.csv"), content), options);
        ASSERT_TRUE(plan) << qPrintable(plan.error());
        ASSERT_EQ(import.write(), QString());
    }

    Bars daysInFolder(const char *code = "000001")
    {
        const auto opened = DataFolder::open(target());
        EXPECT_TRUE(opened) << qPrintable(opened.error());
        const auto data = opened.value().load(QLatin1String(code), ChartPeriod::Day);
        EXPECT_TRUE(data) << qPrintable(data.error());
        return data.value().bars;
    }
};

TEST_F(BarImportIntoAFolder, MakesAFolderThatTheTerminalOpens)
{
    importFile(withCode.of(someDays()));
    expectSame(daysInFolder(), someDays());
    const auto opened = DataFolder::open(target());
    EXPECT_EQ(opened.value().securities().front().market, Market::Shenzhen);
}

TEST_F(BarImportIntoAFolder, AsksForTheDayOfMinutesAndProposesWhatTheNameSays)
{
    BarImport import(target());
    BarImportOptions options;
    const QByteArray minutes = "time,open,high,low,close,volume\n930,9,9,9,9,1\n931,9,9,9,9,1\n";
    const QString named = write(QStringLiteral("000001_20240131.csv"), minutes);
    const std::string reason = refusal(&import, named).toStdString();
    EXPECT_THAT(reason, HasSubstr("--day 20240131 --code 000001.SZ"));
    EXPECT_THAT(reason, ::testing::Not(HasSubstr("more lines"))) << "one reason, however many lines";
    options.hints.security = SecurityCode::of(QStringLiteral("000001.SZ"));
    EXPECT_THAT(refusal(&import, named, options).toStdString(),
                AllOf(HasSubstr("--day 20240131"), ::testing::Not(HasSubstr("--code"))));
    options.hints.day = Trading::TradingDate::of(2024, 1, 31);
    const auto plan = import.plan(named, options);
    ASSERT_TRUE(plan) << qPrintable(plan.error());
    EXPECT_EQ(plan.value().files.front().name, QStringLiteral("minute/000001_20240131.csv"));
}

TEST_F(BarImportIntoAFolder, WritesNothingBeforeItIsToldTo)
{
    BarImport import(target());
    EXPECT_TRUE(import.plan(write(QStringLiteral("in.csv"), withCode.of(someDays())), {}));
    EXPECT_FALSE(QFileInfo::exists(target()));
}

TEST_F(BarImportIntoAFolder, AddsLaterDaysToThoseThatAreThere)
{
    const Bars all = someDays();
    importFile(withCode.of(Bars(all.begin(), all.begin() + 40)));
    importFile(withCode.of(Bars(all.begin() + 30, all.end())));
    expectSame(daysInFolder(), all);
}

TEST_F(BarImportIntoAFolder, JoinsTwoFilesOfOneSecurity)
{
    const Bars all = someDays();
    BarImport import(target());
    EXPECT_TRUE(
        import.plan(write(QStringLiteral("new.csv"), withCode.of(Bars(all.begin() + 30, all.end()))), {}));
    EXPECT_TRUE(
        import.plan(write(QStringLiteral("old.csv"), withCode.of(Bars(all.begin(), all.begin() + 30))), {}));
    EXPECT_EQ(import.write(), QString());
    expectSame(daysInFolder(), all);
}

TEST_F(BarImportIntoAFolder, MixesNoAdjustedBarsWithRawOnes)
{
    Bars adjusted = someDays();
    importFile(withCode.of(adjusted));
    for (Bar &bar : adjusted) {
        for (double *const price : {&bar.open, &bar.high, &bar.low, &bar.close}) {
            *price -= 1;
        }
    }
    const QString file = write(QStringLiteral("in.csv"), withCode.of(adjusted));
    BarImport import(target());
    EXPECT_THAT(refusal(&import, file).toStdString(), HasSubstr("is one of both adjusted? --replace"));
    BarImportOptions replacing;
    replacing.replacesAll = true;
    EXPECT_EQ(refusal(&import, file, replacing), QString());
    EXPECT_EQ(import.write(), QString());
    expectSame(daysInFolder(), adjusted);
}

TEST_F(BarImportIntoAFolder, CountsADayWithAnotherVolumeAsAnotherDay)
{
    Bars bars = someDays();
    importFile(withCode.of(bars));
    bars.back().volume += 100;
    BarImport import(target());
    const auto plan = import.plan(write(QStringLiteral("in.csv"), withCode.of(bars)), {});
    ASSERT_TRUE(plan) << qPrintable(plan.error());
    EXPECT_EQ(plan.value().files.front().change.toStdString(),
              "0 days added, 59 replaced by the same, 1 by others");
}

TEST_F(BarImportIntoAFolder, MixesNoVolumesInLotsWithThoseInShares)
{
    const FormOfDays inLots("code,Date,Open,High,Low,Close,Volume",
                            "000001.SZ,{iso},{o},{h},{l},{c},{lots0}");
    BarImportOptions asShares;
    asShares.hints.volume = VolumeUnit::Shares;
    BarImportOptions asLots;
    asLots.hints.volume = VolumeUnit::Lots;
    importFile(withCode.of(someDays()));
    const QString file = write(QStringLiteral("lots.csv"), inLots.of(someDays()));
    BarImport import(target());
    EXPECT_THAT(refusal(&import, file, asShares).toStdString(),
                AllOf(HasSubstr("60 of 60 days"), HasSubstr("a volume 100 times as small"),
                      HasSubstr("--volume lots")));
    const auto plan = import.plan(file, asLots);
    ASSERT_TRUE(plan) << qPrintable(plan.error());
    EXPECT_EQ(plan.value().files.front().change.toStdString(),
              "0 days added, 60 replaced by the same, 0 by others");
    asShares.replacesAll = true;
    BarImport replacing(target());
    EXPECT_EQ(refusal(&replacing, file, asShares), QString());
    EXPECT_EQ(replacing.write(), QString());
    EXPECT_THAT(refusal(&replacing, file, asLots).toStdString(),
                AllOf(HasSubstr("a volume 100 times as large"), HasSubstr("--volume shares")));
}

TEST_F(BarImportIntoAFolder, MixesNoVolumesOfABondInLotsOfTenWithThoseInBonds)
{
    const FormOfDays bond("code,date,open,high,low,close,volume", "113050.SH,{iso},{o},{h},{l},{c},{v}");
    BarImportOptions inBonds;
    inBonds.hints.volume = VolumeUnit::Shares;
    importFile(bond.of(someDays()), inBonds);
    Bars inLots = someDays();
    for (Bar &bar : inLots) {
        bar.volume /= 10;
    }
    BarImport import(target());
    EXPECT_THAT(refusal(&import, write(QStringLiteral("lots.csv"), bond.of(inLots)), inBonds).toStdString(),
                HasSubstr("a volume 10 times as small"));
}

TEST_F(BarImportIntoAFolder, TakesLotsAsThoseOfTheMarketThatTheFolderKnowsTheCodeOn)
{
    BarImportOptions fund;
    fund.hints.security = SecurityCode::of(QStringLiteral("155001.SZ")); // in Shanghai it is a bond
    importFile(withoutCode.of(someDays()), fund);
    const FormOfDays inLots("code,date,open,high,low,close,volume(lot)",
                            "155001,{iso},{o},{h},{l},{c},{lots0}");
    importFile(inLots.of(someDays()));
    expectSame(daysInFolder("155001"), someDays());
}

TEST_F(BarImportIntoAFolder, AsksForTheSecurityThatTheFileDoesNotName)
{
    const QString file = write(QStringLiteral("000001.csv"), withoutCode.of(someDays()));
    BarImport import(target());
    EXPECT_THAT(refusal(&import, file).toStdString(), HasSubstr("name it with --code"));
    BarImportOptions options;
    options.hints.security = SecurityCode::of(QStringLiteral("000001"));
    EXPECT_THAT(refusal(&import, file, options).toStdString(),
                HasSubstr("--code 000001.SH or --code 000001.SZ"));
    options.hints.security = SecurityCode::of(QStringLiteral("000001.SZ"));
    EXPECT_EQ(refusal(&import, file, options), QString());
}

TEST_F(BarImportIntoAFolder, RefusesAnotherSecurityThanTheOneThatIsNamed)
{
    const QString file = write(QStringLiteral("in.csv"), withCode.of(someDays()));
    BarImport import(target());
    BarImportOptions options;
    options.hints.security = SecurityCode::of(QStringLiteral("600519.SH"));
    EXPECT_THAT(refusal(&import, file, options).toStdString(),
                HasSubstr("bars of 000001.SZ, not of 600519.SH"));
}

TEST_F(BarImportIntoAFolder, RefusesTheSameCodeOfAnotherMarket)
{
    importFile(withCode.of(someDays()));
    const QString file =
        write(QStringLiteral("in.csv"), withCode.of(someDays()).replace("000001.SZ", "000001.SH"));
    BarImport import(target());
    EXPECT_THAT(refusal(&import, file).toStdString(), HasSubstr("the folder has 000001.SZ under this code"));
}

TEST_F(BarImportIntoAFolder, AsksForTheUnitOfAVolumeThatNothingTells)
{
    const QString file = write(QStringLiteral("in.csv"), FormOfDays("code,Date,Open,High,Low,Close,Volume",
                                                                    "000001.SZ,{iso},{o},{h},{l},{c},{lots0}")
                                                             .of(someDays()));
    BarImport import(target());
    EXPECT_THAT(refusal(&import, file).toStdString(), HasSubstr("--volume shares or --volume lots"));
    BarImportOptions options;
    options.hints.volume = VolumeUnit::Lots;
    const auto plan = import.plan(file, options);
    ASSERT_TRUE(plan) << qPrintable(plan.error());
    expectSame(plan.value().sheet.bars, someDays());
}

TEST_F(BarImportIntoAFolder, RefusesADayToCome)
{
    Bars bars = someDays();
    bars.back().date = 20980131;
    BarImport import(target());
    EXPECT_THAT(refusal(&import, write(QStringLiteral("in.csv"), withCode.of(bars))).toStdString(),
                HasSubstr("2098-01-31, a day to come"));
}

TEST_F(BarImportIntoAFolder, MakesAFileForEachDayOfMinutes)
{
    const Bars minutes = someMinutes();
    importFile(withCode.of(someDays()));
    importFile(FormOfDays("ts_code,trade_time,close,open,high,low,vol,amount",
                          "000001.SZ,{iso} {hh:mm}:00,{c},{o},{h},{l},{v},{yuan}")
                   .newestFirst()
                   .of(minutes));
    const auto opened = DataFolder::open(target());
    ASSERT_TRUE(opened) << qPrintable(opened.error());
    const auto days = opened.value().minuteDays(QStringLiteral("000001"));
    ASSERT_EQ(days.size(), 2U);
    const auto second = opened.value().load(QStringLiteral("000001"), ChartPeriod::Minute, days.back());
    ASSERT_TRUE(second) << qPrintable(second.error());
    EXPECT_EQ(second.value().bars.size(), 241U); // with the auction
    EXPECT_DOUBLE_EQ(second.value().bars.back().close, minutes.back().close);
}

TEST_F(BarImportIntoAFolder, LeavesTheFolderAsItWasWhenAFileCannotBeWritten)
{
    importFile(withCode.of(someDays()));
    const QString file =
        write(QStringLiteral("in.csv"), withCode.of(someDays()).replace("000001.SZ", "600519.SH"));
    QDir(target()).mkpath(QStringLiteral("daily/600519.csv/in-the-way"));
    BarImportOptions options;
    options.replacesAll = true;
    BarImport import(target());
    EXPECT_EQ(refusal(&import, file, options), QString());
    EXPECT_THAT(import.write().toStdString(), HasSubstr("600519.csv: cannot be written"));
    EXPECT_EQ(DataFolder::open(target()).value().securities().size(), 1U);
    expectSame(daysInFolder(), someDays());
}

TEST_F(BarImportIntoAFolder, SaysWhatItLeavesOut)
{
    const QByteArray suspended = "000001.SZ,20240326,0,0,0,0,0,0\n";
    BarImport import(target());
    const auto plan =
        import.plan(write(QStringLiteral("in.csv"), withCode.of(someDays()) + suspended), BarImportOptions());
    ASSERT_TRUE(plan) << qPrintable(plan.error());
    EXPECT_THAT(plan.value().remarks.join(QLatin1Char('\n')).toStdString(),
                HasSubstr("1 rows of days without trading are left out"));
    expectSame(plan.value().sheet.bars, someDays());
}

TEST_F(BarImportIntoAFolder, TakesForeignFilesThatLieInTheFolderAsTheyAre)
{
    write(QStringLiteral("data/securities.csv"), "code,market,name\n000001,SZ,PA\n");
    write(QStringLiteral("data/daily/000001.csv"), FormOfDays(withCode).newestFirst().of(someDays()));
    expectSame(daysInFolder(), someDays());
}

} // namespace
} // namespace Terminal
