#pragma once

#include <QString>
#include <QStringList>

namespace Terminal {

/// What somebody types who looks for a Chinese name by the first letters of its syllables: "gzmt" for
/// 贵州茅台. Letters and digits of the name stand for themselves, in small letters; everything else is left
/// out. More than one where characters have several readings: 平安银行 is "payh" and "payx". Empty for a name
/// without any.
QStringList pinyinInitials(const QString &name);

} // namespace Terminal
