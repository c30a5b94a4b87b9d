#include "trademodule/import/HoldingsCheck.h"

#include <algorithm>

namespace TradeModule::HoldingsCheck {

namespace {

/// The entries of one security, by their place in the statement.
using Places = QVector<int>;

QHash<SecurityId, Places> bySecurity(const StatementContents &contents)
{
    QHash<SecurityId, Places> places;
    for (int i = 0; i < contents.executions.size(); ++i) {
        places[contents.executions[i].security].append(i);
    }
    return places;
}

class Check
{
public:
    Check(const StatementContents &contents, const Places &places, qint64 opening)
        : m_contents(contents),
          m_places(places),
          m_held(opening)
    {
    }

    std::optional<HoldingDisagreement> run()
    {
        for (int first = 0; first < m_places.size();) {
            int last = first + 1;
            while (last < m_places.size() && dayOf(last) == dayOf(first)) {
                ++last;
            }
            if (const auto found = checkDay(first, last)) {
                return found;
            }
            first = last;
        }
        return std::nullopt;
    }

private:
    const Execution &at(int i) const { return m_contents.executions[m_places[i]]; }
    TradingDate dayOf(int i) const { return at(i).date; }
    qint64 statedAt(int i) const { return m_contents.facts[m_places[i]].sharesAfter; }

    /// Entries from one to before another.
    std::optional<HoldingDisagreement> checkDay(int first, int last)
    {
        std::optional<HoldingDisagreement> wrong;
        qint64 lastStated = -1;
        for (int i = first; i < last; ++i) {
            m_held += takesShares(at(i).side) ? -at(i).quantity : at(i).quantity;
            lastStated = statedAt(i) >= 0 ? statedAt(i) : lastStated;
            if (!wrong && statedAt(i) >= 0 && statedAt(i) != m_held) {
                wrong = HoldingDisagreement{at(i).security, m_contents.facts[m_places[i]].line, statedAt(i),
                                            m_held};
            }
        }
        return lastStated == m_held ? std::nullopt : wrong;
    }

    const StatementContents &m_contents;
    const Places &m_places;
    qint64 m_held;
};

} // namespace

std::optional<HoldingDisagreement> of(const StatementContents &contents, const HeldBefore &heldBefore)
{
    const bool isTold = std::any_of(contents.facts.begin(), contents.facts.end(),
                                    [](const ListedFacts &facts) { return facts.sharesAfter >= 0; });
    if (!isTold) {
        return std::nullopt;
    }
    std::optional<HoldingDisagreement> first;
    int securities = 0;
    const QHash<SecurityId, Places> places = bySecurity(contents);
    for (auto security = places.cbegin(); security != places.cend(); ++security) {
        const TradingDate day = contents.executions[security->constFirst()].date;
        const auto found = Check(contents, *security, heldBefore(security.key(), day)).run();
        securities += found ? 1 : 0;
        first = found && (!first || found->line < first->line) ? found : first;
    }
    if (first) {
        first->securities = securities;
    }
    return first;
}

} // namespace TradeModule::HoldingsCheck
