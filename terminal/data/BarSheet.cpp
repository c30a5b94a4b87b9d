#include "terminal/data/BarSheet.h"

#include "terminal/data/AmountCheck.h"
#include "terminal/data/BarChecks.h"
#include "terminal/data/BarRows.h"
#include "terminal/data/FileNameWords.h"
#include "terminal/data/TradingHours.h"
#include "terminal/data/Utf8Text.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace Terminal {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("BarSheet", source);
}

LineProblem missingColumns(const BarHeader &header)
{
    const QStringList missing = header.columns.missing();
    return missing.isEmpty()
               ? LineProblem()
               : LineProblem{header.lines,
                             text("the columns %1 are missing").arg(missing.join(QStringLiteral(", ")))};
}

bool isBefore(const Bar &a, const Bar &b)
{
    return std::pair(a.date, a.minute) < std::pair(b.date, b.minute);
}

void reverse(BarRows *rows)
{
    std::reverse(rows->bars.begin(), rows->bars.end());
    std::reverse(rows->lines.begin(), rows->lines.end());
    std::reverse(rows->amounts.begin(), rows->amounts.end());
    std::reverse(rows->previousCloses.begin(), rows->previousCloses.end());
}

QString shownTime(const BarRows &rows, const Bar &bar)
{
    const QString day = dayOf(bar).dashedText();
    return rows.haveTimes ? day + QLatin1Char(' ') + endOf(bar).colonText().left(5) : day;
}

/// Turns newest first into oldest first. Each row must be later than the one before, or earlier.
LineProblem putInOrder(BarRows *rows)
{
    const bool isNewestFirst = isBefore(rows->bars.back(), rows->bars.front());
    for (std::size_t i = 1; i < rows->bars.size(); ++i) {
        const Bar &bar = rows->bars[i];
        const Bar &before = rows->bars[i - 1];
        if (isNewestFirst ? !isBefore(bar, before) : !isBefore(before, bar)) {
            return {rows->lines[i], (isNewestFirst ? text("%1 is not earlier than the row before")
                                                   : text("%1 is not later than the row before"))
                                        .arg(shownTime(*rows, bar))};
        }
    }
    if (isNewestFirst) {
        reverse(rows);
    }
    return {};
}

/// Some files of days have a time as well, always the same.
bool areDaysWithATime(const Bars &bars)
{
    const int minute = bars.front().minute;
    const bool isSame =
        std::all_of(bars.begin(), bars.end(), [minute](const Bar &bar) { return bar.minute == minute; });
    return isSame && (minute == 0 || bars.size() > 1);
}

void dropTimes(BarRows *rows)
{
    rows->haveTimes = false;
    for (Bar &bar : rows->bars) {
        bar.minute = 0;
    }
}

bool hasMinute(const Bars &bars, int minute)
{
    return std::any_of(bars.begin(), bars.end(), [minute](const Bar &bar) { return bar.minute == minute; });
}

/// Some files name a minute by its begin: then 13:00 is one, and neither half of the day has its last.
bool areNamedByTheirBegin(const Bars &bars)
{
    return hasMinute(bars, auctionMinute) && hasMinute(bars, 13 * 60) &&
           hasMinute(bars, lastTradingMinute - 1) && !hasMinute(bars, 11 * 60 + 30) &&
           !hasMinute(bars, lastTradingMinute);
}

/// Shares are traded at the closing price after the market, on more boards and at other times from one year
/// to the next: a later minute is none of a chart, whatever it holds.
bool isAfterClose(const Bar &bar)
{
    return bar.minute > lastTradingMinute;
}

template <typename Value>
void keep(const std::vector<bool> &kept, std::vector<Value> *values)
{
    std::size_t next = 0;
    for (std::size_t i = 0; i < values->size(); ++i) {
        if (kept[i]) {
            (*values)[next++] = (*values)[i];
        }
    }
    values->resize(values->empty() ? 0 : next);
}

/// Takes the minutes after the close away; returns how many.
int dropAfterClose(BarRows *rows)
{
    std::vector<bool> kept;
    for (const Bar &bar : rows->bars) {
        kept.push_back(!isAfterClose(bar));
    }
    keep(kept, &rows->bars);
    keep(kept, &rows->lines);
    keep(kept, &rows->amounts);
    return static_cast<int>(std::count(kept.begin(), kept.end(), false));
}

LineProblem outsideTradingHours(const BarRows &rows)
{
    for (std::size_t i = 0; i < rows.bars.size(); ++i) {
        if (!isTradingMinute(rows.bars[i].minute)) {
            return {rows.lines[i], text("the time %1 is outside of the trading hours")
                                       .arg(endOf(rows.bars[i]).colonText().left(5))};
        }
    }
    return {};
}

LineProblem settleMinutes(BarRows *rows, BarSheet *sheet)
{
    if (!rows->haveTimes || areDaysWithATime(rows->bars)) {
        dropTimes(rows);
        return {};
    }
    sheet->isOfMinutes = true;
    rows->previousCloses.clear(); // of the day, in files of minutes
    if (areNamedByTheirBegin(rows->bars)) {
        for (Bar &bar : rows->bars) {
            ++bar.minute;
        }
    }
    sheet->afterClose = dropAfterClose(rows);
    return rows->bars.empty() ? LineProblem{1, text("no bar is of the trading hours")}
                              : outsideTradingHours(*rows);
}

QString sayUnit()
{
    return text("nothing says whether the volume is in shares or in lots: import the file with --volume "
                "shares or --volume lots");
}

/// The unit by the amounts; by what is told where they tell nothing.
LineProblem settleByAmounts(const BarRows &rows, std::optional<VolumeUnit> told, BarSheet *sheet)
{
    const auto check = [&](std::optional<VolumeUnit> named) {
        return checkAmounts(rows.bars, rows.amounts, {named, sheet->kind, sheet->prices});
    };
    const AmountCheck checked = check(told);
    if (checked.wrongBar) {
        return {rows.lines[*checked.wrongBar],
                text("amount ÷ volume is far from the prices: is a decimal point in the wrong place?")};
    }
    if (checked.unit) {
        sheet->volumeUnit = *checked.unit;
        sheet->volumeEvidence = VolumeEvidence::Amounts;
        sheet->prices = checked.isAdjusted ? PriceKind::Adjusted : sheet->prices;
        return {};
    }
    if (told && check({}).unit) {
        return {
            rows.lines.front(),
            text("the volume is said to be in %1, but amount ÷ volume is no such price").arg(titleOf(*told))};
    }
    return told ? LineProblem() : LineProblem{rows.lines.front(), sayUnit()};
}

QString orExample(const QString &proposed, const char *example)
{
    return proposed.isEmpty() ? QLatin1String(example) : proposed;
}

/// Of a file that does not say the security either, both are asked at once.
QString sayDay(const QString &path, bool isSecurityKnown)
{
    const QString day = orExample(dayInName(path), "20240131");
    return isSecurityKnown ? text("nothing says which day these times are of: name it with --day, e.g. --day "
                                  "%1")
                                 .arg(day)
                           : text("nothing says which day these times are of, nor which security: name them "
                                  "with --day and --code, e.g. --day %1 --code %2")
                                 .arg(day, orExample(codeInName(path), "600519.SH"));
}

bool isWithoutVolume(const Bars &bars)
{
    return std::all_of(bars.begin(), bars.end(), [](const Bar &bar) { return bar.volume == 0; });
}

LineProblem settleVolume(const BarRows &rows, const BarHeader &header, const BarHints &hints, BarSheet *sheet)
{
    const auto named = header.columns.namedUnit();
    if (named && hints.volume && named != hints.volume) {
        return {header.lines, text("the header says that the volume is in %1").arg(titleOf(*named))};
    }
    const auto told = named ? named : hints.volume;
    sheet->volumeUnit = told.value_or(VolumeUnit::Shares);
    sheet->volumeEvidence = named  ? VolumeEvidence::Header
                            : told ? VolumeEvidence::Told
                                   : VolumeEvidence::OwnForm;
    const bool hasAmounts =
        std::any_of(rows.amounts.begin(), rows.amounts.end(), [](double a) { return a > 0; });
    if (hasAmounts) {
        return settleByAmounts(rows, told, sheet);
    }
    const bool isKnown = told || header.columns.isOwnForm() || isWithoutVolume(rows.bars);
    return isKnown ? LineProblem() : LineProblem{rows.lines.front(), sayUnit()};
}

/// Shares are whole; a part of one is another unit, another column, or a decimal point in the wrong place.
LineProblem countInShares(BarRows *rows, VolumeUnit unit, Trading::SecurityKind kind)
{
    constexpr double noise = 1e-3; // of numbers that are no binary fractions
    constexpr double most = 1e12;  // a day of the whole market is a tenth of it
    for (std::size_t i = 0; i < rows->bars.size(); ++i) {
        const double shares = rows->bars[i].volume * sharesIn(unit, kind);
        if (std::abs(shares - std::round(shares)) > noise) {
            return {rows->lines[i],
                    text("the volume, in %1, is no whole number of shares").arg(titleOf(unit))};
        }
        if (shares > most) {
            return {rows->lines[i],
                    text("the volume, in %1, comes to more shares than there are").arg(titleOf(unit))};
        }
        rows->bars[i].volume = std::round(shares);
    }
    return {};
}

/// A market that one of file, user and folder leaves out is the others'.
Trading::SecurityKind kindFor(std::optional<SecurityCode> security, const BarHints &hints)
{
    if (!security) {
        return Trading::SecurityKind::MainShare;
    }
    if (!security->market && hints.security) {
        security->market = hints.security->market;
    }
    if (!security->market && hints.markets.contains(security->digits)) {
        security->market = hints.markets.value(security->digits);
    }
    return security->kind();
}

LineProblem settleSecurity(const BarRows &rows, const BarHeader &header, const BarHints &hints,
                           BarSheet *sheet)
{
    sheet->security = rows.security ? rows.security : header.security;
    sheet->kind = kindFor(sheet->security ? sheet->security : hints.security, hints);
    sheet->name = rows.name.isEmpty() ? header.name : rows.name;
    const bool isAnother = sheet->security && hints.security && !sheet->security->agreesWith(*hints.security);
    return isAnother
               ? LineProblem{header.lines + 1, text("these are bars of %1, not of %2")
                                                   .arg(sheet->security->text(), hints.security->text())}
               : LineProblem();
}

PriceKind priceKind(const BarRows &rows, const BarHeader &header)
{
    const bool isBelowZero =
        std::any_of(rows.bars.begin(), rows.bars.end(), [](const Bar &bar) { return bar.low <= 0; });
    if (isBelowZero) {
        return PriceKind::Adjusted;
    }
    return rows.prices == PriceKind::Unknown ? header.prices : rows.prices;
}

/// Makes a sheet of rows; each step may find a reason not to.
LineProblem settle(BarRows *rows, const BarHeader &header, const BarHints &hints, BarSheet *sheet)
{
    LineProblem problem = settleSecurity(*rows, header, hints, sheet);
    if (!problem) {
        problem = putInOrder(rows);
    }
    if (!problem) {
        problem = settleMinutes(rows, sheet);
    }
    if (!problem) {
        problem = problemAmong(*rows, sheet->kind);
    }
    sheet->prices = priceKind(*rows, header);
    if (!problem) {
        problem = settleVolume(*rows, header, hints, sheet);
    }
    if (!problem) {
        problem = countInShares(rows, sheet->volumeUnit, sheet->kind);
    }
    sheet->bars = std::move(rows->bars);
    return problem;
}

QString located(const QString &path, const LineProblem &problem, int count)
{
    const QString more = count > 1 ? text("; %1 more lines have a problem").arg(count - 1) : QString();
    return path + QStringLiteral(":%1: ").arg(problem.line) + problem.what + more;
}

} // namespace

Loaded<BarSheet> readBarSheet(const QByteArray &bytes, const QString &path, const BarHints &hints)
{
    const auto failure = [&path](const LineProblem &problem, int count = 1) {
        return Loaded<BarSheet>::failure(located(path, problem, count));
    };
    const auto content = utf8Of(bytes);
    if (!content) {
        return failure({1, text("this is no text in UTF-8, UTF-16 or GB18030; save a workbook as CSV")});
    }
    std::string_view rest = viewOf(*content);
    const BarHeader header = takeBarHeader(&rest);
    if (header.problem) {
        return failure(header.problem);
    }
    if (const LineProblem problem = missingColumns(header)) {
        return failure(problem);
    }
    BarRows rows = readBarRows(rest, header, hints.day);
    if (rows.lackDay) {
        const bool isSecurityKnown =
            hints.security || header.security || !header.columns.codePlaces().empty();
        return failure({rows.problem.line, sayDay(path, isSecurityKnown)});
    }
    if (rows.problem) {
        return failure(rows.problem, rows.problems);
    }
    if (rows.bars.empty()) {
        return Loaded<BarSheet>::failure(text("%1: holds no bars").arg(path));
    }
    BarSheet sheet;
    sheet.notTraded = rows.notTraded;
    sheet.unusedColumns = header.columns.unknown();
    const LineProblem problem = settle(&rows, header, hints, &sheet);
    return problem ? failure(problem) : Loaded<BarSheet>(std::move(sheet));
}

} // namespace Terminal
