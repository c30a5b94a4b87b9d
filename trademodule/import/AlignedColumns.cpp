#include "trademodule/import/AlignedColumns.h"

#include "trademodule/import/CellValue.h"

#include <algorithm>
#include <cstdlib>

namespace TradeModule {

namespace {

constexpr int impossible = 100000;
constexpr int emptyCell = 6; ///< leaving a column empty costs as much as six columns of displacement
constexpr int mostWordsOfACell = 6;

int widthOf(QChar character)
{
    constexpr ushort firstWide = 0x1100;
    return character.unicode() >= firstWide ? 2 : 1;
}

QVector<PlacedWord> wordsOf(const QString &line)
{
    QVector<PlacedWord> words;
    int column = 0;
    bool isInWord = false;
    for (const QChar character : line) {
        const int next = column + widthOf(character);
        if (character.isSpace()) {
            isInWord = false;
        } else if (!isInWord) {
            words.append({QString(character), column, next});
            isInWord = true;
        } else {
            words.last().text.append(character);
            words.last().end = next;
        }
        column = next;
    }
    return words;
}

QString joined(const QVector<PlacedWord> &words, int from, int to)
{
    QStringList texts;
    for (int i = from; i < to; ++i) {
        texts.append(words[i].text);
    }
    return texts.join(QLatin1Char(' '));
}

/// True when a cell of this meaning can read so.
bool canHold(Column meaning, const QString &text)
{
    switch (meaning) {
    case Column::Date:
        return CellValue::date(text).has_value();
    case Column::Time:
        return CellValue::time(text).has_value();
    case Column::Code:
        return CellValue::code(text).has_value() || CellValue::isEmpty(text);
    case Column::Price:
    case Column::Quantity:
    case Column::Amount:
    case Column::Net:
    case Column::Income:
    case Column::Expense:
    case Column::TotalFee:
    case Column::Commission:
    case Column::CommissionTwin:
    case Column::OtherFee:
    case Column::StampDuty:
    case Column::SharesAfter:
    case Column::CashAfter:
        return CellValue::number(text).has_value();
    case Column::Name:
    case Column::Side:
    case Column::Business:
    case Column::Currency:
    case Column::Market:
        return !CellValue::number(text).has_value() || text.size() == 1 || CellValue::isEmpty(text);
    case Column::Remark:
    case Column::OrderNo:
    case Column::DealNo:
    case Column::Holder:
    case Column::Account:
    case Column::State:
    case Column::Cancelled:
    case Column::Unused:
        return true;
    }
    Q_UNREACHABLE();
}

/// True when a cell of this meaning may have blanks in it.
bool mayHaveBlanks(Column meaning)
{
    return meaning == Column::Name || meaning == Column::Remark || meaning == Column::Business ||
           meaning == Column::Unused || meaning == Column::Date || meaning == Column::Time;
}

} // namespace

AlignedColumns::AlignedColumns(const QString &header, const StatementColumns &columns)
    : m_names(wordsOf(header)),
      m_meanings(m_names.size(), Column::Unused)
{
    for (int kind = 0; kind < static_cast<int>(Column::Unused); ++kind) {
        for (const int position : columns.positionsOf(static_cast<Column>(kind))) {
            m_meanings[position] = static_cast<Column>(kind);
        }
    }
}

bool AlignedColumns::fitsWordByWord(const QVector<PlacedWord> &words) const
{
    for (int i = 0; i < words.size(); ++i) {
        if (!canHold(m_meanings[i], words[i].text)) {
            return false;
        }
    }
    return true;
}

int AlignedColumns::misfit(const QVector<PlacedWord> &words, int from, int to, int column) const
{
    if (from == to) {
        return emptyCell;
    }
    if ((to - from > 1 && !mayHaveBlanks(m_meanings[column])) ||
        !canHold(m_meanings[column], joined(words, from, to))) {
        return impossible;
    }
    const int left = std::abs(words[from].start - m_names[column].start);
    const int right = std::abs(words[to - 1].end - m_names[column].end);
    return std::min(left, right);
}

/// For each column the first word behind its cell, by the least misfit of the whole line.
QVector<int> AlignedColumns::bestCuts(const QVector<PlacedWord> &words) const
{
    const int columns = m_names.size();
    const int count = words.size();
    QVector<QVector<int>> least(columns + 1, QVector<int>(count + 1, impossible));
    QVector<QVector<int>> taken(columns + 1, QVector<int>(count + 1, 0));
    least[0][0] = 0;
    for (int column = 0; column < columns; ++column) {
        for (int to = 0; to <= count; ++to) {
            for (int from = std::max(0, to - mostWordsOfACell); from <= to; ++from) {
                if (least[column][from] >= impossible) {
                    continue;
                }
                const int cost = least[column][from] + misfit(words, from, to, column);
                if (cost < least[column + 1][to]) {
                    least[column + 1][to] = cost;
                    taken[column + 1][to] = to - from;
                }
            }
        }
    }
    if (least[columns][count] >= impossible) {
        return {};
    }
    QVector<int> cuts(columns);
    int end = count;
    for (int column = columns; column > 0; --column) {
        cuts[column - 1] = end;
        end -= taken[column][end];
    }
    return cuts;
}

QStringList AlignedColumns::cells(const QString &line) const
{
    const QVector<PlacedWord> words = wordsOf(line);
    if (words.size() == m_names.size() && fitsWordByWord(words)) {
        QStringList cells;
        for (const PlacedWord &word : words) {
            cells.append(word.text);
        }
        return cells;
    }
    const QVector<int> cuts = bestCuts(words);
    if (cuts.isEmpty()) { // a line of text; or a row that its reader refuses
        return line.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    }
    QStringList cells;
    int from = 0;
    for (const int to : cuts) {
        cells.append(joined(words, from, to));
        from = to;
    }
    return cells;
}

} // namespace TradeModule
