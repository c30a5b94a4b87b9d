#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/bus/TradeAnswers.h"
#include "trademodule/cli/Commands.h"
#include "trademodule/cli/Console.h"
#include "trademodule/cli/JsonReply.h"
#include "trademodule/cli/Listing.h"
#include "trademodule/cli/TellCharts.h"
#include "trademodule/cli/UsageError.h"

namespace TradeModule {

namespace {

QString dayText(std::optional<TradingDate> day)
{
    return day ? day->dashedText() : QString();
}

/// Whether a mark is there is a question of programs that lost sight of their import.
int findMark(const Invocation &invocation)
{
    QJsonObject result;
    const bool isThere = Ledger::isThere(invocation.ledger()); // else who was making it was ended meanwhile
    const auto found =
        isThere ? Ledger(invocation.ledger()).importOfMark(invocation.value(QStringLiteral("mark")))
                : std::nullopt;
    if (found) {
        result[QStringLiteral("import")] = found->number;
    }
    JsonReply::write({{QStringLiteral("result"), result}});
    return Succeeded;
}

int listImports(const Invocation &invocation)
{
    invocation.arguments(0, translated("no arguments, only options"));
    if (invocation.isSet(QStringLiteral("mark"))) {
        return JsonReply::run([&invocation] { return findMark(invocation); });
    }
    Ledger ledger(invocation.existingLedger());
    Listing listing({QT_TR_NOOP("import"), QT_TR_NOOP("imported at"), QT_TR_NOOP("file"), QT_TR_NOOP("added"),
                     QT_TR_NOOP("there before"), QT_TR_NOOP("money"), QT_TR_NOOP("from"), QT_TR_NOOP("to"),
                     QT_TR_NOOP("account")},
                    invocation.isSet(QStringLiteral("json")));
    const QVector<ImportedStatement> imports = ledger.imports();
    for (const ImportedStatement &statement : imports) {
        listing.add({QString::number(statement.number), statement.importedAt.toString(Qt::ISODate),
                     statement.file, QString::number(statement.added),
                     QString::number(statement.alreadyThere), QString::number(statement.money),
                     dayText(statement.firstDay), dayText(statement.lastDay), statement.account});
    }
    listing.finish();
    return Succeeded;
}

/// Trades of these securities have changed up to today, so that charts ask for past ones, too.
QVector<QJsonObject> changesOf(const QVector<SecurityId> &changed)
{
    QVector<QJsonObject> notifications;
    for (const SecurityId &security : changed) {
        if (isOnCharts(security.market)) {
            notifications.append(
                changeNotification(Execution{security, Side::Out, TradingDate::today(), ClockTime()}));
        }
    }
    return notifications;
}

qint64 numberOfImport(const Invocation &invocation)
{
    const QString text = invocation.arguments(1, translated("the NUMBER of an import")).constFirst();
    bool isNumber = false;
    const qint64 number = text.toLongLong(&isNumber);
    if (!isNumber) {
        throw UsageError(translated("\"%1\" is no number of an import; see the command imports").arg(text));
    }
    return number;
}

void describe(const UndoneImport &undone)
{
    print(translated("import %1 is taken back").arg(undone.statement.number) + QLatin1Char('\n'));
    if (undone.kept > 0) {
        print(translated("%1 of its entries stay: later imports told them, too").arg(undone.kept) +
              QLatin1Char('\n'));
    }
    if (undone.repeatedLater > 0) {
        print(
            translated(
                "%1 later imports had entries that were there already; import them again if these came from "
                "the one that is gone")
                .arg(undone.repeatedLater) +
            QLatin1Char('\n'));
    }
}

QJsonObject undoneJson(const UndoneImport &undone, bool isTold)
{
    return {{QStringLiteral("import"), undone.statement.number},
            {QStringLiteral("file"), undone.statement.file},
            {QStringLiteral("entries"), undone.statement.added},
            {QStringLiteral("money"), undone.statement.money},
            {QStringLiteral("kept"), undone.kept},
            {QStringLiteral("repeatedlater"), undone.repeatedLater},
            {QStringLiteral("chartstold"), isTold}};
}

int undoImport(const Invocation &invocation)
{
    const qint64 number = numberOfImport(invocation);
    Ledger ledger(invocation.existingLedger());
    ledger.database()->mapNothing();
    const UndoneImport undone = ledger.undoImport(number);
    const QVector<QJsonObject> changes = changesOf(undone.securities);
    if (invocation.isSet(QStringLiteral("json"))) {
        const bool isTold = whyNotTold(invocation, changes).isEmpty();
        JsonReply::write({{QStringLiteral("result"), undoneJson(undone, isTold)}});
    } else {
        describe(undone);
        tellCharts(invocation, changes);
    }
    return Succeeded;
}

int undoReplying(const Invocation &invocation)
{
    return invocation.isSet(QStringLiteral("json"))
               ? JsonReply::run([&invocation] { return undoImport(invocation); })
               : undoImport(invocation);
}

int listMoney(const Invocation &invocation)
{
    invocation.arguments(0, translated("no arguments, only options"));
    Ledger ledger(invocation.existingLedger());
    Listing listing({QT_TR_NOOP("date"), QT_TR_NOOP("time"), QT_TR_NOOP("kind"), QT_TR_NOOP("amount"),
                     QT_TR_NOOP("currency"), QT_TR_NOOP("code"), QT_TR_NOOP("note"), QT_TR_NOOP("number")},
                    invocation.isSet(QStringLiteral("json")));
    const MoneyEntries entries = ledger.money();
    for (const MoneyEntry &entry : entries) {
        listing.add({entry.date.dashedText(), entry.time.colonText(),
                     listing.word(entry.kind.toLatin1().constData()), entry.amount.text(), entry.currency,
                     entry.code, entry.note, entry.number});
    }
    listing.finish();
    return Succeeded;
}

} // namespace

Command importsCommand()
{
    return {
        QStringLiteral("imports"),
        translated("Lists what was imported."),
        {},
        {{QStringLiteral("mark"),
          translated("Tells as JSON the import with this mark, when all changes that were begun are done."),
          QStringLiteral("WORD")},
         Listing::jsonOption()},
        &listImports};
}

Command undoCommand()
{
    return {QStringLiteral("undo"),
            translated("Takes an import back as a whole."),
            QStringLiteral("NUMBER"),
            {{QStringLiteral("json"), translated("Writes the report as JSON, for programs.")}},
            &undoReplying};
}

Command moneyCommand()
{
    return {QStringLiteral("money"),
            translated("Lists money that moved otherwise than by trades, oldest first."),
            {},
            {Listing::jsonOption()},
            &listMoney};
}

} // namespace TradeModule
