#include "terminal/results/ResultsPart.h"

#include "tradechartobject/common/TradeVocabulary.h"
#include "trading/ModuleVocabulary.h"

#include <QJsonArray>

#include <limits>

namespace Terminal {

namespace {

using namespace Trading::ResultsFields;

QString textOf(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toString();
}

/// What is no number of rows counts as none.
qint64 countOf(const QJsonObject &object, const char *key)
{
    const qint64 count = textOf(object, key).toLongLong();
    return count >= 0 && count <= std::numeric_limits<int>::max() ? count : 0;
}

ResultRow readRow(const QJsonObject &row, const std::vector<ResultField> &fields)
{
    ResultRow texts;
    for (const ResultField field : fields) {
        texts.append(textOf(row, Trading::columnOf(field).key));
    }
    return texts;
}

QStringList readTexts(const QJsonArray &array)
{
    QStringList texts;
    for (const QJsonValue &value : array) {
        texts.append(value.toString());
    }
    return texts;
}

} // namespace

Trading::Question RowsAsked::question() const
{
    Trading::Question question(Trading::CmdType::RESULTS);
    question.setList(wish.group, first, most);
    if (wish.order) {
        question.setListOrder(*wish.order, wish.isDescending);
    }
    return question;
}

ResultsPart readPart(const QJsonObject &answer, const RowsAsked &asked)
{
    const QJsonObject data = answer.value(QLatin1String(TradeChart::TradeKeyFields::DATA)).toObject();
    const std::vector<ResultField> &fields = Trading::fieldsOf(asked.wish.group);
    ResultsPart part{asked.wish, countOf(data, FIRST)};
    const QJsonArray rows = data.value(QLatin1String(ROWS)).toArray();
    for (const QJsonValue &row : rows) {
        part.rows.push_back(readRow(row.toObject(), fields));
    }
    part.count = countOf(data, COUNT);
    part.sum = readRow(data.value(QLatin1String(SUM)).toObject(), fields);
    part.state = textOf(data, STATE);
    part.costMethod = textOf(answer, Trading::CostFields::COSTMETHOD);
    part.incomplete = readTexts(data.value(QLatin1String(INCOMPLETE)).toArray());
    return part;
}

} // namespace Terminal
