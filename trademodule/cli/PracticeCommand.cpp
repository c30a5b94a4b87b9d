#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/cli/Commands.h"
#include "trademodule/cli/Console.h"
#include "trademodule/cli/Listing.h"
#include "trademodule/cli/UsageError.h"
#include "trademodule/import/SecurityOfRow.h"
#include "trademodule/ledger/MarketDay.h"
#include "trademodule/ledger/OrderBook.h"
#include "trademodule/ledger/PracticeAccount.h"
#include "trading/HiddenPasswords.h"
#include "trading/TradingUnits.h"

namespace TradeModule {

namespace {

constexpr Money cashUnlessSaid = Money::ofCents(100000000);

QString dayOption()
{
    return QStringLiteral("day");
}

QString cashOption()
{
    return QStringLiteral("cash");
}

QString copyOption()
{
    return QStringLiteral("copy");
}

QString holdOption()
{
    return QStringLiteral("hold");
}

Money amountOf(const QString &text)
{
    bool isNumber = false;
    const std::optional<Money> amount = Money::ofExactYuan(text.toDouble(&isNumber));
    if (!isNumber || !amount || amount->isNegative()) {
        throw UsageError(translated("\"%1\" is no amount of yuan such as 500000 or 1234.56").arg(text));
    }
    return *amount;
}

PracticeAccount::Held heldOf(const QString &text)
{
    const QStringList words = text.simplified().split(QLatin1Char(' '));
    const auto security = words.size() == 3 ? securityOfCode(words[0]) : std::nullopt;
    const qint64 quantity = security ? words[1].toLongLong() : 0;
    const bool isHolding = quantity > 0 && quantity <= Trading::mostHeldShares;
    const auto cost = isHolding ? amountOf(words[2]).times(quantity) : std::nullopt;
    if (!cost) {
        throw UsageError(translated("--hold is \"%1\", but must be CODE QUANTITY COST-PRICE, such as "
                                    "\"600519 100 1700.00\"")
                             .arg(text));
    }
    return {*security, QString(), quantity, *cost};
}

/// The environment names it where a password would be seen in the command line.
QString copiedLedger(const Invocation &invocation)
{
    return invocation.isSet(copyOption()) ? invocation.value(copyOption())
                                          : qEnvironmentVariable(Trading::copiedLedgerVariable);
}

PracticeAccount accountOf(const Invocation &invocation)
{
    const QString copied = copiedLedger(invocation);
    PracticeAccount account{cashUnlessSaid};
    if (!copied.isEmpty()) {
        account = PracticeAccount::of(copied);
    }
    if (invocation.isSet(cashOption())) {
        account.cash = amountOf(invocation.value(cashOption()));
    }
    if (invocation.isSet(holdOption())) {
        account.holdings = {heldOf(invocation.value(holdOption()))};
    }
    return account;
}

void show(const QString &location, bool isJson)
{
    Ledger ledger(location);
    if (!ledger.practisedDay()) {
        throw Error(translated("the ledger %1 practises no day").arg(ledger.shownLocation()));
    }
    const std::optional<ClockTime> time = MarketDay(&ledger).clock();
    Listing listing({QT_TR_NOOP("day"), QT_TR_NOOP("time"), QT_TR_NOOP("cash")}, isJson);
    listing.add({ledger.today().dashedText(), time ? time->colonText() : QString(),
                 OrderBook(&ledger).cash().text()});
    listing.finish();
}

int practice(const Invocation &invocation)
{
    invocation.arguments(0, translated("no arguments, only options"));
    const std::optional<TradingDate> day = invocation.date(dayOption());
    if (day) {
        beginPractice(invocation.ledger(), *day, accountOf(invocation));
    }
    show(invocation.existingLedger(), invocation.isSet(QStringLiteral("json")));
    return Succeeded;
}

} // namespace

Command practiceCommand()
{
    return {QStringLiteral("practice"),
            translated("Begins a ledger that practises a recorded day, or tells how far one has come."),
            {},
            {{dayOption(), translated("Begins: the recorded day."), QStringLiteral("yyyymmdd")},
             {copyOption(), translated("Begins with the cash and the holdings of this account."),
              QStringLiteral("FILE-OR-URL")},
             {cashOption(), translated("Begins with this cash in yuan; a million if nothing says more."),
              QStringLiteral("AMOUNT")},
             {holdOption(), translated("Begins with this holding alone, such as \"600519 100 1700.00\"."),
              QStringLiteral("HOLDING")},
             Listing::jsonOption()},
            &practice};
}

} // namespace TradeModule
