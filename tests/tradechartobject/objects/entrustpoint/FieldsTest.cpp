#include "tests/support/ByName.h"
#include "tests/tradechartobject/objects/entrustpoint/EntrustPointTest.h"

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::SizeIs;
using ::testing::StartsWith;

namespace {

class EntrustPointFields : public EntrustPointTest
{
};

TEST_F(EntrustPointFields, ReadsAllFieldsOfARow)
{
    createOnThreeMinutes();
    const QString date = QString::number(today);
    const auto textOf = [&](const char *status) {
        hearOrders({with(SentOrder{"0S", status, "10.0004", "9315999"}, "ordersno", QStringLiteral("42"))});
        listAt(0, yOfTen());
        return axis.popups.front().front();
    };
    const QString head =
        QStringLiteral("卖出[江山科技]\n状态:%1\n编号:42\n委托时间:09:31:59\n委托价格:10.000\n"
                       "委托数量:500\n");
    EXPECT_EQ(textOf("8"), head.arg(QStringLiteral("已成交")) + QStringLiteral("委托日期:") + date);
    EXPECT_EQ(textOf("7"), head.arg(QStringLiteral("部成(未成可撤)")) +
                               QStringLiteral("成交均价:10.050\n成交数量:200\n可撤数量:300\n委托日期:") +
                               date);
    EXPECT_EQ(textOf("5"), head.arg(QStringLiteral("部成(未成已撤)")) +
                               QStringLiteral("成交均价:10.050\n成交数量:200\n已撤数量:100\n委托日期:") +
                               date);
}

TEST_F(EntrustPointFields, ReadsJsonNumbersAndMissingFieldsAsZero)
{
    createOnThreeMinutes();
    QJsonObject numbers{{QStringLiteral("market"), QStringLiteral("1")},
                        {QStringLiteral("bsflag2"), QStringLiteral("0B")},
                        {QStringLiteral("orderstatus"), QStringLiteral("7")}};
    const QJsonObject missing = numbers;
    for (const char *key : {"ordersno", "operdate", "opertime", "orderprice", "orderqty", "matchqty",
                            "matchamt", "cancelqty", "fundid"}) {
        numbers.insert(QLatin1String(key), 7);
    }
    for (const QJsonObject &row : {numbers, missing}) {
        hearOrders({row});
        EXPECT_THAT(drawn(), ElementsAre("0 21 0v"));
        listAt(0, axis.yOf(0.0));
        const std::string text = axis.popups.front().front().toStdString();
        EXPECT_THAT(text, StartsWith("买入[江山科技]\n状态:部成(未成可撤)\n编号:0\n委托时间:00:00:00\n"
                                     "委托价格:0.000\n委托数量:0\n成交均价:"));
        EXPECT_THAT(text, HasSubstr("nan\n")) << "nothing divided by nothing";
        EXPECT_THAT(text, EndsWith("成交数量:0\n可撤数量:0\n委托日期:000000"));
    }
}

TEST_F(EntrustPointFields, ShowsAnInfiniteAverageForAnAmountWithoutAQuantity)
{
    createOnThreeMinutes();
    hearOrders({with(SentOrder{"0B", "7"}, "matchqty", QStringLiteral("0"))});
    listAt(0, yOfTen());
    EXPECT_TRUE(axis.popups.front().front().contains(QStringLiteral("成交均价:inf\n成交数量:0\n")));
}

TEST_F(EntrustPointFields, ReadsNoOtherFieldOfARow)
{
    createOnThreeMinutes();
    hearOrders({SentOrder{"0B", "7"}});
    const std::string text = listedText();
    QJsonObject row = SentOrder{"0B", "7"};
    for (const char *key : {"orderdate", "bizdate", "matchtime", "matchprice", "cancelflag", "stkname",
                            "stkcode", "bsflag", "buy", "date", "price", "vol"}) {
        row.insert(QLatin1String(key), QStringLiteral("19990101"));
    }
    hearOrders({row});
    EXPECT_EQ(listedText(), text);
}

TEST_F(EntrustPointFields, ReadsRowsOfDifferentShapesInOneAnswer)
{
    createOnThreeMinutes();
    const QJsonObject whole = SentOrder{"0B", "7"};
    QJsonObject shorter = whole;
    for (const char *key : {"fundid", "matchamt", "matchqty"}) {
        shorter.remove(QLatin1String(key));
    }
    QJsonObject longer = with(whole, "orderqty", QStringLiteral("900"));
    for (const char *key : {"aaa", "ccc", "matchp", "zzz"}) {
        longer.insert(QLatin1String(key), QStringLiteral("77"));
    }
    hearOrders({whole, shorter, longer, shorter, whole});
    listAt(0, yOfTen());
    ASSERT_THAT(axis.popups.front(), SizeIs(5));
    const QStringList &texts = axis.popups.front();
    EXPECT_TRUE(texts[0].contains(QStringLiteral("委托数量:500\n成交均价:10.050\n成交数量:200\n")));
    EXPECT_TRUE(texts[1].contains(QStringLiteral("成交数量:0\n可撤数量:500\n")));
    EXPECT_TRUE(texts[2].contains(QStringLiteral("委托数量:900\n成交均价:10.050\n成交数量:200\n")));
    EXPECT_EQ(texts[3], texts[1]);
    EXPECT_EQ(texts[4], texts[0]);
}

struct NoNumber
{
    const char *name;
    const char *text;
};

class EntrustPointFieldsNoNumber : public EntrustPointTest, public ::testing::WithParamInterface<NoNumber>
{
};

TEST_P(EntrustPointFieldsNoNumber, IsReadAsZero)
{
    struct Field
    {
        const char *key;
        const char *status;
        const char *shown;
    };
    createOnThreeMinutes();
    for (const Field &field :
         {Field{"ordersno", "8", "编号:0\n"}, Field{"orderqty", "8", "委托数量:0\n"},
          Field{"matchqty", "7", "成交数量:0\n"}, Field{"cancelqty", "5", "已撤数量:0\n"},
          Field{"operdate", "8", "委托日期:000000"}, Field{"opertime", "8", "委托时间:00:00:00\n"}}) {
        hearOrders({with(SentOrder{"0B", field.status}, field.key, QString::fromUtf8(GetParam().text))});
        EXPECT_THAT(listedText(), HasSubstr(field.shown)) << field.key;
    }
}

INSTANTIATE_TEST_SUITE_P(Texts, EntrustPointFieldsNoNumber,
                         ::testing::Values(NoNumber{"Words", "abc"}, NoNumber{"Empty", ""},
                                           NoNumber{"TooLargeByOne", "2147483648"},
                                           NoNumber{"TooSmallByOne", "-2147483649"},
                                           NoNumber{"TwentyDigits", "99999999999999999999"},
                                           NoNumber{"Decimals", "1.5"}, NoNumber{"Exponent", "1e3"},
                                           NoNumber{"Hexadecimal", "0x10"}, NoNumber{"FullWidth", "１"},
                                           NoNumber{"Infinite", "inf"}, NoNumber{"NotANumber", "nan"}),
                         ByName());

TEST_F(EntrustPointFields, ReadsTheLargestWholeNumbers)
{
    createOnThreeMinutes();
    hearOrders({with(with(SentOrder{"0B", "8"}, "ordersno", QStringLiteral("2147483647")), "orderqty",
                     QStringLiteral("-2147483648"))});
    EXPECT_THAT(listedText(), HasSubstr("编号:2147483647\n"));
    EXPECT_THAT(listedText(), HasSubstr("委托数量:-2147483648\n"));
}

class EntrustPointFieldsAbsurd : public EntrustPointTest, public ::testing::WithParamInterface<const char *>
{
};

TEST_P(EntrustPointFieldsAbsurd, NumbersArePaintedHitListedAndOfferedForCancellation)
{
    create();
    calc(shanghai, minutes({931, 1500}),
         Korvane::IntradayPeriod); // the minutes of orders without a sensible time
    QJsonObject row = SentOrder{"0B", "7"};
    for (const char *key : {"ordersno", "operdate", "opertime", "orderprice", "orderqty", "matchqty",
                            "matchamt", "cancelqty", "fundid"}) {
        row.insert(QLatin1String(key), QLatin1String(GetParam()));
    }
    axis.onPopup = [] { return 0; };
    axis.onConfirm = [] { return true; };
    for (const QJsonObject &order : {row, with(row, "opertime", QStringLiteral("9310000"))}) {
        hearOrders({order});
        EXPECT_TRUE(paint());
        for (const double y : {axis.yOf(axis.low), axis.yOf(axis.high), axis.yOf(0)}) {
            for (const double x : {0.0, 10.0}) {
                overlay->hitTest(x, y);
                overlay->handleMousePress(x, y);
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Texts, EntrustPointFieldsAbsurd,
                         ::testing::Values("", "-", "-1", "-2147483648", "2147483647", "99999999999999999999",
                                           "-99999999999999999999", "1e308", "-1e308", "1e400", "1e-400",
                                           "inf", "-inf", "nan", "9223372036854775.807",
                                           "-9223372036854776"));

} // namespace
