#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/bus/TradeAnswers.h"
#include "trademodule/cli/Commands.h"
#include "trademodule/cli/Console.h"
#include "trademodule/cli/TellCharts.h"
#include "trademodule/cli/UsageError.h"
#include "trademodule/import/SecurityOfRow.h"

namespace TradeModule {

namespace {

/// Stands in the list of imports where others have a file.
QString openingName()
{
    return QStringLiteral("open");
}

qint64 quantityOf(const QString &text)
{
    bool isNumber = false;
    const qint64 quantity = text.toLongLong(&isNumber);
    constexpr qint64 mostShares = 1000000000000;
    if (!isNumber || quantity <= 0 || quantity > mostShares) {
        throw UsageError(translated("\"%1\" is no quantity of shares").arg(text));
    }
    return quantity;
}

Money costPriceOf(const QString &text)
{
    bool isNumber = false;
    const std::optional<Money> price = Money::ofExactYuan(text.toDouble(&isNumber));
    if (!isNumber || !price || price->isNegative()) {
        throw UsageError(translated("\"%1\" is no cost price in yuan").arg(text));
    }
    return *price;
}

TradingDate dayOf(const QString &text)
{
    const std::optional<TradingDate> day = TradingDate::ofText(text);
    if (!day || *day < TradingDate::of(1990, 1, 1) || *day > TradingDate::today()) {
        throw UsageError(translated("\"%1\" is no day of the form yyyymmdd that is past").arg(text));
    }
    return *day;
}

Execution holdingOf(const QStringList &arguments)
{
    const std::optional<SecurityId> security = securityOfCode(arguments[0]);
    if (!security) {
        throw UsageError(translated("\"%1\" is no code of a security").arg(arguments[0]));
    }
    Execution holding{*security, Side::In, dayOf(arguments[3]), ClockTime()};
    holding.quantity = quantityOf(arguments[1]);
    holding.price = costPriceOf(arguments[2]);
    const std::optional<Money> cost = holding.price.times(holding.quantity);
    if (!cost) {
        throw UsageError(translated("the holding would cost more than %1 yuan").arg(Money::limit().text()));
    }
    holding.amount = *cost;
    return holding;
}

/// The holdings of a security that were entered by this command, as the ledger tells them.
QVector<qint64> enteredBefore(Ledger *ledger, const SecurityId &security)
{
    QVector<qint64> numbers;
    for (const ImportedStatement &statement : ledger->imports()) {
        if (statement.file == openingName() &&
            ledger->securitiesOfImport(statement.number).contains(security)) {
            numbers.append(statement.number);
        }
    }
    return numbers;
}

/// A holding is entered once: a second word on it is a correction, which must be said.
void refuseSecond(const SecurityId &security, const QVector<qint64> &before)
{
    if (!before.isEmpty()) {
        throw Error(
            translated("the ledger has an opening holding of %1 already, import %2: put this one in its "
                       "place with --replace")
                .arg(security.code)
                .arg(before.constFirst()));
    }
}

int open(const Invocation &invocation)
{
    const Execution holding = holdingOf(invocation.arguments(
        4, translated("CODE QUANTITY COST-PRICE DAY, such as 600519 100 1700.00 20231229")));
    Ledger ledger(invocation.ledgerOrNew());
    const QVector<qint64> before = enteredBefore(&ledger, holding.security);
    if (!invocation.isSet(QStringLiteral("replace"))) {
        refuseSecond(holding.security, before);
    }
    const Booked booked = ledger.bookInPlaceOf(before, {openingName(), {holding}, {}});
    for (const qint64 number : before) {
        print(translated("import %1 is taken back").arg(number) + QLatin1Char('\n'));
    }
    const QString told = booked.added > 0
                             ? translated("entered %1 of %2 at %3 on %4; undo takes it back")
                             : translated("a statement told %1 of %2 at %3 on %4 before; nothing was added");
    print(told.arg(holding.quantity)
              .arg(holding.security.code, holding.price.text(), holding.date.dashedText()) +
          QLatin1Char('\n'));
    tellCharts(invocation, {changeNotification(holding)});
    return Succeeded;
}

} // namespace

Command openCommand()
{
    return {
        QStringLiteral("open"),
        translated("Enters a holding from before the first statement, at the start of a day."),
        QStringLiteral("CODE QUANTITY COST-PRICE DAY"),
        {{QStringLiteral("replace"), translated("Puts it in the place of the one that was entered before.")}},
        &open};
}

} // namespace TradeModule
