#include "trademodule/ledger/MoneyTable.h"

#include "trademodule/ledger/ColumnValue.h"

#include <QHash>

namespace TradeModule {

namespace {

/// The database takes a null text for no text at all.
QString notNull(const QString &text)
{
    return QLatin1String("") + text;
}

/// What makes two rows the same movement of money.
QString keyOf(const MoneyEntry &entry)
{
    return QStringList{entry.date.text(), entry.kind, QString::number(entry.amount.steps()),
                       entry.currency,    entry.code, entry.number}
        .join(QLatin1Char('|'));
}

} // namespace

MoneyEntries MoneyTable::entries()
{
    Rows rows = m_database->run(
        QStringLiteral("SELECT entry_date, entry_time, kind, amount, currency, code, note, number "
                       "FROM money_entry ORDER BY entry_date, entry_time, id"));
    MoneyEntries entries;
    while (rows.next()) {
        entries.append({ColumnValue::date(rows.value(0)), ColumnValue::time(rows.value(1)),
                        rows.value(2).toString(), ColumnValue::money(rows.value(3)), rows.value(4).toString(),
                        rows.value(5).toString(), rows.value(6).toString(), rows.value(7).toString()});
    }
    return entries;
}

MoneyEntries MoneyTable::newOf(const MoneyEntries &entries)
{
    QHash<QString, int> known;
    if (!entries.isEmpty()) {
        for (const MoneyEntry &entry : this->entries()) {
            ++known[keyOf(entry)];
        }
    }
    MoneyEntries added;
    for (const MoneyEntry &entry : entries) {
        const auto found = known.find(keyOf(entry));
        if (found != known.end() && *found > 0) {
            --*found;
        } else {
            added.append(entry);
        }
    }
    return added;
}

void MoneyTable::add(const MoneyEntries &entries, const QVariant &statementId)
{
    QSqlQuery insertion = m_database->prepared(QStringLiteral(
        "INSERT INTO money_entry (statement_id, entry_date, entry_time, kind, amount, currency, code, "
        "note, number) VALUES (?,?,?,?,?,?,?,?,?)"));
    for (const MoneyEntry &entry : entries) {
        m_database->run(&insertion, {statementId, entry.date.number(), entry.time.number(), entry.kind,
                                     entry.amount.steps(), notNull(entry.currency), notNull(entry.code),
                                     notNull(entry.note), notNull(entry.number)});
    }
}

} // namespace TradeModule
