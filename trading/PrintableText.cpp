#include "trading/PrintableText.h"

#include <QStringList>

#include <algorithm>

namespace Trading {

QString printable(QString text)
{
    const auto isCommand = [](QChar character) {
        const QChar::Category category = character.category();
        return category == QChar::Other_Control || category == QChar::Other_Format;
    };
    text.replace(QLatin1Char('\t'), QLatin1Char(' '));
    std::replace_if(text.begin(), text.end(), isCommand, QChar(QChar::ReplacementCharacter));
    return text;
}

QString printableLines(const QString &text)
{
    QStringList lines = text.split(QLatin1Char('\n'));
    std::transform(lines.begin(), lines.end(), lines.begin(), &printable);
    return lines.join(QLatin1Char('\n'));
}

} // namespace Trading
