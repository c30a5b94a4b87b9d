#include "terminal/bars/BarsTalk.h"

#include "terminal/bars/BarImportWords.h"
#include "terminal/bars/JsonLines.h"
#include "terminal/bars/LedgerComparison.h"
#include "terminal/bars/LedgerFills.h"
#include "terminal/data/OwnForm.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QRegularExpression>

#include <chrono>
#include <optional>

namespace Terminal {

namespace {

using Json = QJsonObject;

QString text(const char *source)
{
    return QCoreApplication::translate("BarsTalk", source);
}

QString named(const char *key)
{
    return QLatin1String(key);
}

QJsonArray cellsOf(const QByteArray &row)
{
    return QJsonArray::fromStringList(QString::fromUtf8(row).split(QLatin1Char(',')));
}

QJsonArray rowsOf(QByteArrayList rows)
{
    rows.removeFirst();
    QJsonArray all;
    for (const QByteArray &row : qAsConst(rows)) {
        all.append(cellsOf(row));
    }
    return all;
}

QJsonArray changesOf(const BarImportPlan &plan)
{
    constexpr std::size_t mostNamed = 20;
    QJsonArray changes;
    for (std::size_t i = 0; i < std::min(mostNamed, plan.files.size()); ++i) {
        changes.append(Json{{named("file"), plan.files[i].name}, {named("change"), plan.files[i].change}});
    }
    return changes;
}

/// The options that a reason to refuse asks for, in its own words.
QJsonArray askedIn(const QString &reason)
{
    static const QRegularExpression option(QStringLiteral("--(code|volume|day|replace)\\b"));
    QStringList asked;
    for (auto match = option.globalMatch(reason); match.hasNext();) {
        asked.append(match.next().captured(1));
    }
    asked.removeDuplicates();
    return QJsonArray::fromStringList(asked);
}

Json refusal(const QString &file, const QString &reason)
{
    return {{named("file"), file}, {named("refused"), reason}, {named("asks"), askedIn(reason)}};
}

Json described(const QString &file, const BarImportPlan &plan, const LedgerSays &ledger)
{
    const BarSheet &sheet = plan.sheet;
    const QByteArrayList rows = previewRows(sheet);
    return {{named("file"), file},
            {named("code"), plan.security.code},
            {named("security"), SecurityCode{plan.security.code, plan.security.market}.text()},
            {named("name"), plan.security.name},
            {named("minutes"), sheet.isOfMinutes},
            {named("bars"), static_cast<int>(sheet.bars.size())},
            {named("from"), dayOf(sheet.bars.front()).dashedText()},
            {named("to"), dayOf(sheet.bars.back()).dashedText()},
            {named("volume"), unitText(sheet)},
            {named("columns"), cellsOf(rows.first())},
            {named("rows"), rowsOf(rows)},
            {named("warnings"), QJsonArray::fromStringList(plan.remarks + ledger.warnings)},
            {named("ledger"), ledger.summary},
            {named("changes"), changesOf(plan)},
            {named("changecount"), static_cast<int>(plan.files.size())}};
}

Loaded<BarImportOptions> optionsOf(const Json &file)
{
    BarImportOptions options;
    options.replacesAll = file[named("replace")].toBool();
    for (const char *const name : {"name", "code", "volume", "day"}) {
        const QString value = file[named(name)].toString();
        const QString problem = value.isEmpty() ? QString() : takeImportOption(named(name), value, &options);
        if (!problem.isEmpty()) {
            return Loaded<BarImportOptions>::failure(problem);
        }
    }
    return options;
}

/// One talk: what was planned last, and what was written last.
class BarsTalk
{
public:
    BarsTalk(QString dataFolder, LedgerOfTrades ledger)
        : m_folder(std::move(dataFolder)),
          m_ledger(std::move(ledger)),
          m_import(m_folder)
    {
    }

    int run()
    {
        while (const auto request = m_lines.next()) {
            JsonLines::write(answerTo(*request));
        }
        return 0;
    }

private:
    Json answerTo(const Json &request)
    {
        if (request.contains(named("plan"))) {
            return plan(request);
        }
        if (request.contains(named("write"))) {
            return write();
        }
        if (request.contains(named("undo"))) {
            return outcome("undone", m_import.undo());
        }
        return {
            {named("cancelled"), true}}; // what was to be cancelled had just ended, or there is no such word
    }

    Json plan(const Json &request)
    {
        const QJsonArray files = request[named("plan")].toArray();
        m_import = BarImport(m_folder);
        m_comparison.emplace(m_ledger, files.size(),
                             [this, all = files.size()] { return goesOn("trades", 0, all); });
        m_isCancelled = false;
        m_names.clear();
        const Json names = request[named("names")].toObject();
        for (auto name = names.begin(); name != names.end(); ++name) {
            m_names.insert(name.key(), name.value().toString());
        }
        for (int i = 0; i < files.size(); ++i) {
            if (!goesOn("reading", i, files.size())) {
                return {{named("cancelled"), true}};
            }
            const Json planned = planOf(files.at(i).toObject());
            if (m_isCancelled) {
                return {{named("cancelled"), true}};
            }
            JsonLines::write({{named("plan"), planned}});
        }
        return {{named("planned"), files.size()}};
    }

    Json planOf(const Json &file)
    {
        const QString path = file[named("file")].toString();
        const auto asked = optionsOf(file);
        if (!asked) {
            return refusal(path, asked.error());
        }
        BarImportOptions options = asked.value();
        options.names = m_names;
        const auto plan = m_import.plan(path, options);
        if (!plan) {
            return refusal(path, plan.error());
        }
        const bool isThere = missingLedger(m_ledger.place).isEmpty(); // a first statement makes it
        const auto compared = isThere ? m_comparison->of(plan.value()) : LedgerSays();
        return described(path, plan.value(),
                         compared ? compared.value() : LedgerSays{{compared.error()}, {}});
    }

    Json write()
    {
        if (m_folder.isEmpty()) {
            return outcome("written", text("no data folder is named"));
        }
        m_isCancelled = false;
        const QString problem =
            m_import.write([this](int done, int all) { return goesOn("writing", done, all); });
        return m_isCancelled ? Json{{named("cancelled"), true}} : outcome("written", problem);
    }

    static Json outcome(const char *done, const QString &problem)
    {
        return problem.isEmpty() ? Json{{named(done), true}} : Json{{named("failed"), problem}};
    }

    /// Tells how far it is, ten times a second at most. False when the program has said "cancel", or is gone.
    bool goesOn(const char *step, int done, int all)
    {
        constexpr std::chrono::milliseconds pause{100};
        if (!m_sinceTold.isValid() || m_sinceTold.elapsed() > pause.count()) {
            m_sinceTold.start();
            JsonLines::write(
                {{named("progress"),
                  Json{{named("step"), named(step)}, {named("files"), done}, {named("of"), all}}}});
        }
        if (!m_lines.hasNext()) {
            return true;
        }
        m_lines.next();
        m_isCancelled = true;
        return false;
    }

    const QString m_folder;
    const LedgerOfTrades m_ledger;
    BarImport m_import;
    std::optional<LedgerComparison> m_comparison; // of the last plan
    QHash<QString, QString> m_names;              // that the program knows
    JsonLines m_lines;
    QElapsedTimer m_sinceTold;
    bool m_isCancelled = false; // what goes on, or went on last
};

} // namespace

int talkAboutBars(const QString &dataFolder, const LedgerOfTrades &ledger)
{
    return BarsTalk(dataFolder, ledger).run();
}

} // namespace Terminal
