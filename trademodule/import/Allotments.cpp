#include "trademodule/import/Allotments.h"

#include <algorithm>

namespace TradeModule {

namespace {

using Rows = QVector<Allotments::Row>;

bool isEntry(const Allotments::Row &row)
{
    return row.entry.kind.effect == Effect::Entry;
}

bool hasMoney(const Allotments::Row &row)
{
    return row.entry.cash && !row.entry.cash->isZero();
}

/// Makes a row's payment money alone.
void keepMoney(Entry *entry)
{
    const Execution shares = *entry->shares;
    entry->shares.reset();
    const Money paid = entry->cash ? *entry->cash : -(shares.amount + shares.fee);
    if (!paid.isZero()) {
        entry->money = MoneyEntry{shares.date,
                                  shares.time,
                                  QLatin1String(entry->kind.name),
                                  paid,
                                  QStringLiteral("CNY"),
                                  shares.security.code,
                                  entry->word,
                                  shares.dealNo.isEmpty() ? shares.orderNo : shares.dealNo};
    }
}

/// The word of the rows that count: of those that moved money, if any did, else of the first.
QString countedWord(const Rows &rows)
{
    const auto paid = std::find_if(rows.begin(), rows.end(), &hasMoney);
    return paid == rows.end() ? rows.constFirst().entry.word : paid->entry.word;
}

/// Takes the shares from rows that say the same as others in another word.
void dropNotices(Rows *rows)
{
    if (rows->isEmpty()) {
        return;
    }
    const QString word = countedWord(*rows);
    for (Allotments::Row &row : *rows) {
        if (row.entry.word != word && !hasMoney(row)) {
            keepMoney(&row.entry);
            row.entry.kind.effect = Effect::Nothing;
            if (!hasMoney(row)) {
                row.entry.money.reset();
            }
        }
    }
}

qint64 sharesOf(const Rows &rows)
{
    qint64 shares = 0;
    for (const Allotments::Row &row : rows) {
        shares += row.entry.shares ? row.entry.shares->quantity : 0;
    }
    return shares;
}

Money costOf(const Rows &rows)
{
    Money cost;
    for (const Allotments::Row &row : rows) {
        cost = row.entry.shares ? cost + row.entry.shares->amount + row.entry.shares->fee : cost;
    }
    return cost;
}

/// Gives shares that came in without a price their part of what was paid.
void spreadCost(Rows *entries, Money paid)
{
    const qint64 shares = sharesOf(*entries);
    if (shares == 0 || !costOf(*entries).isZero()) {
        return;
    }
    for (Allotments::Row &row : *entries) {
        if (row.entry.shares) {
            Execution &execution = *row.entry.shares;
            execution.amount = Money::ofSteps(paid.steps() / shares * execution.quantity);
            execution.price = Money::ofSteps(paid.steps() / shares);
        }
    }
}

Rows resolvedOf(const Rows &rows)
{
    Rows payments;
    Rows entries;
    for (const Allotments::Row &row : rows) {
        (isEntry(row) ? entries : payments).append(row);
    }
    dropNotices(&payments);
    dropNotices(&entries);
    if (!entries.isEmpty()) {
        spreadCost(&entries, costOf(payments));
        for (Allotments::Row &row : payments) {
            if (row.entry.shares) {
                keepMoney(&row.entry);
            }
        }
    }
    return payments + entries;
}

} // namespace

QVector<Allotments::Row> Allotments::resolved() const
{
    QVector<Row> all;
    for (const QVector<Row> &rows : m_rows) {
        all += resolvedOf(rows);
    }
    return all;
}

} // namespace TradeModule
