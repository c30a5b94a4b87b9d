#include "trademodule/ProgramLanguage.h"
#include "trademodule/cli/Commands.h"
#include "trademodule/cli/Console.h"
#include "trademodule/cli/Listing.h"
#include "trademodule/cli/UsageError.h"
#include "trademodule/exchange/PaperExchange.h"

namespace TradeModule {

namespace {

Money amountOf(const QString &text)
{
    bool isNumber = false;
    const std::optional<Money> amount = Money::ofExactYuan(text.toDouble(&isNumber));
    if (!isNumber || !amount || amount->isNegative()) {
        throw UsageError(
            translated("--cash is \"%1\", but must be an amount of yuan such as 500000 or 1234.56")
                .arg(text));
    }
    return *amount;
}

int account(const Invocation &invocation)
{
    invocation.arguments(0, translated("no arguments, only options"));
    std::optional<Money> cash;
    if (invocation.isSet(QStringLiteral("cash"))) {
        cash = amountOf(invocation.value(QStringLiteral("cash")));
    }
    Ledger ledger(cash ? invocation.ledgerOrNew() : invocation.existingLedger());
    PaperExchange exchange(&ledger);
    if (cash) {
        exchange.setCash(*cash);
    }
    Listing listing({QT_TR_NOOP("cash"), QT_TR_NOOP("available")}, invocation.isSet(QStringLiteral("json")));
    listing.add({OrderBook(&ledger).cash().text(), exchange.spendable().text()});
    listing.finish();
    return Succeeded;
}

} // namespace

Command accountCommand()
{
    return {QStringLiteral("account"),
            translated("Shows the account's cash and what of it is free for new buys; sets the cash."),
            {},
            {{QStringLiteral("cash"), translated("Sets the cash to this amount of yuan first."),
              QStringLiteral("AMOUNT")},
             Listing::jsonOption()},
            &account};
}

} // namespace TradeModule
