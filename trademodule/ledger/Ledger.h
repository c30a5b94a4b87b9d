#pragma once

#include "trademodule/ledger/Database.h"
#include "trademodule/ledger/DateRange.h"
#include "trademodule/ledger/Position.h"
#include "trademodule/ledger/Statement.h"
#include "trademodule/ledger/StatementTable.h"
#include "trademodule/ledger/Transaction.h"
#include "trademodule/ledger/UncheckedReferences.h"

#include <functional>
#include <optional>

namespace TradeModule {

/// One account's trades and holdings in a database. Every change is one transaction; several
/// processes may use the same ledger. Every failure is thrown as an Error.
class Ledger
{
public:
    enum class Mode {
        Keep,
        DryRun, ///< changes are computed, told and undone
    };
    /// Called now and then with how many of the entries are written.
    using Progress = std::function<void(int done, int total)>;

    /// True when there is a ledger at `location`, of whichever version; nothing is made.
    static bool isThere(const QString &location);

    /// Opens, and makes when it is not there, the ledger at `location`: see Database. A ledger of an older
    /// program is brought up to date; for a dry run only until this object goes, and nobody else writes
    /// meanwhile.
    explicit Ledger(const QString &location, Mode mode = Mode::Keep);

    /// Adds the entries that are not there yet: a fill that occurs n times in the statement is in the
    /// ledger at least n times afterwards.
    Booked book(const Statement &statement, Mode mode, const Progress &progress = {});

    /// The recorded day that this account practises; nothing for every other account.
    std::optional<TradingDate> practisedDay() const { return m_practisedDay; }
    /// The day that it is for the account's orders: the practised one, else that of the exchange's clock.
    TradingDate today() const { return m_practisedDay.value_or(TradingDate::today()); }
    /// Makes a new ledger one for practice, in a transaction of the caller's.
    void practise(TradingDate day);

    /// What was imported, oldest first.
    QVector<ImportedStatement> imports();
    /// The import that left this mark, if it was booked and not taken back. Waits until the changes that
    /// others have begun are done: what is not there then will not come.
    std::optional<ImportedStatement> importOfMark(const QString &mark);
    /// The securities that an import added entries of.
    QVector<SecurityId> securitiesOfImport(qint64 number);
    /// Books a statement and takes imports back, both or neither; neither where the result is doubtful.
    Booked bookInPlaceOf(const QVector<qint64> &numbers, const Statement &statement);
    /// Takes an import back as a whole: the ledger is then what it would be had the import never been, with
    /// what later imports told once more. An Error when there is none of this number.
    UndoneImport undoImport(qint64 number);

    /// How the costs of holdings are reckoned; the moving average in a new ledger.
    CostMethod costMethod();
    /// Reckons all costs anew: a second or two for a million entries.
    void setCostMethod(CostMethod method);

    /// Money that moved otherwise than by trades, oldest first.
    MoneyEntries money();

    /// How the user's broker names things, as the import keeps it; empty when it keeps nothing.
    QString importProfile();

    /// The trades of a security, oldest first; other entries are none.
    Executions trades(const SecurityId &security, DateRange days);
    /// The trades of all securities, oldest first.
    Executions trades(DateRange days);
    /// Has each trade of a code on every market, or of all when it is empty, visited, oldest first: of a
    /// million, too, without keeping them. Nothing else is asked of the ledger meanwhile.
    void visitTrades(const QString &code, DateRange days,
                     const std::function<void(const Execution &)> &visit);

    Holding holding(const SecurityId &security);
    /// Shares that the entries before a day come to; less than none where earlier statements are missing.
    qint64 heldBefore(const SecurityId &security, TradingDate day);
    /// What is held on the markets of charts, by code.
    QVector<Position> positions();
    /// The same on all markets.
    QVector<Position> allPositions();

    /// True when nothing can be changed: every change fails as a LedgerError that says so.
    bool isReadOnly() const { return m_database.isReadOnly(); }

    /// See Database.
    QString shownLocation() const { return m_database.shownLocation(); }
    void setPatience(std::chrono::milliseconds patience) { m_database.setPatience(patience); }

    // For OrderBook, inside its transactions.

    Database *database() { return &m_database; }
    /// The key of a security; it is written when it is new, and so is a name that is not empty.
    qint64 registerSecurity(const SecurityId &security, const QString &name);
    /// Writes a trade and the holding after it. It need not be the latest of its security: a day that is
    /// played again has trades of its first time, and a statement may tell of later ones.
    void add(const Execution &execution);

private:
    void keepImportProfile(const QString &text);
    UndoneImport takeBack(qint64 number);
    void bookAnew(const QVector<qint64> &numbers, qint64 without);

    Database m_database;
    std::optional<TradingDate> m_practisedDay;
    std::optional<UncheckedReferences> m_unchecked; ///< around the trial
    std::optional<Transaction> m_trial;             ///< of a dry run on the tables of an older program
};

} // namespace TradeModule
