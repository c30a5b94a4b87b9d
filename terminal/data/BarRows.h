#pragma once

#include "terminal/data/Bar.h"
#include "terminal/data/BarHeader.h"

#include <QString>

#include <optional>
#include <string_view>
#include <vector>

namespace Terminal {

/// The rows of a bar file, as they stand there: in the file's order, volume in the file's unit, nothing
/// compared between rows yet.
struct BarRows
{
    Bars bars;
    std::vector<int> lines;               ///< of each bar
    std::vector<double> amounts;          ///< of each bar, 0 where there is none; empty without the column
    std::vector<double> previousCloses;   ///< likewise
    std::optional<SecurityCode> security; ///< nothing when no column names it
    QString name;
    PriceKind prices = PriceKind::Unknown;
    bool haveTimes = false;
    QString dayForm;      ///< of the column that has it, for messages: "yyyymmdd"
    QString timeForm;     ///< likewise
    int notTraded = 0;    ///< rows of days without trading, which are no bars
    LineProblem problem;  ///< the first one
    int problems = 0;     ///< rows that have one
    bool lackDay = false; ///< they are times without a day, and none was given: what follows is not read
};

/// Reads what follows the header. `day` is that of times without one.
BarRows readBarRows(std::string_view text, const BarHeader &header, std::optional<Trading::TradingDate> day);

} // namespace Terminal
