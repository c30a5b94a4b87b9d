#include "terminal/chart/text/FigureText.h"

#include <cmath>

namespace Terminal {

namespace {

struct Unit
{
    double size;
    QString name;
};

QString inUnit(double volume, const Unit &large, const Unit &small)
{
    const Unit &unit = volume >= large.size ? large : small;
    return volume < small.size ? QString::number(volume, 'f', 0)
                               : QString::number(volume / unit.size, 'f', 2) + unit.name;
}

} // namespace

QString priceText(double price)
{
    return QString::number(price, 'f', 2);
}

QString volumeText(double volume, QLocale::Language language)
{
    return language == QLocale::Chinese
               ? inUnit(volume, {1e8, QStringLiteral(u"亿")}, {1e4, QStringLiteral(u"万")})
               : inUnit(volume, {1e6, QStringLiteral("M")}, {1e3, QStringLiteral("K")});
}

QString changeText(double ratio)
{
    const QString sign = ratio > 0 ? QStringLiteral("+") : QString();
    return sign + QString::number(ratio * 100, 'f', 2) + QLatin1Char('%');
}

} // namespace Terminal
