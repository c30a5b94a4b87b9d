#include "trading/CsvLine.h"

#include <algorithm>
#include <iterator>

namespace Trading {

namespace {

QString csvCell(const QString &cell)
{
    const bool isPlain = std::none_of(cell.begin(), cell.end(), [](QChar character) {
        return QLatin1String(",\"\r\n").contains(character);
    });
    QString doubled = cell;
    return isPlain ? cell
                   : QLatin1Char('"') + doubled.replace(QLatin1Char('"'), QLatin1String("\"\"")) +
                         QLatin1Char('"');
}

} // namespace

QString csvLine(const QStringList &cells)
{
    QStringList written;
    std::transform(cells.begin(), cells.end(), std::back_inserter(written), &csvCell);
    return written.join(QLatin1Char(',')) + QLatin1Char('\n');
}

} // namespace Trading
