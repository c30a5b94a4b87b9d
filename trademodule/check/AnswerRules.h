#pragma once

#include "trading/MessageTable.h"

#include <QByteArray>
#include <QJsonObject>
#include <QMap>
#include <QSet>
#include <QStringList>

namespace TradeModule {

/// What a message is found to be, in words for the maker of a module.
struct Verdict
{
    QJsonObject message; ///< empty when it is no JSON object
    QStringList faults;
    QMap<QString, Trading::WhenWrong>
        leftOut;        ///< keys that the guides allow to leave out, with what comes of it
    QSet<QString> seen; ///< such keys that are there, in a row at least
};

/// An answer held against the question that it came for: its keys by the table of messages, what it repeats
/// of the question, and what it says twice.
Verdict judgeAnswer(const QJsonObject &question, const QByteArray &payload);

/// True for keys whose lack shows on a chart, one row without is enough; others are of no weight where they
/// are there now and then.
bool isNoticed(Trading::WhenWrong effect);

/// "counts as 0", in the language of the program.
QString effectText(Trading::WhenWrong effect);

/// A message that nobody asked for, of the role.
Verdict judgeUnasked(Trading::MessageRole role, const QByteArray &payload);

} // namespace TradeModule
