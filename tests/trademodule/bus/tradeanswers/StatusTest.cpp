#include "tests/trademodule/bus/tradeanswers/TradeAnswersTest.h"
#include "trademodule/bus/TradeRequest.h"
#include "trading/ModuleStatus.h"

#include <optional>

namespace TradeModule {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const QJsonObject statusAsked{{QStringLiteral("cmd"), QStringLiteral("ModuleStatus")}};

/// One that answers, and what it says of itself.
class TradeAnswersStatus : public TradeAnswersTest
{
protected:
    void SetUp() override
    {
        TradeAnswersTest::SetUp();
        if (IsSkipped()) {
            return;
        }
        m_exchange.emplace(&ledger());
        m_answers.emplace(&ledger(), &*m_exchange);
        Trading::TradePresence presence;
        presence.instance = QStringLiteral("one");
        presence.isOnline = true;
        m_answers->record().begin(presence);
        m_answers->setTellRefusal([this](const TradeRequest &question, const QString &reason) {
            refusals.append(question.field("cmd").toString() + QLatin1String(": ") + reason);
        });
    }

    void answer(const QJsonObject &question) { m_answers->answer(question); }

    Trading::ModuleStatus status()
    {
        const QByteArray answer = m_answers->answer(statusAsked);
        const auto read =
            Trading::ModuleStatus::ofJson(jsonOfAnswer(answer)[QStringLiteral("data")].toObject());
        EXPECT_TRUE(read) << answer.constData();
        return read.value_or(Trading::ModuleStatus());
    }

    PaperExchange &exchange() { return *m_exchange; }

    QStringList refusals;

private:
    static QJsonObject jsonOfAnswer(const QByteArray &answer)
    {
        return QJsonDocument::fromJson(answer).object();
    }

    std::optional<PaperExchange> m_exchange;
    std::optional<TradeAnswers> m_answers;
};

TEST_F(TradeAnswersStatus, TellsWhoServesAndHowManyOrdersAreOpen)
{
    exchange().setCash(Money::ofCents(100000000));
    exchange().leave(bank(), Direction::Buy, Money::ofCents(1000), 100);

    EXPECT_EQ(status().module.instance, QStringLiteral("one"));
    EXPECT_EQ(status().openOrders, 1);
}

TEST_F(TradeAnswersStatus, CountsAnswersAndRefusalsByCommand)
{
    answer(question("TodayTrade", bank()));
    answer(question("TodayTrade", {QStringLiteral("x"), Market::Shanghai}));
    answer({{QStringLiteral("cmd"), QStringLiteral("Dance")}});
    answer({{QStringLiteral("cmd"), 5}});

    const auto answers = status().answers;

    ASSERT_EQ(answers.size(), 2);
    EXPECT_EQ(answers[0].command, QStringLiteral("TodayTrade"));
    EXPECT_EQ(answers[0].count, 2);
    EXPECT_EQ(answers[1].command, QStringLiteral("other"))
        << "what is no command of ours is counted together";
    EXPECT_EQ(answers[1].count, 2);
    EXPECT_EQ(answers[1].failures, 2);
    EXPECT_GE(answers[0].taken, answers[0].longest);
    EXPECT_GT(answers[0].longest.count(), 0);
}

TEST_F(TradeAnswersStatus, TellsRefusalsWithTheirReason)
{
    answer({{QStringLiteral("cmd"), QStringLiteral("Dance")}});
    answer(question("TodayTrade", bank()));

    EXPECT_THAT(refusals, ElementsAre(QStringLiteral(
                              "Dance: \"cmd\" is \"Dance\", which this trading module does not know")));
}

TEST_F(TradeAnswersStatus, IsToldWhileTheLedgerCannotBeUsed)
{
    Database(location()).run(QStringLiteral("ALTER TABLE trade_order RENAME TO lost"));

    const Trading::ModuleStatus told = status();

    EXPECT_FALSE(told.ledgerTrouble.isEmpty());
    EXPECT_EQ(told.openOrders, -1);
    EXPECT_EQ(told.module.instance, QStringLiteral("one"));
    EXPECT_THAT(refusals, IsEmpty());
}

} // namespace

} // namespace TradeModule
