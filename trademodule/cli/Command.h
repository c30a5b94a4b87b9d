#pragma once

#include "trademodule/ledger/Ledger.h"

#include <QCommandLineParser>

#include <optional>
#include <vector>

namespace TradeModule {

class ProgramLanguage;

/// How a program ends.
enum ExitCode { Succeeded = 0, Failed = 1, WrongUsage = 2 };

/// What every command gets: its parsed command line.
class Invocation
{
public:
    /// Both must outlive it.
    Invocation(const QCommandLineParser *parser, ProgramLanguage *language)
        : m_parser(parser),
          m_language(language)
    {
    }

    /// The language of the program, which a command may change.
    ProgramLanguage *language() const { return m_language; }

    bool isSet(const QString &option) const { return m_parser->isSet(option); }
    QString value(const QString &option) const { return m_parser->value(option); }
    QStringList arguments() const { return m_parser->positionalArguments().mid(1); }

    /// The value of --bus; empty when it was not given.
    QString bus() const { return value(QStringLiteral("bus")); }
    /// The value of --ledger, else of the environment's TRADEMODULE_LEDGER; a UsageError when there is none.
    QString ledger() const;
    /// The same for a command that shows or changes what is there: a mistyped name must not be a new account.
    /// An Error, which says how a ledger is made, where there is none.
    QString existingLedger() const;
    /// The same for a command that begins a ledger where there is none; it says so on standard error.
    QString ledgerOrNew() const;
    /// The value of an option that holds a date yyyymmdd, if it was given; a UsageError for anything else.
    std::optional<TradingDate> date(const QString &option) const;
    /// The days from --from to --to, both included; all where they were not given. A UsageError when they are
    /// in the wrong order.
    DateRange days() const;
    /// The options --from and --to, for commands that ask for days().
    static QCommandLineOption firstDayOption();
    static QCommandLineOption lastDayOption();
    /// The arguments, `count` of them; a UsageError, asking for `what`, for any other number.
    QStringList arguments(int count, const QString &what) const;

private:
    const QCommandLineParser *const m_parser;
    ProgramLanguage *const m_language;
};

/// One command of the program.
struct Command
{
    QString name;
    QString summary;
    QString argumentSyntax; ///< of the arguments after the name; may be empty
    QList<QCommandLineOption> options;
    int (*run)(const Invocation &invocation);
};

/// All commands; the first is the default.
const std::vector<Command> &commands();

/// Runs the program with its command line, the program's name first. Returns how it ends; without exchange
/// time it does nothing but say so, for no date in the ledger would be sure.
int runProgram(const QStringList &arguments, bool hasExchangeTime);

} // namespace TradeModule
