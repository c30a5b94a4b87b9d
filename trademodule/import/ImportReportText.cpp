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

QStringList kindLines(const StatementContents &contents, Outcome outcome, const char *text)
{
    QStringList lines;
    const auto kinds = contents.kinds.find(outcome);
    if (kinds != contents.kinds.end()) {
        for (const auto &[kind, count] : kinds->second) {
            lines.append(translated(text).arg(translated(kind.toLatin1().constData()), rows(count)));
        }
    }
    return lines;
}

QStringList rowLines(const StatementContents &contents)
{
    return kindLines(contents, Outcome::Shares, QT_TR_NOOP("shares without a trade: %1 (%2)")) +
           kindLines(contents, Outcome::Money, QT_TR_NOOP("money: %1 (%2)")) +
           kindLines(contents, Outcome::Nothing, QT_TR_NOOP("left out: %1 (%2)"));
}

/// Of rows that are not taken as they stand.
void addRowRemarks(const StatementContents &contents, QVector<Remark> *remarks)
{
    if (const Noted &found = contents.shortSales; found.rows > 0) {
        remarks->append({found.firstLine,
                         translated("kept out: %1 of short sales and their covers, beginning with this one; "
                                    "shares that were borrowed are not in the books")
                             .arg(rows(found.rows))});
    }
    if (const Noted &found = contents.reversals; found.rows > 0) {
        remarks->append(
            {found.firstLine,
             translated("neither of two counts: %1, beginning with this one, that take an earlier row "
                        "back; if another import told that row alone, undo it")
                 .arg(rows(found.rows))});
    }
    if (contents.areAmountsUnsigned) {
        remarks->append({0, translated("no net amount has a sign: what came and what went is taken from the "
                                       "words, and what was bought and sold checked against the amounts")});
    }
    if (!contents.sheetsLeftOut.isEmpty()) {
        remarks->append({0, translated("left out: sheets without a header of entries: %1")
                                .arg(contents.sheetsLeftOut.join(QStringLiteral(", ")))});
    }
    if (contents.repeatedRows > 0) {
        remarks->append({0, translated("dropped: %1 that repeat another with the same deal number")
                                .arg(rows(contents.repeatedRows))});
    }
    if (contents.equalRows > 0) {
        remarks->append(
            {0,
             translated("kept: %1 equal to another but without a deal number; if the file holds "
                        "them twice by mistake, take the import back with undo, remove them and import again")
                 .arg(rows(contents.equalRows))});
    }
    if (contents.daysAsListed > 0) {
        remarks->append(
            {0, translated(
                    "%1 days of a security have neither times nor balances nor numbers that tell the order "
                    "of buys and sells: taken as listed")
                    .arg(contents.daysAsListed)});
    }
}

/// Of what the import does not know, or cannot make fit.
void addDoubts(const StatementContents &contents, QVector<Remark> *remarks)
{
    if (!contents.unknownColumns.isEmpty()) {
        remarks->append({0, translated("columns that say nothing to the import: %1; see --suggest")
                                .arg(contents.unknownColumns.join(QStringLiteral(", ")))});
    }
    if (!contents.unknownWords.isEmpty()) {
        remarks->append({0, translated("words that say nothing to the import: %1; see --suggest")
                                .arg(contents.unknownWords.join(QStringLiteral(", ")))});
    }
    if (const Noted &found = contents.feesInDoubt; found.rows > 0) {
        remarks->append({found.firstLine, translated("warning: the fees of %1, beginning with this one, are "
                                                     "not what the account paid beyond the amount")
                                              .arg(rows(found.rows))});
    }
    // An order of a lot may be dealt in pieces, but most are not.
    if (const Noted &found = contents.belowALot; found.rows * 2 > contents.purchases.rows) {
        remarks->append({found.firstLine,
                         translated("warning: %1 of %2 purchases, beginning with this one, are of less than "
                                    "a lot: are the quantities in lots (手), or exchanged with the prices?")
                             .arg(found.rows)
                             .arg(contents.purchases.rows)});
    }
    if (const Noted &found = contents.costless; found.rows > 0) {
        remarks->append(
            {found.firstLine, translated("warning: %1, beginning with this one, brought shares in "
                                         "without a price: their cost price is too low")
                                  .arg(rows(found.rows))});
    }
}

/// Of what the statement says at the end.
void addDisagreements(const ImportReport &report, QVector<Remark> *remarks)
{
    if (const auto &found = report.holdingDisagreement) {
        remarks->append(
            {found->line,
             translated("warning: the statement holds %1 of %2 after this row, the ledger %3 (%4 securities "
                        "disagree); import the earlier statements, or enter what was held before with open")
                 .arg(found->stated)
                 .arg(found->security.code)
                 .arg(found->computed)
                 .arg(found->securities)});
    }
    if (const auto &found = report.contents.cashDisagreement) {
        remarks->append(
            {found->line,
             translated("warning: the statement has %1 yuan after this row, but its rows come to %2")
                 .arg(found->stated.text(), found->expected.text())});
    }
    for (const SecurityId &security : report.booked.unexplained) {
        remarks->append(
            {0, translated("warning: more of %1 was sold than came in; import the earlier statements, "
                           "too, for a right cost")
                    .arg(security.code)});
    }
}

QStringList remarkLines(const ImportReport &report, const QString &path)
{
    QStringList lines;
    for (const Remark &remark : remarksOn(report)) {
        lines.append(remark.line > 0 ? QStringLiteral("%1: %2").arg(place(path, remark.line), remark.text)
                                     : remark.text);
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
    return lines;
}

QStringList bookedLines(const ImportReport &report, Ledger::Mode mode)
{
    const Booked &booked = report.booked;
    const bool isKept = mode == Ledger::Mode::Keep;
    QStringList lines;
    if (booked.inAnotherForm > 0) {
        lines.append(
            translated("known already from another kind of export: %1").arg(entries(booked.inAnotherForm)));
    }
    if (booked.completedFees > 0) {
        lines.append((isKept ? translated("completed the fees of %1 already there")
                             : translated("would complete the fees of %1 already there"))
                         .arg(entries(booked.completedFees)));
    }
    if (booked.moneyAdded > 0) {
        lines.append((isKept ? translated("movements of money added: %1")
                             : translated("movements of money that would be added: %1"))
                         .arg(booked.moneyAdded));
    }
    if (report.contents.cash) {
        lines.append(translated("cash by the statement on %1: %2")
                         .arg(report.contents.cash->date.dashedText(), report.contents.cash->balance.text()));
    }
    const QString line = isKept ? translated("imported %1, %2 already in the ledger")
                                : translated("would import %1, %2 already in the ledger");
    lines.append(line.arg(entries(booked.added)).arg(booked.alreadyThere));
    return lines;
}

} // namespace

QVector<Remark> remarksOn(const ImportReport &report)
{
    QVector<Remark> remarks;
    addRowRemarks(report.contents, &remarks);
    addDoubts(report.contents, &remarks);
    addDisagreements(report, &remarks);
    return remarks;
}

QString refusalOf(const ImportReport &report)
{
    if (!report.booked.doubtful.isEmpty()) {
        return translated(
                   "nothing imported: the ledger has as much on these days in other pieces or under other "
                   "numbers, %1 in all; import with --same if they are the same trades, with --new if not")
            .arg(entries(report.booked.doubtful.size()));
    }
    return translated("nothing imported: %1 cannot be read; correct them, or leave them out with "
                      "--skip-bad")
        .arg(rows(report.contents.badRowCount));
}

QStringList describe(const ImportReport &report, const QString &path, const ImportOptions &options)
{
    const StatementContents &contents = report.contents;
    QStringList lines = badRowLines(contents, path) + rowLines(contents) + remarkLines(report, path);
    if (report.isRefused) {
        return lines + doubtLines(report.booked) + QStringList{refusalOf(report)};
    }
    if (contents.badRowCount > 0) {
        lines.append(translated("left out: bad rows (%1)").arg(rows(contents.badRowCount)));
    }
    return lines + bookedLines(report, options.mode);
}

} // namespace TradeModule
