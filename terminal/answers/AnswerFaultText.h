#pragma once

#include "trading/AnswerCheck.h"

namespace Terminal {

/// What the user is told of one fault: the command, the key, and what comes of it. A line without amounts or
/// prices but those that the trading module wrote where they do not belong.
QString faultText(const QString &command, const Trading::AnswerFinding &finding);

/// The same of all faults of an answer, a line for each; empty for an answer as it must be.
QStringList faultTexts(const Trading::CheckedAnswer &answer);

} // namespace Terminal
