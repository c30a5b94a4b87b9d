#include "tests/trademodule/support/LedgerDeeds.h"

#include "tests/support/WaitUntil.h"
#include "tests/trademodule/support/ExchangeFixture.h"
#include "tests/trademodule/support/LedgerAudit.h"
#include "trademodule/exchange/OrderLife.h"
#include "trademodule/ledger/LedgerSchema.h"
#include "trademodule/ledger/ServingLease.h"

#include <QStringList>

#include <algorithm>

namespace TradeModule {

namespace {

using ::testing::AnyOf;
using ::testing::IsEmpty;

/// How long a change waits for a server that is away, before it fails.
constexpr std::chrono::milliseconds patience(200);

Money openingCash()
{
    return yuan(1e6);
}

/// 1000 shares that were there before, two orders that wait, and a module that served.
void makeAccount(const QString &location)
{
    Ledger ledger(location);
    ledger.book(statementOf({fill(Side::Buy, bank(), 20240102, 9, 1000)}), Ledger::Mode::Keep);
    PaperExchange exchange(&ledger);
    exchange.take(bar(1000, 10, 10, 10));
    exchange.place(bank(), Direction::Buy, yuan(10), 1000);
    exchange.place(bank(), Direction::Sell, yuan(10.5), 500);
    exchange.settle();
    ledger.database()->run(QStringLiteral("UPDATE serving SET fence = 7, process = 4711"));
}

/// A ledger of a former version, with what each of them had.
void makeOldAccount(const QString &location, int version)
{
    Database database(location);
    migrateSchema(&database, version);
    database.run(QStringLiteral("INSERT INTO security (id, code, market) VALUES (1, '000001', 'SZ')"));
    database.run(QStringLiteral("INSERT INTO statement (id, file, imported_at) VALUES (1, 'old.csv', '')"));
    database.run(QStringLiteral("INSERT INTO holding VALUES (1, 100, 1005.0, 0)"));
    database.run(QStringLiteral(
        "INSERT INTO execution (security_id, statement_id, side, trade_date, trade_time, price, quantity, "
        "amount, "
        "fee, order_no, deal_no) VALUES (1, 1, 'B', 20240102, 0, 100000, 100, 10000000, 50000, '', '')"));
}

void makeFormerAccount(const QString &location)
{
    makeOldAccount(location, currentSchemaVersion() - 1);
}

void makeFirstAccount(const QString &location)
{
    makeOldAccount(location, 1);
}

void makeNothing(const QString &) {}

void open(Ledger *) {}

void place(Ledger *ledger)
{
    PaperExchange(ledger).place(bank(), Direction::Buy, yuan(9.99), 300, QStringLiteral("desk-1"));
}

void cancel(Ledger *ledger)
{
    if (const Order order = OrderBook(ledger).find(TradingDate::today(), 1).value();
        OrderLife::canBeCancelled(order)) {
        PaperExchange(ledger).cancel(order.date, order.number);
    }
}

void deal(Ledger *ledger)
{
    PaperExchange(ledger).take(bar(1001, 10, 10, 10, 1600));
}

void import(Ledger *ledger)
{
    Executions executions;
    for (int i = 0; i < 50; ++i) {
        executions.append(fill(Side::Buy, liquor(), 20240103 + i / 5, 1700, 100, QString::number(i)));
    }
    ledger->book(statementOf(executions), Ledger::Mode::Keep);
}

void takeBackImport(Ledger *ledger)
{
    if (!ledger->imports().isEmpty()) {
        ledger->undoImport(1);
    }
}

void giveCash(Ledger *ledger)
{
    PaperExchange(ledger).setCash(openingCash());
}

/// The owner is gone.
void follow(Ledger *ledger)
{
    if (ServingTable(ledger->database()).server().process.number != ProcessIdentity::own().number) {
        ServingLease lease(ledger->database());
        ASSERT_TRUE(waitUntil([&lease] { return lease.tryFollow(); })); // a server needs a moment to miss him
    }
}

/// Left out of what is compared.
bool isOfTheMoment(const QString &column, Database::Kind kind)
{
    static const QStringList always{QStringLiteral("imports"), QStringLiteral("host"),
                                    QStringLiteral("process_start"), QStringLiteral("since")};
    const bool isNumber = column == QLatin1String("id") || column.endsWith(QLatin1String("_id")) ||
                          column.endsWith(QLatin1String("_no"));
    return always.contains(column) ||
           (kind == Database::Kind::PostgreSql && isNumber && column != QLatin1String("client_no"));
}

QString rowsOf(Database *database, const QString &table)
{
    Rows rows = database->run(QStringLiteral("SELECT * FROM ") + table);
    QStringList lines;
    while (rows.next()) {
        QStringList cells;
        for (int column = 0; column < rows.record().count(); ++column) {
            if (!isOfTheMoment(rows.record().fieldName(column), database->kind())) {
                cells.append(rows.value(column).toString());
            }
        }
        lines.append(cells.join(QLatin1Char(',')));
    }
    lines.sort();
    return lines.join(QLatin1Char(' '));
}

/// What SQLite finds wrong with the file, indexes and all; "ok" when there is nothing.
QString fileStateOf(Database *database)
{
    if (database->kind() == Database::Kind::PostgreSql) {
        return QStringLiteral("ok");
    }
    Rows state = database->run(QStringLiteral("PRAGMA integrity_check"));
    return state.next() ? state.value(0).toString() : QString();
}

} // namespace

const std::vector<Deed> &ledgerDeeds()
{
    static const std::vector<Deed> deeds{
        {"PlacingAnOrder", &makeAccount, &place},
        {"CancellingAnOrder", &makeAccount, &cancel},
        {"DealingABar", &makeAccount, &deal},
        {"GivingCash", &makeAccount, &giveCash},
        {"AnImport", &makeAccount, &import},
        {"TakingAnImportBack", &makeAccount, &takeBackImport},
        {"TakingOver", &makeAccount, &follow},
        {"MakingALedger", &makeNothing, &open, Deed::Failure::MayComeAfterIt},
        {"BringingALedgerUpToDate", &makeFormerAccount, &open, Deed::Failure::MayComeAfterIt},
        {"BringingTheFirstLedgerUpToDate", &makeFirstAccount, &open, Deed::Failure::MayComeAfterIt},
    };
    return deeds;
}

End endOf(const Deed &deed, const QString &location)
{
    try {
        Ledger ledger(location);
        ledger.setPatience(patience);
        deed.act(&ledger);
    } catch (const OutcomeUnknown &) {
        return End::Unknown;
    } catch (const LedgerUnavailable &) {
        return deed.failure == Deed::Failure::UndoesIt ? End::Failed : End::Unknown;
    }
    return End::Done;
}

std::string contentOf(const QString &location)
{
    Database database(location);
    QString content = QStringLiteral("file: %1\n").arg(fileStateOf(&database));
    for (const char *const name :
         {"security", "execution", "holding", "account", "trade_order", "exchange_clock", "price_reference",
          "money_entry", "told_minute", "serving", "ledger_version"}) {
        const QString table = QLatin1String(name);
        if (database.hasTable(table)) {
            content += table + QStringLiteral(": ") + rowsOf(&database, table) + QLatin1Char('\n');
        }
    }
    return content.toStdString();
}

::testing::Matcher<std::string> DeedStates::afterAnEnd(End end) const
{
    switch (end) {
    case End::Done:
        return after;
    case End::Failed:
        return before;
    case End::Unknown:
        return AnyOf(before, after);
    }
    Q_UNREACHABLE();
}

void expectToAddUp(const QString &location)
{
    Ledger ledger(location);
    ASSERT_THAT(audit(&ledger, openingCash()), IsEmpty());
}

} // namespace TradeModule
