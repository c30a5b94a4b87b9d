#include "trademodule/import/CashCheck.h"

#include <algorithm>
#include <iterator>

namespace TradeModule {

namespace {

/// The first row of some that does not follow the one before it.
template <typename Iterator>
std::optional<CashDisagreement> firstBreak(Iterator first, Iterator last)
{
    for (Iterator row = first; row != last; ++row) {
        if (row == first || !row->hasBalance) {
            continue;
        }
        const auto before = std::prev(row);
        if (before->hasBalance && before->balance + row->change != row->balance) {
            return CashDisagreement{row->line, row->balance, before->balance + row->change};
        }
    }
    return std::nullopt;
}

/// What the account had before a row.
template <typename Row>
QVector<qint64> openingOf(const Row &row)
{
    return {(row.balance - row.change).steps()};
}

} // namespace

void CashCheck::add(int line, TradingDate date, Money change, std::optional<Money> balance)
{
    if (!m_rows.empty() && m_date != date) {
        endDay();
    }
    m_date = date;
    m_rows.push_back({line, change, balance.value_or(Money()), balance.has_value()});
}

void CashCheck::endDay()
{
    Day day;
    day.date = m_date;
    for (const Row &row : m_rows) {
        day.change = day.change + row.change;
        if (!row.hasBalance) {
            continue;
        }
        day.first = day.balances.isEmpty() ? row : day.first;
        day.last = row;
        day.balances.append(row.balance.steps());
    }
    std::sort(day.balances.begin(), day.balances.end());
    day.inside = firstBreak(m_rows.cbegin(), m_rows.cend());
    day.insideReversed = firstBreak(m_rows.crbegin(), m_rows.crend());
    m_rows.clear();
    if (!day.balances.isEmpty()) {
        m_days.append(day);
    }
}

std::optional<CashDisagreement> CashCheck::disagreement()
{
    endDay();
    const auto isEarlier = [](const Day &a, const Day &b) { return a.date < b.date; };
    const bool isNewestFirst = m_days.size() > 1 && isEarlier(m_days.constLast(), m_days.constFirst());
    if (isNewestFirst) {
        std::reverse(m_days.begin(), m_days.end());
    }
    if (!std::is_sorted(m_days.begin(), m_days.end(), isEarlier)) {
        return std::nullopt;
    }
    QVector<qint64> openings =
        isNewestFirst || m_days.isEmpty() ? QVector<qint64>() : openingOf(m_days.constFirst().first);
    if (!m_days.isEmpty()) {
        openings += openingOf(m_days.constFirst().last);
    }
    for (int i = 0; i < m_days.size(); ++i) {
        if (!follows(m_days[i], openings)) {
            const Row *const before = i == 0          ? nullptr
                                      : isNewestFirst ? &m_days[i - 1].first
                                                      : &m_days[i - 1].last;
            return firstWrong(m_days[i], before == nullptr ? std::nullopt : std::optional(before->balance),
                              isNewestFirst);
        }
        openings = m_days[i].balances; // any of them may be the day's last
    }
    return std::nullopt;
}

bool CashCheck::follows(const Day &day, const QVector<qint64> &openings)
{
    return std::any_of(openings.begin(), openings.end(), [&day](qint64 opening) {
        return std::binary_search(day.balances.begin(), day.balances.end(), opening + day.change.steps());
    });
}

CashDisagreement CashCheck::firstWrong(const Day &day, std::optional<Money> opening, bool isNewestFirst)
{
    const Row &told = isNewestFirst ? day.last : day.first;
    const std::optional<CashDisagreement> &inside = isNewestFirst ? day.insideReversed : day.inside;
    const bool beginsRight = !opening || *opening + told.change == told.balance;
    return beginsRight && inside
               ? *inside
               : CashDisagreement{told.line, told.balance, opening.value_or(Money()) + told.change};
}

} // namespace TradeModule
