#include "terminal/bars/BarsCommand.h"

#include "terminal/bars/BarImport.h"
#include "terminal/bars/LedgerFills.h"
#include "terminal/data/OwnForm.h"

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
    std::printf("%s\n", qUtf8Printable(line));
}

int refuse(const QString &reason, ExitCode code)
{
    std::fflush(stdout);
    std::fprintf(stderr, "tradeterminal: %s\n", qUtf8Printable(reason));
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
    });
    parser->addHelpOption();
}

/// Returns what an option must be.
QString takeOptions(const QCommandLineParser &parser, BarImportOptions *options)
{
    options->name = parser.value(QStringLiteral("name"));
    options->replacesAll = parser.isSet(QStringLiteral("replace"));
    options->hints.security = SecurityCode::of(parser.value(QStringLiteral("code")));
    if (parser.isSet(QStringLiteral("code")) && !options->hints.security) {
        return text("--code must be six digits, with .SH or .SZ after them: 600519.SH");
    }
    options->hints.volume = volumeUnitOf(parser.value(QStringLiteral("volume")));
    if (parser.isSet(QStringLiteral("volume")) && !options->hints.volume) {
        return text("--volume must be shares or lots");
    }
    options->hints.day = Trading::TradingDate::ofText(parser.value(QStringLiteral("day")));
    if (parser.isSet(QStringLiteral("day")) && !options->hints.day) {
        return text("--day must be a date of the form yyyymmdd");
    }
    return {};
}

QString unitName(VolumeUnit unit)
{
    switch (unit) {
    case VolumeUnit::Shares:
        return text("shares");
    case VolumeUnit::Lots:
        return text("lots");
    case VolumeUnit::TenThousandShares:
        return text("ten thousand shares");
    case VolumeUnit::TenThousandLots:
        return text("ten thousand lots");
    }
    return {};
}

QString unitText(const BarSheet &sheet)
{
    const QString unit = unitName(sheet.volumeUnit);
    switch (sheet.volumeEvidence) {
    case VolumeEvidence::OwnForm:
        return text("volume in %1, as files of this form have it").arg(unit);
    case VolumeEvidence::Header:
        return text("volume in %1, as the header says").arg(unit);
    case VolumeEvidence::Amounts:
        return text("volume in %1, as amount ÷ price says").arg(unit);
    case VolumeEvidence::Told:
        return text("volume in %1, as you say").arg(unit);
    }
    return {};
}

QString rangeText(const BarSheet &sheet)
{
    return (sheet.isOfMinutes ? text("%1 bars of minutes, %2 to %3") : text("%1 bars of days, %2 to %3"))
        .arg(QString::number(sheet.bars.size()), dayOf(sheet.bars.front()).dashedText(),
             dayOf(sheet.bars.back()).dashedText());
}

/// The first rows and the last one, as the folder will have them.
void printRows(const BarSheet &sheet)
{
    constexpr std::size_t firstRows = 3;
    Bars shown(sheet.bars.begin(),
               sheet.bars.begin() + static_cast<std::ptrdiff_t>(std::min(firstRows, sheet.bars.size())));
    if (sheet.bars.size() > firstRows) {
        shown.push_back(sheet.bars.back());
    }
    const QByteArray rows = sheet.isOfMinutes ? minuteText(shown) : dailyText(shown);
    for (const QByteArray &row : rows.trimmed().split('\n')) {
        print(QStringLiteral("    ") + QString::fromUtf8(row));
    }
}

/// What the trades of a ledger say of the bars.
struct LedgerSays
{
    QStringList warnings;
    QString summary; ///< without warnings
};

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

/// Of minutes a ledger says nothing: its times need not be the exchange's.
Loaded<LedgerSays> comparedWithLedger(const QCommandLineParser &parser, const QString &programFolder,
                                      const BarImportPlan &plan)
{
    const QString ledger = parser.value(QStringLiteral("ledger"));
    if (ledger.isEmpty() || plan.sheet.isOfMinutes) {
        return LedgerSays();
    }
    const QString module = parser.isSet(QStringLiteral("module"))
                               ? parser.value(QStringLiteral("module"))
                               : QDir(programFolder).filePath(QStringLiteral("trademodule"));
    const auto fills = ledgerFills(module, ledger, plan.security.id());
    if (!fills) {
        return Loaded<LedgerSays>::failure(fills.error());
    }
    const Bars &days = plan.sheet.bars;
    const QStringList warnings = fillWarnings(days, fills.value());
    return LedgerSays{warnings, warnings.isEmpty() ? fillSummary(days, fills.value()) : QString()};
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

int writeIfWanted(const QCommandLineParser &parser, const BarImport &import)
{
    if (!parser.isSet(QStringLiteral("data"))) {
        print(text("Nothing is written: --data DIR names the folder."));
        return Succeeded;
    }
    if (!parser.isSet(QStringLiteral("yes")) && !userAgrees()) {
        print(text("Nothing is written: --yes writes."));
        return Succeeded;
    }
    const QString problem = import.write();
    if (!problem.isEmpty()) {
        return refuse(problem, Failed);
    }
    print(text("Written. See the chart: tradeterminal --data %1").arg(parser.value(QStringLiteral("data"))));
    return Succeeded;
}

int import(const QStringList &files, const QCommandLineParser &parser, const BarImportOptions &options,
           const QString &programFolder)
{
    const QString ledger = parser.value(QStringLiteral("ledger"));
    const QString missing = ledger.isEmpty() ? QString() : missingLedger(ledger);
    if (!missing.isEmpty()) {
        return refuse(missing, Failed);
    }
    BarImport import(parser.value(QStringLiteral("data")));
    int refused = 0;
    for (const QString &file : files) {
        auto plan = import.plan(file, options);
        if (!plan) {
            refuse(plan.error(), Failed);
            ++refused;
            continue;
        }
        const auto compared = comparedWithLedger(parser, programFolder, plan.value());
        if (!compared) {
            return refuse(compared.error(), Failed);
        }
        printPlan(file, plan.value(), compared.value());
    }
    if (refused > 0) {
        return refuse(text("Nothing is written: %1 of %2 files are refused.").arg(refused).arg(files.size()),
                      Failed);
    }
    return writeIfWanted(parser, import);
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
    if (words.size() < 2 || words.first() != QLatin1String("import")) {
        return refuse(text("bars wants: import FILE..."), WrongUsage);
    }
    BarImportOptions options;
    const QString problem = takeOptions(parser, &options);
    return problem.isEmpty() ? import(words.mid(1), parser, options, programFolder)
                             : refuse(problem, WrongUsage);
}

} // namespace Terminal
