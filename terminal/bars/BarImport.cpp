#include "terminal/bars/BarImport.h"

#include "terminal/data/BarFile.h"
#include "terminal/data/BarRemarks.h"
#include "terminal/data/OwnForm.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>

namespace Terminal {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("BarImport", source);
}

const auto listName = QStringLiteral("securities.csv");

QString nameFor(const BarSheet &sheet, const Security *known, const BarImportOptions &options,
                const QString &code)
{
    const bool isNamed = known != nullptr && known->name != code;
    for (const QString &name :
         {options.name, isNamed ? known->name : QString(), sheet.name, options.names.value(code)}) {
        QString plain = name;
        plain = plain.remove(QLatin1Char(',')).trimmed();
        if (!plain.isEmpty()) {
            return plain;
        }
    }
    return code;
}

/// Which security the bars are of: as the file, the command line and the list of the folder say together.
Loaded<Security> settleSecurity(const QString &file, const BarSheet &sheet, const Securities &known,
                                const BarImportOptions &options)
{
    const auto code = sheet.security ? sheet.security : options.hints.security;
    if (!code) {
        return Loaded<Security>::failure(text("%1: the file does not say which security it is of: name it "
                                              "with --code, e.g. --code 600519.SH")
                                             .arg(file));
    }
    const Security *const listed = findSecurity(known, code->digits);
    auto market = code->market;
    if (!market && options.hints.security) {
        market = options.hints.security->market;
    }
    if (!market && listed == nullptr) {
        return Loaded<Security>::failure(
            text("%1: nothing says on which market %2 is: say --code %2.SH or --code %2.SZ")
                .arg(file, code->digits));
    }
    if (listed != nullptr && market && listed->market != *market) {
        return Loaded<Security>::failure(
            text("%1: these are bars of %2, but the folder has %3 under this code; use another folder")
                .arg(file, code->text(), SecurityCode{listed->code, listed->market}.text()));
    }
    return Security{code->digits, market ? *market : listed->market,
                    nameFor(sheet, listed, options, code->digits)};
}

bool haveSamePrices(const Bar &a, const Bar &b)
{
    constexpr double rounding = 0.0051;
    return std::abs(a.open - b.open) < rounding && std::abs(a.high - b.high) < rounding &&
           std::abs(a.low - b.low) < rounding && std::abs(a.close - b.close) < rounding;
}

/// True for about so many times the other volume as a lot has shares; one of both may be rounded to whole
/// lots.
bool isLotsAsShares(double volume, double other, double lot)
{
    constexpr double closeness = 0.01;
    const bool isNear = std::abs(volume - other * lot) <= std::max(lot, volume * closeness);
    return other > 0 && volume > other * lot / 2 && isNear;
}

/// Bars of the folder and new ones; a new one takes the place of an old one of the same day.
struct Merged
{
    Bars bars;
    int added = 0;
    int common = 0;
    // Of the common ones:
    int changed = 0;      ///< with another price or volume
    int otherPrices = 0;  ///< with another price
    int lotsToShares = 0; ///< with a lot times the volume before
    int sharesToLots = 0; ///< the other way round
};

void compare(const Bar &old, const Bar &added, double lot, Merged *merged)
{
    constexpr double lessThanAShare = 0.5;
    const bool haveOtherPrices = !haveSamePrices(old, added);
    const bool haveOtherVolumes = std::abs(old.volume - added.volume) > lessThanAShare;
    ++merged->common;
    merged->changed += haveOtherPrices || haveOtherVolumes ? 1 : 0;
    merged->otherPrices += haveOtherPrices ? 1 : 0;
    merged->lotsToShares += isLotsAsShares(added.volume, old.volume, lot) ? 1 : 0;
    merged->sharesToLots += isLotsAsShares(old.volume, added.volume, lot) ? 1 : 0;
}

Merged merge(const Bars &old, const Bars &added, double lot)
{
    std::map<std::int32_t, Bar> byDay;
    for (const Bar &bar : old) {
        byDay.emplace(bar.date, bar);
    }
    Merged merged;
    for (const Bar &bar : added) {
        const auto before = byDay.find(bar.date);
        if (before == byDay.end()) {
            ++merged.added;
        } else {
            compare(before->second, bar, lot, &merged);
        }
        byDay[bar.date] = bar;
    }
    for (const auto &[day, bar] : byDay) {
        merged.bars.push_back(bar);
    }
    return merged;
}

QString changeOf(bool isThere)
{
    return isThere ? text("replaced as a whole") : text("new");
}

QString changeOf(const Merged &merged)
{
    return text("%1 days added, %2 replaced by the same, %3 by others")
        .arg(merged.added)
        .arg(merged.common - merged.changed)
        .arg(merged.changed);
}

/// Where more than a tenth of the common days differ in one way, the two files are not of one kind.
bool areMany(int days, const Merged &merged)
{
    return days * 10 > merged.common;
}

/// Why bars of a file do not go together with those of the folder.
QString differenceOfKind(const QString &file, const Merged &merged, double lot, const QString &path)
{
    const auto say = [&](const QString &what, int days) {
        return what.arg(file, QString::number(days), QString::number(merged.common), path);
    };
    if (areMany(merged.otherPrices, merged)) {
        return say(text("%1: %2 of %3 days that are in %4, too, have other prices: is one of both adjusted? "
                        "--replace replaces the file as a whole"),
                   merged.otherPrices);
    }
    if (areMany(merged.lotsToShares, merged)) {
        return say(text("%1: %2 of %3 days that are in %4, too, have a volume %5 times as large: is this "
                        "one in shares (--volume shares), or was that one in lots? --replace replaces the "
                        "file as a whole"),
                   merged.lotsToShares)
            .arg(lot);
    }
    if (areMany(merged.sharesToLots, merged)) {
        return say(text("%1: %2 of %3 days that are in %4, too, have a volume %5 times as small: is this one "
                        "in lots (--volume lots)? --replace replaces the file as a whole"),
                   merged.sharesToLots)
            .arg(lot);
    }
    return {};
}

/// A bar of a day to come is a wrong date; the clocks of two machines may differ by a day.
QString dayToCome(const QString &file, const Bars &bars)
{
    return dayOf(bars.back()) > Trading::TradingDate::today().plusDays(1)
               ? text("%1: the last bar is of %2, a day to come").arg(file, dayOf(bars.back()).dashedText())
               : QString();
}

QStringList remarksOn(const BarSheet &sheet)
{
    QStringList remarks = barRemarks(sheet);
    if (sheet.notTraded > 0) {
        remarks.append(text("%1 rows of days without trading are left out.").arg(sheet.notTraded));
    }
    if (sheet.afterClose > 0) {
        remarks.append(text("%1 minutes after the close are left out.").arg(sheet.afterClose));
    }
    if (!sheet.unusedColumns.isEmpty()) {
        remarks.append(
            text("Columns that are not used: %1.").arg(sheet.unusedColumns.join(QStringLiteral(", "))));
    }
    return remarks;
}

using SaveFiles = std::vector<std::unique_ptr<QSaveFile>>;

/// Writes beside the file's place, so that a full disk leaves everything as it is.
QString prepare(const QString &path, const QByteArray &content, SaveFiles *files)
{
    QDir().mkpath(QFileInfo(path).path());
    auto file = std::make_unique<QSaveFile>(path);
    const bool isWritten =
        file->open(QIODevice::WriteOnly) && file->write(content) == content.size() && file->flush();
    if (!isWritten) {
        return text("%1: cannot be written: %2").arg(path, file->errorString());
    }
    files->push_back(std::move(file));
    return {};
}

/// Puts a security into a list; its new name takes the place of an old one.
void add(const Security &security, Securities *securities)
{
    const auto listed =
        std::find_if(securities->begin(), securities->end(),
                     [&security](const Security &candidate) { return candidate.code == security.code; });
    if (listed == securities->end()) {
        securities->push_back(security);
    } else {
        listed->name = security.name;
    }
}

QString commit(const SaveFiles &files)
{
    for (const auto &file : files) {
        if (!file->commit()) {
            return text("%1: cannot be written: %2").arg(file->fileName(), file->errorString());
        }
    }
    return {};
}

/// Returns which one could not be removed.
QString remove(const QStringList &files)
{
    for (const QString &path : files) {
        QFile file(path);
        if (!file.remove()) {
            return text("%1: cannot be removed: %2").arg(path, file.errorString());
        }
    }
    return {};
}

} // namespace

QString BarImport::path(const QString &name) const
{
    return QDir(m_folder).filePath(name);
}

bool BarImport::isThere(const QString &name) const
{
    return m_files.count(name) > 0 || (!m_folder.isEmpty() && QFileInfo::exists(path(name)));
}

/// The list of the folder, with what was planned before.
Loaded<Securities> BarImport::securities() const
{
    const auto listed = isThere(listName) ? readSecurities(path(listName)) : Loaded<Securities>(Securities());
    if (!listed) {
        return listed;
    }
    Securities all = listed.value();
    for (const Security &security : m_securities) {
        add(security, &all);
    }
    return all;
}

Loaded<Bars> BarImport::days(const QString &name, const QString &code) const
{
    const auto planned = m_files.find(name);
    if (planned == m_files.end()) {
        return readDailyBars(path(name), code);
    }
    const auto sheet = readBarSheet(planned->second, name, {});
    return sheet ? Loaded<Bars>(sheet.value().bars) : Loaded<Bars>::failure(sheet.error());
}

/// Returns why not.
QString BarImport::planDays(const QString &file, bool replacesAll, BarImportPlan *plan) const
{
    const QString name = QStringLiteral("daily/%1.csv").arg(plan->security.code);
    if (!isThere(name) || (replacesAll && m_files.count(name) == 0)) {
        plan->files.push_back({name, dailyText(plan->sheet.bars), changeOf(isThere(name))});
        return {};
    }
    const auto old = days(name, plan->security.code);
    if (!old) {
        return text("%1; --replace replaces this file").arg(old.error());
    }
    const auto lot = static_cast<double>(Trading::lotOf(plan->sheet.kind));
    const Merged merged = merge(old.value(), plan->sheet.bars, lot);
    const QString difference = differenceOfKind(file, merged, lot, path(name));
    if (!difference.isEmpty()) {
        return difference;
    }
    plan->files.push_back({name, dailyText(merged.bars), changeOf(merged)});
    return {};
}

void BarImport::planMinutes(BarImportPlan *plan) const
{
    const Bars &bars = plan->sheet.bars;
    for (auto first = bars.begin(); first != bars.end();) {
        const auto last =
            std::find_if(first, bars.end(), [first](const Bar &bar) { return bar.date != first->date; });
        const QString name =
            QStringLiteral("minute/%1_%2.csv").arg(plan->security.code, dayOf(*first).text());
        plan->files.push_back({name, minuteText(Bars(first, last)), changeOf(isThere(name))});
        first = last;
    }
}

void BarImport::keep(const BarImportPlan &plan)
{
    for (const PlannedFile &file : plan.files) {
        m_files[file.name] = file.content;
    }
    add(plan.security, &m_securities);
    add(plan.security, &*m_known);
    m_markets.insert(plan.security.code, plan.security.market);
}

/// The securities of the folder, once. Returns why not.
QString BarImport::readKnown()
{
    if (m_known) {
        return {};
    }
    const auto listed = securities();
    if (!listed) {
        return listed.error();
    }
    m_known = listed.value();
    for (const Security &security : *m_known) {
        m_markets.insert(security.code, security.market);
    }
    return {};
}

Loaded<BarImportPlan> BarImport::plan(const QString &file, const BarImportOptions &options)
{
    const auto failure = [](const QString &reason) { return Loaded<BarImportPlan>::failure(reason); };
    if (const QString reason = readKnown(); !reason.isEmpty()) {
        return failure(reason);
    }
    BarHints hints = options.hints;
    hints.markets = m_markets;
    const auto sheet = readBarFile(file, hints);
    if (!sheet) {
        return failure(sheet.error());
    }
    const auto security = settleSecurity(file, sheet.value(), *m_known, options);
    if (!security) {
        return failure(security.error());
    }
    BarImportPlan plan{sheet.value(), security.value(), {}, remarksOn(sheet.value())};
    QString problem = dayToCome(file, plan.sheet.bars);
    if (problem.isEmpty() && plan.sheet.isOfMinutes) {
        planMinutes(&plan);
    } else if (problem.isEmpty()) {
        problem = planDays(file, options.replacesAll, &plan);
    }
    if (!problem.isEmpty()) {
        return failure(problem);
    }
    keep(plan);
    return plan;
}

/// What a file holds before it is replaced.
QString BarImport::noteBefore(const QString &name)
{
    QFile file(path(name));
    if (!file.exists()) {
        m_before[name] = std::nullopt;
        return {};
    }
    if (!file.open(QIODevice::ReadOnly)) {
        return text("%1: cannot be read: %2").arg(file.fileName(), file.errorString());
    }
    m_before[name] = file.readAll();
    return {};
}

QString BarImport::write(const GoesOn &goesOn)
{
    const auto listed = securities();
    if (!listed) {
        return listed.error();
    }
    m_before.clear();
    SaveFiles files;
    const auto take = [&](const QString &name, const QByteArray &content) {
        const QString problem = prepare(path(name), content, &files);
        return problem.isEmpty() ? noteBefore(name) : problem;
    };
    int done = 0;
    for (const auto &[name, content] : m_files) {
        if (goesOn && !goesOn(done++, static_cast<int>(m_files.size()))) {
            return text("stopped; nothing is written");
        }
        const QString problem = take(name, content);
        if (!problem.isEmpty()) {
            return problem;
        }
    }
    // The list comes last: it names no security whose bars are not there.
    const QString problem = take(listName, securitiesText(listed.value()));
    return problem.isEmpty() ? commit(files) : problem;
}

QString BarImport::undo()
{
    SaveFiles files;
    QStringList added;
    for (const auto &[name, content] : m_before) {
        const QString problem = content ? prepare(path(name), *content, &files) : QString();
        if (!problem.isEmpty()) {
            return problem;
        }
        added += content ? QStringList() : QStringList(path(name));
    }
    const QString problem = commit(files);
    if (!problem.isEmpty()) {
        return problem;
    }
    m_before.clear();
    return remove(added);
}

} // namespace Terminal
