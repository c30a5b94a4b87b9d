#include "trademodule/ledger/AccountHistory.h"

#include "trademodule/ledger/ColumnValue.h"
#include "trademodule/ledger/ExecutionTable.h"
#include "trademodule/ledger/Holding.h"

#include <algorithm>
#include <iterator>

namespace TradeModule {

namespace {

struct MoneyKind
{
    const char *name; ///< in the ledger
    EventKind kind;
    int sign; ///< of the event's amount: the ledger has what the account paid below zero
};

constexpr MoneyKind moneyKinds[] = {
    {"dividends", EventKind::Dividend, 1},
    {"dividend tax", EventKind::Tax, -1},
    {"interest", EventKind::Interest, 1},
};

/// From four columns: day, time, kind and amount.
std::optional<AccountEvent> moneyEvent(const Rows &row)
{
    const QString name = row.value(2).toString();
    const auto *const kind =
        std::find_if(std::begin(moneyKinds), std::end(moneyKinds),
                     [&name](const MoneyKind &each) { return name == QLatin1String(each.name); });
    if (kind == std::end(moneyKinds)) {
        return std::nullopt;
    }
    AccountEvent event{kind->kind, ColumnValue::date(row.value(0)), ColumnValue::time(row.value(1))};
    event.amount = Money::ofSteps(kind->sign * ColumnValue::money(row.value(3)).steps());
    return event;
}

bool isBefore(const AccountEvent &a, const AccountEvent &b)
{
    return a.date != b.date ? a.date < b.date : a.time.number() < b.time.number();
}

} // namespace

QVector<KnownSecurity> AccountHistory::securities(const QString &code)
{
    Rows rows = m_database->run(
        QStringLiteral(
            "SELECT id, code, market, name FROM security WHERE ? IN ('', code) ORDER BY code, market"),
        {QLatin1String("") + code});
    QVector<KnownSecurity> securities;
    while (rows.next()) {
        securities.append({rows.value(0).toLongLong(),
                           {rows.value(1).toString(), ColumnValue::market(rows.value(2))},
                           rows.value(3).toString()});
    }
    return securities;
}

void AccountHistory::visit(const KnownSecurity &security, const Visitor &visit)
{
    const Events ofMoney = money(
        QStringLiteral("code = ? AND ? = (SELECT MIN(id) FROM security s WHERE s.code = money_entry.code)"),
        {security.security.code, security.id});
    auto next = ofMoney.begin();
    ExecutionTable(m_database)
        .visitEntries(security.id, security.security, DateRange(), [&](const Execution &execution) {
            const AccountEvent event = eventOf(execution);
            for (; next != ofMoney.end() && isBefore(*next, event); ++next) {
                visit(*next);
            }
            visit(event);
        });
    std::for_each(next, ofMoney.end(), visit);
}

void AccountHistory::visitOtherMoney(const Visitor &visit)
{
    const Events events = money(QStringLiteral("code NOT IN (SELECT s.code FROM security s)"), {});
    std::for_each(events.begin(), events.end(), visit);
}

AccountHistory::Events AccountHistory::money(const QString &condition, const QVariantList &values)
{
    Rows rows = m_database->run(QStringLiteral("SELECT entry_date, entry_time, kind, amount FROM money_entry "
                                               "WHERE currency = 'CNY' AND %1 "
                                               "ORDER BY entry_date, entry_time, id")
                                    .arg(condition),
                                values);
    Events events;
    while (rows.next()) {
        if (const std::optional<AccountEvent> event = moneyEvent(rows)) {
            events.push_back(*event);
        }
    }
    return events;
}

} // namespace TradeModule
