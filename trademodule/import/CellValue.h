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
/// digits of which the first eight are the date; a time after it is ignored. No day before there was an
/// exchange, nor one to come.
std::optional<TradingDate> date(const QString &cell);

/// The time of 110351, 11:03:51, 1103, 11:03, 93551, 11035100, 下午 2:30:05, 2:30 PM, or a fraction of a day;
/// a date before it is ignored; midnight for an empty cell.
std::optional<ClockTime> time(const QString &cell);

/// The time beside a date in one cell: "2021-08-11 10:00:00", a number of days with a fraction. Nothing when
/// the cell holds no more than a date. (The last six of fourteen digits may be a running number.)
std::optional<ClockTime> timeBesideDate(const QString &cell);

/// A security's code as a statement spells it.
struct Code
{
    QString digits; ///< as they stand: a spreadsheet may have lost zeros that they start with
    QString market; ///< letters written before or after the digits, upper case; may be empty
};
/// 600000, SH600000, 600000.SH, with any letters.
std::optional<Code> code(const QString &cell);

/// An order's or deal's number: "1.23456E+5" is 123456. Nothing when digits are lost, as in 1.05E+14.
std::optional<QString> serialNumber(const QString &cell);

} // namespace CellValue

} // namespace TradeModule
