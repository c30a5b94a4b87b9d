#pragma once

#include "trademodule/ledger/Ledger.h"
#include "trademodule/report/LedgerState.h"
#include "trademodule/report/ResultLine.h"
#include "trademodule/report/SecurityResults.h"

#include <memory>
#include <optional>
#include <vector>

namespace TradeModule {

/// What an account earned, as lists of which a part is asked for: reckoned once, and kept until the ledger
/// changes. After trades of the paper exchange only their securities are reckoned anew; after imports, and
/// when costs are reckoned in another way, all. 100,000 sales are kept in about ten megabytes.
class KeptResults
{
public:
    /// A list and its order.
    struct Wish
    {
        ResultGroup group = ResultGroup::Security;
        QString code{};                     ///< of this security alone; empty for all
        std::optional<ResultField> order{}; ///< nothing: as the command `results` lists
        bool isDescending = false;

        friend bool operator==(const Wish &a, const Wish &b)
        {
            return a.group == b.group && a.code == b.code && a.order == b.order &&
                   a.isDescending == b.isDescending;
        }
    };

    /// A part of a list.
    struct Part
    {
        std::vector<ResultLine> lines;
        qint64 count = 0; ///< of all lines of the list
        Figures sum{};    ///< of all of them
    };

    /// The ledger stays the caller's and outlives this object.
    explicit KeptResults(Ledger *ledger);
    ~KeptResults();
    Q_DISABLE_COPY_MOVE(KeptResults)

    /// Looks whether the ledger has changed, and reckons what must be. Gives a number that is another one
    /// whenever something has, also in another process: parts with the same number are of one list. An Error
    /// leaves nothing kept.
    qint64 bringUpToDate();

    // Of what was last brought up to date:

    CostMethod method() const { return m_state.method(); }
    /// The lines from number `first` on, `count` at most.
    Part part(const Wish &wish, qint64 first, qint64 count);
    /// Codes of securities of which more left than ever came in: earlier statements are missing.
    QStringList incompleteCodes() const;

private:
    class List;

    void reckonAll();
    void reckonAnew(const std::vector<qint64> &securities);
    std::unique_ptr<SecurityResults> reckoned(AccountHistory *history, const KnownSecurity &security) const;
    const List &list(const Wish &wish);

    Ledger *const m_ledger;
    LedgerState m_state;
    qint64 m_number;
    std::vector<std::unique_ptr<SecurityResults>> m_securities; ///< by code; money of none is last
    std::vector<std::unique_ptr<List>> m_lists;                 ///< that were asked for, the last first
};

} // namespace TradeModule
