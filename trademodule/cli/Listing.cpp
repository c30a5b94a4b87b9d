#include "trademodule/cli/Listing.h"

#include "trademodule/ProgramLanguage.h"
#include "trademodule/cli/Console.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace TradeModule {

QCommandLineOption Listing::jsonOption()
{
    return {QStringLiteral("json"), translated("Writes JSON instead of a table.")};
}

QString Listing::word(const char *source) const
{
    return m_isJson ? QString::fromLatin1(source) : translated(source);
}

QString Listing::text() const
{
    return m_isJson ? json() : table();
}

QString Listing::table() const
{
    QStringList header;
    std::transform(m_columns.begin(), m_columns.end(), std::back_inserter(header), &translated);
    return tableText(header, m_rows);
}

QString Listing::json() const
{
    QJsonArray rows;
    for (const QStringList &row : m_rows) {
        QJsonObject object;
        for (int i = 0; i < m_columns.size(); ++i) {
            object[QLatin1String(m_columns[i])] = row[i];
        }
        rows.append(object);
    }
    return QString::fromUtf8(QJsonDocument(rows).toJson());
}

const char *sideWord(Side side)
{
    return side == Side::Buy ? QT_TR_NOOP("buy") : QT_TR_NOOP("sell");
}

} // namespace TradeModule
