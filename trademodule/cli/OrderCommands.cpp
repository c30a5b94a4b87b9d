#include "trademodule/ProgramLanguage.h"
#include "trademodule/bus/TradeAnswers.h"
#include "trademodule/cli/Commands.h"
#include "trademodule/cli/Console.h"
#include "trademodule/cli/Listing.h"
#include "trademodule/cli/TellCharts.h"
#include "trademodule/cli/UsageError.h"
#include "trademodule/exchange/PaperExchange.h"
#include "trademodule/import/SecurityOfRow.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/OrderStatusName.h"

#include <QCoreApplication>

namespace TradeModule {

namespace {

/// For people, in the language of the program.
QString statusText(const Order &order)
{
    const char *const name = Trading::orderStatusName(order.status);
    return name == nullptr ? order.status : QCoreApplication::translate("OrderStatus", name);
}

/// For programs, the same in every language.
QString vocabularyText(const Order &order)
{
    return QString::fromUtf8(TradeChart::OrderStatus::getOrderStatusTxt(order.status));
}

/// Collects what an exchange changes, to tell the charts.
class Changes
{
public:
    PaperExchange::Listener listener()
    {
        return [this](const Order &order) { m_notifications.append(changeNotification(order)); };
    }
    const QVector<QJsonObject> &notifications() const { return m_notifications; }

private:
    QVector<QJsonObject> m_notifications;
};

Direction directionOf(const QString &word)
{
    if (word != QLatin1String("buy") && word != QLatin1String("sell")) {
        throw UsageError(translated("\"%1\" must be buy or sell").arg(word));
    }
    return word == QLatin1String("buy") ? Direction::Buy : Direction::Sell;
}

SecurityId securityOf(const QString &text)
{
    const std::optional<SecurityId> security = securityOfCode(text);
    if (!security) {
        throw UsageError(translated("\"%1\" is no code of Shanghai or Shenzhen").arg(text));
    }
    return *security;
}

Money priceOf(const QString &text)
{
    bool isNumber = false;
    const std::optional<Money> price = Money::ofExactYuan(text.toDouble(&isNumber));
    if (!isNumber || !price) {
        throw UsageError(translated("\"%1\" is no price").arg(text));
    }
    return *price;
}

qint64 wholeNumber(const QString &text)
{
    bool isNumber = false;
    const qint64 number = text.toLongLong(&isNumber);
    if (!isNumber || number <= 0) {
        throw UsageError(translated("\"%1\" is no whole number greater than 0").arg(text));
    }
    return number;
}

int place(const Invocation &invocation)
{
    const QStringList words = invocation.arguments(4, translated("CODE, buy or sell, PRICE and QUANTITY"));
    const SecurityId security = securityOf(words[0]);
    const Direction direction = directionOf(words[1]);
    const Money price = priceOf(words[2]);
    const qint64 quantity = wholeNumber(words[3]);
    Ledger ledger(invocation.existingLedger());
    Changes changes;
    const Order order =
        PaperExchange(&ledger, changes.listener()).leave(security, direction, price, quantity);
    print(translated("order %1 is placed: %2").arg(order.number).arg(statusText(order)) + QLatin1Char('\n'));
    tellCharts(invocation, changes.notifications());
    return Succeeded;
}

int cancel(const Invocation &invocation)
{
    const qint64 number = wholeNumber(invocation.arguments(1, translated("one order NUMBER")).constFirst());
    Ledger ledger(invocation.existingLedger());
    const TradingDate date = invocation.date(QStringLiteral("date")).value_or(ledger.today());
    Changes changes;
    const Order order = PaperExchange(&ledger, changes.listener()).cancel(date, number);
    print(translated("order %1: %2").arg(order.number).arg(statusText(order)) + QLatin1Char('\n'));
    tellCharts(invocation, changes.notifications());
    return Succeeded;
}

int listOrders(const Invocation &invocation)
{
    invocation.arguments(0, translated("no arguments, only options"));
    Ledger ledger(invocation.existingLedger());
    const TradingDate date = invocation.date(QStringLiteral("date")).value_or(ledger.today());
    Listing listing({QT_TR_NOOP("number"), QT_TR_NOOP("date"), QT_TR_NOOP("time"), QT_TR_NOOP("code"),
                     QT_TR_NOOP("market"), QT_TR_NOOP("side"), QT_TR_NOOP("price"), QT_TR_NOOP("quantity"),
                     QT_TR_NOOP("matched"), QT_TR_NOOP("cancelled"), QT_TR_NOOP("status")},
                    invocation.isSet(QStringLiteral("json")));
    const Orders orders = OrderBook(&ledger).ofDay(date);
    for (const Order &order : orders) {
        listing.add({QString::number(order.number), order.date.dashedText(), order.time.colonText(),
                     order.security.code, marketLetters(order.security.market),
                     listing.word(sideWord(sideOf(order.direction))), order.price.text(),
                     QString::number(order.quantity), QString::number(order.matchedQuantity),
                     QString::number(order.cancelledQuantity),
                     listing.isJson() ? vocabularyText(order) : statusText(order)});
    }
    listing.finish();
    return Succeeded;
}

QCommandLineOption dateOption()
{
    return {QStringLiteral("date"), translated("Day of the orders; today if left out."),
            QStringLiteral("yyyymmdd")};
}

} // namespace

Command placeCommand()
{
    return {QStringLiteral("place"),
            translated("Places a limit order; a serving module deals it."),
            QStringLiteral("CODE buy|sell PRICE QUANTITY"),
            {},
            &place};
}

Command cancelCommand()
{
    return {QStringLiteral("cancel"),
            translated("Cancels what is left of an order."),
            QStringLiteral("NUMBER"),
            {dateOption()},
            &cancel};
}

Command ordersCommand()
{
    return {QStringLiteral("orders"),
            translated("Lists the orders of a day."),
            {},
            {dateOption(), Listing::jsonOption()},
            &listOrders};
}

} // namespace TradeModule
