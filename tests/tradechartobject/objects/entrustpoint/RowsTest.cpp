#include "tests/support/ByName.h"
#include "tests/tradechartobject/objects/entrustpoint/EntrustPointTest.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using namespace TradeChart;

namespace {

struct Market
{
    const char *name;
    int shown; ///< market number of the security on the chart
    QJsonValue sent;
    bool isKept;
};

class EntrustPointRowsMarket : public EntrustPointTest, public ::testing::WithParamInterface<Market>
{
};

TEST_P(EntrustPointRowsMarket, OfARowIsTheSecuritysOwn)
{
    create();
    calc(makeSecurity(GetParam().shown, "600536", 1), threeMinutes, Korvane::IntradayPeriod);
    const LogCapture log;
    hearOrders({with(SentOrder(), "market", GetParam().sent)});
    EXPECT_EQ(paint(), GetParam().isKept);
    EXPECT_THAT(log.all(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Markets, EntrustPointRowsMarket,
    ::testing::Values(Market{"OneIsShanghai", 1, QStringLiteral("1"), true},
                      Market{"TwoIsShenzhen", 0, QStringLiteral("2"), true},
                      Market{"ZeroIsNotShenzhen", 0, QStringLiteral("0"), false},
                      Market{"OneIsNotShenzhen", 0, QStringLiteral("1"), false},
                      Market{"TwoIsNotShanghai", 1, QStringLiteral("2"), false},
                      Market{"TwoIsNotHongKong", 2, QStringLiteral("2"), false},
                      Market{"LettersAreNone", 1, QStringLiteral("SH"), false},
                      Market{"NumberIsNone", 1, 1, false},
                      Market{"MissingIsNone", 1, QJsonValue::Undefined, false},
                      Market{"WrapsAtSixteenBits", 1, QStringLiteral("65537"), true},
                      Market{"ZeroBelongsToAMarketWithoutCode", 12, QStringLiteral("0"), true},
                      Market{"NumberBelongsToAMarketWithoutCode", 12, 1, true},
                      Market{"OneIsNotAMarketWithoutCode", 12, QStringLiteral("1"), false},
                      Market{"MissingBelongsToANegativeMarket", -5, QJsonValue::Undefined, true}),
    ByName());

struct SideCodes
{
    const char *name;
    const char *codes; ///< parted by blanks
    const char *drawn;
};

class EntrustPointRowsSide : public EntrustPointTest, public ::testing::WithParamInterface<SideCodes>
{
};

TEST_P(EntrustPointRowsSide, FollowsTheDirectionCodes)
{
    createOnThreeMinutes();
    for (const QString &code : QString::fromLatin1(GetParam().codes).split(QLatin1Char(' '))) {
        hearOrders({with(SentOrder(), "bsflag2", code)});
        EXPECT_THAT(drawn(), ElementsAre(GetParam().drawn)) << code.toStdString();
        hearOrders({SentOrder{"0B", "9"}});
    }
}

INSTANTIATE_TEST_SUITE_P(Codes, EntrustPointRowsSide,
                         ::testing::Values(SideCodes{"OfABuy", "0B 0b 0c 0d 0e 0a 0q 0w 0y 0. 0l", "0 20 10"},
                                           SideCodes{"OfASell", "0S 0g 0h 0i 0j 0r 0v 0x 0z 0` 0m 0o 0f",
                                                     "0 23 10"}),
                         ByName());

struct Unreadable
{
    const char *name;
    const char *key;
    QJsonValue value;
};

class EntrustPointRowsUnreadable : public EntrustPointTest, public ::testing::WithParamInterface<Unreadable>
{
};

TEST_P(EntrustPointRowsUnreadable, AreSkippedAndLogged)
{
    createOnThreeMinutes();
    const QJsonObject row = with(SentOrder(), GetParam().key, GetParam().value);
    const LogCapture log;
    hearOrders({row, SentOrder{"0S"}});
    EXPECT_THAT(drawn(), ElementsAre("0 23 10")) << "the other row is read";
    QString json = QString::fromUtf8(QJsonDocument(row).toJson(QJsonDocument::Indented));
    json.replace(QLatin1Char('"'), QLatin1String("\\\"")).replace(QLatin1Char('\n'), QLatin1String("\\n"));
    EXPECT_THAT(log.lines(QtDebugMsg),
                ElementsAre(QStringLiteral("Error:unknown bsflag2 or order status is empty:"),
                            QStringLiteral("\"%1\"").arg(json)));
}

INSTANTIATE_TEST_SUITE_P(Rows, EntrustPointRowsUnreadable,
                         ::testing::Values(Unreadable{"OfTheSideB", "bsflag2", QStringLiteral("B")},
                                           Unreadable{"OfTheSideS", "bsflag2", QStringLiteral("S")},
                                           Unreadable{"OfACodeInOtherCase", "bsflag2", QStringLiteral("0F")},
                                           Unreadable{"OfACodeWithABlank", "bsflag2", QStringLiteral("0B ")},
                                           Unreadable{"OfAnEmptySide", "bsflag2", QString()},
                                           Unreadable{"WithoutASide", "bsflag2", QJsonValue::Undefined},
                                           Unreadable{"WithASideAsANumber", "bsflag2", 0},
                                           Unreadable{"OfAnEmptyStatus", "orderstatus", QString()},
                                           Unreadable{"WithoutAStatus", "orderstatus", QJsonValue::Undefined},
                                           Unreadable{"WithAStatusAsANumber", "orderstatus", 2}),
                         ByName());

class EntrustPointRows : public EntrustPointTest
{
};

TEST_F(EntrustPointRows, LogsAnUnreadableRowByteForByte)
{
    createOnThreeMinutes();
    const LogCapture log;
    hearOrders({{{QStringLiteral("market"), QStringLiteral("1")},
                 {QStringLiteral("bsflag2"), QStringLiteral("0F")}}});
    EXPECT_THAT(log.lines(QtDebugMsg),
                ElementsAre(QStringLiteral("Error:unknown bsflag2 or order status is empty:"),
                            QStringLiteral(R"("{\n    \"bsflag2\": \"0F\",\n    \"market\": \"1\"\n}\n")")));
}

TEST_F(EntrustPointRows, SkipsAnUnreadableRowOfAnotherMarketWithoutALine)
{
    createOnThreeMinutes();
    const LogCapture log;
    hearOrders({with(SentOrder{"0F", ""}, "market", QStringLiteral("2"))});
    EXPECT_THAT(log.all(), IsEmpty());
}

TEST_F(EntrustPointRows, SkipsWhatIsNoObjectLikeARowOfNoMarket)
{
    createOnThreeMinutes();
    const LogCapture log;
    hear(Topic::TRADEQUERY, sentAnswer("EntrustTodayTrade", QJsonArray{5, QStringLiteral("x"), anOrder()}));
    EXPECT_THAT(drawn(), SizeIs(1));
    EXPECT_THAT(log.all(), IsEmpty());
}

TEST_F(EntrustPointRows, TakesWhatIsNoObjectForAnEmptyRowOfAMarketWithoutCode)
{
    create();
    calc(makeSecurity(12, "600536", 1), threeMinutes, Korvane::IntradayPeriod);
    const LogCapture log;
    hear(Topic::TRADEQUERY, sentAnswer("EntrustTodayTrade", QJsonArray{5}));
    EXPECT_FALSE(paint());
    EXPECT_THAT(log.lines(QtDebugMsg),
                ElementsAre(QStringLiteral("Error:unknown bsflag2 or order status is empty:"),
                            QStringLiteral(R"("{\n}\n")")));
}

} // namespace
