#pragma once

#include <QString>

#include <optional>

namespace Trading {

/// Which way an order goes.
enum class Direction { Buy, Sell };

/// "0B" or "0S": the direction of an order in questions and in the rows of answers.
const char *directionCode(Direction direction);

/// "B" or "S": the direction of a trade in the rows of answers, and of an order in ledgers.
const char *directionLetter(Direction direction);

/// The direction of any of the codes by which trading modules name it for an order, which are listed in
/// docs/vocabulary.md, or of its letter. Letter case matters.
std::optional<Direction> directionOfCode(const QString &code);

} // namespace Trading
