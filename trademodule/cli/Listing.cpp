#include "trademodule/cli/Listing.h"

#include "trademodule/cli/Console.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace TradeModule {

QCommandLineOption Listing::jsonOption()
{
    return {QStringLiteral("json"), QStringLiteral("Writes JSON instead of a table.")};
}

QString Listing::text(bool isJson) const
{
    return isJson ? json() : tableText(m_columns, m_rows);
}

QString Listing::json() const
{
    QJsonArray rows;
    for (const QStringList &row : m_rows) {
        QJsonObject object;
        for (int i = 0; i < m_columns.size(); ++i) {
            object[m_columns[i]] = row[i];
        }
        rows.append(object);
    }
    return QString::fromUtf8(QJsonDocument(rows).toJson());
}

QString dashedDate(int date)
{
    return QStringLiteral("%1-%2-%3")
        .arg(date / 10000, 4, 10, QLatin1Char('0'))
        .arg(date / 100 % 100, 2, 10, QLatin1Char('0'))
        .arg(date % 100, 2, 10, QLatin1Char('0'));
}

QString clockTime(int time)
{
    return QStringLiteral("%1:%2:%3")
        .arg(time / 1000000, 2, 10, QLatin1Char('0'))
        .arg(time / 10000 % 100, 2, 10, QLatin1Char('0'))
        .arg(time / 100 % 100, 2, 10, QLatin1Char('0'));
}

} // namespace TradeModule
