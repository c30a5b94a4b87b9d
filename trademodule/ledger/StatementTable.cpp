#include "trademodule/ledger/StatementTable.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/ledger/ColumnValue.h"

#include <algorithm>

namespace TradeModule {

namespace {

struct Days
{
    int first = 0; ///< yyyymmdd; 0 for none
    int last = 0;
};

void widen(Days *days, TradingDate date)
{
    days->first = days->first == 0 ? date.number() : std::min(days->first, date.number());
    days->last = std::max(days->last, date.number());
}

Days daysOf(const Statement &statement)
{
    Days days;
    for (const Execution &execution : statement.executions) {
        widen(&days, execution.date);
    }
    for (const MoneyEntry &entry : statement.money) {
        widen(&days, entry.date);
    }
    return days;
}

} // namespace

QVector<ImportedStatement> StatementTable::all()
{
    Rows rows = m_database->run(QStringLiteral(
        "SELECT id, file, imported_at, account, added, already_there, money, first_date, last_date "
        "FROM statement ORDER BY id"));
    QVector<ImportedStatement> all;
    while (rows.next()) {
        all.append({rows.value(0).toLongLong(), rows.value(1).toString(),
                    QDateTime::fromString(rows.value(2).toString(), Qt::ISODate), rows.value(3).toString(),
                    rows.value(4).toInt(), rows.value(5).toInt(), rows.value(6).toInt(),
                    TradingDate::ofNumber(rows.value(7).toInt()),
                    TradingDate::ofNumber(rows.value(8).toInt())});
    }
    return all;
}

QVariant StatementTable::add(const Statement &statement)
{
    Rows row = m_database->run(
        QStringLiteral("INSERT INTO statement (file, imported_at, account) VALUES (?, ?, ?) RETURNING id"),
        {statement.file, QDateTime::currentDateTimeUtc().toString(Qt::ISODate),
         QLatin1String("") + statement.account});
    row.next();
    return row.value(0);
}

void StatementTable::finish(const QVariant &id, const Statement &statement, const Booked &booked)
{
    const Days days = daysOf(statement);
    m_database->run(
        QStringLiteral("UPDATE statement SET added = ?, already_there = ?, money = ?, first_date = ?, "
                       "last_date = ? WHERE id = ?"),
        {booked.added, booked.alreadyThere + booked.moneyAlreadyThere, booked.moneyAdded, days.first,
         days.last, id});
}

void StatementTable::takeCash(const QVariant &id, const StatedCash &cash)
{
    const QVariantList when{cash.date.number(), cash.time.number()};
    const bool isOlder = m_database
                             ->run(QStringLiteral("SELECT 1 FROM statement WHERE balance IS NOT NULL "
                                                  "AND (balance_date, balance_time) > (?, ?) LIMIT 1"),
                                   when)
                             .next();
    m_database->run(QStringLiteral("UPDATE statement SET balance = ?, balance_date = ?, balance_time = ?, "
                                   "cash_before = (SELECT cash FROM account) WHERE id = ?"),
                    {cash.balance.steps(), when[0], when[1], id});
    if (!isOlder) {
        m_database->run(QStringLiteral("UPDATE account SET cash = ?"), {cash.balance.steps()});
    }
}

ImportedStatement StatementTable::find(qint64 number)
{
    const QVector<ImportedStatement> imports = all();
    const auto found =
        std::find_if(imports.begin(), imports.end(),
                     [number](const ImportedStatement &statement) { return statement.number == number; });
    if (found == imports.end()) {
        throw Error(translated("there is no import %1; see the command imports").arg(number));
    }
    return *found;
}

QVector<SecurityId> StatementTable::securities(qint64 number)
{
    Rows rows = m_database->run(
        QStringLiteral("SELECT DISTINCT s.code, s.market FROM execution e JOIN security s "
                       "ON s.id = e.security_id WHERE e.statement_id = ? ORDER BY s.code, s.market"),
        {number});
    QVector<SecurityId> securities;
    while (rows.next()) {
        securities.append({rows.value(0).toString(), ColumnValue::market(rows.value(1))});
    }
    return securities;
}

void StatementTable::remove(qint64 number)
{
    restoreFees(number);
    restoreCash(number);
    for (const char *table : {"money_entry", "execution"}) {
        m_database->run(QStringLiteral("DELETE FROM %1 WHERE statement_id = ?").arg(QLatin1String(table)),
                        {number});
    }
    m_database->run(QStringLiteral("DELETE FROM statement WHERE id = ?"), {number});
}

void StatementTable::restoreFees(qint64 number)
{
    m_database->run(QStringLiteral("UPDATE execution SET fee = 0 WHERE id IN "
                                   "(SELECT execution_id FROM completed_fee WHERE statement_id = ?)"),
                    {number});
    m_database->run(QStringLiteral("DELETE FROM completed_fee WHERE statement_id = ? OR execution_id IN "
                                   "(SELECT id FROM execution WHERE statement_id = ?)"),
                    {number, number});
}

/// Cash that this statement told goes back to the newest balance of the others, else to what it was before.
void StatementTable::restoreCash(qint64 number)
{
    Rows row =
        m_database->run(QStringLiteral("SELECT s.cash_before FROM statement s, account a WHERE s.id = ? "
                                       "AND s.balance = a.cash"),
                        {number});
    if (!row.next()) {
        return;
    }
    QVariant cash = row.value(0);
    row.finish();
    row =
        m_database->run(QStringLiteral("SELECT balance FROM statement WHERE balance IS NOT NULL AND id <> ? "
                                       "ORDER BY balance_date DESC, balance_time DESC, id DESC LIMIT 1"),
                        {number});
    if (row.next()) {
        cash = row.value(0);
    }
    row.finish();
    m_database->run(QStringLiteral("UPDATE account SET cash = ?"), {cash});
}

} // namespace TradeModule
