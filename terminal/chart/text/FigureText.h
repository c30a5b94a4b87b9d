#pragma once

#include <QLocale>

namespace Terminal {

/// A price without thousands separators.
QString priceText(double price, int decimals = 2);

/// A volume in few digits in the units of `language`: "1.24亿" or "123.9M".
QString volumeText(double volume, QLocale::Language language);

/// A change in percent with its sign, e.g. "+1.25%".
QString changeText(double ratio);

} // namespace Terminal
