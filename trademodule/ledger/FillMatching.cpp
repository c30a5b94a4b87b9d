#include "trademodule/ledger/FillMatching.h"

#include "trademodule/ledger/FillKey.h"

#include <QSet>

#include <algorithm>

namespace TradeModule {

namespace {

/// Times agree that are equal as far as the coarser one goes: one to the minute has no seconds.
bool mayBeSame(ClockTime a, ClockTime b)
{
    constexpr int perMinute = 10000;
    const bool isCoarse = a.number() % perMinute == 0 || b.number() % perMinute == 0;
    return a == ClockTime() || b == ClockTime() || a == b || (isCoarse && a.minute() == b.minute());
}

bool mayBeSame(const QString &a, const QString &b)
{
    return a.isEmpty() || b.isEmpty() || a == b;
}

bool mayBeSame(const Execution &a, const Execution &b)
{
    const bool hasOneNumber = !a.dealNo.isEmpty() && a.dealNo == b.dealNo;
    return a.side == b.side && a.price == b.price && a.quantity == b.quantity && mayBeSame(a.time, b.time) &&
           mayBeSame(a.dealNo, b.dealNo) && (hasOneNumber || mayBeSame(a.orderNo, b.orderNo));
}

/// Shares and money of the trades of one side.
struct Total
{
    qint64 quantity = 0;
    qint64 steps = 0;

    void add(const Execution &execution)
    {
        quantity += execution.quantity;
        steps += execution.amount.steps();
    }
};

bool looksAlike(const Total &a, const Total &b)
{
    constexpr qint64 parts = 1000; // an average price is rounded
    return a.quantity > 0 && a.quantity == b.quantity && std::abs(a.steps - b.steps) <= a.steps / parts;
}

class Matcher
{
public:
    Matcher(const QVector<const Execution *> &told, const KnownEntries &known) : m_left(told)
    {
        for (const KnownEntry &entry : known) {
            m_known.append(&entry);
        }
    }

    FillMatching match()
    {
        pairEqual();
        pairOtherForms();
        doubt(Side::Buy);
        doubt(Side::Sell);
        m_result.added = m_left;
        return std::move(m_result);
    }

private:
    void pairEqual();
    void pairOtherForms();
    void doubt(Side side);
    Total knownTotal(Side side) const;

    QVector<const Execution *> m_left;
    QVector<const KnownEntry *> m_known;
    FillMatching m_result;
};

void Matcher::pairEqual()
{
    if (m_known.isEmpty()) {
        return;
    }
    QMultiHash<FillKey, const KnownEntry *> byKey;
    for (int i = m_known.size() - 1; i >= 0; --i) {
        byKey.insert(FillKey(m_known[i]->execution), m_known[i]);
    }
    QVector<const Execution *> left;
    QSet<const KnownEntry *> paired;
    for (const Execution *const told : m_left) {
        const auto found = byKey.find(FillKey(*told));
        if (found == byKey.end()) {
            left.append(told);
            continue;
        }
        m_result.same.append({told, *found});
        paired.insert(*found);
        byKey.erase(found);
    }
    m_left = left;
    const auto isPaired = [&paired](const KnownEntry *entry) { return paired.contains(entry); };
    m_known.erase(std::remove_if(m_known.begin(), m_known.end(), isPaired), m_known.end());
}

void Matcher::pairOtherForms()
{
    QVector<const Execution *> left;
    for (const Execution *const told : m_left) {
        const auto found = std::find_if(m_known.begin(), m_known.end(), [told](const KnownEntry *entry) {
            return entry->isImported && mayBeSame(*told, entry->execution);
        });
        if (found == m_known.end()) {
            left.append(told);
            continue;
        }
        m_result.same.append({told, *found});
        ++m_result.inAnotherForm;
        m_known.erase(found);
    }
    m_left = left;
}

Total Matcher::knownTotal(Side side) const
{
    Total total;
    for (const KnownEntry *const entry : m_known) {
        if (entry->isImported && entry->execution.side == side) {
            total.add(entry->execution);
        }
    }
    return total;
}

void Matcher::doubt(Side side)
{
    Total told;
    for (const Execution *const execution : m_left) {
        if (execution->side == side) {
            told.add(*execution);
        }
    }
    if (!looksAlike(told, knownTotal(side))) {
        return;
    }
    const auto firstOther = std::stable_partition(
        m_left.begin(), m_left.end(), [side](const Execution *execution) { return execution->side == side; });
    std::copy(m_left.begin(), firstOther, std::back_inserter(m_result.doubtful));
    m_left.erase(m_left.begin(), firstOther);
}

} // namespace

FillMatching FillMatching::of(const QVector<const Execution *> &told, const KnownEntries &known)
{
    return Matcher(told, known).match();
}

} // namespace TradeModule
