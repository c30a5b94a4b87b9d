#include "trademodule/import/EntryReader.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/import/CellValue.h"
#include "trademodule/import/EntryAmounts.h"
#include "trademodule/import/EntrySide.h"
#include "trademodule/import/SecurityOfRow.h"

#include <algorithm>

namespace TradeModule {

namespace {

ClockTime timeOf(const StatementRow &row)
{
    const QString text = row.cell(Column::Time);
    const std::optional<ClockTime> time = CellValue::time(text);
    if (!time) {
        throw Error(translated("\"%1\" is no time").arg(CellValue::cleaned(text)));
    }
    return *time;
}

/// An order's or deal's number; zeros stand for none.
QString numberText(const StatementRow &row, Column column)
{
    constexpr int longestNumberText = 64; // the ledger's index holds them
    const QString text = CellValue::cleaned(row.cell(column));
    if (text.size() > longestNumberText) {
        throw Error(
            translated("\"%1…\" is longer than the %2 characters that an order or deal number may have")
                .arg(text.left(longestNumberText))
                .arg(longestNumberText));
    }
    const bool isNone = std::all_of(text.begin(), text.end(), [](QChar character) {
        return character == QLatin1Char('0') || character == QLatin1Char('-');
    });
    return isNone ? QString() : text;
}

} // namespace

Entry EntryReader::read(const StatementRow &row) const
{
    if (const auto furniture = EntrySide::furniture(row)) {
        return *furniture;
    }
    const std::variant<Side, LeftOut> side = EntrySide::of(row);
    const Side *const ofTrade = std::get_if<Side>(&side);
    return ofTrade != nullptr ? readTrade(row, *ofTrade) : std::get<LeftOut>(side);
}

Entry EntryReader::readTrade(const StatementRow &row, Side side) const
{
    const EntryAmounts amounts(row);
    const qint64 quantity = amounts.quantity(side);
    if (quantity == 0) {
        return LeftOut{translated("entries without a quantity")};
    }
    const Money price = amounts.price(side);
    const auto security = securityOfRow(row, m_options.securitiesByName);
    if (!security) {
        return LeftOut{translated("other markets")};
    }
    Execution execution{*security, side, dateOf(row), timeOf(row), price, quantity};
    execution.orderNo = numberText(row, Column::OrderNo);
    execution.dealNo = numberText(row, Column::DealNo);
    if (side != Side::Bonus) {
        execution.amount = amounts.amount(execution);
        execution.fee = amounts.fee(execution);
    }
    return execution;
}

TradingDate EntryReader::dateOf(const StatementRow &row) const
{
    if (!row.has(Column::Date)) {
        return m_options.date.value();
    }
    const QString text = row.cell(Column::Date);
    const std::optional<TradingDate> date = CellValue::date(text);
    if (!date) {
        throw Error(translated("\"%1\" is no date").arg(CellValue::cleaned(text)));
    }
    if (*date > TradingDate::today()) {
        throw Error(translated("the date %1 is in the future").arg(date->number()));
    }
    return *date;
}

} // namespace TradeModule
