// Volumes in lots, of securities that have another lot than shares.
#include "terminal/data/VolumeUnit.h"
#include "terminal/data/BarRemarks.h"
#include "terminal/data/BarSheet.h"
#include "tests/support/ByName.h"
#include "tests/terminal/data/ManyForms.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>

namespace Terminal {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;

Loaded<BarSheet> read(const QByteArray &text, const char *code = "")
{
    BarHints hints;
    hints.security = SecurityCode::of(QLatin1String(code));
    return readBarSheet(text, QStringLiteral("a.csv"), hints);
}

std::vector<std::string> remarksOn(const BarSheet &sheet)
{
    std::vector<std::string> remarks;
    for (const QString &remark : barRemarks(sheet)) {
        remarks.push_back(remark.toStdString());
    }
    return remarks;
}

struct Lot
{
    const char *name;
    const char *code;
    int shares;
};

class VolumeUnitOfASecurity : public ::testing::TestWithParam<Lot>
{
protected:
    /// The bars as their volumes, in lots, come to.
    Bars expected() const
    {
        Bars bars = someDays();
        for (Bar &bar : bars) {
            bar.volume = bar.volume / 100 * GetParam().shares;
        }
        return bars;
    }
};

TEST_P(VolumeUnitOfASecurity, CountsItsOwnLotsWhereTheHeaderSaysLots)
{
    for (const char *const unit : {"成交量(手)", "volume(lot)", "总手"}) {
        const FormOfDays form(QByteArray("date,open,high,low,close,") + unit,
                              "{iso},{o},{h},{l},{c},{lots0}");
        const auto sheet = read(form.of(someDays()), GetParam().code);
        ASSERT_TRUE(sheet) << qPrintable(sheet.error());
        expectSame(sheet.value().bars, expected());
    }
}

TEST_P(VolumeUnitOfASecurity, TellsItsLotsByTheAmount)
{
    Bars bars = someDays();
    for (const bool areInLots : {true, false}) {
        QByteArray text = "date,open,high,low,close,volume,amount\n";
        for (const Bar &bar : bars) {
            const double pieces = bar.volume / 100 * GetParam().shares;
            text += QByteArray::number(bar.date);
            for (const double number :
                 {bar.open, bar.high, bar.low, bar.close, areInLots ? pieces / GetParam().shares : pieces,
                  pieces * (bar.low + bar.high) / 2}) {
                text += ',' + QByteArray::number(number, 'f', 2);
            }
            text += '\n';
        }
        const auto sheet = read(text, GetParam().code);
        ASSERT_TRUE(sheet) << qPrintable(sheet.error());
        EXPECT_EQ(sheet.value().volumeUnit, areInLots ? VolumeUnit::Lots : VolumeUnit::Shares);
        expectSame(sheet.value().bars, expected());
    }
}

TEST_P(VolumeUnitOfASecurity, IsAskedForWhereNothingTells)
{
    const FormOfDays form("Date,Open,High,Low,Close,Volume", "{iso},{o},{h},{l},{c},{lots0}");
    EXPECT_THAT(read(form.of(someDays()), GetParam().code).error().toStdString(), HasSubstr("--volume lots"));
}

INSTANTIATE_TEST_SUITE_P(
    Of, VolumeUnitOfASecurity,
    ::testing::Values(Lot{"Share", "600519.SH", 100}, Lot{"Star", "688981.SH", 100},
                      Lot{"SharesInDollars", "900901.SH", 100},
                      Lot{"SharesInHongKongDollars", "200002.SZ", 100}, Lot{"Fund", "510300.SH", 100},
                      Lot{"FundOfShenzhen", "159915.SZ", 100}, Lot{"Convertible", "113050.SH", 10},
                      Lot{"ConvertibleOfShenzhen", "128136.SZ", 10}, Lot{"Treasury", "019547.SH", 10},
                      Lot{"BondOfShenzhen", "112000", 10}),
    ByName());

TEST(VolumeUnit, OfABondIsToldByAmountsWithInterest)
{
    QByteArray text = "code,date,open,high,low,close,volume,amount\n";
    for (int day = 2; day <= 26; ++day) {
        if (QDate(2024, 8, day).dayOfWeek() < Qt::Saturday) {
            text += "019547.SH,202408" + QByteArray::number(day).rightJustified(2, '0') +
                    ",101.10,101.30,101.00,101.20,500,516000\n"; // 500 lots of ten at 103.20
        }
    }
    const auto sheet = read(text);
    ASSERT_TRUE(sheet) << qPrintable(sheet.error());
    EXPECT_EQ(sheet.value().bars.front().volume, 5000);
    EXPECT_EQ(sheet.value().prices, PriceKind::Unknown);
}

TEST(VolumeUnit, OfMoneyLentIsToldByItsFaceValueNotByTheRate)
{
    QByteArray text = "code,date,open,high,low,close,volume,amount\n";
    for (int day = 2; day <= 26; ++day) {
        if (QDate(2024, 8, day).dayOfWeek() < Qt::Saturday) {
            text += "204001.SH,202408" + QByteArray::number(day).rightJustified(2, '0') +
                    ",1.90,19.00,0.10,1.20,700,700000\n"; // lots of a thousand yuan
        }
    }
    const auto sheet = read(text);
    ASSERT_TRUE(sheet) << qPrintable(sheet.error());
    EXPECT_EQ(sheet.value().volumeUnit, VolumeUnit::Lots);
    EXPECT_EQ(sheet.value().bars.front().volume, 7000);
}

TEST(VolumeUnit, OfSmallVolumesIsReadRightOrAskedFor)
{
    std::mt19937 random(7);
    for (const char *const code : {"600519.SH", "113050.SH", "510300.SH"}) {
        const auto lot = static_cast<int>(Trading::lotOf(SecurityCode::of(QLatin1String(code))->kind()));
        for (const int inUnit : {1, lot}) {
            for (const double yuanInUnit : {1.0, 1000.0, 10000.0}) {
                for (int round = 0; round < 20; ++round) {
                    QByteArray text = "date,time,open,high,low,close,volume,amount\n";
                    Bars bars = someMinutes();
                    bars.resize(30 + random() % 60);
                    for (Bar &bar : bars) { // one trade a minute, or none
                        const int units = random() % 4 == 0 ? 0 : 1 + static_cast<int>(random() % 99);
                        bar.open = bar.high = bar.low = bar.close;
                        bar.volume = units * inUnit;
                        text += "20240102," + QByteArray::number(bar.minute / 60 * 100 + bar.minute % 60);
                        for (int i = 0; i < 4; ++i) {
                            text += ',' + QByteArray::number(bar.close, 'f', 2);
                        }
                        text += ',' + QByteArray::number(units) + ',' +
                                QByteArray::number(bar.close * bar.volume / yuanInUnit, 'f', 2) + '\n';
                    }
                    const auto sheet = read(text, code);
                    if (sheet) {
                        expectSame(sheet.value().bars, bars);
                    } else {
                        EXPECT_THAT(sheet.error().toStdString(), HasSubstr("--volume lots"));
                    }
                }
            }
        }
    }
}

TEST(VolumeUnit, MayBeThousandsOrHundredMillions)
{
    for (const auto &[unit, shares] : {std::pair("成交量(千股)", 1e3), std::pair("成交量（亿股）", 1e8)}) {
        QByteArray text = QByteArray("date,open,high,low,close,") + unit + '\n';
        for (const Bar &bar : someDays()) {
            text += QByteArray::number(bar.date);
            for (const double price : {bar.open, bar.high, bar.low, bar.close}) {
                text += ',' + QByteArray::number(price, 'f', 2);
            }
            text += ',' + QByteArray::number(bar.volume / shares, 'f', 8) + '\n';
        }
        const auto sheet = read(text, "600519.SH");
        ASSERT_TRUE(sheet) << qPrintable(sheet.error());
        expectSame(sheet.value().bars, someDays());
    }
}

TEST(VolumeUnit, IsDoubtedWhereManyBarsHaveLessThanALot)
{
    Bars bars = someDays();
    for (std::size_t i = 0; i < 8; ++i) {
        bars[i].volume = 40;
    }
    const FormOfDays own("date,open,high,low,close,volume", "{d},{o},{h},{l},{c},{v}");
    EXPECT_THAT(remarksOn(read(own.of(bars)).value()), Contains(HasSubstr("8 of 60 bars")));
    EXPECT_TRUE(remarksOn(read(own.of(someDays())).value()).empty());
    for (std::size_t i = 0; i < 8; ++i) {
        bars[i].volume = 40; // four lots of a bond
    }
    EXPECT_TRUE(remarksOn(read(own.of(bars), "113050.SH").value()).empty());
}

TEST(VolumeUnit, IsDoubtedWhereAllLotsAreWholeHundreds)
{
    const FormOfDays lots("date,open,high,low,close,成交量(手)", "{d},{o},{h},{l},{c},{v}");
    EXPECT_THAT(remarksOn(read(lots.of(someDays())).value()),
                Contains(HasSubstr("in shares, and not in lots")));
    const FormOfDays right("date,open,high,low,close,成交量(手)", "{d},{o},{h},{l},{c},{lots0}");
    EXPECT_TRUE(remarksOn(read(right.of(someDays())).value()).empty());
}

} // namespace
} // namespace Terminal
