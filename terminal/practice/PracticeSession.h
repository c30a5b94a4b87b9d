#pragma once

#include "trading/TradingDate.h"

#include <QDateTime>
#include <QString>

#include <optional>

namespace Terminal {

/// A recorded day that is practised under a name: what was begun, and where its account lies. Orders and
/// trades are in the ledger, at the recorded day and minute.
struct PracticeSession
{
    QString name;       ///< as its user calls it; no other session has it
    QString folder;     ///< of all its files
    QString dataFolder; ///< that the day's bars are in
    QString code;       ///< of the security that is played
    Trading::TradingDate day;
    QDateTime begunAt;

    /// The ledger of its account, and how that was before the first order.
    QString ledger() const;
    QString begunLedger() const;

    /// Held by the window that the session is open in. Beside its folder.
    QString lockFile() const;
};

/// Writes what a session is into its folder, all of it or nothing. False when it cannot be written.
bool writeSession(const PracticeSession &session);

/// Reads what lies in a folder; nothing where no session does, or one that is not whole.
std::optional<PracticeSession> readSession(const QString &folder);

} // namespace Terminal
