#include "trademodule/import/DayOrder.h"

#include <algorithm>
#include <numeric>

namespace TradeModule {

namespace {

bool isEarlier(const Execution &a, const Execution &b)
{
    return a.date != b.date ? a.date < b.date : a.time < b.time;
}

} // namespace

void DayOrder::sort()
{
    m_order.resize(m_executions.size());
    std::iota(m_order.begin(), m_order.end(), 0);
    m_isDropped.fill(false, m_executions.size());
    sortByTime();
    for (int first = 0; first < m_order.size();) {
        int last = first + 1;
        while (last < m_order.size() &&
               !isEarlier(m_executions[m_order[first]], m_executions[m_order[last]])) {
            ++last;
        }
        sortMoment(first, last);
        first = last;
    }
    apply();
}

/// Moves everything to its place without a copy of it all, what is dropped to the end.
void DayOrder::apply()
{
    const auto isKept = [this](int entry) { return !m_isDropped[entry]; };
    if (m_repeatedRows > 0) {
        std::stable_partition(m_order.begin(), m_order.end(), isKept);
    }
    for (int first = 0; first < m_order.size(); ++first) {
        if (m_order[first] == first) {
            continue;
        }
        Execution execution = std::move(m_executions[first]);
        const ListedFacts facts = m_facts[first];
        int place = first;
        while (m_order[place] != first) {
            const int source = m_order[place];
            m_executions[place] = std::move(m_executions[source]);
            m_facts[place] = m_facts[source];
            m_order[place] = place;
            place = source;
        }
        m_executions[place] = std::move(execution);
        m_facts[place] = facts;
        m_order[place] = place;
    }
    const int kept = m_executions.size() - m_repeatedRows;
    m_executions.erase(m_executions.begin() + kept, m_executions.end());
    m_facts.resize(kept);
}

bool DayOrder::isSame(int a, int b) const
{
    const Execution &x = m_executions[a];
    const Execution &y = m_executions[b];
    return m_facts[a].fingerprint == m_facts[b].fingerprint &&
           m_facts[a].sharesAfter == m_facts[b].sharesAfter && x.side == y.side && x.price == y.price &&
           x.quantity == y.quantity && x.amount == y.amount && x.fee == y.fee && x.orderNo == y.orderNo &&
           x.dealNo == y.dealNo;
}

uint DayOrder::hashOf(int entry) const
{
    const Execution &execution = m_executions[entry];
    return qHash(execution.dealNo) ^ qHash(execution.price.steps()) * 31 ^ qHash(execution.quantity) * 17 ^
           m_facts[entry].fingerprint;
}

qint64 DayOrder::balanceBefore(int entry) const
{
    const Execution &execution = m_executions[entry];
    const qint64 change = takesShares(execution.side) ? -execution.quantity : execution.quantity;
    return m_facts[entry].sharesAfter - change;
}

void DayOrder::sortByTime()
{
    const auto earlier = [this](int a, int b) { return isEarlier(m_executions[a], m_executions[b]); };
    if (m_order.size() > 1 && earlier(m_order.constLast(), m_order.constFirst())) {
        m_isNewestFirst = true;
        std::reverse(m_order.begin(), m_order.end());
    }
    if (!std::is_sorted(m_order.begin(), m_order.end(), earlier)) {
        std::stable_sort(m_order.begin(), m_order.end(), earlier);
    }
}

void DayOrder::noteBalance(int entry)
{
    if (m_facts[entry].sharesAfter >= 0) {
        m_lastBalance.insert(m_executions[entry].security, m_facts[entry].sharesAfter);
    }
}

/// Entries from one place of the order to before another, which have one time.
void DayOrder::sortMoment(int first, int last)
{
    QHash<SecurityId, Places> bySecurity;
    if (last - first == 1) {
        noteBalance(m_order[first]);
        return;
    }
    for (int i = first; i < last; ++i) {
        bySecurity[m_executions[m_order[i]].security].append(i);
    }
    for (const Places &places : qAsConst(bySecurity)) {
        dropRepeated(places);
        sortBucket(places);
    }
}

void DayOrder::dropRepeated(const Places &places)
{
    QMultiHash<uint, int> seen;
    for (const int place : places) {
        const int entry = m_order[place];
        const uint hash = hashOf(entry);
        bool isRepeated = false;
        for (auto other = seen.constFind(hash); other != seen.constEnd() && other.key() == hash; ++other) {
            isRepeated = isRepeated || isSame(entry, *other);
        }
        seen.insert(hash, entry);
        const bool isDropped = isRepeated && !m_executions[entry].dealNo.isEmpty();
        m_isDropped[entry] = isDropped;
        m_repeatedRows += isDropped ? 1 : 0;
        m_equalRows += isRepeated && !isDropped ? 1 : 0;
    }
}

/// `places` are those in the order that entries of one security and time take; they change places among
/// themselves.
void DayOrder::sortBucket(const Places &places)
{
    Places kept;
    for (const int place : places) {
        if (!m_isDropped[m_order[place]]) {
            kept.append(place);
        }
    }
    Places order;
    for (const int place : qAsConst(kept)) {
        order.append(m_order[place]);
    }
    const auto takes = [this](int entry) { return takesShares(m_executions[entry].side); };
    const bool isMixed =
        std::any_of(order.begin(), order.end(), takes) && !std::all_of(order.begin(), order.end(), takes);
    if (isMixed && !sortByBalance(kept, &order) && !sortByNumber(&order, &Execution::orderNo) &&
        !sortByNumber(&order, &Execution::dealNo)) {
        ++m_daysAsListed;
    }
    for (int i = 0; i < kept.size(); ++i) {
        m_order[kept[i]] = order[i];
    }
    if (!order.isEmpty()) {
        noteBalance(order.constLast());
    }
}

/// A walk over the balances that uses each entry once, from what was held before. False where none is found,
/// or where it could begin anywhere.
bool DayOrder::sortByBalance(const Places &places, Places *order) const
{
    QHash<qint64, Places> leaving; // entries by the balance before them, the first one last
    QHash<qint64, int> surplus;    // how many more entries leave a balance than reach it
    for (int i = places.size() - 1; i >= 0; --i) {
        const int entry = m_order[places[i]];
        if (m_facts[entry].sharesAfter < 0) {
            return false;
        }
        leaving[balanceBefore(entry)].append(entry);
        ++surplus[balanceBefore(entry)];
        --surplus[m_facts[entry].sharesAfter];
    }
    const SecurityId &security = m_executions[m_order[places.constFirst()]].security;
    const auto open = std::find(surplus.cbegin(), surplus.cend(), 1);
    if (open == surplus.cend() && !leaving.contains(m_lastBalance.value(security, -1))) {
        return false;
    }
    QVector<qint64> balances{open != surplus.cend() ? open.key() : m_lastBalance.value(security)};
    Places entered{-1};
    Places walk;
    while (!balances.isEmpty()) { // each balance is left by all its entries before it is written down
        Places &next = leaving[balances.constLast()];
        if (next.isEmpty()) {
            walk.append(entered.takeLast());
            balances.removeLast();
        } else {
            const int entry = next.takeLast();
            entered.append(entry);
            balances.append(m_facts[entry].sharesAfter);
        }
    }
    walk.removeLast(); // the start, which no entry reached
    std::reverse(walk.begin(), walk.end());
    if (walk.size() != places.size()) {
        return false;
    }
    *order = walk;
    return true;
}

/// False unless each entry has a number of its own, and all are alike.
bool DayOrder::sortByNumber(Places *order, QString Execution::*number) const
{
    const auto numberOf = [this, number](int entry) -> const QString & {
        return m_executions[entry].*number;
    };
    const auto isNumeric = [](const QString &text) {
        return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar character) {
            return character >= QLatin1Char('0') && character <= QLatin1Char('9');
        });
    };
    const bool areNumeric =
        std::all_of(order->begin(), order->end(), [&](int entry) { return isNumeric(numberOf(entry)); });
    const bool areAlike = std::all_of(order->begin(), order->end(), [&](int entry) {
        return !numberOf(entry).isEmpty() && numberOf(entry).size() == numberOf(order->constFirst()).size();
    });
    if (!areNumeric && !areAlike) {
        return false;
    }
    const auto isLess = [&](int a, int b) {
        const QString &x = numberOf(a);
        const QString &y = numberOf(b);
        return x.size() != y.size() ? x.size() < y.size() : x < y;
    };
    Places sorted = *order;
    std::stable_sort(sorted.begin(), sorted.end(), isLess);
    const bool areDistinct = std::adjacent_find(sorted.begin(), sorted.end(), [&](int a, int b) {
                                 return !isLess(a, b) && !isLess(b, a);
                             }) == sorted.end();
    if (areDistinct) {
        *order = sorted;
    }
    return areDistinct;
}

} // namespace TradeModule
