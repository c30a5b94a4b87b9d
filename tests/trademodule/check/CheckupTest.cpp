// The check of a module: it finds nothing in ours, and nearly every fault that can be made in what ours says.
#include "trademodule/check/Checkup.h"

#include "tests/support/LeaksOfALibrary.h"
#include "tests/trademodule/check/support/Mutation.h"
#include "tests/trademodule/check/support/RecordedModule.h"
#include "tests/trademodule/support/ExchangeFixture.h"
#include "trademodule/bus/TradeAnswers.h"
#include "trademodule/check/AnswerRules.h"
#include "trademodule/check/CheckTable.h"
#include "trading/ModuleVocabulary.h"
#include "trading/Presence.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <map>

namespace TradeModule {

namespace {

using ::testing::IsEmpty;
using Trading::Channel::GLOBAL;

QByteArray presence()
{
    Trading::TradePresence own;
    own.instance = QStringLiteral("a");
    own.isOnline = true;
    own.fence = 1;
    own.version = QStringLiteral("0.1.0");
    own.protocol = QStringLiteral("1");
    own.can = QStringList{QStringLiteral("clientno"), QStringLiteral("actions"), QStringLiteral("openorders"),
                          QStringLiteral("replace")};
    own.host = QStringLiteral("desk");
    own.process = 7;
    own.processStart = QStringLiteral("0b1e/7");
    own.since = QDateTime(QDate(2026, 11, 22), QTime(1, 30), Qt::UTC);
    own.ledger = QStringLiteral("/account.db");
    return own.toJson();
}

/// What a check says about a module, to be compared.
struct Findings
{
    std::map<std::string, QStringList> faults; ///< by case
    QStringList remarks;                       ///< what was left out or not seen
};

Findings findingsOf(const StandInModule::Answer &answer, const QByteArray &presence)
{
    CheckSettings settings;
    settings.security = bank();
    settings.orderPrice = yuan(9);
    settings.mark = QStringLiteral("check");
    settings.flood = 3;
    settings.longQuestion = 1000;
    StandInModule bus(answer, presence);
    const auto cases = allCases(); // the report names them
    const Checkup::Report report = Checkup(&bus, settings).run(cases);
    Findings findings;
    for (const CaseResult &result : report.results) {
        if (!result.faults.isEmpty()) {
            findings.faults[result.checked->id] = result.faults;
        } else if (!result.skipped.isEmpty()) {
            findings.remarks.append(QLatin1String(result.checked->id) + result.skipped);
        }
    }
    findings.remarks += report.leftOut;
    return findings;
}

/// Our module, with trades, orders and dividends in its ledger.
class CheckupTest : public PaperExchangeOfADay
{
protected:
    void SetUp() override
    {
        PaperExchangeOfADay::SetUp();
        if (IsSkipped()) {
            return;
        }
        book({fill(Side::Buy, bank(), TradingDate::today().plusDays(-200), 9, 1000),
              fill(Side::Buy, bank(), TradingDate::today().plusDays(-20), 9.5, 500),
              fill(Side::Bonus, bank(), TradingDate::today().plusDays(-10), 0, 100),
              fill(Side::Sell, bank(), TradingDate::today().plusDays(-5), 10.5, 200)});
        exchange().place(bank(), Direction::Buy, yuan(10), 100);
        exchange().report();
        exchange().take(bar(1001, 10, 10, 10));
    }

    /// As the serving module does it.
    QVector<Said> answer(const QByteArray &payload)
    {
        m_told.clear();
        const QJsonDocument document = QJsonDocument::fromJson(payload);
        const QJsonObject question = document.object();
        if (question.contains(QStringLiteral("success"))) {
            return {};
        }
        const QByteArray answer = m_answers->answer(question);
        m_exchange->report();
        m_exchange->settle();
        return QVector<Said>{
                   {question[QStringLiteral("screenId")].toString().toUtf8(), "TradeQuery", answer}} +
               m_told;
    }

    StandInModule::Answer ours()
    {
        m_exchange.emplace(&ledger(), [this](const Order &changed) {
            m_told.append({GLOBAL, "TradeNotify",
                           QJsonDocument(changeNotification(changed)).toJson(QJsonDocument::Compact)});
        });
        m_answers.emplace(&ledger(), &*m_exchange);
        return [this](const QByteArray &question) { return answer(question); };
    }

private:
    std::optional<PaperExchange> m_exchange;
    std::optional<TradeAnswers> m_answers;
    QVector<Said> m_told;
};

TEST_F(CheckupTest, FindsNothingInOurModule)
{
    const Findings findings = findingsOf(ours(), presence());
    for (const auto &[id, faults] : findings.faults) {
        ADD_FAILURE() << id << ": " << faults.join(QStringLiteral("; ")).toStdString();
    }
    for (const QString &remark : findings.remarks) { // names that this ledger does not know, and the like
        EXPECT_TRUE(remark.endsWith(QStringLiteral("(nobody minds)")) ||
                    remark.endsWith(QStringLiteral("(the cell is empty)")))
            << remark.toStdString();
    }
}

/// The guides allow to leave it out, and no chart shows that it is.
bool isLeftOutByRight(const Mutation &mutation)
{
    const Trading::MessageKey *const key = mutation.key();
    return (mutation.way == Mutation::Dropped || mutation.way == Mutation::Emptied) && key != nullptr &&
           !key->isRequired && !isNoticed(key->whenWrong);
}

/// What else is not told, and why that does no harm.
const std::map<std::string, const char *> &harmless()
{
    static const std::map<std::string, const char *> reasons = {
        {"CorporateActions data: emptied", "an account may have received nothing"},
        {"EntrustCancel data/*/msgok : out of range", "a text for people, whatever it says"},
        {"Results data/state: out of range", "the same text all the time, as it is while nothing changes"},
        {"TradeNotify : said twice", "charts ask once more"},
        {"TradePresence : said twice", "it is said again after every join"},
        {"TradePresence : late", "it comes with the join, whenever that is"},
        {"TradePresence instance: out of range", "any text names a module"},
        {"failure costprice: retyped", "\"nan\" is no number, so null comes: it is left out"},
    };
    return reasons;
}

TEST_F(CheckupTest, FindsNearlyEveryFaultThatCanBeMade)
{
    const LeaksOfALibrary leaks; // Qt forgets the record under a key that comes twice
    RecordedModule recorded;
    const Findings ofOurs = findingsOf(recorded.recording(ours()), presence());
    ASSERT_THAT(ofOurs.faults, IsEmpty());
    ASSERT_THAT(findingsOf(recorded.playing(), presence()).faults, IsEmpty()) << "it is played as it was";

    Said word{GLOBAL, "TradePresence", presence()};
    word.kind = kindOf(word);
    const QVector<Mutation> mutations = mutationsOf(recorded.all() + QVector<Said>{word});
    int wrong = 0;
    int remarked = 0;
    int silent = 0;
    for (const Mutation &mutation : mutations) {
        const RecordedModule faulty = recorded.with(mutation);
        const QVector<Said> words = mutation.applied({word});
        const Findings findings =
            findingsOf(faulty.playing(), words.isEmpty() ? QByteArray() : words.first().payload);
        if (!findings.faults.empty()) {
            ++wrong;
        } else if (findings.remarks != ofOurs.remarks) {
            ++remarked;
        } else {
            ++silent;
            EXPECT_TRUE(isLeftOutByRight(mutation) || harmless().count(mutation.text()) > 0)
                << mutation.text();
        }
    }
    std::cout << mutations.size() << " faults: " << wrong << " told as wrong, " << remarked
              << " told as left out or not seen, " << silent << " harmless\n";
    EXPECT_GT(mutations.size(), 1000);
    EXPECT_GE(wrong + remarked, mutations.size() * 95 / 100);
}

} // namespace

} // namespace TradeModule
