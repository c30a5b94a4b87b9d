#include "terminal/data/HeaderName.h"

#include <QRegularExpression>

namespace Terminal {

HeaderName headerName(const QString &cell)
{
    static const QRegularExpression unit(
        QStringLiteral(u"[(\\[（【]([^)\\]）】]*)[)\\]）】]$|/\\s*(万?[股手份元])$"));
    static const QRegularExpression marks(QStringLiteral("[\\s_.<>#'\"/-]"));
    const QRegularExpressionMatch match = unit.match(cell);
    QString name = match.hasMatch() ? cell.left(match.capturedStart()) : cell;
    return {name.remove(marks).toLower(), match.captured(1) + match.captured(2)};
}

} // namespace Terminal
