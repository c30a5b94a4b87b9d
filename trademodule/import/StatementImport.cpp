#include "trademodule/import/StatementImport.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/import/TextDecoding.h"

#include <QFile>

namespace TradeModule {

namespace {

StatementContents readFile(const QString &path, const ReadOptions &options)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw Error(translated("%1: cannot be read: %2").arg(path, reasonOf(file)));
    }
    try {
        return readStatement(decodeStatement(file.readAll()), options);
    } catch (const Error &error) {
        throw Error(QStringLiteral("%1: %2").arg(path, error.reason()));
    }
}

QString rows(int count)
{
    return (count == 1 ? translated("%1 row") : translated("%1 rows")).arg(count);
}

QString entries(int count)
{
    return (count == 1 ? translated("%1 entry") : translated("%1 entries")).arg(count);
}

QStringList badRowLines(const QVector<BadRow> &badRows, const QString &path)
{
    QStringList lines;
    for (const BadRow &row : badRows) {
        lines.append(QStringLiteral("%1:%2: %3").arg(path).arg(row.line).arg(row.reason));
    }
    return lines;
}

QStringList contentLines(const StatementContents &contents)
{
    QStringList lines;
    for (const auto &[kind, count] : contents.leftOut) {
        lines.append(translated("left out: %1 (%2)").arg(kind, rows(count)));
    }
    if (contents.bonuses > 0) {
        lines.append(translated("bonus shares: %1 enlarge the holding at no cost; they are no trades")
                         .arg(rows(contents.bonuses)));
    }
    if (contents.repeatedRows > 0) {
        lines.append(translated("dropped: %1 that repeat another with the same deal number")
                         .arg(rows(contents.repeatedRows)));
    }
    if (contents.equalRows > 0) {
        lines.append(translated("kept: %1 equal to another but without a deal number; if the file holds "
                                "them twice by mistake, remove them and import into a fresh ledger")
                         .arg(rows(contents.equalRows)));
    }
    return lines;
}

QString bookedLine(const ImportReport &report, Ledger::Mode mode)
{
    const QString line = mode == Ledger::Mode::Keep ? translated("imported %1, %2 already in the ledger")
                                                    : translated("would import %1, %2 already in the ledger");
    return line.arg(entries(report.booked.added)).arg(report.booked.alreadyThere);
}

QStringList warningLines(const Booked &booked)
{
    QStringList lines;
    for (const SecurityId &security : booked.unexplained) {
        lines.append(translated("warning: more of %1 was sold than came in; import the earlier statements, "
                                "too, for a right cost")
                         .arg(security.code));
    }
    return lines;
}

} // namespace

ImportReport importStatement(const QString &path, const ImportOptions &options, Ledger *ledger,
                             const Ledger::Progress &progress)
{
    ImportReport report;
    report.contents = readFile(path, options.reading);
    report.isRefused = !report.contents.badRows.isEmpty() && !options.skipsBadRows;
    if (!report.isRefused) {
        report.booked =
            ledger->book({path, report.contents.executions, report.contents.names}, options.mode, progress);
    }
    return report;
}

QStringList describe(const ImportReport &report, const QString &path, const ImportOptions &options)
{
    QStringList lines = badRowLines(report.contents.badRows, path);
    lines += contentLines(report.contents);
    if (report.isRefused) {
        lines.append(translated("nothing imported: %1 cannot be read; correct them, or leave them out with "
                                "--skip-bad")
                         .arg(rows(report.contents.badRows.size())));
        return lines;
    }
    if (!report.contents.badRows.isEmpty()) {
        lines.append(translated("left out: bad rows (%1)").arg(rows(report.contents.badRows.size())));
    }
    lines += warningLines(report.booked);
    lines.append(bookedLine(report, options.mode));
    return lines;
}

} // namespace TradeModule
