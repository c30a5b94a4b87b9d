#pragma once

#include <QString>

#include <optional>

namespace Trading {

/// The exchanges whose securities an account trades. The values are the numbers by which a chart's host
/// names the markets to overlays: do not change them.
enum class Market { Shenzhen = 0, Shanghai = 1 };

/// "SH" or "SZ": in questions, quotes and ledgers.
QString marketLetters(Market market);

/// "1" for Shanghai, "2" for Shenzhen: in answers and notifications. Not the host's number.
QString marketNumber(Market market);

/// The market of its letters; letter case matters.
std::optional<Market> marketOfLetters(const QString &letters);

/// The market of its number in answers.
std::optional<Market> marketOfNumber(const QString &number);

} // namespace Trading
