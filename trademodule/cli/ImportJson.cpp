#include "trademodule/cli/ImportJson.h"

#include "trademodule/ProgramLanguage.h"

#include <QJsonArray>

#include <algorithm>

namespace TradeModule {

namespace {

const char *effectWord(Outcome outcome)
{
    switch (outcome) {
    case Outcome::Trade:
        return "trade";
    case Outcome::Shares:
        return "shares";
    case Outcome::Money:
        return "money";
    case Outcome::Nothing:
        return "nothing";
    case Outcome::KeptOut:
        return "kept out";
    }
    Q_UNREACHABLE();
}

const char *sideWord(const Execution &execution)
{
    if (isTrade(execution.side)) {
        return execution.side == Side::Buy ? "buy" : "sell";
    }
    return takesShares(execution.side) ? "out" : "in";
}

QJsonObject kindJson(const QString &kind, Outcome outcome)
{
    return {{QStringLiteral("kind"), kind},
            {QStringLiteral("name"), translated(kind.toLatin1().constData())},
            {QStringLiteral("effect"), QLatin1String(effectWord(outcome))}};
}

QJsonArray kindsJson(const StatementContents &contents)
{
    QJsonArray kinds;
    for (const auto &[outcome, rowsOfKinds] : contents.kinds) {
        for (const auto &[kind, rows] : rowsOfKinds) {
            QJsonObject json = kindJson(kind, outcome);
            json[QStringLiteral("rows")] = rows;
            kinds.append(json);
        }
    }
    return kinds;
}

void insertShares(const Execution &shares, const QString &name, QJsonObject *json)
{
    json->insert(QStringLiteral("date"), shares.date.dashedText());
    json->insert(QStringLiteral("time"), shares.time.colonText());
    json->insert(QStringLiteral("code"), shares.security.code);
    json->insert(QStringLiteral("market"), marketLetters(shares.security.market));
    json->insert(QStringLiteral("security"), name);
    json->insert(QStringLiteral("side"), QLatin1String(sideWord(shares)));
    json->insert(QStringLiteral("price"), shares.price.text());
    json->insert(QStringLiteral("quantity"), QString::number(shares.quantity));
    json->insert(QStringLiteral("amount"), shares.amount.text());
    json->insert(QStringLiteral("fee"), shares.fee.text());
}

void insertMoney(const MoneyEntry &money, QJsonObject *json)
{
    json->insert(QStringLiteral("date"), money.date.dashedText());
    json->insert(QStringLiteral("time"), money.time.colonText());
    json->insert(QStringLiteral("money"), money.amount.text());
    json->insert(QStringLiteral("currency"), money.currency);
    if (!json->contains(QStringLiteral("code"))) {
        json->insert(QStringLiteral("code"), money.code);
    }
}

QJsonArray firstRowsJson(const StatementContents &contents)
{
    QJsonArray rows;
    for (const UnderstoodRow &row : contents.firstRows) {
        QJsonObject json = kindJson(QLatin1String(row.entry.kind.name), outcomeOf(row.entry));
        json[QStringLiteral("line")] = row.line;
        if (row.entry.shares) {
            insertShares(*row.entry.shares, contents.names.value(row.entry.shares->security), &json);
        }
        if (row.entry.money) {
            insertMoney(*row.entry.money, &json);
        }
        rows.append(json);
    }
    return rows;
}

/// Those with most entries first; of thousands these are enough to name bars and to choose a first chart.
QJsonArray securitiesJson(const StatementContents &contents)
{
    constexpr int most = 5000;
    QHash<SecurityId, int> entries;
    for (const Execution &execution : contents.executions) {
        ++entries[execution.security];
    }
    QVector<SecurityId> securities = entries.keys().toVector();
    std::sort(securities.begin(), securities.end(), [&entries](const SecurityId &a, const SecurityId &b) {
        return entries[a] != entries[b] ? entries[a] > entries[b] : a.code < b.code;
    });
    QJsonArray json;
    for (const SecurityId &security : securities.mid(0, most)) {
        json.append(QJsonObject{{QStringLiteral("code"), security.code},
                                {QStringLiteral("market"), marketLetters(security.market)},
                                {QStringLiteral("security"), contents.names.value(security)},
                                {QStringLiteral("entries"), entries[security]}});
    }
    return json;
}

QJsonArray doubtfulJson(const ImportReport &report)
{
    constexpr int most = 20;
    QJsonArray rows;
    for (const Execution &execution : report.booked.doubtful.mid(0, most)) {
        QJsonObject json;
        insertShares(execution, report.contents.names.value(execution.security), &json);
        rows.append(json);
    }
    return rows;
}

QJsonObject placed(int line, const QString &reason)
{
    QJsonObject json{{QStringLiteral("reason"), reason}};
    if (line > 0) {
        json[QStringLiteral("line")] = line;
    }
    return json;
}

QJsonObject refusalJson(const BadRow &row, const QString &path)
{
    QJsonObject json = placed(row.line, row.reason);
    json[QStringLiteral("file")] = path;
    if (!row.column.isEmpty()) {
        json[QStringLiteral("column")] = row.column;
    }
    return json;
}

QJsonArray refusalsJson(const StatementContents &contents, const QString &path)
{
    QJsonArray refusals;
    for (const BadRow &row : contents.badRows) {
        refusals.append(refusalJson(row, path));
    }
    return refusals;
}

QJsonArray warningsJson(const ImportReport &report)
{
    QJsonArray warnings;
    for (const Remark &remark : remarksOn(report)) {
        warnings.append(placed(remark.line, remark.text));
    }
    return warnings;
}

void insertContents(const StatementContents &contents, QJsonObject *json)
{
    json->insert(QStringLiteral("account"), contents.account);
    json->insert(QStringLiteral("accounts"), QJsonArray::fromStringList(contents.accounts));
    if (contents.days) {
        json->insert(QStringLiteral("from"), contents.days->from.dashedText());
        json->insert(QStringLiteral("to"), contents.days->to.dashedText());
    }
    json->insert(QStringLiteral("rows"), contents.rowCount);
    json->insert(QStringLiteral("kinds"), kindsJson(contents));
    if (contents.cash) {
        json->insert(QStringLiteral("cash"),
                     QJsonObject{{QStringLiteral("date"), contents.cash->date.dashedText()},
                                 {QStringLiteral("balance"), contents.cash->balance.text()}});
    }
    json->insert(QStringLiteral("unknowncolumns"), QJsonArray::fromStringList(contents.unknownColumns));
    json->insert(QStringLiteral("unknownwords"), QJsonArray::fromStringList(contents.unknownWords));
    const bool isAllKnown = contents.unknownColumns.isEmpty() && contents.unknownWords.isEmpty();
    json->insert(QStringLiteral("profile"),
                 isAllKnown ? QString()
                            : ImportProfile::suggestion(contents.unknownColumns, contents.unknownWords));
    json->insert(QStringLiteral("securities"), securitiesJson(contents));
    json->insert(QStringLiteral("firstrows"), firstRowsJson(contents));
}

void insertBooked(const Booked &booked, QJsonObject *json)
{
    json->insert(QStringLiteral("added"), booked.added);
    json->insert(QStringLiteral("alreadythere"), booked.alreadyThere);
    json->insert(QStringLiteral("moneyadded"), booked.moneyAdded);
    json->insert(QStringLiteral("moneyalreadythere"), booked.moneyAlreadyThere);
    json->insert(QStringLiteral("inanotherform"), booked.inAnotherForm);
    json->insert(QStringLiteral("completedfees"), booked.completedFees);
}

} // namespace

QJsonObject importJson(const ImportReport &report, const QString &path, const ImportOptions &options,
                       bool isTold)
{
    const StatementContents &contents = report.contents;
    const bool isDryRun = options.mode == Ledger::Mode::DryRun;
    QJsonObject result{{QStringLiteral("file"), path}, {QStringLiteral("dryrun"), isDryRun}};
    if (!isDryRun && !report.isRefused && report.booked.number > 0) {
        result[QStringLiteral("import")] = report.booked.number;
    }
    result[QStringLiteral("chartstold")] = isTold;
    insertContents(contents, &result);
    insertBooked(report.booked, &result);
    result[QStringLiteral("refusals")] = refusalsJson(contents, path);
    result[QStringLiteral("refusalcount")] = contents.badRowCount;
    result[QStringLiteral("doubtful")] = doubtfulJson(report);
    result[QStringLiteral("doubtfulcount")] = report.booked.doubtful.size();
    result[QStringLiteral("warnings")] = warningsJson(report);
    QJsonObject reply{{QStringLiteral("result"), result}};
    if (report.isRefused) {
        reply[QStringLiteral("refused")] =
            refusalJson(contents.badRows.value(0, {0, refusalOf(report), QString()}), path);
    }
    return reply;
}

} // namespace TradeModule
