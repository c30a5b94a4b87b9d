#include "terminal/data/OwnForm.h"

#include "trading/Money.h"

namespace Terminal {

namespace {

QByteArray priceDigits(double price)
{
    const auto money = Trading::Money::ofYuan(price);
    return money ? QByteArray::fromStdString(money->digits()) : QByteArray::number(price, 'f', 4);
}

QByteArray row(const QByteArray &stamp, const Bar &bar)
{
    QByteArray text = stamp;
    for (const double price : {bar.open, bar.high, bar.low, bar.close}) {
        text += ',' + priceDigits(price);
    }
    return text + ',' + QByteArray::number(bar.volume, 'f', 0) + '\n';
}

} // namespace

QByteArray dailyText(const Bars &days)
{
    QByteArray text = "date,open,high,low,close,volume\n";
    for (const Bar &bar : days) {
        text += row(QByteArray::fromStdString(dayOf(bar).digits()), bar);
    }
    return text;
}

QByteArray minuteText(const Bars &minutes)
{
    QByteArray text = "time,open,high,low,close,volume\n";
    for (const Bar &bar : minutes) {
        text += row(QByteArray::number(bar.minute / 60 * 100 + bar.minute % 60), bar);
    }
    return text;
}

QByteArray securitiesText(const Securities &securities)
{
    QByteArray text = "code,market,name\n";
    for (const Security &security : securities) {
        text += security.code.toUtf8() + ',' + Trading::marketLetters(security.market).toUtf8() + ',' +
                security.name.toUtf8() + '\n';
    }
    return text;
}

} // namespace Terminal
