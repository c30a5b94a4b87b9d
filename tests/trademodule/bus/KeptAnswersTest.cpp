#include "trademodule/bus/KeptAnswers.h"

#include "tests/trademodule/bus/tradeanswers/TradeAnswersTest.h"
#include "trademodule/Error.h"

#include <optional>

namespace TradeModule {

namespace {

class KeptAnswersTest : public LedgerFixture
{
protected:
    /// The content that the question is answered with; counts how often the ledger is read for it.
    KeptAnswers::Content ask(const QJsonObject &question)
    {
        if (!m_kept) {
            m_kept.emplace(ledger().database());
        }
        return m_kept->of(question, [this] {
            ++readings;
            return KeptAnswers::Content{{}, QByteArray(bytesOfAnAnswer, 'r')};
        });
    }

    static QJsonObject questionOf(const QString &screen)
    {
        QJsonObject object = question("TodayTrade", bank());
        object[QStringLiteral("screenId")] = screen;
        return object;
    }

    int readings = 0;
    int bytesOfAnAnswer = 100;

private:
    std::optional<KeptAnswers> m_kept;
};

TEST_F(KeptAnswersTest, AreReadOnceForAHundredTerminals)
{
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(ask(questionOf(QString::number(i))).rows, QByteArray(bytesOfAnAnswer, 'r'));
    }

    EXPECT_EQ(readings, 1);
}

TEST_F(KeptAnswersTest, AreReadForEachQuestionOfItsOwn)
{
    ask(question("TodayTrade", bank()));
    ask(question("TodayTrade", liquor()));
    ask(question("EntrustTodayTrade", bank()));

    EXPECT_EQ(readings, 3);
}

TEST_F(KeptAnswersTest, AreReadAnewWhenTheLedgerHasChanged)
{
    ask(questionOf(QStringLiteral("1")));
    book({fill(Side::Buy, bank(), 20240102, 10, 100)});

    ask(questionOf(QStringLiteral("1")));
    ask(questionOf(QStringLiteral("2")));

    EXPECT_EQ(readings, 2);
}

TEST_F(KeptAnswersTest, AreReadAnewWhenAnotherProcessHasChangedIt)
{
    ask(questionOf(QStringLiteral("1")));
    Ledger(location()).book(statementOf({fill(Side::Buy, bank(), 20240102, 10, 100)}), Ledger::Mode::Keep);

    ask(questionOf(QStringLiteral("1")));

    EXPECT_EQ(readings, 2);
}

TEST_F(KeptAnswersTest, AreForgottenBeforeTheyTakeTooMuchMemory)
{
    bytesOfAnAnswer = 6 << 20;
    for (const char *date : {"1", "2", "3"}) { // together more than is kept
        QJsonObject object = questionOf(QStringLiteral("1"));
        object[QStringLiteral("date")] = QLatin1String(date);
        ask(object);
    }
    QJsonObject first = questionOf(QStringLiteral("1"));
    first[QStringLiteral("date")] = QStringLiteral("1");

    ask(first);

    EXPECT_EQ(readings, 4);
}

TEST_F(KeptAnswersTest, KeepNothingOfAReadingThatFails)
{
    KeptAnswers kept(ledger().database());
    const auto fail = []() -> KeptAnswers::Content { throw LedgerError(QStringLiteral("away")); };
    EXPECT_THROW(kept.of(questionOf(QStringLiteral("1")), fail), LedgerError);

    EXPECT_EQ(kept.of(questionOf(QStringLiteral("1")),
                      [] {
                          return KeptAnswers::Content{{}, "rows"};
                      })
                  .rows,
              "rows");
}

} // namespace

} // namespace TradeModule
