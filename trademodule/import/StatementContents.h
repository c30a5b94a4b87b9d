#pragma once

#include "trademodule/import/CashCheck.h"
#include "trademodule/import/DayOrder.h"
#include "trademodule/import/Entry.h"
#include "trademodule/ledger/Statement.h"

#include <QHash>
#include <QStringList>

#include <map>
#include <optional>

namespace TradeModule {

/// A line that cannot be read, and why.
struct BadRow
{
    int line;
    QString reason;
    QString column; ///< where the reason stands, as the header names it; empty when it is none's alone
};

/// A line as it was understood.
struct UnderstoodRow
{
    int line;
    Entry entry;
};

/// Something that is true of rows: how many they are, and where the first one is.
struct Noted
{
    int rows = 0;
    int firstLine = 0;

    void note(int line)
    {
        firstLine = rows == 0 ? line : std::min(line, firstLine);
        ++rows;
    }
};

/// What a statement says.
struct StatementContents
{
    Executions executions;      ///< oldest first
    QVector<ListedFacts> facts; ///< one for each execution
    QHash<SecurityId, QString> names;
    MoneyEntries money; ///< oldest first

    /// From the first to the last one.
    struct Days
    {
        TradingDate from;
        TradingDate to;
    };
    std::optional<Days> days; ///< of its entries

    int rowCount = 0; ///< lines with entries, those that are left out or bad among them
    std::map<Outcome, std::map<QString, int>> kinds; ///< rows by what comes of them and their kind
    Noted shortSales;                                ///< and their covers: kept out together

    static constexpr int mostFirstRows = 20;
    QVector<UnderstoodRow> firstRows; ///< in the order of the list

    static constexpr int mostBadRows = 1000; ///< that are kept
    QVector<BadRow> badRows;
    int badRowCount = 0;

    bool areAmountsUnsigned = false; ///< words alone tell what came and what went
    bool mayBeUnsigned = false;      ///< buys were refused as if amounts had no signs, and indeed none has

    int repeatedRows = 0; ///< dropped: the same deal number and everything else once more
    int equalRows = 0;    ///< kept: equal to another row, but nothing says that they are one fill
    int daysAsListed = 0; ///< days of a security whose order is only as listed

    QStringList sheetsLeftOut; ///< of a workbook: they tell no entries
    QStringList unknownColumns;
    QStringList unknownWords;
    Noted reversals;   ///< rows that take earlier ones back: neither of the two counts
    Noted feesInDoubt; ///< the fees do not come to what was paid
    Noted costless;    ///< shares that came in without a price
    Noted purchases;
    Noted belowALot; ///< of these, with fewer than an order may have

    QString account;      ///< empty when the statement names none
    QStringList holders;  ///< shareholder's codes, where it tells no account
    QStringList accounts; ///< all that it names
    std::optional<StatedCash> cash;
    std::optional<CashDisagreement> cashDisagreement;
};

} // namespace TradeModule
