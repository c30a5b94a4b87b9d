#include "trademodule/import/LineSplitting.h"

#include <QVector>

namespace TradeModule {

namespace {

QStringList splitQuoted(const QString &line, QChar separator)
{
    QStringList cells;
    int start = 0;
    bool isQuoted = false;
    for (int i = 0; i <= line.size(); ++i) {
        if (i == line.size() || (line[i] == separator && !isQuoted)) {
            cells.append(line.mid(start, i - start));
            start = i + 1;
        } else if (line[i] == QLatin1Char('"')) {
            isQuoted = !isQuoted;
        }
    }
    return cells;
}

} // namespace

QStringList splitLine(const QString &line, Separator separator)
{
    switch (separator) {
    case Separator::Tab:
        return splitQuoted(line, QLatin1Char('\t'));
    case Separator::Comma:
        return splitQuoted(line, QLatin1Char(','));
    case Separator::Semicolon:
        return splitQuoted(line, QLatin1Char(';'));
    case Separator::Pipe:
        return splitQuoted(line, QLatin1Char('|'));
    case Separator::Blanks:
        return line.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    }
    Q_UNREACHABLE();
}

} // namespace TradeModule
