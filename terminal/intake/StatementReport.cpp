#include "terminal/intake/StatementReport.h"

#include "terminal/intake/IntakeQuestion.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QRegularExpression>

namespace Terminal {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("StatementReport", source);
}

QString named(const char *key)
{
    return QLatin1String(key);
}

QString word(const QJsonObject &object, const char *key)
{
    return object[named(key)].toString();
}

int count(const QJsonObject &object, const char *key)
{
    return object[named(key)].toInt();
}

QStringList words(const QJsonValue &array)
{
    QStringList all;
    for (const auto &value : array.toArray()) {
        all.append(value.toString());
    }
    return all;
}

/// "Line 3, 成交数量: the quantity is no number"
QString placed(const QJsonObject &problem)
{
    const QString reason = inWordsOfTheWindow(word(problem, "reason"), FileKind::Statement);
    const int line = count(problem, "line");
    if (line == 0) {
        return reason;
    }
    const QString column = word(problem, "column");
    return column.isEmpty() ? text("Line %1: %2").arg(QString::number(line), reason)
                            : text("Line %1, %2: %3").arg(QString::number(line), column, reason);
}

QStringList placedAll(const QJsonValue &problems, int most, int all)
{
    QStringList lines;
    for (const auto &problem : problems.toArray()) {
        if (lines.size() == most) {
            break;
        }
        lines.append(placed(problem.toObject()));
    }
    if (all > lines.size()) {
        lines.append(text("and %1 more rows").arg(all - lines.size()));
    }
    return lines;
}

QString effectName(const QString &effect)
{
    static const QHash<QString, const char *> names = {
        {named("trade"), QT_TRANSLATE_NOOP("StatementReport", "Trades")},
        {named("shares"), QT_TRANSLATE_NOOP("StatementReport", "Shares without a trade")},
        {named("money"), QT_TRANSLATE_NOOP("StatementReport", "Money")},
        {named("nothing"), QT_TRANSLATE_NOOP("StatementReport", "Left out")},
        {named("kept out"), QT_TRANSLATE_NOOP("StatementReport", "Kept out (short sales)")},
    };
    const char *const name = names.value(effect, nullptr);
    return name == nullptr ? effect : text(name);
}

/// "Trades: 买入 12, 卖出 8"; a line for each effect.
QStringList kindLines(const QJsonArray &kinds)
{
    QStringList effects;
    QHash<QString, QStringList> counts;
    for (const auto &value : kinds) {
        const QJsonObject kind = value.toObject();
        const QString effect = word(kind, "effect");
        if (!counts.contains(effect)) {
            effects.append(effect);
        }
        counts[effect].append(QStringLiteral("%1 %2").arg(word(kind, "name")).arg(count(kind, "rows")));
    }
    QStringList lines;
    for (const QString &effect : effects) {
        lines.append(text("%1: %2").arg(effectName(effect), counts[effect].join(QStringLiteral(u", "))));
    }
    return lines;
}

QString bookedLine(const QJsonObject &result, bool isDone)
{
    const int added = count(result, "added") + count(result, "moneyadded");
    const int there = count(result, "alreadythere") + count(result, "moneyalreadythere");
    return (isDone ? text("%1 entries imported, %2 were there already")
                   : text("%1 entries are new, %2 are there already"))
        .arg(added)
        .arg(there);
}

QStringList factsOf(const QJsonObject &result, bool isDone)
{
    QStringList facts;
    const QString rows = text("%1 rows").arg(count(result, "rows"));
    facts.append(word(result, "from").isEmpty()
                     ? rows
                     : text("%1, %2 to %3").arg(rows, word(result, "from"), word(result, "to")));
    if (!word(result, "account").isEmpty()) {
        facts.append(text("Account %1").arg(word(result, "account")));
    }
    facts += kindLines(result[named("kinds")].toArray());
    facts.append(bookedLine(result, isDone));
    if (count(result, "completedfees") > 0) {
        facts.append(text("Fees completed: %1").arg(count(result, "completedfees")));
    }
    const QJsonObject cash = result[named("cash")].toObject();
    if (!cash.isEmpty()) {
        facts.append(text("Cash on %1: %2").arg(word(cash, "date"), word(cash, "balance")));
    }
    return facts;
}

/// A column of the first rows: the key, and what stands above it.
struct RowColumn
{
    const char *key;
    const char *title;
    bool tellsAmount = false;
};

constexpr RowColumn rowColumns[] = {
    {"line", QT_TRANSLATE_NOOP("StatementReport", "Line")},
    {"date", QT_TRANSLATE_NOOP("StatementReport", "Date")},
    {"time", QT_TRANSLATE_NOOP("StatementReport", "Time")},
    {"name", QT_TRANSLATE_NOOP("StatementReport", "Kind")},
    {"code", QT_TRANSLATE_NOOP("StatementReport", "Code")},
    {"security", QT_TRANSLATE_NOOP("StatementReport", "Name")},
    {"price", QT_TRANSLATE_NOOP("StatementReport", "Price")},
    {"quantity", QT_TRANSLATE_NOOP("StatementReport", "Quantity"), true},
    {"amount", QT_TRANSLATE_NOOP("StatementReport", "Amount"), true},
    {"fee", QT_TRANSLATE_NOOP("StatementReport", "Fee"), true},
    {"money", QT_TRANSLATE_NOOP("StatementReport", "Money"), true},
};

void takeRows(const QJsonArray &rows, FileReport *report)
{
    for (const RowColumn &column : rowColumns) {
        if (column.tellsAmount) {
            report->amountColumns.append(report->columns.size());
        }
        report->columns.append(text(column.title));
    }
    for (const auto &value : rows) {
        const QJsonObject row = value.toObject();
        QStringList cells;
        for (const RowColumn &column : rowColumns) {
            cells.append(row[named(column.key)].toVariant().toString());
        }
        report->rows.push_back(cells);
    }
}

/// Those with most entries come first.
void takeCodes(const QJsonArray &securities, FileReport *report)
{
    for (const auto &value : securities) {
        const QString code = word(value.toObject(), "code");
        const QString name = word(value.toObject(), "security");
        if (!name.isEmpty()) {
            report->names.insert(code, name);
        }
        report->codes.append(code);
    }
    report->codes.removeDuplicates(); // one code on two markets
}

/// Rows that cannot be read stop the import, or are left out and told, as the user has chosen.
void takeBadRows(const QJsonObject &result, bool isRefused, FileReport *report)
{
    constexpr int most = 50;
    const int all = count(result, "refusalcount");
    const QStringList rows = placedAll(result[named("refusals")], most, all);
    if (isRefused) {
        report->refusals += rows;
    } else {
        for (const QString &row : rows) {
            report->warnings.append(text("Left out: %1").arg(row));
        }
    }
    if (all > 0) {
        report->asks.append(named("skip-bad"));
    }
}

void takeResult(const QJsonObject &result, FileReport *report)
{
    constexpr int mostWarnings = 50;
    const bool isDone = !result[named("dryrun")].toBool();
    report->facts = factsOf(result, isDone);
    report->warnings += placedAll(result[named("warnings")], mostWarnings, 0);
    if (count(result, "doubtfulcount") > 0) {
        report->asks.append(named("doubt"));
    }
    report->number = static_cast<qint64>(result[named("import")].toDouble());
    const QJsonArray rows = result[named("firstrows")].toArray();
    takeRows(rows, report);
    takeCodes(result[named("securities")].toArray(), report);
}

/// The questions whose options a reason names.
QStringList askedIn(const QString &reason)
{
    static const QRegularExpression option(QStringLiteral("--(date|securities|account)\\b"));
    QStringList asked;
    for (auto match = option.globalMatch(reason); match.hasNext();) {
        asked.append(match.next().captured(1));
    }
    return asked;
}

/// A profile begins with remarks; the one on the command line's option becomes one on the button.
QString profileForAField(const QString &profile)
{
    QStringList lines = profile.split(QLatin1Char('\n'));
    for (QString &line : lines) {
        const bool isOfOption =
            line.startsWith(QLatin1Char('#')) && line.contains(QLatin1String("--profile"));
        line = isOfOption ? text("# Write after each = what it means, then press Use.") : line;
    }
    return lines.join(QLatin1Char('\n'));
}

} // namespace

FileReport statementReport(const QJsonObject &answer)
{
    FileReport report;
    const QJsonObject refused = answer[named("refused")].toObject();
    const QJsonObject result = answer[named("result")].toObject();
    if (!refused.isEmpty()) {
        report.refusals.append(placed(refused));
        report.asks = askedIn(word(refused, "reason"));
        report.accounts = words(refused[named("accounts")]);
        report.asks += report.accounts.isEmpty() ? QStringList() : QStringList(named("account"));
        report.profile = profileForAField(word(refused, "profile"));
        report.isUnknown = result.isEmpty() && report.asks.isEmpty();
    }
    if (!result.isEmpty()) {
        takeBadRows(result, !refused.isEmpty(), &report);
        takeResult(result, &report);
        report.profile = profileForAField(word(result, "profile"));
    }
    if (!report.profile.isEmpty()) {
        report.asks.append(named("profile"));
    }
    report.asks.removeDuplicates();
    report.refusals.removeDuplicates(); // the first bad row is the reason, too
    return report;
}

} // namespace Terminal
