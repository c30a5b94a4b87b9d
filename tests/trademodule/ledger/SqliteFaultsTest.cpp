// The disk below a ledger is full or fails, at each moment of a change in turn: nothing is changed by halves,
// nothing is told to be done that is not, and the change can be made when the disk works again.
#include "tests/support/ByName.h"
#include "tests/trademodule/support/ExchangeFixture.h"
#include "tests/trademodule/support/FailingDisk.h"
#include "tests/trademodule/support/LedgerAudit.h"
#include "trademodule/exchange/OrderLife.h"
#include "trademodule/ledger/LedgerSchema.h"

#include <QFile>
#include <QTemporaryDir>

namespace TradeModule {

namespace {

using ::testing::AnyOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using Fault = FailingDisk::Fault;
using Lasting = FailingDisk::Lasting;

Money openingCash()
{
    return yuan(1e6);
}

/// 1000 shares that were there before, and two orders that wait.
void makeAccount(const QString &file)
{
    Ledger ledger(file);
    ledger.book(statementOf({fill(Side::Buy, bank(), 20240102, 9, 1000)}), Ledger::Mode::Keep);
    PaperExchange exchange(&ledger);
    exchange.take(bar(1000, 10, 10, 10));
    exchange.place(bank(), Direction::Buy, yuan(10), 1000);
    exchange.place(bank(), Direction::Sell, yuan(10.5), 500);
    exchange.settle();
}

/// What an older program would open.
void makeOldAccount(const QString &file)
{
    Database database(file);
    migrateSchema(&database, currentSchemaVersion() - 1);
    database.run(QStringLiteral("INSERT INTO security (id, code, market) VALUES (1, '000001', 'SZ')"));
    database.run(QStringLiteral("INSERT INTO statement (id, file, imported_at) VALUES (1, 'old.csv', '')"));
    database.run(QStringLiteral("INSERT INTO holding VALUES (1, 100, 1005.0, 0)"));
    database.run(QStringLiteral(
        "INSERT INTO execution (security_id, statement_id, side, trade_date, trade_time, price, quantity, "
        "amount, "
        "fee, order_no, deal_no) VALUES (1, 1, 'B', 20240102, 0, 100000, 100, 10000000, 50000, '', '')"));
}

void makeNothing(const QString &) {}

void open(const QString &file)
{
    const Ledger ledger(file);
}

void place(const QString &file)
{
    Ledger ledger(file);
    PaperExchange(&ledger).place(bank(), Direction::Buy, yuan(9.99), 300, QStringLiteral("desk-1"));
}

void cancel(const QString &file)
{
    Ledger ledger(file);
    if (const Order order = OrderBook(&ledger).find(TradingDate::today(), 1).value();
        OrderLife::canBeCancelled(order)) {
        PaperExchange(&ledger).cancel(order.date, order.number);
    }
}

void import(const QString &file)
{
    Executions executions;
    for (int i = 0; i < 50; ++i) {
        executions.append(fill(Side::Buy, liquor(), 20240103 + i / 5, 1700, 100, QString::number(i)));
    }
    Ledger ledger(file);
    ledger.book(statementOf(executions), Ledger::Mode::Keep);
}

void takeBackImport(const QString &file)
{
    Ledger ledger(file);
    if (!ledger.imports().isEmpty()) {
        ledger.undoImport(1);
    }
}

void giveCash(const QString &file)
{
    Ledger ledger(file);
    PaperExchange(&ledger).setCash(openingCash());
}

/// What is done to a ledger, in one change, and again when it failed: done twice, it is as if done once.
struct Deed
{
    const char *name;
    void (*before)(const QString &file);
    void (*act)(const QString &file);
};

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

constexpr Deed deeds[] = {
    {"PlacingAnOrder", &makeAccount, &place},
    {"CancellingAnOrder", &makeAccount, &cancel},
    {"GivingCash", &makeAccount, &giveCash},
    {"AnImport", &makeAccount, &import},
    {"TakingAnImportBack", &makeAccount, &takeBackImport},
    {"MakingALedger", &makeNothing, &open},
    {"BringingALedgerUpToDate", &makeOldAccount, &open},
};

constexpr Kind kinds[] = {
    {"AFullDisk", Fault::IsFull, Lasting::UntilMended},
    {"AShortLackOfRoom", Fault::IsFull, Lasting::Once},
    {"ADiskThatFails", Fault::IoError, Lasting::UntilMended},
    {"ADiskThatFailsOnce", Fault::IoError, Lasting::Once},
    {"ADiskThatCannotBeRead", Fault::Unread, Lasting::UntilMended},
    {"ADiskThatCannotBeReadOnce", Fault::Unread, Lasting::Once},
};

std::vector<Trouble> troubles()
{
    std::vector<Trouble> all;
    for (const Deed &deed : deeds) {
        for (const Kind &kind : kinds) {
            all.push_back({std::string(deed.name) + "On" + kind.name, deed, kind});
        }
    }
    return all;
}

/// All rows of a table, in one line.
QString rowsOf(Database *database, const QString &table)
{
    Rows columns = database->run(
        QStringLiteral(
            "SELECT group_concat('quote(' || name || ')', '||'',''||') FROM pragma_table_info('%1') "
            "WHERE name <> 'imports'")
            .arg(table));
    columns.next();
    Rows rows = database->run(
        QStringLiteral("SELECT group_concat(line, ' ') FROM (SELECT %1 AS line FROM %2 ORDER BY 1)")
            .arg(columns.value(0).toString(), table));
    rows.next();
    return rows.value(0).toString();
}

/// What SQLite finds wrong with the file, indexes and all; "ok" when there is nothing.
QString stateOf(Database *database)
{
    Rows state = database->run(QStringLiteral("PRAGMA integrity_check"));
    return state.next() ? state.value(0).toString() : QString();
}

/// All that the ledger holds; when statements came, and how many, is left out.
std::string contentOf(const QString &file)
{
    Database database(file);
    QString content = QStringLiteral("file: %1\n").arg(stateOf(&database));
    for (const char *const name : {"security", "execution", "holding", "account", "trade_order",
                                   "exchange_clock", "price_reference", "money_entry", "ledger_version"}) {
        const QString table = QLatin1String(name);
        if (database.hasTable(table)) {
            content += table + QStringLiteral(": ") + rowsOf(&database, table) + QLatin1Char('\n');
        }
    }
    return content.toStdString();
}

/// That the books add up is a matter of their content: of equal ones it is looked at once.
void expectToAddUp(const QString &file)
{
    Ledger ledger(file);
    ASSERT_THAT(audit(&ledger, openingCash()), IsEmpty());
}

enum class End {
    Done,
    Failed,
    Unknown ///< said to be done or not
};

End end(const Deed &deed, const QString &file)
{
    try {
        deed.act(file);
    } catch (const OutcomeUnknown &) {
        return End::Unknown;
    } catch (const LedgerUnavailable &) {
        return End::Failed;
    }
    return End::Done;
}

class SqliteFaults : public ::testing::TestWithParam<Trouble>
{
protected:
    void SetUp() override
    {
        if (!FailingDisk::install()) {
            GTEST_SKIP() << "Qt's driver HAS A SQLITE OF ITS OWN: no failing disk was put below it";
        }
        GetParam().deed.before(fresh());
        m_before = contentOf(copy());
        const QString done = copy();
        GetParam().deed.act(done);
        m_after = contentOf(done);
        expectToAddUp(done);
        ASSERT_THAT(m_after, HasSubstr("file: ok"));
    }

    QString fresh() const { return m_directory.filePath(QStringLiteral("fresh.db")); }

    /// The ledger as it is before the deed.
    QString copy()
    {
        const QString name = m_directory.filePath(QStringLiteral("copy%1.db").arg(++m_copies));
        QFile::copy(fresh(), name);
        return name;
    }

    static End tryOnce(const QString &file) { return end(GetParam().deed, file); }

    ::testing::Matcher<std::string> whatFollows(End end) const
    {
        switch (end) {
        case End::Done:
            return m_after;
        case End::Failed:
            return m_before;
        case End::Unknown:
            return AnyOf(m_before, m_after);
        }
        Q_UNREACHABLE();
    }

    std::string m_before;
    std::string m_after;

private:
    QTemporaryDir m_directory;
    int m_copies = 0;
};

} // namespace

TEST_P(SqliteFaults, LeaveALedgerThatAddsUpAndCanBeChangedAfterwards)
{
    FailingDisk disk;
    int failures = 0;
    for (int operation = 1;; ++operation) {
        SCOPED_TRACE(operation);
        const QString file = copy();
        disk.failAt(operation, GetParam().kind.fault, GetParam().kind.lasting);
        const End end = tryOnce(file);
        const bool hasFailed = disk.hasFailed();
        disk.mend();
        if (!hasFailed) {
            break;
        }
        failures += end == End::Done ? 0 : 1;
        ASSERT_THAT(contentOf(file), whatFollows(end));

        ASSERT_EQ(tryOnce(file), End::Done);
        ASSERT_EQ(contentOf(file), m_after);
    }
    EXPECT_GT(failures, 0);
}

INSTANTIATE_TEST_SUITE_P(Of, SqliteFaults, ::testing::ValuesIn(troubles()), ByName());

/// An exchange that lives through the trouble, as that of a serving module does.
class SqliteFaultsUnderAnExchange : public ::testing::TestWithParam<Kind>
{
protected:
    void SetUp() override
    {
        if (!FailingDisk::install()) {
            GTEST_SKIP() << "Qt's driver HAS A SQLITE OF ITS OWN: no failing disk was put below it";
        }
        makeAccount(fresh());
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
