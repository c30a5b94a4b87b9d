#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace TradeModule {

/// How the cells of a statement's lines are kept apart.
enum class Separator { Tab, Comma, Blanks };

/// The cells of a line. Commas and tabs inside double quotes belong to their cell.
QStringList splitLine(const QString &line, Separator separator);

/// Cuts lines whose columns are aligned with blanks under a header. A line with as many words as the
/// header has names is cut word by word; in any other an empty cell or a name with a blank in it moved
/// the words, and each belongs to the column it stands under.
class AlignedColumns
{
public:
    explicit AlignedColumns(const QString &header);
    QStringList cells(const QString &line) const;

private:
    QVector<int> m_starts; // of the columns, in screen columns: Chinese characters take two
};

} // namespace TradeModule
