// Holds a whole message against the table of messages. Who makes messages checks them with this; what a
// terminal makes of an answer for a chart, and tells its user, is in AnswerCheck.h.
#pragma once

#include "trading/KeyCheck.h"

#include <QJsonObject>
#include <QString>
#include <QVector>

namespace Trading {

/// What is wrong under one key of a message.
struct KeyFinding
{
    const MessageKey *key; ///< of the table
    KeyFault fault;
    QString place;    ///< "data/3/matchtime": the way to it, rows counted from 0
    QJsonValue value; ///< what stands there
};

/// Everything that is not as the table says; unknown keys are. An answer with "success" false is held against
/// MessageRole::Failure.
QVector<KeyFinding> findingsIn(const MessageRow &message, const QJsonObject &object);

} // namespace Trading
