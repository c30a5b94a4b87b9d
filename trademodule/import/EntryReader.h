#pragma once

#include "trademodule/import/Entry.h"
#include "trademodule/import/EntryAmounts.h"
#include "trademodule/import/ReadOptions.h"
#include "trademodule/import/SecurityOfRow.h"
#include "trademodule/import/StatementRow.h"

namespace TradeModule {

/// Reads the entries of a statement, one row after the other.
class EntryReader
{
public:
    /// The options stay the caller's and outlive this object.
    explicit EntryReader(const ReadOptions &options)
        : m_options(options),
          m_securities(options.securitiesByName)
    {
    }

    /// An Error says why the row cannot be read.
    Entry read(const StatementRow &row);

    /// Words that said nothing, for a profile.
    const QStringList &unknownWords() const { return m_unknownWords; }

private:
    /// What a word says, and whether it says that an earlier entry is taken back.
    struct Meaning
    {
        std::optional<BusinessKind> kind;
        bool isReversal = false;
    };

    Entry readEntry(const StatementRow &row);
    Entry readAs(const BusinessKind &kind, const QString &word, const StatementRow &row);
    Entry readReversal(const BusinessKind &kind, const QString &word, const StatementRow &row);
    BusinessKind kindOf(const StatementRow &row, QStringList *words);
    const Meaning &meaningOf(const QString &word);
    std::optional<BusinessKind> kindOfWords(const StatementRow &row, const QStringList &words);
    QStringList wordsOf(const StatementRow &row) const;

    void readShares(const StatementRow &row, Entry *entry);
    NamedSecurity securityOf(const StatementRow &row, const Entry &entry);
    void readTrade(const StatementRow &row, const NamedSecurity &security, Side side, Entry *entry);
    void readMove(const StatementRow &row, const NamedSecurity &security, Side side, Entry *entry);
    void readWithoutPrice(const StatementRow &row, const NamedSecurity &security, Side side, Entry *entry);
    void readMoney(const StatementRow &row, Entry *entry);
    Execution begin(const StatementRow &row, const NamedSecurity &security, Side side);
    void readBalances(const StatementRow &row, Entry *entry);

    TradingDate dateOf(const StatementRow &row);
    ClockTime timeOf(const StatementRow &row) const;

    const ReadOptions &m_options;
    SecurityReader m_securities;
    QHash<QString, Meaning> m_meanings; // by word: a statement has few
    QStringList m_unknownWords;
    QString m_dateCell; // the last one read: the next is most often of the same day
    std::optional<TradingDate> m_date;
};

} // namespace TradeModule
