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
        "SELECT id, file, imported_at, account, holders, added, already_there, money, mark, first_date, "
        "last_date FROM statement ORDER BY id"));
    QVector<ImportedStatement> all;
    while (rows.next()) {
        all.append({rows.value(0).toLongLong(), rows.value(1).toString(),
                    QDateTime::fromString(rows.value(2).toString(), Qt::ISODate), rows.value(3).toString(),
                    rows.value(4).toString().split(QLatin1Char(' '), Qt::SkipEmptyParts),
                    rows.value(5).toInt(), rows.value(6).toInt(), rows.value(7).toInt(),
                    rows.value(8).toString(), TradingDate::ofNumber(rows.value(9).toInt()),
                    TradingDate::ofNumber(rows.value(10).toInt())});
    }
    return all;
}

qint64 StatementTable::add(const Statement &statement)
{
    m_database->run(QStringLiteral("UPDATE account SET imports = imports + 1"));
    Rows row = m_database->run(
        QStringLiteral("INSERT INTO statement (id, file, imported_at, account, holders, mark) "
                       "SELECT imports, ?, ?, ?, ?, ? FROM account RETURNING id"),
        {statement.file, QDateTime::currentDateTimeUtc().toString(Qt::ISODate),
         QLatin1String("") + statement.account, QLatin1String("") + statement.holders.join(QLatin1Char(' ')),
         QLatin1String("") + statement.mark});
    row.next();
    return row.value(0).toLongLong();
}

void StatementTable::finish(qint64 number, const Statement &statement, const Booked &booked)
{
    const Days days = daysOf(statement);
    m_database->run(
        QStringLiteral("UPDATE statement SET added = ?, already_there = ?, money = ?, first_date = ?, "
                       "last_date = ? WHERE id = ?"),
        {booked.added, booked.alreadyThere + booked.moneyAlreadyThere, booked.moneyAdded, days.first,
         days.last, number});
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

void StatementTable::clear(qint64 number)
{
    restoreFees(number);
    for (const char *table : {"money_entry", "execution"}) {
        m_database->run(QStringLiteral("DELETE FROM %1 WHERE statement_id = ?").arg(QLatin1String(table)),
                        {number});
    }
}

void StatementTable::remove(qint64 number)
{
    clear(number);
    m_database->run(QStringLiteral("DELETE FROM statement WHERE id = ?"), {number});
}

void StatementTable::restoreFees(qint64 number)
{
    m_database->run(QStringLiteral("UPDATE execution SET fee = 0, stamp_duty = 0 WHERE id IN "
                                   "(SELECT execution_id FROM completed_fee WHERE statement_id = ?)"),
                    {number});
    m_database->run(QStringLiteral("DELETE FROM completed_fee WHERE statement_id = ? OR execution_id IN "
                                   "(SELECT id FROM execution WHERE statement_id = ?)"),
                    {number, number});
}

} // namespace TradeModule
