#include "tests/trademodule/bus/tradeanswers/TradeAnswersTest.h"
#include "trademodule/ProgramLanguage.h"

namespace TradeModule {

namespace {

using TradeAnswersOpenOrders = TradeAnswersTest;

const QJsonObject asked{{QStringLiteral("cmd"), QStringLiteral("OpenOrders")},
                        {QStringLiteral("screenId"), QStringLiteral("screen1")}};

TEST_F(TradeAnswersOpenOrders, AreThoseOfAllSecurities)
{
    PaperExchange exchange(&ledger());
    exchange.setCash(Money::ofCents(100000000));
    exchange.leave(bank(), Direction::Buy, Money::ofCents(1000), 100);
    exchange.leave({QStringLiteral("600519"), Market::Shanghai}, Direction::Buy, Money::ofCents(1000), 200);

    const QJsonArray told = rows(asked);

    ASSERT_EQ(told.size(), 2);
    EXPECT_EQ(told[0].toObject()[QStringLiteral("stkcode")], bank().code);
    EXPECT_EQ(told[1].toObject()[QStringLiteral("stkcode")], QStringLiteral("600519"));
}

TEST_F(TradeAnswersOpenOrders, AreNoneInAnEmptyAccount)
{
    EXPECT_TRUE(rows(asked).isEmpty());
}

TEST_F(TradeAnswersOpenOrders, AreRefusedInTheLanguageOfWhoAsks)
{
    ProgramLanguage language;
    language.set(QStringLiteral("en"));
    PaperExchange exchange(&ledger());
    TradeAnswers answers(&ledger(), &exchange, {}, [&language](const QString &word) { language.set(word); });
    const auto reason = [&answers](const char *word) {
        QJsonObject place = question("EntrustPlace", bank());
        place[QStringLiteral("lang")] = QLatin1String(word);
        return QJsonDocument::fromJson(answers.answer(place)).object()[QStringLiteral("msg")].toString();
    };
    const QString english = reason("en");
    EXPECT_FALSE(english.isEmpty());
    EXPECT_NE(reason("zh"), english);
    EXPECT_NE(reason("xx"), english) << "an unknown language changes nothing";
    EXPECT_EQ(reason("en"), english);
}

} // namespace

} // namespace TradeModule
