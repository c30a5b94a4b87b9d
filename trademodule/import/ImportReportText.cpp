// What an import tells the person who imported.
#include "trademodule/import/StatementImport.h"

#include "trademodule/ProgramLanguage.h"

namespace TradeModule {

namespace {

QString rows(int count)
{
    return (count == 1 ? translated("%1 row") : translated("%1 rows")).arg(count);
}

QString entries(int count)
{
    return (count == 1 ? translated("%1 entry") : translated("%1 entries")).arg(count);
}

QString place(const QString &path, int line)
{
    return QStringLiteral("%1:%2").arg(path).arg(line);
}

QStringList badRowLines(const StatementContents &contents, const QString &path)
{
    constexpr int mostLines = 20;
    QStringList lines;
    for (const BadRow &row : contents.badRows) {
        if (lines.size() == mostLines) {
            break;
        }
        lines.append(QStringLiteral("%1: %2").arg(place(path, row.line), row.reason));
    }
    if (contents.badRowCount > mostLines) {
        lines.append(translated("… and %1 like these").arg(rows(contents.badRowCount - mostLines)));
    }
    return lines;
}

QStringList kindLines(const char *text, const std::map<QString, int> &kinds)
{
    QStringList lines;
    for (const auto &[kind, count] : kinds) {
        lines.append(translated(text).arg(kind, rows(count)));
    }
    return lines;
}

QStringList rowLines(const StatementContents &contents, const QString &path)
{
    QStringList lines;
    lines += kindLines(QT_TR_NOOP("shares without a trade: %1 (%2)"), contents.moves);
    lines += kindLines(QT_TR_NOOP("money: %1 (%2)"), contents.moneyKinds);
    lines += kindLines(QT_TR_NOOP("left out: %1 (%2)"), contents.leftOut);
    if (contents.shortSales.rows > 0) {
        lines.append(
            translated("kept out: %1 of short sales and their covers, the first at %2; shares that were "
                       "borrowed are not in the books")
                .arg(rows(contents.shortSales.rows), place(path, contents.shortSales.firstLine)));
    }
    if (contents.repeatedRows > 0) {
        lines.append(translated("dropped: %1 that repeat another with the same deal number")
                         .arg(rows(contents.repeatedRows)));
    }
    if (contents.equalRows > 0) {
        lines.append(
            translated("kept: %1 equal to another but without a deal number; if the file holds "
                       "them twice by mistake, take the import back with undo, remove them and import again")
                .arg(rows(contents.equalRows)));
    }
    return lines;
}

QStringList warningLines(const StatementContents &contents, const QString &path)
{
    QStringList lines;
    if (!contents.unknownColumns.isEmpty()) {
        lines.append(translated("columns that say nothing to the import: %1; see --suggest")
                         .arg(contents.unknownColumns.join(QStringLiteral(", "))));
    }
    if (contents.daysAsListed > 0) {
        lines.append(
            translated(
                "%1 days of a security have neither times nor balances nor numbers that tell the order "
                "of buys and sells: taken as listed")
                .arg(contents.daysAsListed));
    }
    if (contents.feesInDoubt.rows > 0) {
        lines.append(
            translated(
                "warning: the fees of %1 are not what the account paid beyond the amount, the first at "
                "%2")
                .arg(rows(contents.feesInDoubt.rows), place(path, contents.feesInDoubt.firstLine)));
    }
    if (contents.costless.rows > 0) {
        lines.append(
            translated("warning: %1 brought shares in without a price, the first at %2: the cost price of "
                       "these is too low")
                .arg(rows(contents.costless.rows), place(path, contents.costless.firstLine)));
    }
    return lines;
}

QStringList checkLines(const ImportReport &report, const QString &path)
{
    QStringList lines;
    if (const auto &found = report.holdingDisagreement) {
        lines.append(
            translated(
                "%1: warning: the statement holds %2 of %3 after this row, the ledger %4 (%5 securities "
                "disagree); import the earlier statements, or enter what was held before with open")
                .arg(place(path, found->line))
                .arg(found->stated)
                .arg(found->security.code)
                .arg(found->computed)
                .arg(found->securities));
    }
    if (const auto &found = report.contents.cashDisagreement) {
        lines.append(
            translated("%1: warning: the statement has %2 yuan after this row, but its rows come to %3")
                .arg(place(path, found->line), found->stated.text(), found->expected.text()));
    }
    return lines;
}

QString described(const Execution &execution)
{
    return QStringLiteral("%1 %2 %3 × %4")
        .arg(execution.date.dashedText(), execution.security.code)
        .arg(execution.quantity)
        .arg(execution.price.text());
}

QStringList doubtLines(const Booked &booked)
{
    constexpr int mostLines = 5;
    QStringList lines;
    for (const Execution &execution : booked.doubtful.mid(0, mostLines)) {
        lines.append(translated("in doubt: %1").arg(described(execution)));
    }
    lines.append(
        translated("nothing imported: the ledger has as much on these days in other pieces or under other "
                   "numbers, %1 in all; import with --same if they are the same trades, with --new if not")
            .arg(entries(booked.doubtful.size())));
    return lines;
}

QStringList bookedLines(const ImportReport &report, Ledger::Mode mode)
{
    const Booked &booked = report.booked;
    QStringList lines;
    for (const SecurityId &security : booked.unexplained) {
        lines.append(translated("warning: more of %1 was sold than came in; import the earlier statements, "
                                "too, for a right cost")
                         .arg(security.code));
    }
    if (booked.inAnotherForm > 0) {
        lines.append(
            translated("known already from another kind of export: %1").arg(entries(booked.inAnotherForm)));
    }
    if (booked.completedFees > 0) {
        lines.append(translated("completed the fees of %1 already there").arg(entries(booked.completedFees)));
    }
    if (booked.moneyAdded > 0) {
        lines.append(translated("movements of money added: %1").arg(booked.moneyAdded));
    }
    if (report.contents.cash) {
        lines.append(translated("cash by the statement on %1: %2")
                         .arg(report.contents.cash->date.dashedText(), report.contents.cash->balance.text()));
    }
    const QString line = mode == Ledger::Mode::Keep ? translated("imported %1, %2 already in the ledger")
                                                    : translated("would import %1, %2 already in the ledger");
    lines.append(line.arg(entries(booked.added)).arg(booked.alreadyThere));
    return lines;
}

} // namespace

QStringList describe(const ImportReport &report, const QString &path, const ImportOptions &options)
{
    const StatementContents &contents = report.contents;
    QStringList lines = badRowLines(contents, path) + rowLines(contents, path) +
                        warningLines(contents, path) + checkLines(report, path);
    if (!report.booked.doubtful.isEmpty()) {
        return lines + doubtLines(report.booked);
    }
    if (!contents.unknownWords.isEmpty()) {
        lines.append(translated("words that say nothing to the import: %1; see --suggest")
                         .arg(contents.unknownWords.join(QStringLiteral(", "))));
    }
    if (report.isRefused) {
        lines.append(translated("nothing imported: %1 cannot be read; correct them, or leave them out with "
                                "--skip-bad")
                         .arg(rows(contents.badRowCount)));
        return lines;
    }
    if (contents.badRowCount > 0) {
        lines.append(translated("left out: bad rows (%1)").arg(rows(contents.badRowCount)));
    }
    return lines + bookedLines(report, options.mode);
}

} // namespace TradeModule
