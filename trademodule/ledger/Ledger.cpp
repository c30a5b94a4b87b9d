#include "trademodule/ledger/Ledger.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/ledger/AccountCash.h"
#include "trademodule/ledger/ExecutionTable.h"
#include "trademodule/ledger/HoldingTable.h"
#include "trademodule/ledger/LedgerSchema.h"
#include "trademodule/ledger/MoneyTable.h"
#include "trademodule/ledger/PracticeTable.h"
#include "trademodule/ledger/StatementBooking.h"
#include "trademodule/ledger/ToldStatement.h"
#include "trademodule/ledger/Transaction.h"

#include <QFileInfo>

#include <algorithm>

namespace TradeModule {

Ledger::Ledger(const QString &location, Mode mode) : m_database(location)
{
    if (mode == Mode::DryRun && schemaVersion(&m_database) != currentSchemaVersion()) {
        m_unchecked.emplace(&m_database);
        m_trial.emplace(&m_database);
        migrateWithin(&m_database);
    } else {
        migrateSchema(&m_database);
    }
    m_practisedDay = PracticeTable(&m_database).day();
}

void Ledger::practise(TradingDate day)
{
    PracticeTable(&m_database).begin(day);
    m_practisedDay = day;
}

bool Ledger::isThere(const QString &location)
{
    const bool isAddress =
        location.contains(QLatin1String("://")); // one that cannot be used is refused below
    if (!isAddress && !QFileInfo::exists(location)) {
        return false;
    }
    Database database(location);
    return schemaVersion(&database) > 0;
}

qint64 Ledger::registerSecurity(const SecurityId &security, const QString &name)
{
    const QString market = marketLetters(security.market);
    m_database.run(QStringLiteral("INSERT INTO security (code, market, name) VALUES (?, ?, ?) "
                                  "ON CONFLICT (code, market) DO UPDATE SET name = CASE "
                                  "WHEN excluded.name = '' THEN security.name ELSE excluded.name END"),
                   {security.code, market, QLatin1String("") + name});
    Rows id = m_database.run(QStringLiteral("SELECT id FROM security WHERE code = ? AND market = ?"),
                             {security.code, market});
    id.next();
    return id.value(0).toLongLong();
}

void Ledger::add(const Execution &execution)
{
    const qint64 id = registerSecurity(execution.security, QString());
    ExecutionTable executions(&m_database);
    HoldingTable holdings(&m_database);
    executions.add(id, execution);
    Holding holding = holdings.find(execution.security);
    const bool mustKnowEachBuy = holding.method() == CostMethod::Fifo && execution.side == Side::Sell;
    if (mustKnowEachBuy || executions.hasLater(id, execution)) {
        holdings.addUp({id, execution.security, QString()});
        return;
    }
    holding.add(execution);
    holdings.set(id, holding);
}

Booked Ledger::book(const Statement &statement, Mode mode, const Progress &progress)
{
    if (m_trial) {
        return StatementBooking(this, statement).book(progress);
    }
    Transaction transaction(&m_database);
    const Booked booked = StatementBooking(this, statement).book(progress);
    if (mode == Mode::Keep && booked.doubtful.isEmpty()) {
        keepImportProfile(statement.profile);
        transaction.commit();
    }
    return booked;
}

QVector<ImportedStatement> Ledger::imports()
{
    return StatementTable(&m_database).all();
}

std::optional<ImportedStatement> Ledger::importOfMark(const QString &mark)
{
    Transaction settled(&m_database);
    const QVector<ImportedStatement> all = imports();
    settled.commit(); // takes the place of a change that failed as it ended
    const auto found = std::find_if(all.begin(), all.end(), [&mark](const ImportedStatement &statement) {
        return statement.mark == mark;
    });
    return found == all.end() ? std::nullopt : std::optional(*found);
}

QVector<SecurityId> Ledger::securitiesOfImport(qint64 number)
{
    return StatementTable(&m_database).securities(number);
}

Booked Ledger::bookInPlaceOf(const QVector<qint64> &numbers, const Statement &statement)
{
    Transaction transaction(&m_database);
    for (const qint64 number : numbers) {
        takeBack(number);
    }
    const Booked booked = StatementBooking(this, statement).book({});
    if (booked.doubtful.isEmpty()) {
        transaction.commit();
    }
    return booked;
}

UndoneImport Ledger::undoImport(qint64 number)
{
    Transaction transaction(&m_database);
    const UndoneImport undone = takeBack(number);
    transaction.commit();
    return undone;
}

UndoneImport Ledger::takeBack(qint64 number)
{
    StatementTable statements(&m_database);
    ToldStatement told(&m_database);
    const QVector<qint64> repeating = told.after(number);
    UndoneImport undone{statements.find(number), statements.securities(number)};
    for (const ImportedStatement &later : statements.all()) {
        const bool mustBeImportedAgain = later.number > number && later.alreadyThere > 0;
        undone.repeatedLater += mustBeImportedAgain && !repeating.contains(later.number) ? 1 : 0;
    }
    const qint64 entriesBefore = ExecutionTable(&m_database).count();
    told.remove(number);
    statements.remove(number);
    bookAnew(repeating, number);
    const qint64 gone = entriesBefore - ExecutionTable(&m_database).count();
    undone.kept = undone.statement.added - static_cast<int>(gone);
    HoldingTable(&m_database).addUpAll();
    AccountCash(&m_database).reckon();
    return undone;
}

/// What an import repeated of one that is gone is there only now.
void Ledger::bookAnew(const QVector<qint64> &numbers, qint64 without)
{
    for (const qint64 number : numbers) {
        StatementTable(&m_database).clear(number);
    }
    for (const qint64 number : numbers) {
        const Statement statement = ToldStatement(&m_database).read(number);
        if (!StatementBooking(this, statement, number).book({}).doubtful.isEmpty()) {
            throw Error(
                translated("without import %1 nobody can tell which entries of import %2 are the same "
                           "as others: take import %2 back first")
                    .arg(without)
                    .arg(number));
        }
    }
}

CostMethod Ledger::costMethod()
{
    return HoldingTable(&m_database).method();
}

void Ledger::setCostMethod(CostMethod method)
{
    Transaction transaction(&m_database);
    HoldingTable(&m_database).setMethod(method);
    transaction.commit();
}

MoneyEntries Ledger::money()
{
    return MoneyTable(&m_database).entries();
}

QString Ledger::importProfile()
{
    Rows row = m_database.run(QStringLiteral("SELECT text FROM import_profile"));
    return row.next() ? row.value(0).toString() : QString();
}

void Ledger::keepImportProfile(const QString &text)
{
    if (text.isEmpty()) {
        return;
    }
    m_database.run(QStringLiteral("INSERT INTO import_profile (id, text) VALUES (1, ?) "
                                  "ON CONFLICT (id) DO UPDATE SET text = excluded.text"),
                   {text});
}

Executions Ledger::trades(const SecurityId &security, DateRange days)
{
    return ExecutionTable(&m_database).trades(security, days);
}

Executions Ledger::trades(DateRange days)
{
    return ExecutionTable(&m_database).trades(days);
}

void Ledger::visitTrades(const QString &code, DateRange days,
                         const std::function<void(const Execution &)> &visit)
{
    ExecutionTable(&m_database).visitTrades(code, days, visit);
}

Holding Ledger::holding(const SecurityId &security)
{
    return HoldingTable(&m_database).find(security);
}

qint64 Ledger::heldBefore(const SecurityId &security, TradingDate day)
{
    Rows row = m_database.run(
        QStringLiteral(
            "SELECT COALESCE(SUM(CASE WHEN e.side IN ('S', 'M', 'O') THEN -e.quantity ELSE e.quantity END), "
            "0) FROM execution e JOIN security s ON s.id = e.security_id "
            "WHERE s.code = ? AND s.market = ? AND e.trade_date < ?"),
        {security.code, marketLetters(security.market), day.number()});
    return row.next() ? row.value(0).toLongLong() : 0;
}

QVector<Position> Ledger::positions()
{
    QVector<Position> positions = allPositions();
    positions.erase(
        std::remove_if(positions.begin(), positions.end(),
                       [](const Position &position) { return !isOnCharts(position.security.market); }),
        positions.end());
    return positions;
}

QVector<Position> Ledger::allPositions()
{
    return HoldingTable(&m_database).positions();
}

} // namespace TradeModule
