#pragma once

#include "terminal/practice/PracticeSession.h"

#include <QString>

#include <optional>
#include <vector>

namespace Terminal {

/// The practice sessions of a user: a folder, in which each session has one of its own. One that was not
/// begun to its end, or is being deleted, is none.
class PracticeSessions
{
public:
    /// In `folder`, which need not be there yet.
    explicit PracticeSessions(QString folder) : m_folder(std::move(folder)) {}

    /// The user's own, in the folder that the system has for data of this program.
    static PracticeSessions ofUser();

    /// The latest first.
    std::vector<PracticeSession> all() const;
    std::optional<PracticeSession> find(const QString &name) const;

    /// `wished`, with a number after it where a session has that name.
    QString freeName(const QString &wished) const;

    /// A new folder for a session that is being begun; empty when none can be made. What programs that were
    /// killed left half done a day ago goes.
    QString makeRoom() const;
    /// Takes a session in whose folder makeRoom() made, and its ledger, into the list. Returns why it cannot
    /// be, for the user; the room is gone then.
    QString take(PracticeSession session) const;
    /// Gives such a room up.
    void giveUp(const QString &room) const;

    /// Puts the account back to where it was before the first order. The session is open in no window but, at
    /// most, the caller's, whose trading module has ended. Returns why not, for the user.
    QString restart(const PracticeSession &session) const;

    /// Deletes a session with all its files. Returns why not, for the user: a window has it open, say.
    QString remove(const PracticeSession &session) const;

private:
    QString folderOf(const QString &name) const;
    void removeLeftovers() const;

    QString m_folder;
};

} // namespace Terminal
