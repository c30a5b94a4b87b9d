#pragma once

#include "trademodule/import/Allotments.h"
#include "trademodule/import/EntryReader.h"
#include "trademodule/import/Reversals.h"
#include "trademodule/import/StatementContents.h"
#include "trademodule/import/TableHeader.h"

#include <QSet>

#include <optional>

namespace TradeModule {

/// Collects what the lines of a statement say, one after the other.
class RowCollector
{
public:
    /// The options stay the caller's and outlive this object.
    explicit RowCollector(const ReadOptions &options) : m_options(options), m_entries(options) {}

    /// An Error when the statement as a whole cannot be read.
    void take(const SheetRow &row);
    /// To be called once, after the last line.
    StatementContents finish();

private:
    bool takeHeader(const SheetRow &row);
    void begin(const TableHeader &header);
    void beginSheet(const QString &name);
    void endSheet();
    bool goesOn(const SheetRow &row) const;
    QStringList cellsOf(const SheetRow &row) const;
    void takeEntry(const SheetRow &row);
    bool isOfOtherAccount(const StatementRow &row);
    bool takeTitle(const SheetRow &row);
    QStringList namedAccounts() const;
    void noteAccount(const QString &account);
    void noteSign(const StatementRow &row);
    void keep(const Entry &entry, const StatementRow &row, int line);
    void keepShares(const Entry &entry, int line, uint fingerprint);
    void keepMoney(const MoneyEntry &money);
    void noteName(const StatementRow &row, const Execution &execution);
    void noteCash(const Entry &entry, int line, TradingDate date, ClockTime time);
    void noteKind(const Entry &entry, int line);
    void noteNearMiss(const SheetRow &row);
    void refuse(int line, const QString &reason, const QString &column = {});
    void finishAllotments();
    void finishReversals();
    void finishOrder();
    void finishDays();
    void finishAccount();
    void refuseSeveralAccounts() const;
    void refuseOtherAccounts() const;

    const ReadOptions &m_options;
    EntryReader m_entries;
    std::optional<TableHeader> m_header;
    bool m_isInOtherTable = false;
    QString m_sheet;
    std::optional<TableHeader> m_formerHeader; ///< of the sheet before
    bool m_isSheetUsed = false;                ///< it has rows, whatever they are
    bool m_hadHeader = false;
    bool m_hasRows = false;
    bool m_hasNegativeNet = false;
    bool m_hasUnsignedBuy = false;
    StatementColumns m_nearMiss; ///< before a header: the columns of the line that comes nearest to one
    ListedEntries m_listed;
    Allotments m_allotments;
    Reversals m_reversals;
    CashCheck m_cashCheck;
    QStringList m_accounts; ///< that the statement names, by what m_accountColumn is
    Column m_accountColumn = Column::Account;
    QString m_lastAccountCell;
    bool m_isOtherAccount = false;        ///< what it names is not chosen
    QHash<QString, QStringList> m_titles; ///< accounts that lines of text name, by what they are called
    QHash<QString, QString> m_titleAbove; ///< the last ones
    bool m_isTitleChosen = false;         ///< one of these is
    QSet<QString> m_moneySeen;
    std::optional<StatedCash> m_firstCash; ///< of the newest day, as the list has it
    std::optional<StatedCash> m_lastCash;  ///< the same
    QHash<SecurityId, TradingDate> m_nameDays;
    StatementContents m_contents;
};

} // namespace TradeModule
