#include "terminal/bars/BarsCommand.h"

#include "terminal/bars/BarImport.h"
#include "terminal/bars/BarImportWords.h"
#include "terminal/bars/BarsTalk.h"
#include "terminal/bars/LedgerComparison.h"
#include "terminal/bars/LedgerFills.h"
#include "trading/HiddenPasswords.h"
#include "trading/PrintableText.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QTextStream>

#include <algorithm>
#include <cstdio>
#include <unistd.h>

namespace Terminal {

namespace {

enum ExitCode { Succeeded = 0, Failed = 1, WrongUsage = 2 };

QString text(const char *source)
{
    return QCoreApplication::translate("BarsCommand", source);
}

void print(const QString &line)
{
    std::printf("%s\n", qUtf8Printable(Trading::printableLines(line)));
}

int refuse(const QString &reason, ExitCode code)
{
    std::fflush(stdout);
    std::fprintf(stderr, "tradeterminal: %s\n", qUtf8Printable(Trading::printableLines(reason)));
    return code;
}

void addOptions(QCommandLineParser *parser)
{
    parser->setApplicationDescription(text(
        "bars import: takes files of bars of days or minutes, whatever their columns are called, into a data "
        "folder. Shows them first; writes with --yes, or when you say so."));
    parser->addPositionalArgument(QStringLiteral("FILE..."), text("Files with bars of one security each."),
                                  QStringLiteral("bars import FILE..."));
    parser->addOptions({
        {QStringLiteral("data"), text("Data folder to write into; made if it is not there."),
         QStringLiteral("DIR")},
        {QStringLiteral("code"), text("Security of a file that does not name it, e.g. 600519.SH."),
         QStringLiteral("CODE")},
        {QStringLiteral("name"), text("Name of the security."), QStringLiteral("NAME")},
        {QStringLiteral("volume"), text("Unit of a volume that nothing tells: shares or lots."),
         QStringLiteral("UNIT")},
        {QStringLiteral("day"), text("Day of minutes that have none."), QStringLiteral("YYYYMMDD")},
        {QStringLiteral("replace"),
         text("Replaces a file in the folder as a whole; else its other days stay.")},
        {QStringLiteral("ledger"), text("Compares the bars with the trades of this ledger."),
         QStringLiteral("FILE")},
        {QStringLiteral("module"), text("Program of the trading module, which reads the ledger."),
         QStringLiteral("PATH")},
        {QStringLiteral("lang"), text("zh or en."), QStringLiteral("LANGUAGE")},
        {QStringLiteral("yes"), text("Writes without asking.")},
        {QStringLiteral("json"), text("Speaks with a program: see docs/terminal.md.")},
    });
    parser->addHelpOption();
}

/// Returns what an option must be.
QString takeOptions(const QCommandLineParser &parser, BarImportOptions *options)
{
    options->replacesAll = parser.isSet(QStringLiteral("replace"));
    for (const auto &option :
         {QStringLiteral("name"), QStringLiteral("code"), QStringLiteral("volume"), QStringLiteral("day")}) {
        const QString problem =
            parser.isSet(option) ? takeImportOption(option, parser.value(option), options) : QString();
        if (!problem.isEmpty()) {
            return problem;
        }
    }
    return {};
}

void printRows(const BarSheet &sheet)
{
    for (const QByteArray &row : previewRows(sheet)) {
        print(QStringLiteral("    ") + QString::fromUtf8(row));
    }
}

void printPlan(const QString &file, const BarImportPlan &plan, const LedgerSays &ledger)
{
    constexpr std::size_t mostNamed = 5;
    print(file);
    print(QStringLiteral("  %1 %2").arg(SecurityCode{plan.security.code, plan.security.market}.text(),
                                        plan.security.name));
    print(QStringLiteral("  ") + rangeText(plan.sheet));
    print(QStringLiteral("  ") + unitText(plan.sheet));
    printRows(plan.sheet);
    for (const QString &remark : plan.remarks + ledger.warnings) {
        print(QStringLiteral("  ! ") + remark);
    }
    if (!ledger.summary.isEmpty()) {
        print(QStringLiteral("  ") + ledger.summary);
    }
    for (std::size_t i = 0; i < std::min(mostNamed, plan.files.size()); ++i) {
        print(QStringLiteral("  -> %1: %2").arg(plan.files[i].name, plan.files[i].change));
    }
    if (plan.files.size() > mostNamed) {
        print(text("  -> and %1 more files").arg(plan.files.size() - mostNamed));
    }
}

/// An address with a password comes by the environment, where others do not read it.
LedgerOfTrades ledgerOf(const QCommandLineParser &parser, const QString &programFolder)
{
    const QString option = QStringLiteral("ledger");
    return {parser.isSet(QStringLiteral("module"))
                ? parser.value(QStringLiteral("module"))
                : QDir(programFolder).filePath(QStringLiteral("trademodule")),
            parser.isSet(option) ? parser.value(option) : qEnvironmentVariable(Trading::ledgerVariable)};
}

bool userAgrees()
{
    if (isatty(STDIN_FILENO) == 0) {
        return false;
    }
    std::printf("%s", qUtf8Printable(text("Write this? [y/N] ")));
    std::fflush(stdout);
    const QString answer = QTextStream(stdin).readLine().trimmed().toLower();
    return answer == QLatin1String("y") || answer == QLatin1String("yes") || answer == QStringLiteral(u"是");
}

int writeIfWanted(const QCommandLineParser &parser, BarImport *import)
{
    if (!parser.isSet(QStringLiteral("data"))) {
        print(text("Nothing is written: --data DIR names the folder."));
        return Succeeded;
    }
    if (!parser.isSet(QStringLiteral("yes")) && !userAgrees()) {
        print(text("Nothing is written: --yes writes."));
        return Succeeded;
    }
    const QString problem = import->write();
    if (!problem.isEmpty()) {
        return refuse(problem, Failed);
    }
    print(text("Written. See the chart: tradeterminal --data %1").arg(parser.value(QStringLiteral("data"))));
    return Succeeded;
}

int import(const QStringList &files, const QCommandLineParser &parser, const BarImportOptions &options,
           const QString &programFolder)
{
    const LedgerOfTrades ledger = ledgerOf(parser, programFolder);
    if (parser.isSet(QStringLiteral("json"))) {
        return talkAboutBars(parser.value(QStringLiteral("data")), ledger);
    }
    const QString missing = ledger.place.isEmpty() ? QString() : missingLedger(ledger.place);
    if (!missing.isEmpty()) {
        return refuse(missing, Failed);
    }
    BarImport import(parser.value(QStringLiteral("data")));
    LedgerComparison comparison(ledger, files.size(), [] { return true; });
    int refused = 0;
    for (const QString &file : files) {
        auto plan = import.plan(file, options);
        if (!plan) {
            refuse(plan.error(), Failed);
            ++refused;
            continue;
        }
        const auto compared = comparison.of(plan.value());
        if (!compared) {
            return refuse(compared.error(), Failed);
        }
        printPlan(file, plan.value(), compared.value());
    }
    if (refused > 0) {
        return refuse(text("Nothing is written: %1 of %2 files are refused.").arg(refused).arg(files.size()),
                      Failed);
    }
    return writeIfWanted(parser, &import);
}

} // namespace

int runBarsCommand(const QStringList &arguments, const QString &programFolder)
{
    QCommandLineParser parser;
    addOptions(&parser);
    if (!parser.parse(QStringList(QStringLiteral("tradeterminal bars")) + arguments)) {
        return refuse(parser.errorText(), WrongUsage);
    }
    if (parser.isSet(QStringLiteral("help"))) {
        print(parser.helpText());
        return Succeeded;
    }
    const QStringList words = parser.positionalArguments();
    const int leastWords = parser.isSet(QStringLiteral("json")) ? 1 : 2; // a program names its files later
    if (words.size() < leastWords || words.first() != QLatin1String("import")) {
        return refuse(text("bars wants: import FILE..."), WrongUsage);
    }
    BarImportOptions options;
    const QString problem = takeOptions(parser, &options);
    return problem.isEmpty() ? import(words.mid(1), parser, options, programFolder)
                             : refuse(problem, WrongUsage);
}

} // namespace Terminal
