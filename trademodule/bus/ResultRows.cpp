#include "trademodule/bus/ResultRows.h"

#include "trademodule/bus/JsonRows.h"
#include "trading/ModuleVocabulary.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace TradeModule {

namespace {

QByteArray rowsOf(const std::vector<ResultLine> &lines, const std::vector<ResultField> &fields)
{
    JsonRows rows(static_cast<int>(lines.size()));
    for (const ResultLine &line : lines) {
        rows.begin();
        for (const ResultField field : fields) {
            rows.addText(Trading::columnOf(field).key, line.text(field));
        }
    }
    return rows.toJson();
}

QJsonObject sumOf(const Figures &figures, const std::vector<ResultField> &fields)
{
    QJsonObject sum;
    for (const ResultField field : fields) {
        if (Trading::columnOf(field).isSummed) {
            sum[QLatin1String(Trading::columnOf(field).key)] = sumText(figures, field);
        }
    }
    return sum;
}

} // namespace

QByteArray resultData(const KeptResults::Wish &wish, qint64 first, const KeptResults::Part &part,
                      qint64 state, const QStringList &incompleteCodes)
{
    using namespace Trading::ResultsFields;
    const std::vector<ResultField> &fields = Trading::fieldsOf(wish.group);
    const QJsonObject data{{QLatin1String(FIRST), QString::number(first)},
                           {QLatin1String(COUNT), QString::number(part.count)},
                           {QLatin1String(SUM), sumOf(part.sum, fields)},
                           {QLatin1String(STATE), QString::number(state)},
                           {QLatin1String(INCOMPLETE), QJsonArray::fromStringList(incompleteCodes)}};
    QByteArray json = QJsonDocument(data).toJson(QJsonDocument::Compact);
    json.chop(1); // the closing brace
    return json + ",\"" + ROWS + "\":" + rowsOf(part.lines, fields) + '}';
}

} // namespace TradeModule
