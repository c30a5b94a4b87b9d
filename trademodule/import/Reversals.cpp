#include "trademodule/import/Reversals.h"

#include <QHash>

#include <algorithm>

namespace TradeModule {

namespace {

bool isSame(const Execution &a, const Execution &b)
{
    return a.security == b.security && a.side == b.side && a.quantity == b.quantity && a.price == b.price;
}

bool haveSameNumber(const Execution &a, const Execution &b)
{
    return (!a.dealNo.isEmpty() && a.dealNo == b.dealNo) || (!a.orderNo.isEmpty() && a.orderNo == b.orderNo);
}

/// Places of entries by security: there may be millions, and some rows that take some of them back.
using PlacesBySecurity = QHash<SecurityId, QVector<int>>;

PlacesBySecurity placesOf(const Executions &entries, const QVector<Reversals::Row> &rows)
{
    PlacesBySecurity places;
    for (const Reversals::Row &row : rows) {
        places.insert(row.taken.security, {});
    }
    for (int i = 0; i < entries.size(); ++i) {
        const auto ofSecurity = places.find(entries[i].security);
        if (ofSecurity != places.end()) {
            ofSecurity->append(i);
        }
    }
    return places;
}

/// The place of the entry that a row takes back; -1 for none.
int placeOf(const Execution &taken, const Executions &entries, const QVector<int> &places)
{
    int found = -1;
    for (const int place : places) {
        const Execution &entry = entries[place];
        if (!isSame(entry, taken) || entry.date > taken.date) {
            continue;
        }
        if (haveSameNumber(entry, taken)) {
            return place;
        }
        found = found < 0 || entry.date >= entries[found].date ? place : found;
    }
    return found;
}

void drop(QVector<int> places, ListedEntries *entries)
{
    std::sort(places.begin(), places.end());
    Executions executions;
    QVector<ListedFacts> facts;
    auto next = places.begin();
    for (int i = 0; i < entries->executions.size(); ++i) {
        if (next != places.end() && *next == i) {
            ++next;
            continue;
        }
        executions.append(entries->executions[i]);
        facts.append(entries->facts[i]);
    }
    entries->executions = executions;
    entries->facts = facts;
}

} // namespace

QVector<Reversals::Row> Reversals::takeBack(ListedEntries *entries) const
{
    QVector<Row> left;
    QVector<int> dropped;
    PlacesBySecurity places = m_rows.isEmpty() ? PlacesBySecurity() : placesOf(entries->executions, m_rows);
    for (const Row &row : m_rows) {
        QVector<int> &ofSecurity = places[row.taken.security];
        const int place = placeOf(row.taken, entries->executions, ofSecurity);
        if (place < 0) {
            left.append(row);
        } else {
            dropped.append(place);
            ofSecurity.removeOne(place);
        }
    }
    if (!dropped.isEmpty()) {
        drop(dropped, entries);
    }
    return left;
}

} // namespace TradeModule
