#pragma once

#include "trademodule/ledger/AccountHistory.h"
#include "trademodule/results/HeldShares.h"
#include "trademodule/results/Sale.h"
#include "trademodule/results/Trip.h"
#include "trading/ResultColumns.h"

#include <optional>

namespace TradeModule {

using Trading::ResultField;
using Trading::ResultGroup;

/// A row of a list of results, whatever its rows stand for. What its list does not show is empty.
struct ResultLine
{
    SecurityId security{}; ///< without a code: money that belongs to none
    QString name{};
    std::optional<TradingDate> day{};    ///< of a sale; on which a trip opened; one of a month or year
    ClockTime time{};                    ///< of a sale
    std::optional<TradingDate> closed{}; ///< nothing while the trip is open
    Money price{};                       ///< of a sale
    qint64 sharesIn = 0;                 ///< of a trip
    qint64 sharesOut = 0;                ///< of a trip or a sale
    Figures figures{};
    qint64 held = 0;
    double heldCost = 0;               ///< yuan
    std::optional<double> costPrice{}; ///< yuan; nothing when nothing is held
    CostMethod method = CostMethod::Average;

    // The method is the caller's to set.
    static ResultLine of(const KnownSecurity &security, const Sale &sale);
    static ResultLine of(const KnownSecurity &security, const Trip &trip);
    static ResultLine of(const KnownSecurity &security, const Figures &figures, const HeldShares &shares);
    /// `day` is one of the month or year.
    static ResultLine of(TradingDate day, const Figures &figures);

    /// A cell as it is written everywhere: numbers without signs for thousands, days as 2024-01-31.
    QString text(ResultField field) const;

    /// By what a list is put in order: first by number, then by text.
    struct Rank
    {
        qint64 number = 0;
        QString text{};

        friend bool operator<(const Rank &a, const Rank &b)
        {
            return a.number != b.number ? a.number < b.number : a.text < b.text;
        }
    };
    Rank rank(ResultField field) const;
};

/// The cells of a row of a list, from the left.
QStringList cellsOf(const ResultLine &line, const std::vector<ResultField> &fields);

/// What a sum of figures says in a field: nothing in those that have no sum.
QString sumText(const Figures &sum, ResultField field);

} // namespace TradeModule
