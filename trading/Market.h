#pragma once

#include <QString>

#include <optional>

namespace Trading {

/// Where the securities of an account are traded. Charts know Shenzhen and Shanghai, whose values are the
/// numbers by which a chart's host names them to overlays: do not change them. The others stand in ledgers
/// only.
enum class Market {
    Shenzhen = 0,
    Shanghai = 1,
    Beijing = 2,
    HongKong = 3,
    OverTheCounter = 4, ///< funds of no exchange, the third board
};

/// True for the markets of which charts, questions and quotes can be.
constexpr bool isOnCharts(Market market)
{
    return market == Market::Shenzhen || market == Market::Shanghai;
}

/// "SH" or "SZ": in questions, quotes and ledgers. "BJ", "HK" and "OC" in ledgers.
QString marketLetters(Market market);

/// "1" for Shanghai, "2" for Shenzhen: in answers and notifications. Not the host's number. Requires
/// isOnCharts().
QString marketNumber(Market market);

/// The market of charts that has these letters; letter case matters.
std::optional<Market> marketOfLetters(const QString &letters);

/// The market that has these letters in a ledger; letter case matters.
std::optional<Market> marketInLedger(const QString &letters);

/// The market of its number in answers.
std::optional<Market> marketOfNumber(const QString &number);

} // namespace Trading
