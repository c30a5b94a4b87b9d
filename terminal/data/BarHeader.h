#pragma once

#include "terminal/data/BarColumns.h"
#include "terminal/data/SecurityCode.h"

#include <QString>

#include <optional>
#include <string_view>

namespace Terminal {

/// A place in a file and what is wrong there.
struct LineProblem
{
    int line = 0; ///< 1 for the first one; 0 for no problem
    QString what;

    explicit operator bool() const { return line > 0; }
};

/// Whether the prices of a file are those that were paid, or have been changed for what was paid out since.
enum class PriceKind { Unknown, Raw, Adjusted };

/// What stands above the rows of a bar file: perhaps a title, which may name the security and say whether
/// prices are adjusted, and the names of the columns, in one line or more.
struct BarHeader
{
    BarColumns columns;
    CellSeparator separator = CellSeparator::Comma;
    int lines = 0; ///< up to the first row
    std::optional<SecurityCode> security;
    QString name;
    PriceKind prices = PriceKind::Unknown;
    LineProblem problem;
};

/// Takes the header away from `text`, in UTF-8. Its problem says why there is none.
BarHeader takeBarHeader(std::string_view *text);

/// Whether a word says that prices are adjusted: 前复权, 不复权, "qfq", 3.
PriceKind priceKindOf(const QString &word);

} // namespace Terminal
