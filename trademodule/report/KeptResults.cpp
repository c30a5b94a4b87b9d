#include "trademodule/report/KeptResults.h"

#include "trademodule/report/LedgerReckoning.h"

#include <QRandomGenerator>

#include <algorithm>
#include <map>
#include <utility>

namespace TradeModule {

namespace {

/// Windows on the same ledger may look at different lists in turns.
constexpr size_t mostLists = 4;

constexpr int yearsOfMonths = 100; // in yyyymm

} // namespace

/// A list in its order: where its lines are, and what they come to.
class KeptResults::List
{
public:
    List(const Wish &wish, CostMethod method, const std::vector<std::unique_ptr<SecurityResults>> &securities)
        : m_wish(wish),
          m_method(method)
    {
        for (const auto &security : securities) {
            if (wish.code.isEmpty() || security->security().security.code == wish.code) {
                add(*security);
            }
        }
        for (const auto &[period, line] : m_periods) {
            m_places.push_back({nullptr, period});
        }
        for (const Place &place : m_places) {
            m_sum += lineAt(place).figures;
        }
        if (wish.order) {
            sort(*wish.order);
        }
    }

    const Wish &wish() const { return m_wish; }

    Part part(qint64 first, qint64 count) const
    {
        Part part{{}, static_cast<qint64>(m_places.size()), m_sum};
        const qint64 end = std::min(part.count, first + count);
        for (qint64 place = first; place < end; ++place) {
            part.lines.push_back(lineAt(m_places[static_cast<size_t>(place)]));
            part.lines.back().method = m_method;
        }
        return part;
    }

private:
    /// Where a line is: the number of a sale or trip of a security, or that of a period.
    struct Place
    {
        const SecurityResults *security;
        int number;
    };

    void add(const SecurityResults &security)
    {
        switch (m_wish.group) {
        case ResultGroup::Sale:
            addPlaces(security, static_cast<int>(security.sales().size()));
            return;
        case ResultGroup::Trip:
            addPlaces(security, static_cast<int>(security.trips().size()));
            return;
        case ResultGroup::Security:
            addPlaces(security, security.isEmpty() ? 0 : 1);
            return;
        case ResultGroup::Month:
            addPeriods(security, 1);
            return;
        case ResultGroup::Year:
            addPeriods(security, yearsOfMonths);
            return;
        }
    }

    void addPlaces(const SecurityResults &security, int count)
    {
        for (int number = 0; number < count; ++number) {
            m_places.push_back({&security, number});
        }
    }

    void addPeriods(const SecurityResults &security, int monthsDivisor)
    {
        for (const auto &[number, month] : security.months()) {
            const auto period = m_periods.try_emplace(number / monthsDivisor, ResultLine::of(month.day, {}));
            period.first->second.figures += month.figures;
        }
    }

    ResultLine lineAt(const Place &place) const
    {
        if (place.security == nullptr) {
            return m_periods.at(place.number);
        }
        const SecurityResults &results = *place.security;
        const auto number = static_cast<size_t>(place.number);
        switch (m_wish.group) {
        case ResultGroup::Sale:
            return ResultLine::of(results.security(), results.sales()[number]);
        case ResultGroup::Trip:
            return ResultLine::of(results.security(), results.trips()[number]);
        case ResultGroup::Security:
        case ResultGroup::Month:
        case ResultGroup::Year:
            break;
        }
        return ResultLine::of(results.security(), results.figures(), results.shares());
    }

    void sort(ResultField field)
    {
        struct Ranked
        {
            ResultLine::Rank rank;
            Place place;
        };
        std::vector<Ranked> ranked;
        ranked.reserve(m_places.size());
        for (const Place &place : m_places) {
            ranked.push_back({lineAt(place).rank(field), place});
        }
        const bool isDescending = m_wish.isDescending;
        std::stable_sort(ranked.begin(), ranked.end(), [isDescending](const Ranked &a, const Ranked &b) {
            return isDescending ? b.rank < a.rank : a.rank < b.rank;
        });
        std::transform(ranked.begin(), ranked.end(), m_places.begin(),
                       [](const Ranked &each) { return each.place; });
    }

    const Wish m_wish;
    const CostMethod m_method;
    std::vector<Place> m_places;
    std::map<int, ResultLine> m_periods;
    Figures m_sum;
};

KeptResults::KeptResults(Ledger *ledger) : m_ledger(ledger), m_number(QRandomGenerator::global()->generate())
{
}

KeptResults::~KeptResults() = default;

qint64 KeptResults::bringUpToDate()
{
    Database *const database = m_ledger->database();
    const LedgerState state = LedgerState::of(database);
    if (state == m_state) {
        return m_number;
    }
    ++m_number;
    m_lists.clear();
    const LedgerState before = std::exchange(m_state, LedgerState()); // until all is reckoned
    if (state.hasOnlyMoreTradesThan(before)) {
        reckonAnew(state.securitiesSince(before, database));
    } else {
        reckonAll();
    }
    m_state = state;
    return m_number;
}

std::unique_ptr<SecurityResults> KeptResults::reckoned(AccountHistory *history,
                                                       const KnownSecurity &security) const
{
    auto results = std::make_unique<SecurityResults>(security);
    results->end(reckon(history, security, m_ledger->costMethod(), TradingDate::last(), results.get()));
    return results;
}

void KeptResults::reckonAll()
{
    m_securities.clear();
    AccountHistory history(m_ledger->database());
    for (const KnownSecurity &security : history.securities()) {
        m_securities.push_back(reckoned(&history, security));
    }
    auto others = std::make_unique<SecurityResults>(KnownSecurity{});
    reckonOtherMoney(&history, TradingDate::last(), others.get());
    m_securities.push_back(std::move(others));
}

void KeptResults::reckonAnew(const std::vector<qint64> &securities)
{
    AccountHistory history(m_ledger->database());
    std::vector<std::unique_ptr<SecurityResults>> kept;
    const auto findKept = [this](qint64 id) {
        return std::find_if(m_securities.begin(), m_securities.end(),
                            [id](const auto &each) { return each && each->security().id == id; });
    };
    for (const KnownSecurity &security : history.securities()) {
        const auto found = findKept(security.id);
        const bool isChanged =
            std::find(securities.begin(), securities.end(), security.id) != securities.end();
        kept.push_back(isChanged || found == m_securities.end() ? reckoned(&history, security)
                                                                : std::move(*found));
    }
    kept.push_back(std::move(m_securities.back()));
    m_securities = std::move(kept);
}

const KeptResults::List &KeptResults::list(const Wish &wish)
{
    const auto found = std::find_if(m_lists.begin(), m_lists.end(),
                                    [&wish](const auto &list) { return list->wish() == wish; });
    if (found == m_lists.end()) {
        m_lists.insert(m_lists.begin(), std::make_unique<List>(wish, method(), m_securities));
        m_lists.resize(std::min(m_lists.size(), mostLists));
    } else {
        std::rotate(m_lists.begin(), found, std::next(found));
    }
    return *m_lists.front();
}

KeptResults::Part KeptResults::part(const Wish &wish, qint64 first, qint64 count)
{
    return list(wish).part(first, count);
}

QStringList KeptResults::incompleteCodes() const
{
    QStringList codes;
    for (const auto &security : m_securities) {
        if (security->shares().unexplained() > 0) {
            codes.append(security->security().security.code);
        }
    }
    return codes;
}

} // namespace TradeModule
