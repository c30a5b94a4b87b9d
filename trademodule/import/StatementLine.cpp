#include "trademodule/import/StatementLine.h"

#include <algorithm>

namespace TradeModule {

namespace {

QStringList splitQuoted(const QString &line, QChar separator)
{
    QStringList cells{QString()};
    bool isQuoted = false;
    for (const QChar character : line) {
        if (character == QLatin1Char('"')) {
            isQuoted = !isQuoted;
        }
        if (character == separator && !isQuoted) {
            cells.append(QString());
        } else {
            cells.last().append(character);
        }
    }
    return cells;
}

/// A word of a line and the screen column where it starts.
struct Word
{
    QString text;
    int column;
};

int widthOf(QChar character)
{
    constexpr ushort firstWide = 0x1100;
    return character.unicode() >= firstWide ? 2 : 1;
}

QVector<Word> wordsOf(const QString &line)
{
    QVector<Word> words;
    int column = 0;
    bool isInWord = false;
    for (const QChar character : line) {
        if (character.isSpace()) {
            isInWord = false;
        } else {
            if (!isInWord) {
                words.append({QString(), column});
            }
            isInWord = true;
            words.last().text.append(character);
        }
        column += widthOf(character);
    }
    return words;
}

} // namespace

QStringList splitLine(const QString &line, Separator separator)
{
    switch (separator) {
    case Separator::Tab:
        return splitQuoted(line, QLatin1Char('\t'));
    case Separator::Comma:
        return splitQuoted(line, QLatin1Char(','));
    case Separator::Blanks:
        return line.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    }
    Q_UNREACHABLE();
}

AlignedColumns::AlignedColumns(const QString &header)
{
    for (const Word &word : wordsOf(header)) {
        m_starts.append(word.column);
    }
}

QStringList AlignedColumns::cells(const QString &line) const
{
    const QVector<Word> words = wordsOf(line);
    if (words.size() == m_starts.size()) {
        return splitLine(line, Separator::Blanks);
    }
    QVector<QString> cells(m_starts.size());
    for (const Word &word : words) {
        const auto next = std::upper_bound(m_starts.begin(), m_starts.end(), word.column);
        QString &cell = cells[std::max<int>(0, static_cast<int>(next - m_starts.begin()) - 1)];
        cell += cell.isEmpty() ? word.text : QLatin1Char(' ') + word.text;
    }
    return QStringList(cells.begin(), cells.end());
}

} // namespace TradeModule
