#pragma once

#include "trademodule/SharedTypes.h"

#include <QString>

#include <optional>

namespace TradeModule {

/// How single cells of statements read. Full-width characters count as their narrow twins; each function
/// gives nothing for a text it cannot read.
namespace CellValue {

/// The cell without blanks around, the wrapping ="…", quotes, and with narrow characters.
QString cleaned(const QString &cell);

/// True for an empty cell and for the dashes that stand for one.
bool isEmpty(const QString &cell);

/// A number with or without thousands separators, ￥, a sign or brackets for negative; 0 for an empty cell.
std::optional<double> number(const QString &cell);
/// The same, as money.
std::optional<Money> money(const QString &cell);
/// How many decimals a number is written with.
int decimals(const QString &cell);

/// The day of 20210811, 2021-8-11, 2021/8/11, 2021.8.11, 2021年8月11日, an Excel day number, or fourteen
/// digits of which the first eight are the date; a time after it is ignored.
std::optional<TradingDate> date(const QString &cell);

/// The time of 110351, 11:03:51, 1103, 11:03, 93551, 11035100, or a fraction of a day; midnight for an empty
/// cell.
std::optional<ClockTime> time(const QString &cell);

/// A security's code as a statement spells it.
struct Code
{
    QString digits; ///< six, or five on other markets
    QString market; ///< letters written before or after the digits, upper case; may be empty
};
/// 600000, SH600000, 600000.SH; leading zeros that a spreadsheet lost are put back.
std::optional<Code> code(const QString &cell);

} // namespace CellValue

} // namespace TradeModule
