#pragma once

#include "trademodule/SharedTypes.h"
#include "trademodule/import/StatementRow.h"
#include "trading/CodeRanges.h"

#include <QHash>
#include <QStringList>

#include <optional>

namespace TradeModule {

namespace CodeRanges = Trading::CodeRanges;
using Trading::CodeRange;
using Trading::SecurityClass;

/// A security as a statement names it, and what its code is of.
struct NamedSecurity
{
    SecurityId security; ///< of rights and applications: the shares that come from them, where the codes tell
    SecurityClass kind = SecurityClass::Other;
};

/// Finds the securities of a statement's rows: by their codes, or where the statement has none by their names
/// in a list that the user gave.
class SecurityReader
{
public:
    /// The list stays the caller's and outlives this object.
    explicit SecurityReader(const QHash<QString, SecurityId> &securitiesByName) : m_byName(securitiesByName)
    {
    }

    /// The market is what its column says, else letters beside the code, else the holder's code, else what
    /// codes of these digits are usual on. An Error when there is no security, or when these cannot be true
    /// together.
    NamedSecurity of(const StatementRow &row, bool isOfHongKong);

private:
    NamedSecurity found(const StatementRow &row, bool isOfHongKong);
    void refuseAnotherMarket(const QString &code, const QString &market);

    const QHash<QString, SecurityId> &m_byName;
    QHash<QString, NamedSecurity> m_known; ///< by all that tells them: a statement names few again and again
    QHash<QString, QString> m_unknownMarkets; ///< words of no known market, by codes
};

/// The security of a code that a person wrote: 600000, SH600000 or 600000.SH; nothing when it is none of
/// the markets of charts.
std::optional<SecurityId> securityOfCode(const QString &text);

/// Reads a list of securities with the columns code, market (SH or SZ) and name.
QHash<QString, SecurityId> readSecurityList(const QString &path);

} // namespace TradeModule
