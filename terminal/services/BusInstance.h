// Which bus a terminal's programs meet on: one for each account.
#pragma once

#include "trading/Presence.h"

#include <QString>

namespace Terminal {

/// Names the bus of a program and its children: see docs/bus-protocol.md.
constexpr const char *busInstanceVariable = "TRADEBUS_INSTANCE";

/// The one name of a ledger, by whichever path or link it is reached: a file's canonical path, also of one
/// that is not there yet, or "postgresql://host:port/database" of a database, without user and password.
QString ledgerPlace(const QString &ledger);

/// True for a ledger that is a file and not there: its trading module would make it. What a database holds is
/// that module's to find out.
bool isMissingFile(const QString &ledger);

/// True when a module says that it serves another ledger than `ledger`; false where one of both is not known.
/// A file on another machine is another one.
bool servesAnother(const Trading::TradePresence &presence, const QString &ledger);

/// What a user calls a ledger: its file's name, or "database@host".
QString ledgerName(const QString &ledger);

/// Has this program, and the children that it starts from now on, meet on the bus of the account in `ledger`
/// instead of on the one that every program of its folder shares: windows on one ledger meet, those on two
/// never do. An instance that the user has named stays; without a ledger nothing changes. To be called
/// before the first client of the bus is made.
void enterBusInstance(const QString &ledger);

/// The name of this program's account on the bus; empty when it has none.
QString busInstance();

/// Enters the bus instance of an account and leaves it again, so that a program can go from one account to
/// another. No client of the bus outlives it.
class BusMembership
{
public:
    /// Whose word counts on which bus it is.
    enum class Choice {
        OfUser,    ///< an instance that the user has named stays
        OfAccount, ///< the account has its own whatever the user has named
    };

    explicit BusMembership(const QString &ledger, Choice choice = Choice::OfUser);
    ~BusMembership();
    BusMembership(const BusMembership &) = delete;
    BusMembership &operator=(const BusMembership &) = delete;

    /// The instance for a child that works on another ledger; empty when it is this program's, too, as the
    /// user has named it for all.
    QString ofOther(const QString &ledger) const { return m_isOurs ? ledgerPlace(ledger) : QString(); }

private:
    const QString m_before; ///< the instance that the user has named
    const bool m_isOurs;    // else that one counts
};

} // namespace Terminal
