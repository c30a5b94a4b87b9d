// The disk below a ledger is full or fails, at each moment of a change in turn: nothing is changed by halves,
// nothing is told to be done that is not, and the change can be made when the disk works again.
//
//     TRADE_FAULTS=all ledger_sqlite_test --gtest_filter='*SqliteFaults*'     every power cut, with more
//     seeds
#include "tests/support/ByName.h"
#include "tests/trademodule/support/ExchangeFixture.h"
#include "tests/trademodule/support/FailingDisk.h"
#include "tests/trademodule/support/LedgerDeeds.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>

namespace TradeModule {

namespace {

using ::testing::HasSubstr;
using Fault = FailingDisk::Fault;
using Lasting = FailingDisk::Lasting;
using Survives = UnsyncedWrites::Survives;

struct Kind
{
    const char *name;
    Fault fault;
    Lasting lasting;
};

struct Trouble
{
    std::string name;
    Deed deed;
    Kind kind;
};

constexpr Kind kinds[] = {
    {"AFullDisk", Fault::IsFull, Lasting::UntilMended},
    {"AShortLackOfRoom", Fault::IsFull, Lasting::Once},
    {"ADiskThatFails", Fault::IoError, Lasting::UntilMended},
    {"ADiskThatFailsOnce", Fault::IoError, Lasting::Once},
    {"ADiskThatCannotBeRead", Fault::Unread, Lasting::UntilMended},
    {"ADiskThatCannotBeReadOnce", Fault::Unread, Lasting::Once},
    {"ADiskThatCannotBeLocked", Fault::Unlocked, Lasting::UntilMended},
    {"ADiskThatCannotBeLockedOnce", Fault::Unlocked, Lasting::Once},
};

std::vector<Trouble> troubles()
{
    std::vector<Trouble> all;
    for (const Deed &deed : ledgerDeeds()) {
        for (const Kind &kind : kinds) {
            all.push_back({std::string(deed.name) + "On" + kind.name, deed, kind});
        }
    }
    return all;
}

/// Copies of a ledger, each of which suffers one fault in one deed.
class LedgerOnAFailingDisk : public ::testing::Test
{
protected:
    void prepare(const Deed &deed)
    {
        if (!FailingDisk::install()) {
            GTEST_SKIP() << "Qt's driver HAS A SQLITE OF ITS OWN: no failing disk was put below it";
        }
        m_deed = deed;
        m_deed.before(fresh());
        m_states.before = contentOf(copy());
        const QString done = copy();
        ASSERT_EQ(endOf(m_deed, done), End::Done);
        m_states.after = contentOf(done);
        expectToAddUp(done);
        ASSERT_THAT(m_states.after, HasSubstr("file: ok"));
    }

    QString fresh() const { return m_directory.filePath(QStringLiteral("fresh.db")); }

    /// The ledger as it is before the deed.
    QString copy()
    {
        const QString name = m_directory.filePath(QStringLiteral("copy%1.db").arg(++m_copies));
        QFile::copy(fresh(), name);
        return name;
    }

    /// That what was said of the deed is so, and that it can be done now.
    void expectToGoOn(const QString &file, End end)
    {
        ASSERT_THAT(contentOf(file), m_states.afterAnEnd(end));
        ASSERT_EQ(endOf(m_deed, file), End::Done);
        ASSERT_EQ(contentOf(file), m_states.after);
    }

    Deed m_deed{};
    DeedStates m_states;

private:
    QTemporaryDir m_directory;
    int m_copies = 0;
};

class SqliteFaults : public LedgerOnAFailingDisk, public ::testing::WithParamInterface<Trouble>
{
protected:
    void SetUp() override { prepare(GetParam().deed); }
};

} // namespace

TEST_P(SqliteFaults, LeaveALedgerThatAddsUpAndCanBeChangedAfterwards)
{
    FailingDisk disk;
    int failures = 0;
    for (int operation = 1;; ++operation) {
        SCOPED_TRACE("operation " + std::to_string(operation));
        const QString file = copy();
        disk.failAt(operation, GetParam().kind.fault, GetParam().kind.lasting);
        const End end = endOf(m_deed, file);
        const bool hasFailed = disk.hasFailed();
        disk.mend();
        if (!hasFailed) {
            RecordProperty("points", operation - 1);
            break;
        }
        failures += end == End::Done ? 0 : 1;
        ASSERT_NO_FATAL_FAILURE(expectToGoOn(file, end));
    }
    EXPECT_GT(failures, 0);
}

INSTANTIATE_TEST_SUITE_P(Of, SqliteFaults, ::testing::ValuesIn(troubles()), ByName());

namespace {

/// What of the writes that nobody waited for is on the disk when the power is back.
struct Loss
{
    const char *name;
    Survives survives;
    unsigned seeds; ///< walks with other ones each, where all are walked
};

struct PowerCut
{
    std::string name;
    Deed deed;
    Loss loss;
};

constexpr Loss losses[] = {
    {"WhatWasNotSynced", Survives::Nothing, 1},
    {"Nothing", Survives::Everything, 1},
    {"SomeSectors", Survives::SomeOfIt, 3},
};

std::vector<PowerCut> powerCuts()
{
    std::vector<PowerCut> all;
    for (const Deed &deed : ledgerDeeds()) {
        for (const Loss &loss : losses) {
            all.push_back({std::string(deed.name) + "Loses" + loss.name, deed, loss});
        }
    }
    return all;
}

/// The machine stands still at each change of a file in turn, and is started again.
class SqliteFaultsOfPower : public LedgerOnAFailingDisk, public ::testing::WithParamInterface<PowerCut>
{
protected:
    void SetUp() override { prepare(GetParam().deed); }

    static bool walksAll() { return qEnvironmentVariable("TRADE_FAULTS") == QLatin1String("all"); }
    static unsigned seeds() { return walksAll() ? GetParam().loss.seeds : 1; }

    /// Every third one is walked in daily work, each deed from another one on.
    static int firstOperation()
    {
        return walksAll() ? 1 : 1 + static_cast<int>(GetParam().name.size()) % operationsAStep();
    }
    static int operationsAStep() { return walksAll() ? 1 : 3; }

    /// What a program was told that is gone with the machine: what it was not told to be done may be done.
    static End inDoubt(End end) { return end == End::Done ? End::Done : End::Unknown; }
};

} // namespace

TEST_P(SqliteFaultsOfPower, LoseNothingThatWasConfirmed)
{
    FailingDisk disk;
    int points = 0;
    for (unsigned seed = 1; seed <= seeds(); ++seed) {
        for (int operation = firstOperation();; operation += operationsAStep(), ++points) {
            SCOPED_TRACE("operation " + std::to_string(operation) + ", seed " + std::to_string(seed));
            const QString file = copy();
            disk.failAt(operation, Fault::NoPower, Lasting::UntilMended);
            const End end = endOf(m_deed, file);
            if (!disk.hasFailed()) {
                disk.mend();
                break;
            }
            disk.returnPower(GetParam().loss.survives, seed * 1000 + static_cast<unsigned>(operation));
            ASSERT_NO_FATAL_FAILURE(expectToGoOn(file, inDoubt(end)));
        }
    }
    RecordProperty("points", points);
    EXPECT_GT(points, 0);
}

namespace {

/// A walk of its own, as no other deed copies a file.
class SqliteFaultsOfACopy : public LedgerOnAFailingDisk
{
protected:
    void SetUp() override
    {
        const auto &deeds = ledgerDeeds();
        prepare(*std::find_if(deeds.begin(), deeds.end(), [](const Deed &deed) {
            return std::string(deed.name) == "BringingALedgerUpToDate";
        }));
    }
};

} // namespace

TEST_F(SqliteFaultsOfACopy, MayBeTriedAgainWhereTheCopyOfTheFormerLedgerCannotBeLookedAt)
{
    FailingDisk disk;
    bool isMet = false;
    for (int operation = 1; !isMet; ++operation) {
        const QString file = copy();
        disk.failAt(operation, Fault::Unread, Lasting::Once);
        try {
            const Ledger ledger(file);
        } catch (const LedgerError &error) {
            isMet = std::string(error.what()).find("output file") != std::string::npos;
            EXPECT_NE(dynamic_cast<const LedgerUnavailable *>(&error), nullptr) << error.what();
        }
        ASSERT_TRUE(disk.hasFailed()) << "the copy is not looked at any more";
        disk.mend();
    }
}

INSTANTIATE_TEST_SUITE_P(Of, SqliteFaultsOfPower, ::testing::ValuesIn(powerCuts()), ByName());

/// An exchange that lives through the trouble, as that of a serving module does.
class SqliteFaultsUnderAnExchange : public ::testing::TestWithParam<Kind>
{
protected:
    void SetUp() override
    {
        if (!FailingDisk::install()) {
            GTEST_SKIP() << "Qt's driver HAS A SQLITE OF ITS OWN: no failing disk was put below it";
        }
        ledgerDeeds().front().before(fresh());
    }

    QString fresh() const { return m_directory.filePath(QStringLiteral("fresh.db")); }

    /// The bars of three minutes, of which each deals 400 shares of the buy, and what a user does meanwhile.
    /// Whatever fails is tried again at once; `failed` hears of each failure.
    static void trade(Ledger *ledger, const std::function<void()> &failed)
    {
        std::optional<PaperExchange> exchange;
        const auto insist = [&failed](const std::function<void()> &deed) {
            for (;;) {
                try {
                    return deed();
                } catch (const LedgerUnavailable &) {
                    failed();
                }
            }
        };
        insist([&] { exchange.emplace(ledger); });
        insist([&] { exchange->take(bar(1001, 10, 10, 10, 1600)); });
        insist([&] { exchange->place(bank(), Direction::Buy, yuan(9.5), 300, QStringLiteral("desk-1")); });
        insist([&] { exchange->take(bar(1002, 10, 10, 10, 1600)); });
        insist([&] {
            if (OrderLife::canBeCancelled(OrderBook(ledger).find(TradingDate::today(), 2).value())) {
                exchange->cancel(TradingDate::today(), 2);
            }
        });
        insist([&] { exchange->settle(); });
        insist([&] { exchange->take(bar(1003, 10, 10, 10, 1600)); });
    }

    QTemporaryDir m_directory;
};

TEST_P(SqliteFaultsUnderAnExchange, DealEachBarOnceAndInItsOrder)
{
    FailingDisk disk;
    const QString undisturbed = m_directory.filePath(QStringLiteral("undisturbed.db"));
    QFile::copy(fresh(), undisturbed);
    {
        Ledger ledger(undisturbed);
        trade(&ledger, [] { FAIL(); });
        ASSERT_EQ(ledger.trades({TradingDate::today(), TradingDate::today()}).size(), 3);
    }
    const std::string expected = contentOf(undisturbed);
    ASSERT_THAT(expected, HasSubstr("file: ok"));
    expectToAddUp(undisturbed);

    for (int operation = 1;; ++operation) {
        SCOPED_TRACE(operation);
        const QString file = m_directory.filePath(QStringLiteral("ledger%1.db").arg(operation));
        QFile::copy(fresh(), file);
        {
            Ledger ledger(file);
            disk.failAt(operation, GetParam().fault, GetParam().lasting);
            trade(&ledger, [&disk] { disk.mend(); });
        }
        const bool hasFailed = disk.hasFailed();
        disk.mend();
        if (!hasFailed) {
            break;
        }
        ASSERT_EQ(contentOf(file), expected);
    }
}

INSTANTIATE_TEST_SUITE_P(On, SqliteFaultsUnderAnExchange, ::testing::ValuesIn(kinds), ByName());

} // namespace TradeModule
