// The same bars as different makers of files write them.
#include "terminal/data/BarRemarks.h"
#include "terminal/data/BarSheet.h"
#include "tests/support/ByName.h"
#include "tests/terminal/data/ManyForms.h"

#include <gmock/gmock.h>

#include <QTextCodec>

namespace Terminal {
namespace {

struct Dialect
{
    const char *name;
    std::function<QByteArray(const Bars &)> write;
    PriceKind prices = PriceKind::Unknown;
    VolumeEvidence evidence = VolumeEvidence::Amounts;
    const char *security = "";
};

QByteArray inGb18030(const QByteArray &utf8)
{
    return QTextCodec::codecForName("GB18030")->fromUnicode(QString::fromUtf8(utf8));
}

const Dialect dailyDialects[] = {
    {"own",
     [](const Bars &bars) {
         return FormOfDays("date,open,high,low,close,volume", "{d},{o},{h},{l},{c},{v}").of(bars);
     },
     PriceKind::Unknown, VolumeEvidence::OwnForm},
    {"ownWithIsoDates",
     [](const Bars &bars) {
         return FormOfDays("date,open,high,low,close,volume", "{iso},{o},{h},{l},{c},{v}").of(bars);
     },
     PriceKind::Unknown, VolumeEvidence::OwnForm},
    {"ownNewestFirst",
     [](const Bars &bars) {
         return FormOfDays("date,open,high,low,close,volume", "{d},{o},{h},{l},{c},{v}")
             .newestFirst()
             .of(bars);
     },
     PriceKind::Unknown, VolumeEvidence::OwnForm},
    {"lotsAndThousandsNewestFirst",
     [](const Bars &bars) {
         return FormOfDays("ts_code,trade_date,open,high,low,close,pre_close,change,pct_chg,vol,amount",
                           "000001.SZ,{d},{o},{h},{l},{c},{p},0.1,1.0,{lots},{thousands}")
             .newestFirst()
             .of(bars);
     },
     PriceKind::Unknown, VolumeEvidence::Amounts, "000001.SZ"},
    {"adjustFlagAndStatus",
     [](const Bars &bars) {
         return FormOfDays(
                    "date,code,open,high,low,close,preclose,volume,amount,adjustflag,turn,tradestatus,pctChg",
                    "{iso},sz.000001,{o},{h},{l},{c},{p},{v},{yuan},3,0.5,1,1.0")
             .of(bars);
     },
     PriceKind::Raw, VolumeEvidence::Amounts, "000001.SZ"},
    {"chineseCloseBeforeHigh",
     [](const Bars &bars) {
         return FormOfDays("日期,开盘,收盘,最高,最低,成交量,成交额,振幅,涨跌幅,涨跌额,换手率",
                           "{iso},{o},{c},{h},{l},{lots0},{yuan},1.0,1.0,0.1,0.5")
             .of(bars);
     }},
    {"chineseInGb18030WithTitleAndEnd",
     [](const Bars &bars) {
         return inGb18030(
             "000001 平安银行 日线 不复权\n" +
             FormOfDays("      日期\t    开盘\t    最高\t    最低\t    收盘\t    成交量\t    成交额",
                        "{slash}\t{o}\t{h}\t{l}\t{c}\t{v}\t{yuan}")
                 .of(bars) +
             "#数据来源:某软件\n");
     },
     PriceKind::Raw, VolumeEvidence::Amounts, "000001"},
    {"unitsInTheHeader",
     [](const Bars &bars) {
         return FormOfDays("交易日期;股票代码;开盘价(元);最高价(元);最低价(元);收盘价(元);成交量(手)",
                           "{iso};SZ000001;{o};{h};{l};{c};{lots}")
             .of(bars);
     },
     PriceKind::Unknown, VolumeEvidence::Header, "000001.SZ"},
    {"tenThousands",
     [](const Bars &bars) {
         return FormOfDays("\xEF\xBB\xBF日期,代码,开盘价,最高价,最低价,收盘价,成交量（万股）,成交额（万元）",
                           "{iso},\"=\"\"000001\"\"\",{o},{h},{l},{c},{v4},{yuan4}")
             .of(bars);
     },
     PriceKind::Unknown, VolumeEvidence::Amounts, "000001"},
    {"threeHeaderLines",
     [](const Bars &bars) {
         return FormOfDays("Price,Close,High,Low,Open,Volume "
                           "(shares)\nTicker,000001.SZ,000001.SZ,000001.SZ,000001.SZ,"
                           "000001.SZ\nDate,,,,,",
                           "{iso},{c},{h},{l},{o},{v}")
             .of(bars);
     },
     PriceKind::Unknown, VolumeEvidence::Header, "000001.SZ"},
    {"tableIndexAndZone",
     [](const Bars &bars) {
         return FormOfDays(",open,close,high,low,volume,money",
                           "{iso} 00:00:00+08:00,{o},{c},{h},{l},{v},{yuan}")
             .of(bars);
     }},
    {"angleBrackets",
     [](const Bars &bars) {
         return FormOfDays("<TICKER>,<PER>,<DATE>,<TIME>,<OPEN>,<HIGH>,<LOW>,<CLOSE>,<VOL>,<AMOUNT>",
                           "000001.XSHE,D,{d},000000,{o},{h},{l},{c},{v},{yuan}")
             .of(bars);
     },
     PriceKind::Unknown, VolumeEvidence::Amounts, "000001.SZ"},
    {"adjustedAsTheFlagSays",
     [](const Bars &bars) {
         return FormOfDays("date,code,open,high,low,close,volume,amount,adjustflag",
                           "{iso},sz.000001,{o},{h},{l},{c},{v},{lessYuan},2")
             .of(bars);
     },
     PriceKind::Adjusted, VolumeEvidence::Amounts, "000001.SZ"},
    {"groupsOfDigits",
     [](const Bars &bars) {
         return FormOfDays("交易时间,开盘价,最高价,最低价,收盘价,成交量,成交额",
                           "{iso},{o},{h},{l},{c},\"{grouped}\",{yuan}")
             .of(bars);
     }},
    {"dayOfAnUnknownName",
     [](const Bars &bars) {
         return FormOfDays("code,name,time_key,open,close,high,low,volume,amount",
                           "SZ.000001,平安银行,{iso} 00:00:00,{o},{c},{h},{l},{v},{yuan}")
             .of(bars);
     },
     PriceKind::Unknown, VolumeEvidence::Amounts, "000001.SZ"},
    {"weekdayAndMillions",
     [](const Bars &bars) {
         return FormOfDays("时间\t开盘\t最高\t最低\t收盘\t总手\t金额(百万)",
                           "{iso},五\t{o}\t{h}\t{l}\t{c}\t{lots0}\t{millions}")
             .of(bars);
     }},
    {"floatingNoise",
     [](const Bars &bars) {
         return FormOfDays("date,open,high,low,close,volume,amount",
                           "{iso},{o}00000000001,{h},{l},{c},{v}.0,{yuan}")
             .of(bars);
     }},
};

class BarDialectsOfDays : public ::testing::TestWithParam<Dialect>
{
};

TEST_P(BarDialectsOfDays, IsReadLikeTheOwnForm)
{
    const Bars bars = someDays();
    const auto sheet = readBarSheet(GetParam().write(bars), QStringLiteral("a.csv"), {});
    ASSERT_TRUE(sheet) << qPrintable(sheet.error());
    expectSame(sheet.value().bars, bars);
    EXPECT_FALSE(sheet.value().isOfMinutes);
    EXPECT_EQ(sheet.value().prices, GetParam().prices);
    EXPECT_EQ(sheet.value().volumeEvidence, GetParam().evidence);
    EXPECT_EQ(sheet.value().security ? sheet.value().security->text() : QString(),
              QLatin1String(GetParam().security));
}

INSTANTIATE_TEST_SUITE_P(Made, BarDialectsOfDays, ::testing::ValuesIn(dailyDialects), ByName());

const Dialect minuteDialects[] = {
    {"closeFirstNewestFirst",
     [](const Bars &bars) {
         return FormOfDays("ts_code,trade_time,close,open,high,low,vol,amount",
                           "000001.SZ,{iso} {hh:mm}:00,{c},{o},{h},{l},{v}.0,{yuan}")
             .newestFirst()
             .of(bars);
     },
     PriceKind::Unknown, VolumeEvidence::Amounts, "000001.SZ"},
    {"dateAndLongTime",
     [](const Bars &bars) {
         return FormOfDays("date,time,code,open,high,low,close,volume,amount,adjustflag",
                           "{iso},{d}{hhmm}00000,sz.000001,{o},{h},{l},{c},{v},{yuan},3")
             .of(bars);
     },
     PriceKind::Raw, VolumeEvidence::Amounts, "000001.SZ"},
    {"chineseTimeInLots",
     [](const Bars &bars) {
         return FormOfDays("时间,开盘,收盘,最高,最低,成交量,成交额,均价",
                           "{iso} {hh:mm},{o},{c},{h},{l},{lots},{yuan},9")
             .of(bars);
     }},
    {"dayAndDigits",
     [](const Bars &bars) {
         return FormOfDays("date,time,open,high,low,close,volume", "{d},{hhmm},{o},{h},{l},{c},{v}").of(bars);
     },
     PriceKind::Unknown, VolumeEvidence::OwnForm},
};

class BarDialectsOfMinutes : public ::testing::TestWithParam<Dialect>
{
};

TEST_P(BarDialectsOfMinutes, IsReadLikeTheOwnForm)
{
    const Bars bars = someMinutes();
    const auto sheet = readBarSheet(GetParam().write(bars), QStringLiteral("a.csv"), {});
    ASSERT_TRUE(sheet) << qPrintable(sheet.error());
    expectSame(sheet.value().bars, bars);
    EXPECT_TRUE(sheet.value().isOfMinutes);
    EXPECT_EQ(sheet.value().prices, GetParam().prices);
    EXPECT_EQ(sheet.value().volumeEvidence, GetParam().evidence);
}

INSTANTIATE_TEST_SUITE_P(Made, BarDialectsOfMinutes, ::testing::ValuesIn(minuteDialects), ByName());

TEST(BarDialects, AreRefusedWhoseVolumesAreSumsOverTheDay)
{
    Bars minutes = someMinutes();
    for (std::size_t i = 1; i < minutes.size(); ++i) {
        minutes[i].volume += minutes[i].date == minutes[i - 1].date ? minutes[i - 1].volume : 0;
    }
    const FormOfDays form("time,open,high,low,close,volume(shares)", "{iso} {hh:mm},{o},{h},{l},{c},{v}");
    EXPECT_TRUE(readBarSheet(form.of(minutes), QStringLiteral("a.csv"), {})
                    .error()
                    .contains(QStringLiteral("sums since its begin")));
    const auto sheet = readBarSheet(form.of(someMinutes()), QStringLiteral("a.csv"), {});
    EXPECT_TRUE(sheet) << qPrintable(sheet.error());
}

TEST(BarDialects, SayThatAFewBarsMayBeOfWeeks)
{
    Bars weeks;
    for (std::size_t i = 0; i < 40; i += 5) {
        weeks.push_back(someDays()[i]);
    }
    const FormOfDays own("date,open,high,low,close,volume", "{d},{o},{h},{l},{c},{v}");
    const auto sheet = readBarSheet(own.of(weeks), QStringLiteral("a.csv"), {});
    ASSERT_TRUE(sheet) << qPrintable(sheet.error());
    ASSERT_EQ(barRemarks(sheet.value()).size(), 1);
    EXPECT_TRUE(barRemarks(sheet.value()).front().contains(QStringLiteral("7 days apart")));
}

} // namespace
} // namespace Terminal
