#include "trademodule/ledger/StatementBooking.h"

#include "trademodule/ledger/AccountCash.h"
#include "trademodule/ledger/ExecutionColumns.h"
#include "trademodule/ledger/ExecutionTable.h"
#include "trademodule/ledger/HoldingTable.h"
#include "trademodule/ledger/MoneyTable.h"
#include "trademodule/ledger/StatementTable.h"
#include "trademodule/ledger/ToldStatement.h"

#include <QSet>

#include <algorithm>
#include <iterator>

namespace TradeModule {

namespace {

/// Payment and entry of the same allotment lie within this many days.
constexpr int longestAllotment = 90;

/// Behind the last entry of an entry's day.
template <typename Iterator>
Iterator dayEnd(Iterator entry, Iterator end)
{
    const TradingDate day = (*entry)->date;
    return std::find_if(entry, end, [day](const Execution *other) { return other->date != day; });
}

} // namespace

Booked StatementBooking::book(const Ledger::Progress &progress)
{
    m_progress = progress;
    registerSecurities();
    for (auto told = m_told.begin(); told != m_told.end(); ++told) {
        const Entries added = newEntries(told.key(), &told.value());
        insert(added, told->id);
        updateHolding(told.key(), *told, added);
    }
    m_booked.alreadyThere = m_statement.executions.size() - m_booked.added;
    bookMoney();
    if (m_statement.cash) {
        AccountCash(m_database).take(number(), *m_statement.cash);
    }
    if (!m_statement.executions.isEmpty() || !m_statement.money.isEmpty()) {
        number(); // also of one that only repeats: what it told stays when the other import goes
    }
    if (m_number > 0) {
        finish();
    }
    return m_booked;
}

void StatementBooking::finish()
{
    m_booked.number = m_number;
    StatementTable(m_database).finish(m_number, m_statement, m_booked);
    const bool isRepeating = m_knewDays || m_booked.alreadyThere > 0 || m_booked.moneyAlreadyThere > 0;
    if (isRepeating && m_booked.doubtful.isEmpty()) {
        ToldStatement(m_database).keep(m_number, m_statement);
    }
}

QHash<SecurityId, StatementBooking::Told> StatementBooking::entriesBySecurity() const
{
    QHash<SecurityId, Told> bySecurity;
    for (const Execution &execution : m_statement.executions) {
        bySecurity[execution.security].entries.append(&execution);
    }
    return bySecurity;
}

void StatementBooking::registerSecurities()
{
    m_told = entriesBySecurity();
    for (auto told = m_told.begin(); told != m_told.end(); ++told) {
        told->id = m_ledger->registerSecurity(told.key(), m_statement.names.value(told.key()));
        told->isNew = !ExecutionTable(m_database).hasEntries(told->id);
    }
}

/// Some days at once, so that the ledger is asked seldom, and not more than these are held of it.
StatementBooking::Entries StatementBooking::newEntries(const SecurityId &security, Told *told)
{
    told->entries = notAllottedYet(security, *told);
    if (told->isNew) {
        return told->entries;
    }
    constexpr int entriesAtOnce = 5000;
    Entries added;
    for (auto first = told->entries.cbegin(); first != told->entries.cend();) {
        auto last = first + std::min<int>(entriesAtOnce, static_cast<int>(told->entries.cend() - first)) - 1;
        last = dayEnd(last, told->entries.cend());
        const DateRange days{(*first)->date, (*std::prev(last))->date};
        matchDays(first, last, ExecutionTable(m_database).knownEntries(told->id, security, days), &added);
        first = last;
    }
    return added;
}

/// What is told and what is known of the same days, each day by itself.
void StatementBooking::matchDays(Entries::const_iterator first, Entries::const_iterator last,
                                 const KnownEntries &known, Entries *added)
{
    auto knownFirst = known.cbegin();
    while (first != last) {
        const TradingDate day = (*first)->date;
        const auto next = dayEnd(first, last);
        Entries ofDay;
        std::copy(first, next, std::back_inserter(ofDay));
        KnownEntries knownOfDay;
        for (; knownFirst != known.cend() && knownFirst->execution.date <= day; ++knownFirst) {
            if (knownFirst->execution.date == day) {
                knownOfDay.append(*knownFirst);
            }
        }
        m_knewDays = m_knewDays || !knownOfDay.isEmpty();
        take(FillMatching::of(ofDay, knownOfDay), added);
        first = next;
    }
}

/// A payment for new shares and their entry may come in two statements, on two days.
StatementBooking::Entries StatementBooking::notAllottedYet(const SecurityId &security, const Told &told)
{
    Entries left;
    KnownEntries allotted;
    const auto isAllotment = [](const Execution *entry) { return entry->side == Side::Allotment; };
    if (!told.isNew && std::any_of(told.entries.begin(), told.entries.end(), isAllotment)) {
        allotted = ExecutionTable(m_database).knownAllotments(told.id, security);
    }
    for (const Execution *const entry : told.entries) {
        const auto known = std::find_if(allotted.begin(), allotted.end(), [entry](const KnownEntry &other) {
            return entry->side == Side::Allotment && entry->quantity == other.execution.quantity &&
                   entry->date <= other.execution.date.plusDays(longestAllotment) &&
                   other.execution.date <= entry->date.plusDays(longestAllotment);
        });
        if (known == allotted.end()) {
            left.append(entry);
        } else {
            allotted.erase(known);
        }
    }
    return left;
}

void StatementBooking::take(const FillMatching &matching, Entries *added)
{
    for (const FillMatching::Pair &pair : matching.same) {
        complete(pair);
    }
    m_booked.inAnotherForm += matching.inAnotherForm;
    *added += matching.added;
    switch (m_statement.doubt) {
    case Doubt::Ask:
        for (const Execution *const entry : matching.doubtful) {
            m_booked.doubtful.append(*entry);
        }
        return;
    case Doubt::New:
        *added += matching.doubtful;
        return;
    case Doubt::Same:
        m_booked.inAnotherForm += matching.doubtful.size();
        return;
    }
}

/// An earlier export may have had no fees, or not told their stamp duty apart.
void StatementBooking::complete(const FillMatching::Pair &pair)
{
    const Execution &known = pair.known->execution;
    if (!pair.known->isImported) {
        return;
    }
    if (known.fee == pair.told->fee && known.stampDuty.isZero() && !pair.told->stampDuty.isZero()) {
        writeFee(pair);
    } else if (known.fee.isZero() && !pair.told->fee.isZero()) {
        completeFee(pair);
    }
}

/// Of which part is stamp duty stays known when the import is taken back: no cost depends on it.
void StatementBooking::writeFee(const FillMatching::Pair &pair)
{
    number(); // the ledger has changed by this statement, though no entry may be new
    m_database->run(QStringLiteral("UPDATE execution SET fee = ?, stamp_duty = ? WHERE id = ?"),
                    {pair.told->fee.steps(), pair.told->stampDuty.steps(), pair.known->id});
}

void StatementBooking::completeFee(const FillMatching::Pair &pair)
{
    writeFee(pair);
    m_database->run(QStringLiteral("INSERT INTO completed_fee (statement_id, execution_id) VALUES (?, ?)"),
                    {number(), pair.known->id});
    ++m_booked.completedFees;
}

qint64 StatementBooking::number()
{
    if (m_number == 0) {
        m_number = StatementTable(m_database).add(m_statement);
    }
    return m_number;
}

void StatementBooking::insert(const Entries &added, qint64 securityId)
{
    if (added.isEmpty()) {
        return;
    }
    constexpr int progressStep = 1000;
    if (m_booked.added == 0) {
        m_insertion = m_database->prepared(ExecutionColumns::insertion());
    }
    for (const Execution *const entry : added) {
        m_database->run(&m_insertion, ExecutionColumns::insertedValues(*entry, securityId, number()));
        ++m_done;
        if (m_progress && ((m_done - 1) % progressStep == 0 || m_done == m_statement.executions.size())) {
            m_progress(m_done, m_statement.executions.size());
        }
    }
    m_booked.added += added.size();
    m_booked.lastAdded.append(*added.constLast());
}

void StatementBooking::updateHolding(const SecurityId &security, const Told &told, const Entries &added)
{
    HoldingTable holdings(m_database);
    Holding holding(holdings.method());
    // nothing to read: what was told is all there is, but for dividends that were told before
    if (told.isNew && holding.method() != CostMethod::Diluted) {
        for (const Execution *const entry : added) {
            holding.add(*entry);
        }
        holdings.set(told.id, holding);
    } else {
        holding = holdings.addUp({told.id, security, QString()});
    }
    if (holding.unexplained() > 0) {
        m_booked.unexplained.append(security);
    }
}

void StatementBooking::bookMoney()
{
    MoneyTable table(m_database);
    const MoneyEntries added = table.newOf(m_statement.money);
    m_booked.moneyAdded = added.size();
    m_booked.moneyAlreadyThere = m_statement.money.size() - added.size();
    if (!added.isEmpty()) {
        table.add(added, number());
        reckonDividends(added);
    }
}

/// What holdings brought lowers their diluted cost.
void StatementBooking::reckonDividends(const MoneyEntries &added)
{
    QSet<QString> codes;
    for (const MoneyEntry &entry : added) {
        codes.insert(entry.code);
    }
    codes.remove(QString());
    HoldingTable holdings(m_database);
    if (holdings.method() == CostMethod::Diluted) {
        for (const QString &code : codes) {
            holdings.addUpAll(code);
        }
    }
}

} // namespace TradeModule
