#pragma once

#include "trading/ReplacementState.h"

#include <QJsonObject>
#include <QString>

#include <optional>

namespace Terminal {

/// How the wish to place, to replace or to cancel an order ended.
struct DeskOutcome
{
    enum class Kind {
        Accepted, ///< `text` is the number of a placed order, or what the module says to a cancellation
        Refused,  ///< `text` is the module's reason
        NotSent,  ///< there is no bus: nothing has happened
        NoAnswer  ///< not in time: it may have happened. A late answer is told as a second outcome
    };

    Kind kind = Kind::NoAnswer;
    QString text;
    bool isLate = false; ///< an answer after NoAnswer was told
    /// How a replacement ended that was accepted; `text` is the new order's number, or why there is none.
    std::optional<Trading::ReplacementState> replacement = {};
};

/// True when the module grants what it was asked.
bool isGranted(const QJsonObject &answer);

/// Why it does not, "?" when it gives no reason; empty when it does.
QString refusalOf(const QJsonObject &answer);

/// True for the answer to a replacement that has begun and not ended: the module is to be asked again.
bool isUnderWay(const QJsonObject &answer);

/// True for the answer of a module that could not look into its ledger: of what it was asked about before it
/// tells nothing.
bool isWithoutLedger(const QJsonObject &answer);

/// The outcome of a wish that the module answered so.
DeskOutcome outcomeOf(const QJsonObject &answer);

} // namespace Terminal
