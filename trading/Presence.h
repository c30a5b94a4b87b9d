#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include <optional>

namespace Trading {

/// What a serving trading module says of itself, retained on channel "Global", topic "TradePresence": that it
/// is there, which version it is and what it can do. The broker says the offline word for one that died:
///
///     {"instance":"5f0c…","online":true,"version":"0.1.0","protocol":"1","can":["clientno","actions","replace"],
///      "host":"desk","process":1234,"processstart":"0b1e…/5120","since":"2026-11-22T09:30:00Z","fence":7,
///      "readonly":false,"ledger":"/home/me/account.db"}
///     {"instance":"5f0c…","online":false,"fence":7}
///
/// Words of modules that followed one another on a ledger may come in any order: see replaces().
struct TradePresence
{
    QString instance; ///< another one each time that a module begins to serve; never empty
    bool isOnline = false;
    qint64 fence = 0; ///< raised by each module that takes the ledger over; at least 0

    // of an online one only; empty when the module did not say
    QString version;         ///< of the program
    QString protocol;        ///< of questions and answers
    QStringList can;         ///< words of Capability, and of modules to come
    QString host;            ///< the machine it runs on
    qint64 process = 0;      ///< its number there
    QString processStart;    ///< when that process began, as its machine counts
    QDateTime since;         ///< when it began to serve, in UTC
    bool isReadOnly = false; ///< answers questions, takes neither orders nor cancellations
    QString ledger;          ///< where its ledger is, for people to read

    /// Which ledger it is among those of all machines: of a file, its host is part of it.
    QString account() const;

    /// What is said once this one has ended.
    TradePresence ended() const;

    /// True when the module said that it has this Capability.
    bool knows(const char *capability) const { return can.contains(QLatin1String(capability)); }

    QByteArray toJson() const;
    /// Nothing for what is no JSON object with an instance and "online". A field of another kind than it must
    /// be counts as not said, and unknown ones are passed over.
    static std::optional<TradePresence> ofJson(const QByteArray &payload);
};

/// True when a reader that knows one word (nothing at first) goes by the one it hears from now on. It does
/// not when the fence of the same ledger is lower: that module was followed by the known one; nor when an
/// instance goes offline that is not the one known online: that is a late word. Fences of two ledgers tell
/// nothing of each other.
bool replaces(const TradePresence &heard, const std::optional<TradePresence> &known);

/// True when the word is of a module that serves another ledger than ours on the same bus: a question that
/// both hear is answered twice, and an order placed in both. A file of one name on two hosts is two ledgers.
bool isOfAnotherLedger(const TradePresence &own, const TradePresence &heard);

/// True when a serving module must announce itself again because the word that it hears took the place of its
/// own: its own end, or one of a module that does not come after it. Of two with one fence (two ledgers on
/// one bus) only one answers the other.
bool isHiddenBy(const TradePresence &own, const TradePresence &heard);

} // namespace Trading
