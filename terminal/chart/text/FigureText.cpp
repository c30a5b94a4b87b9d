#include "terminal/chart/text/FigureText.h"

#include <cmath>

namespace Terminal {

namespace {

struct Unit
{
    double size;
    QString name;
};

/// In the unit that the shown figure reaches, which rounding may lift it to.
QString inUnit(double volume, const Unit &large, const Unit &small)
{
    constexpr double halfAShare = 0.5;
    constexpr double halfAHundredth = 0.005;
    if (volume < small.size - halfAShare) {
        return QString::number(volume, 'f', 0);
    }
    const bool isLarge = volume >= large.size - halfAHundredth * small.size;
    const Unit &unit = isLarge ? large : small;
    return QString::number(volume / unit.size, 'f', 2) + unit.name;
}

} // namespace

QString priceText(double price, int decimals)
{
    return QString::number(price, 'f', decimals);
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
